// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace zqm {

/// The new picture is seen through a shape that turns about the centre while it grows.
struct TurningShape {
  int points = 0;    ///< of a star; 0 for a rectangle like the screen
  double turns = 1;  ///< clockwise, until it covers the screen
};

/// All pictures are RGB32 of one size.
void DrawTurningShape(const TurningShape& shape, const QImage& from, const QImage& to,
                      double progress, QImage& out);

}  // namespace zqm
