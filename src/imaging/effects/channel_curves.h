// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <functional>

namespace zqm {

/// From a sample to another, both 0 to 1; results outside are clamped.
using Curve = std::function<float(float)>;

/// A curve for each channel of a picture in a work format; gray pictures take the first. Alpha
/// stays. On the free threads; samples go through a table, whatever the curve costs.
QImage WithCurves(const QImage& picture, const Curve& red, const Curve& green, const Curve& blue);

}  // namespace zqm
