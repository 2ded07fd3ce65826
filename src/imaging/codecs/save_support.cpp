// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/codecs/save_support.h"

#include <QPixelFormat>
#include <cmath>

namespace zqm {

std::uint32_t WholeNumber(double value, std::uint32_t most) {
  if (!(value > 0)) return 0;
  return value < most ? static_cast<std::uint32_t>(std::lround(value)) : most;
}

Failure WriteFailure(const char* detail) {
  QString reason = QStringView(kReasonNotWritable).toString();
  if (detail && *detail) reason += QStringLiteral(": ") + QString::fromLatin1(detail);
  return {reason};
}

Result<QImage> WritablePicture(const QImage& picture, int mostSide) {
  if (picture.isNull()) return WriteFailure("there is no picture");
  const bool fits = picture.width() <= mostSide && picture.height() <= mostSide &&
                    std::int64_t{picture.width()} * picture.height() <= kMostPixels;
  if (!fits) return WriteFailure("the picture is too large");
  QImage::Format format = picture.format();
  switch (format) {
    case QImage::Format_Mono:
    case QImage::Format_Indexed8:
    case QImage::Format_Grayscale8:
    case QImage::Format_Grayscale16:
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_RGBX64:
    case QImage::Format_RGBA64:
      return picture;
    case QImage::Format_MonoLSB:
      format = QImage::Format_Mono;
      break;
    default:
      if (picture.pixelFormat().redSize() > 8) {
        format = picture.hasAlphaChannel() ? QImage::Format_RGBA64 : QImage::Format_RGBX64;
      } else {
        format = picture.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32;
      }
  }
  QImage converted = picture.convertToFormat(format);
  if (converted.isNull()) return WriteFailure("the picture is too large");
  return converted;
}

bool IsGray(const QImage& picture) {
  return picture.format() == QImage::Format_Grayscale8 ||
         picture.format() == QImage::Format_Grayscale16;
}

std::optional<int> WhiteBit(const QImage& picture) {
  if (picture.format() != QImage::Format_Mono) return std::nullopt;
  constexpr QRgb kBlack = qRgb(0, 0, 0), kWhite = qRgb(255, 255, 255);
  const auto colours = ColoursOf(picture);
  if (colours[0] == kBlack && colours[1] == kWhite) return 1;
  if (colours[0] == kWhite && colours[1] == kBlack) return 0;
  return std::nullopt;
}

QImage WithoutClearPalette(const QImage& picture) {
  const bool clear = picture.depth() <= 8 && picture.hasAlphaChannel();
  return clear ? picture.convertToFormat(QImage::Format_ARGB32) : picture;
}

QImage WithoutMono(const QImage& picture) {
  if (picture.format() != QImage::Format_Mono) return picture;
  return picture.convertToFormat(WhiteBit(picture) ? QImage::Format_Grayscale8
                                                   : QImage::Format_Indexed8);
}

void AppendResource(ByteWriter& out, int number, const QByteArray& data) {
  out.Text("8BIM").U16(number).U16(0).U32(data.size()).Raw(data);
  if (data.size() % 2 != 0) out.U8(0);
}

}  // namespace zqm
