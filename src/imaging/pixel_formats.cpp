// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/pixel_formats.h"

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

}  // namespace

QImage InWorkFormat(const QImage& picture) {
  return picture.convertToFormat(WorkFormat(picture));
}

}  // namespace zqm
