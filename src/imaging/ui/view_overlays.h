// SPDX-License-Identifier: GPL-3.0-or-later
// What is painted over a picture on view. All places are the viewport's.
#pragma once

#include <QPainter>
#include <QPainterPath>
#include <QRegion>
#include <QTransform>

#include "imaging/vector_objects.h"

namespace zqm {

/// Steps after which the marching line looks the same again.
inline constexpr int kAntPhases = 8;

/// A line in black and white that stands out from any picture and marches with `phase`.
void PaintAnts(QPainter& painter, const QPainterPath& line, int phase);

/// What `PaintAnts` touches: small rectangles along the line, within `room`.
QRegion RegionOfAnts(const QPainterPath& line, const QRect& room);

/// The outline of a selected object, and its handles where it can be sized.
void PaintHandles(QPainter& painter, const VectorObject& object, const QTransform& toView);

}  // namespace zqm
