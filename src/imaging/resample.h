// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QSize>

namespace zqm {

/// Filters by their number. Only what is used so far stands in the table of resample.cpp.
enum class ResampleFilter { FastLinear = 0, Triangle = 1 };

/// The picture at another size, by one separable pass a direction whose kernel widens with the
/// reduction (antialiased). Transparent pixels don't bleed: alpha weighs the colours. 8-bit formats
/// give RGB32 or ARGB32 (Grayscale8 stays), 16-bit ones RGBX64, RGBA64 or Grayscale16.
QImage Resample(const QImage& picture, const QSize& size, ResampleFilter filter);

}  // namespace zqm
