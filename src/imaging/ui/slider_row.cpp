// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/slider_row.h"

#include <QGridLayout>
#include <QLabel>
#include <QSlider>
#include <QSpinBox>

#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {

SliderRow::SliderRow(const Spec& spec, QGridLayout* grid, QObject* parent)
    : QObject(parent),
      standard_(spec.standard),
      slider_(new QSlider(Qt::Horizontal)),
      field_(new QSpinBox) {
  constexpr int kFieldWidth = 88, kPages = 10;
  const QString name = QString::fromLatin1(spec.name);
  slider_->setObjectName(u"sld"_s + name);
  slider_->setRange(spec.low, spec.high);
  slider_->setPageStep(std::max(1, (spec.high - spec.low) / kPages));
  if (spec.low < 0) look::MakeTwoSided(slider_);
  slider_->setMinimumHeight(look::kControlHeight);
  field_->setObjectName(u"txt"_s + name);
  field_->setRange(spec.low, spec.high);
  field_->setButtonSymbols(QAbstractSpinBox::NoButtons);
  field_->setAlignment(Qt::AlignRight);
  field_->setFixedWidth(kFieldWidth);
  if (!spec.unit.isEmpty()) field_->setSuffix(u' ' + spec.unit);
  QLabel* caption = look::Caption(spec.caption);
  caption->setBuddy(slider_);
  QString spoken = spec.caption;
  spoken.remove(u'&').remove(u':');
  slider_->setAccessibleName(spoken);
  field_->setAccessibleName(spoken);
  Reset();
  const int row = grid->rowCount();
  grid->addWidget(caption, row, 0);
  grid->addWidget(slider_, row, 1);
  grid->addWidget(field_, row, 2);
  connect(slider_, &QSlider::valueChanged, field_, &QSpinBox::setValue);
  connect(field_, &QSpinBox::valueChanged, slider_, &QSlider::setValue);
  connect(field_, &QSpinBox::valueChanged, this, &SliderRow::Changed);
}

QWidget* SliderRow::First() const {
  return slider_;
}

int SliderRow::Value() const {
  return field_->value();
}

void SliderRow::SetValue(int value) {
  slider_->setValue(value);
  field_->setValue(value);
}

}  // namespace zqm
