// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>

#include "editor/editor_settings.h"
#include "imaging/vector_objects.h"

namespace zqm {

/// Puts the panel's text in the place of all objects, its box's upper left corner at `corner`
/// (picture pixels), and gives its ID. What is typed and is no size or angle counts as the default.
int PreviewWatermark(VectorObjects& objects, const WatermarkPanel& panel, QPointF corner);

}  // namespace zqm
