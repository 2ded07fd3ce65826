// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <cstdint>
#include <vector>

#include "imaging/row_sink.h"

namespace zqm {

/// Gives the rows of a picture in the layout that an encoder asks for, one at a time, so that no
/// second picture is made. Takes Grayscale8/16, RGB32, ARGB32, RGBX64, RGBA64, Indexed8 and Mono.
/// Gray from colours is the luma of ITU-R BT.601, alpha from opaque pictures is full, 16 bits
/// become 8 by rounding.
class RowSource {
 public:
  /// `picture` outlives this.
  RowSource(const QImage& picture, RowFormat format);

  /// The row, `y` from 0 to the height - 1; stays until the next call.
  const void* Row(int y);
  const std::uint8_t* Bytes(int y) { return static_cast<const std::uint8_t*>(Row(y)); }

 private:
  template <class Pixel>
  const Pixel* Pixels(int y, std::vector<Pixel>& scratch);
  void Pack(const QRgb* pixels);
  void Pack(const QRgba64* pixels);

  const QImage& picture_;
  RowFormat format_;
  bool direct_;  // whether the picture's own rows are what is asked for
  bool opaque_;
  std::vector<QRgb> colours_;  // by index
  std::vector<QRgb> pixels_;
  std::vector<QRgba64> deepPixels_;
  std::vector<std::uint8_t> row_;
};

/// The colours of an Indexed8 or Mono picture; those that it uses and doesn't tell are black.
std::vector<QRgb> ColoursOf(const QImage& picture);

}  // namespace zqm
