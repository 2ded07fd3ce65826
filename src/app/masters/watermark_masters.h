// SPDX-License-Identifier: GPL-3.0-or-later
// The watermark templates that come with the program.
#pragma once

#include <QSize>
#include <QString>
#include <vector>

#include "imaging/vector_objects.h"

namespace zqm {

struct MasterTemplate {
  QString name;
  VectorObjects objects;
};

/// The surface that they are drawn for: twelve megapixels. Each begins at the top left, where
/// smaller photos show it too.
inline constexpr QSize kMasterSurface{4000, 3000};

/// Text is measured: needs a QGuiApplication.
std::vector<MasterTemplate> WatermarkMasters();

}  // namespace zqm
