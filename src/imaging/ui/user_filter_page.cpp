// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/user_filter_page.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kCellWidth = 56;
constexpr int kMostWeight = 999, kMostDivisor = 9999, kMostBias = 255;

QStringList PresetNames() {
  QStringList names;
  for (const FilterPreset& preset : FilterPresets())
    names.append(preset.name.toString());
  return names << ChangePage::tr("Own matrix");
}

QSpinBox* NumberField(const QString& name, int low, int high) {
  auto* field = new QSpinBox;
  field->setObjectName(name);
  field->setRange(low, high);
  field->setButtonSymbols(QAbstractSpinBox::NoButtons);
  field->setAlignment(Qt::AlignRight);
  look::MakeCompact(field);
  return field;
}

}  // namespace

UserFilterPage::UserFilterPage() {
  preset_ = AddChoice(tr("&Filter:"), "cmbpreset", PresetNames());
  divisor_ = AddNumber(tr("&Divided by:"), "txtdivisor", 1, kMostDivisor);
  bias_ = AddNumber(tr("&Plus:"), "txtbias", -kMostBias, kMostBias);
  auto* keep = new QPushButton(tr("&Keep the brightness"));
  keep->setObjectName(u"cmdkeep"_s);
  keep->setAutoDefault(false);
  keep->setToolTip(tr("Divides by the sum of the matrix"));
  Grid()->addWidget(keep, Grid()->rowCount(), 1, 1, 2, Qt::AlignLeft);
  connect(keep, &QPushButton::clicked, this,
          [this] { divisor_->setValue(Matrix().KeepingDivisor()); });
  AddAside(ComposeMatrix());
  Show({});
  connect(preset_, &QComboBox::currentIndexChanged, this, &UserFilterPage::PresetChosen);
  setFocusProxy(preset_);
}

QSpinBox* UserFilterPage::AddNumber(const QString& caption, const char* name, int low, int high) {
  QSpinBox* field = NumberField(QString::fromLatin1(name), low, high);
  QLabel* label = look::Caption(caption);
  label->setBuddy(field);
  const int row = Grid()->rowCount();
  Grid()->addWidget(label, row, 0);
  Grid()->addWidget(field, row, 1, 1, 2);
  connect(field, &QSpinBox::valueChanged, this, &UserFilterPage::CellChanged);
  return field;
}

QWidget* UserFilterPage::ComposeMatrix() {
  auto* pane = new QWidget;
  auto* grid = new QGridLayout(pane);
  look::SetSpace(grid, 0, look::kSpace4);
  for (int i = 0; i < std::ssize(cells_); ++i) {
    const int row = i / FilterMatrix::kSide, column = i % FilterMatrix::kSide;
    QSpinBox* cell = NumberField(u"cell(%1)"_s.arg(i), -kMostWeight, kMostWeight);
    cell->setFixedWidth(kCellWidth);
    cell->setAccessibleName(tr("Row %1, column %2").arg(row + 1).arg(column + 1));
    connect(cell, &QSpinBox::valueChanged, this, &UserFilterPage::CellChanged);
    grid->addWidget(cell, row, column);
    cells_[static_cast<std::size_t>(i)] = cell;
  }
  return pane;
}

FilterMatrix UserFilterPage::Matrix() const {
  FilterMatrix matrix;
  std::ranges::transform(cells_, matrix.weights.begin(), &QSpinBox::value);
  matrix.divisor = divisor_->value();
  matrix.bias = bias_->value();
  return matrix;
}

void UserFilterPage::Show(const FilterMatrix& matrix) {
  filling_ = true;
  for (std::size_t i = 0; i < cells_.size(); ++i)
    cells_[i]->setValue(matrix.weights[i]);
  divisor_->setValue(matrix.divisor);
  bias_->setValue(matrix.bias);
  filling_ = false;
}

void UserFilterPage::PresetChosen(int index) {
  const auto presets = FilterPresets();
  if (index < 0 || index >= std::ssize(presets)) return;
  Show(presets[static_cast<std::size_t>(index)].matrix);
  Q_EMIT Changed();
}

void UserFilterPage::CellChanged() {
  if (filling_) return;
  const QSignalBlocker quiet(preset_);
  preset_->setCurrentIndex(preset_->count() - 1);
  Q_EMIT Changed();
}

void UserFilterPage::Reset() {
  ChangePage::Reset();
  PresetChosen(0);
}

PartChange UserFilterPage::Change() const {
  const FilterMatrix matrix = Matrix();
  if (matrix.IsNeutral()) return {};
  return [matrix](const QImage& picture, const PartView& view) {
    return UserFilter(picture, matrix, view.scale);
  };
}

}  // namespace zqm
