// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/pixel_formats.h"

#include <QColorSpace>
#include <QRgba64>

#include "imaging/row_blocks.h"

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

void ClampToAlpha(QImage& weighed) {
  for (int y = 0; y < weighed.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(weighed.scanLine(y));
    for (int x = 0; x < weighed.width(); ++x) {
      const int alpha = qAlpha(row[x]);
      row[x] = qRgba(std::min(qRed(row[x]), alpha), std::min(qGreen(row[x]), alpha),
                     std::min(qBlue(row[x]), alpha), alpha);
    }
  }
}

/// The toolkit's own way keeps eight bits only.
template <class Change>
QImage MapDeep(const QImage& picture, QImage::Format format, const Change& change) {
  QImage out = BlankLike(picture);
  if (out.isNull() || !out.reinterpretAsFormat(format)) return {};
  uchar* bits = out.bits();
  const qsizetype stride = out.bytesPerLine();
  ForRowBlocks(out.height(), std::int64_t{out.width()} * 8, [&](int begin, int end) {
    for (int y = begin; y < end; ++y) {
      const auto* from = reinterpret_cast<const QRgba64*>(picture.constScanLine(y));
      std::transform(from, from + picture.width(), reinterpret_cast<QRgba64*>(bits + y * stride),
                     change);
    }
  });
  return out;
}

QRgba64 WeighedPixel(QRgba64 pixel) {
  const quint32 alpha = pixel.alpha();
  const auto weighed = [&](quint32 sample) {
    return static_cast<quint16>((sample * alpha + 32767) / 65535);
  };
  return QRgba64::fromRgba64(weighed(pixel.red()), weighed(pixel.green()), weighed(pixel.blue()),
                             pixel.alpha());
}

QRgba64 UnweighedPixel(QRgba64 pixel) {
  const quint32 alpha = pixel.alpha();
  if (alpha == 0) return QRgba64::fromRgba64(0);
  if (alpha == 65535) return pixel;
  const auto straight = [&](quint32 sample) {
    return static_cast<quint16>((std::min(sample, alpha) * 65535 + alpha / 2) / alpha);
  };
  return QRgba64::fromRgba64(straight(pixel.red()), straight(pixel.green()), straight(pixel.blue()),
                             pixel.alpha());
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

QImage BlankLike(const QImage& picture) {
  QImage blank(picture.size(), picture.format());
  if (blank.isNull()) return {};
  blank.setDotsPerMeterX(picture.dotsPerMeterX());
  blank.setDotsPerMeterY(picture.dotsPerMeterY());
  blank.setColorSpace(picture.colorSpace());
  return blank;
}

QImage Weighed(const QImage& picture) {
  if (!picture.hasAlphaChannel()) return picture;
  if (!IsDeep(picture)) return picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  return MapDeep(picture, QImage::Format_RGBA64_Premultiplied, WeighedPixel);
}

QImage Unweighed(QImage weighed) {
  switch (weighed.format()) {
    case QImage::Format_RGBA64_Premultiplied:
      return MapDeep(weighed, QImage::Format_RGBA64, UnweighedPixel);
    case QImage::Format_ARGB32_Premultiplied:
      ClampToAlpha(weighed);
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
