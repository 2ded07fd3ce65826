// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

#include "imaging/codec.h"
#include "shell/result.h"

namespace zqm {

/// The box that every stored thumbnail fits.
inline constexpr QSize kThumbnailBox{200, 200};

/// A picture fitted into the box by an antialiased reduction: aspect kept, never enlarged, never
/// turned. Transparent parts come on white. For a picture that was decoded smaller, `original` is
/// its full size: the fit is that one's, free of the decoder's rounding.
QImage FitThumbnail(const QImage& picture, const QSize& box = kThumbnailBox,
                    const QSize& original = {});

/// The thumbnail of a file's bytes, decoded at no more than the size needed, as a JPEG of
/// quality 80.
Result<QByteArray> MakeThumbnail(ByteView file, const Codec& codec, const QSize& original,
                                 const LoadOptions& options);

/// A picture as a baseline JPEG (4:2:0, quality 1 to 100; alpha is dropped). Empty when it is null
/// or too large for the format. Stands in codecs/jpeg.cpp.
QByteArray EncodeJpeg(const QImage& picture, int quality);

}  // namespace zqm
