// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRgba64>
#include <algorithm>

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

/// A pixel's samples from 0 to 1 and back, rounded and clamped.
struct ShallowPixels {
  using Pixel = QRgb;
  static constexpr float kMost = 255, kStep = 1 / kMost;
  static Rgb ToRgb(Pixel p) {
    return {static_cast<float>(qRed(p)) * kStep, static_cast<float>(qGreen(p)) * kStep,
            static_cast<float>(qBlue(p)) * kStep};
  }
  static int Alpha(Pixel p) { return qAlpha(p); }
  static Pixel Of(int red, int green, int blue, int alpha) {
    return qRgba(red, green, blue, alpha);
  }
};

struct DeepPixels {
  using Pixel = QRgba64;
  static constexpr float kMost = 65535, kStep = 1 / kMost;
  static Rgb ToRgb(Pixel p) {
    return {static_cast<float>(p.red()) * kStep, static_cast<float>(p.green()) * kStep,
            static_cast<float>(p.blue()) * kStep};
  }
  static int Alpha(Pixel p) { return p.alpha(); }
  static Pixel Of(int red, int green, int blue, int alpha) {
    return QRgba64::fromRgba64(quint16(red), quint16(green), quint16(blue), quint16(alpha));
  }
};

/// Makes every pixel of a picture in a work format with colours anew by `make(pixels, pixel)`,
/// where `pixels` is one of the two above. On the free threads. Null when there is no memory.
template <class Make>
QImage MakePixels(const QImage& picture, const Make& make) {
  QImage out = picture.isNull() ? QImage() : BlankLike(picture);
  if (out.isNull()) return {};
  uchar* bits = out.bits();
  const qsizetype stride = out.bytesPerLine();
  const auto makeRows = [&](auto pixels, int begin, int end) {
    using Pixel = typename decltype(pixels)::Pixel;
    for (int y = begin; y < end; ++y) {
      const auto* from = reinterpret_cast<const Pixel*>(picture.constScanLine(y));
      auto* to = reinterpret_cast<Pixel*>(bits + y * stride);
      for (int x = 0; x < picture.width(); ++x)
        to[x] = make(pixels, from[x]);
    }
  };
  ForRowBlocks(picture.height(), std::int64_t{picture.width()} * 16, [&](int begin, int end) {
    if (IsDeep(picture))
      makeRows(DeepPixels(), begin, end);
    else
      makeRows(ShallowPixels(), begin, end);
  });
  return out;
}

/// A sample from 0 to 1 as a level up to `most`.
inline int Level(float sample, float most) {
  const float within = std::min(std::max(sample, 0.0F), 1.0F);
  return static_cast<int>(within * most + 0.5F);
}

/// Applies `change(Rgb&, float& alpha)` to every pixel.
template <class Change>
QImage MapPixelsWithAlpha(const QImage& picture, const Change& change) {
  return MakePixels(picture, [&](auto pixels, auto pixel) {
    Rgb c = pixels.ToRgb(pixel);
    float alpha = static_cast<float>(pixels.Alpha(pixel)) * pixels.kStep;
    change(c, alpha);
    return pixels.Of(Level(c.red, pixels.kMost), Level(c.green, pixels.kMost),
                     Level(c.blue, pixels.kMost), Level(alpha, pixels.kMost));
  });
}

/// Applies `change(Rgb&)` to every pixel; alpha stays as it is.
template <class Change>
QImage MapPixels(const QImage& picture, const Change& change) {
  return MakePixels(picture, [&](auto pixels, auto pixel) {
    Rgb c = pixels.ToRgb(pixel);
    change(c);
    return pixels.Of(Level(c.red, pixels.kMost), Level(c.green, pixels.kMost),
                     Level(c.blue, pixels.kMost), pixels.Alpha(pixel));
  });
}

}  // namespace zqm
