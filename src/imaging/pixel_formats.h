// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace zqm {

/// The picture in one of the six formats that raster work is done in: Grayscale8, Grayscale16,
/// RGB32, ARGB32, RGBX64, RGBA64. Gray, depth and alpha stay; palettes and bits are resolved.
QImage InWorkFormat(const QImage& picture);

}  // namespace zqm
