// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/ui/measure_row.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "shell/ui/look.h"

namespace zqm {
namespace {
constexpr int kLongestMeasure = 12;
}

MeasureRow AddMeasureRow(QGridLayout* grid, const QString& caption, const char* name) {
  const MeasureRow row{new QLineEdit, look::Hint(QString())};
  row.field->setObjectName(QString::fromLatin1(name));
  row.field->setMaxLength(kLongestMeasure);
  look::MakeCompact(row.field);
  QLabel* label = look::Caption(caption);
  label->setBuddy(row.field);
  const int at = grid->rowCount();
  grid->addWidget(label, at, 0);
  grid->addWidget(row.field, at, 1);
  grid->addWidget(row.unit, at, 2);
  return row;
}

}  // namespace zqm
