// SPDX-License-Identifier: GPL-3.0-or-later
// Rows as the simple formats store them: packed palette indices and pixels of few bits, brought to
// `QRgb` and on into a `RowSink`.
#pragma once

#include <array>
#include <bit>
#include <vector>

#include "imaging/codecs/codec_support.h"
#include "imaging/row_sink.h"

namespace zqm {

/// Colours by index; those that a file doesn't tell are black.
class Palette {
 public:
  explicit Palette(std::size_t size = 256) : colours_(size, qRgb(0, 0, 0)) {}

  std::size_t Size() const { return colours_.size(); }
  void Set(std::size_t index, QRgb colour) {
    if (index < colours_.size()) colours_[index] = colour;
  }
  QRgb At(std::size_t index) const {
    return index < colours_.size() ? colours_[index] : qRgb(0, 0, 0);
  }
  const std::vector<QRgb>& Colours() const { return colours_; }

 private:
  std::vector<QRgb> colours_;
};

/// The sample number `x` of a row with `bits` a sample (1, 2, 4 or 8), the leftmost in the highest
/// bits of a byte.
inline std::uint8_t PackedSample(const std::uint8_t* row, int bits, std::int64_t x) {
  const std::int64_t bit = x * bits;
  const int shift = 8 - bits - static_cast<int>(bit & 7);
  return static_cast<std::uint8_t>((row[bit >> 3] >> shift) & ((1 << bits) - 1));
}

/// Five bits of a 16-bit pixel, as eight.
inline int FiveBits(unsigned pixel, int shift) {
  return static_cast<int>((((pixel >> shift) & 31U) * 255 + 15) / 31);
}

/// Hands over a row of `QRgb`, to a sink of format `Rgb32` or, with alpha, `Rgba32`.
inline void PutArgbRow(RowSink& sink, int y, std::vector<QRgb>& row, bool alpha) {
  if (alpha) {
    for (QRgb& pixel : row) {
      using Bytes4 = std::array<std::uint8_t, 4>;
      pixel = std::bit_cast<QRgb>(Bytes4{
          static_cast<std::uint8_t>(qRed(pixel)), static_cast<std::uint8_t>(qGreen(pixel)),
          static_cast<std::uint8_t>(qBlue(pixel)), static_cast<std::uint8_t>(qAlpha(pixel))});
    }
  }
  sink.PutRow(y, row.data());
}

/// The picture; a file that ends before the first row is complete has none.
inline Result<QImage> TakePicture(RowSink& sink, const LoadOptions& options) {
  if (!sink.IsWhole()) options.TellIncomplete();
  if (!sink.HasRows()) return DecodeFailure("the file ends before the first row");
  return sink.Take();
}

}  // namespace zqm
