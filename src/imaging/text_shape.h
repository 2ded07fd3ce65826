// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPainterPath>
#include <QSizeF>

#include "imaging/vector_objects.h"

namespace zqm {

/// A text as an outline in pixels, to be filled by the winding rule. It is laid out once at one
/// large size and scaled from there, so that it keeps its proportions at every FONTHEIGHT.
struct TextShape {
  QPainterPath outline;  ///< the upper left corner of the box is at 0, 0
  QSizeF size;           ///< that takes all of it; at least one pixel by one
};

/// Lines stand at the left, the right or in the middle of the text's box, of a text that sizes
/// itself by the longest one.
TextShape ShapeText(const VectorObject& object);

/// WIDTH and HEIGHT of a text that sizes itself; others stay as they are.
void FitText(VectorObject& object);

}  // namespace zqm
