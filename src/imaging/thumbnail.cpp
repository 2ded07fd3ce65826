// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/thumbnail.h"

#include "imaging/raster.h"
#include "imaging/resample.h"
#include "imaging/row_sink.h"

namespace zqm {
namespace {

constexpr int kThumbnailQuality = 80;

/// A preview inside camera RAW has a shape of its own: only rounding gives way to the original.
QSize TargetSize(const QSize& picture, const QSize& box, const QSize& original) {
  constexpr int kRounding = 2;
  const QSize own = FitInto(picture, box);
  if (original.isEmpty()) return own;
  const QSize exact = FitInto(original, box);
  const QSize off = own - exact;
  const bool near = std::abs(off.width()) <= kRounding && std::abs(off.height()) <= kRounding;
  return near && exact.width() <= picture.width() && exact.height() <= picture.height() ? exact
                                                                                        : own;
}

}  // namespace

QImage FitThumbnail(const QImage& picture, const QSize& box, const QSize& original) {
  if (picture.isNull()) return {};
  const QSize size = TargetSize(picture.size(), box, original);
  const QImage fitted =
      size == picture.size() ? picture : Resample(picture, size, ResampleFilter::Triangle);
  if (fitted.hasAlphaChannel())
    return RemoveAlphaChannel(fitted).convertToFormat(QImage::Format_RGB32);
  const bool gray =
      fitted.format() == QImage::Format_Grayscale8 || fitted.format() == QImage::Format_Grayscale16;
  return fitted.convertToFormat(gray ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
}

Result<QByteArray> MakeThumbnail(ByteView file, const Codec& codec, const QSize& original,
                                 const LoadOptions& options) {
  LoadOptions small = options;
  small.box = kThumbnailBox;
  const Result<QImage> picture = codec.load(file, small);
  if (!picture) return Failure{picture.Reason()};
  QByteArray jpeg = EncodeJpeg(FitThumbnail(*picture, kThumbnailBox, original), kThumbnailQuality);
  if (jpeg.isEmpty()) return Failure{QStringLiteral("The thumbnail could not be made")};
  return jpeg;
}

}  // namespace zqm
