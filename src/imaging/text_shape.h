// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPainterPath>
#include <QSizeF>
#include <QStringList>
#include <vector>

#include "imaging/vector_objects.h"

namespace zqm {

/// A text as outlines in pixels. It is laid out at one large size and scaled from there, so that it
/// keeps its proportions at every FONTHEIGHT.
struct TextShape {
  /// Filled one by one: none overlaps another, and the time that filling takes grows with the
  /// square of what one has side by side. The upper left corner of the text's box is at 0, 0.
  std::vector<QPainterPath> outlines;
  QSizeF size;  ///< that takes all of them; at least one pixel by one
};

/// Lines stand at the left, the right or in the middle of the text's box, of a text that sizes
/// itself by the longest one.
TextShape ShapeText(const VectorObject& object);

/// Families that texts name and this machine lacks, each once: others stand in for them.
QStringList MissingFonts(const VectorObjects& objects);

/// WIDTH and HEIGHT of a text that sizes itself; others stay as they are.
void FitText(VectorObject& object);

}  // namespace zqm
