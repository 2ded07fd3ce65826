// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QSize>
#include <QStringView>
#include <optional>
#include <span>

namespace zqm {

/// Filters by the number that files of settings and callers pass on.
enum class ResampleFilter {
  NoFilter = 0,  // the fast linear one
  Triangle = 1,
  Hermite = 2,
  Bell = 3,
  BSpline = 4,
  Lanczos3 = 5,
  Mitchell = 6,
  Nearest = 7,
  Linear = 8,
  FastLinear = 9,
  Bilinear = 10,
  Bicubic = 11,
  ProjectBW = 12,  // the darkest of the source pixels: dark lines on light ground stay
  ProjectWB = 13,  // the lightest
};

struct ResampleFilterName {
  QStringView name;
  ResampleFilter filter;
};

/// Every filter with the name that windows show, by number.
std::span<const ResampleFilterName> ResampleFilterNames();
/// By name, case ignored.
std::optional<ResampleFilter> FindResampleFilter(QStringView name);

/// The picture at another size; a filter of no known number is the fast linear one. Kernels widen
/// with the reduction, so that detail is averaged and not lost; Nearest and the two projections
/// pick source pixels as they are. Transparent pixels don't bleed: alpha weighs the colours. Gray
/// and bilevel pictures give Grayscale8 or Grayscale16, other 8-bit ones RGB32 or ARGB32, 16-bit
/// ones RGBX64 or RGBA64. Null for a null picture, an empty size or one over 2^28 pixels. Large
/// pictures use the work pool; the result never depends on its threads.
QImage Resample(const QImage& picture, const QSize& size, ResampleFilter filter);

}  // namespace zqm
