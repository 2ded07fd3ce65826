// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace zqm {

enum class FlipDirection { Vertical, Horizontal };

/// The picture with its rows (Vertical) or its columns in reverse order, in its own format.
QImage Flipped(const QImage& picture, FlipDirection direction);

/// The picture turned counter-clockwise. Whole quarter turns move pixels, in the picture's own
/// format. Other angles grow the canvas so that it holds all of the picture, the corners
/// transparent where there is alpha and white elsewhere, and give one of the six work formats
/// (pixel_formats.h); `antialias` interpolates, otherwise the nearest pixel is taken. Null for a
/// null picture, an angle that is no number, and, but for quarter turns, where a side of picture or
/// canvas is 32,767 pixels or more.
QImage Rotated(const QImage& picture, double degrees, bool antialias);

}  // namespace zqm
