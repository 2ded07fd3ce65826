// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace zqm {

/// The picture in one of the six formats that raster work is done in: Grayscale8, Grayscale16,
/// RGB32, ARGB32, RGBX64, RGBA64. Gray, depth and alpha stay; palettes and bits are resolved.
QImage InWorkFormat(const QImage& picture);

/// A work format with alpha, with the colours multiplied by it, and back. Filters with negative
/// lobes leave colours above their alpha, which the way back clamps. Others come back unchanged.
QImage Weighed(const QImage& picture);
QImage Unweighed(QImage weighed);

/// A picture to be filled: of the same size, format, resolution and colour space. Null when there
/// is no memory.
QImage BlankLike(const QImage& picture);

/// Gray of a work format whose colours are equal samples already, at its depth.
QImage GrayOfEqualSamples(const QImage& picture);

inline bool IsDeep(const QImage& picture) {
  return picture.depth() == 64 || picture.format() == QImage::Format_Grayscale16;
}

inline bool IsGray(const QImage& picture) {
  return picture.format() == QImage::Format_Grayscale8 ||
         picture.format() == QImage::Format_Grayscale16;
}

}  // namespace zqm
