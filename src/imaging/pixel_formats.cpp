// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/pixel_formats.h"

#include <QRgba64>

namespace zqm {
namespace {

QImage::Format WorkFormat(const QImage& picture) {
  const bool alpha = picture.hasAlphaChannel();
  switch (picture.format()) {
    case QImage::Format_Grayscale8:
    case QImage::Format_Grayscale16:
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_RGBX64:
    case QImage::Format_RGBA64:
      return picture.format();
    case QImage::Format_Mono:
    case QImage::Format_MonoLSB:
    case QImage::Format_Indexed8:
      if (!alpha && picture.isGrayscale()) return QImage::Format_Grayscale8;
      return alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32;
    case QImage::Format_RGBA64_Premultiplied:
    case QImage::Format_A2BGR30_Premultiplied:
    case QImage::Format_A2RGB30_Premultiplied:
      return QImage::Format_RGBA64;
    case QImage::Format_BGR30:
    case QImage::Format_RGB30:
      return QImage::Format_RGBX64;
    default:
      if (picture.depth() > 32) return alpha ? QImage::Format_RGBA64 : QImage::Format_RGBX64;
      return alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32;
  }
}

template <class Sample>
void ClampToAlpha(QImage& weighed) {
  // Of a 32-bit word the highest byte, of 64 bits the last sample.
  constexpr int kAlpha = sizeof(Sample) == 1 && Q_BYTE_ORDER == Q_BIG_ENDIAN ? 0 : 3;
  for (int y = 0; y < weighed.height(); ++y) {
    auto* pixel = reinterpret_cast<Sample*>(weighed.scanLine(y));
    for (int x = 0; x < weighed.width(); ++x, pixel += 4) {
      for (int c = 0; c < 4; ++c)
        pixel[c] = std::min(pixel[c], pixel[kAlpha]);
    }
  }
}

template <class Sample, class Pixel, class Take>
QImage TakeSamples(const QImage& picture, QImage::Format format, const Take& take) {
  QImage gray(picture.size(), format);
  if (gray.isNull()) return {};
  for (int y = 0; y < gray.height(); ++y) {
    const auto* from = reinterpret_cast<const Pixel*>(picture.constScanLine(y));
    std::transform(from, from + gray.width(), reinterpret_cast<Sample*>(gray.scanLine(y)), take);
  }
  return gray;
}

}  // namespace

QImage InWorkFormat(const QImage& picture) {
  return picture.convertToFormat(WorkFormat(picture));
}

QImage Weighed(const QImage& picture) {
  if (!picture.hasAlphaChannel()) return picture;
  return picture.convertToFormat(IsDeep(picture) ? QImage::Format_RGBA64_Premultiplied
                                                 : QImage::Format_ARGB32_Premultiplied);
}

QImage Unweighed(QImage weighed) {
  switch (weighed.format()) {
    case QImage::Format_RGBA64_Premultiplied:
      ClampToAlpha<std::uint16_t>(weighed);
      return weighed.convertToFormat(QImage::Format_RGBA64);
    case QImage::Format_ARGB32_Premultiplied:
      ClampToAlpha<std::uint8_t>(weighed);
      return weighed.convertToFormat(QImage::Format_ARGB32);
    default:
      return weighed;
  }
}

QImage GrayOfEqualSamples(const QImage& picture) {
  if (picture.isNull() || IsGray(picture)) return picture;
  if (IsDeep(picture)) {
    return TakeSamples<std::uint16_t, QRgba64>(picture, QImage::Format_Grayscale16,
                                               [](QRgba64 pixel) { return pixel.green(); });
  }
  return TakeSamples<std::uint8_t, QRgb>(picture, QImage::Format_Grayscale8, [](QRgb pixel) {
    return static_cast<std::uint8_t>(qGreen(pixel));
  });
}

}  // namespace zqm
