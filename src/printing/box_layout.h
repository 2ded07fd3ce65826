// SPDX-License-Identifier: GPL-3.0-or-later
// Picture boxes on a sheet: where they may lie, and moving several of them as a block.
#pragma once

#include <QColor>
#include <QRectF>
#include <QSize>
#include <QString>
#include <span>
#include <vector>

#include "imaging/vector_objects.h"
#include "printing/paper_measures.h"

namespace zqm {

/// A new picture box in its place at the upper left; gives its ID.
int AddPictureBox(VectorObjects& objects, const QColor& colour);
/// Of boxes before the user chose another.
inline constexpr QRgb kBoxColour = qRgb(255, 202, 16);

/// Whether one of the objects reaches beyond the paper, by the measures of the unit, to a tenth of
/// it. A box on the paper's edge doesn't.
bool IsOutsidePaper(const VectorObjects& objects, std::span<const int> ids, const Paper& paper,
                    Unit unit);

/// Around the selected objects; null without any.
QRectF GetBoundingBox(const VectorObjects& objects, std::span<const int> selected);

/// A place on the sheet for the selection as a block.
struct BoxPreset {
  const char16_t* caption;
  const char* objectName;  ///< of the label that is clicked
  double across, down;     ///< how much of the room is left of it and above it: 0, 1/2 or 1
};
std::span<const BoxPreset> BoxPresets();

/// Moves the selected objects by one distance, so that their bounding box lands at the preset's
/// place. Without a selection nothing moves.
void MoveToPreset(VectorObjects& objects, std::span<const int> selected, const QSize& sheet,
                  const BoxPreset& preset);

/// "&H10CAFF" for 255,202,16: blue, green, red, two digits each.
QString VBHexColor(const QColor& colour);
/// "255,202,16".
QString DecimalColour(const QColor& colour);

}  // namespace zqm
