// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/change_page.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "shell/ui/look.h"

namespace zqm {

ChangePage::ChangePage() : row_(new QHBoxLayout(this)), grid_(new QGridLayout) {
  look::SetSpace(row_, 0, look::kSpace24);
  look::SetSpace(grid_, 0, look::kSpace8);
  grid_->setColumnStretch(1, 1);
  auto* column = new QVBoxLayout;
  column->addLayout(grid_);
  column->addStretch();
  row_->addLayout(column, 1);
}

SliderRow* ChangePage::AddSlider(const SliderRow::Spec& spec) {
  auto* slider = new SliderRow(spec, grid_, this);
  connect(slider, &SliderRow::Changed, this, &ChangePage::Changed);
  if (focusProxy() == nullptr) setFocusProxy(slider->First());
  sliders_.push_back(slider);
  return slider;
}

QComboBox* ChangePage::AddChoice(const QString& caption, const char* name,
                                 const QStringList& items) {
  auto* choice = new QComboBox;
  choice->setObjectName(QString::fromLatin1(name));
  choice->addItems(items);
  QLabel* label = look::Caption(caption);
  label->setBuddy(choice);
  const int row = grid_->rowCount();
  grid_->addWidget(label, row, 0);
  grid_->addWidget(choice, row, 1, 1, 2);
  connect(choice, &QComboBox::currentIndexChanged, this, &ChangePage::Changed);
  choices_.push_back(choice);
  return choice;
}

void ChangePage::AddAside(QWidget* widget) {
  row_->addWidget(widget);
}

void ChangePage::Reset() {
  for (SliderRow* slider : sliders_)
    slider->Reset();
  for (QComboBox* choice : choices_)
    choice->setCurrentIndex(0);
}

}  // namespace zqm
