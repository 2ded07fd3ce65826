// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>
#include <functional>

namespace zqm {

/// Where the pixels of a row come from: `x[i]`, `y[i]` for the pixel `left + i` of row `top`, in
/// pixels of the same picture, whole numbers at their middles. What lies outside is taken from the
/// picture's edge.
using RowSource = std::function<void(int left, int top, int count, float* x, float* y)>;

/// A picture whose pixels in `changed` come from elsewhere in it, interpolated (bicubic); the
/// others stay. The result has a work format. On the free threads. Null when there is no memory.
QImage MovedPixels(const QImage& picture, const QRect& changed, const RowSource& source);

}  // namespace zqm
