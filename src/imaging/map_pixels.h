// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRgba64>

#include "imaging/pixel_formats.h"
#include "imaging/row_blocks.h"

namespace zqm {

/// A colour of a pixel, samples from 0 to 1.
struct Rgb {
  float red, green, blue;
};

/// ITU-R BT.601.
inline float Luma(const Rgb& c) {
  return 0.299F * c.red + 0.587F * c.green + 0.114F * c.blue;
}

/// Applies `change(Rgb&, float& alpha)` to every pixel of a picture in a work format with colours;
/// samples come out rounded and clamped. On the free threads.
template <class Change>
QImage MapPixelsWithAlpha(QImage picture, const Change& change) {
  if (picture.isNull()) return {};
  const bool deep = IsDeep(picture);
  const float most = deep ? 65535 : 255;
  uchar* bits = picture.bits();
  if (!bits) return {};
  const auto stride = picture.bytesPerLine();
  const int width = picture.width();
  const auto mapped = [&](Rgb c, float alpha, auto make) {
    change(c, alpha);
    const auto sample = [&](float v) {
      return static_cast<int>((v > 0 ? v < 1 ? v : 1 : 0) * most + 0.5F);
    };
    return make(sample(c.red), sample(c.green), sample(c.blue), sample(alpha));
  };
  const auto mapRow = [&](auto* row) {
    for (int x = 0; x < width; ++x) {
      auto& pixel = row[x];
      if constexpr (sizeof(pixel) == sizeof(QRgb)) {
        pixel = mapped({qRed(pixel) / most, qGreen(pixel) / most, qBlue(pixel) / most},
                       qAlpha(pixel) / most, qRgba);
      } else {
        pixel = mapped({pixel.red() / most, pixel.green() / most, pixel.blue() / most},
                       pixel.alpha() / most, [](int r, int g, int b, int a) {
                         return QRgba64::fromRgba64(quint16(r), quint16(g), quint16(b), quint16(a));
                       });
      }
    }
  };
  ForRowBlocks(picture.height(), std::int64_t{width} * 16, [&](int begin, int end) {
    for (int y = begin; y < end; ++y) {
      if (deep)
        mapRow(reinterpret_cast<QRgba64*>(bits + y * stride));
      else
        mapRow(reinterpret_cast<QRgb*>(bits + y * stride));
    }
  });
  return picture;
}

/// The same where alpha stays as it is.
template <class Change>
QImage MapPixels(QImage picture, const Change& change) {
  return MapPixelsWithAlpha(std::move(picture), [&](Rgb& c, float&) { change(c); });
}

}  // namespace zqm
