// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QGridLayout;
class QLabel;
class QLineEdit;

namespace zqm {

/// A measure as it is typed and the unit behind it.
struct MeasureRow {
  QLineEdit* field = nullptr;
  QLabel* unit = nullptr;
};

/// Below what the grid has: caption, field, unit.
MeasureRow AddMeasureRow(QGridLayout* grid, const QString& caption, const char* name);

}  // namespace zqm
