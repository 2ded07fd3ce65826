// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace zqm {

inline constexpr double kMostBlur = 100;  ///< pixels

/// Softened by a bell curve that reaches about `radius` pixels of the full picture (0 to 100, its
/// standard deviation is half of that). 0 changes nothing. `scale` as in PartView.
QImage Blur(const QImage& picture, double radius, double scale = 1);

}  // namespace zqm
