// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/ui/box_panel.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>

#include "shell/error.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using Side = TemplateDesign::Side;

struct Field {
  Side side;
  const char16_t* caption;
  const char* name;
  Measure BoxMeasures::*measure;
};
constexpr Field kFields[] = {
    {Side::Width, u"Wid&th :", "Text5", &BoxMeasures::width},
    {Side::Height, u"Hei&ght :", "Text6", &BoxMeasures::height},
    {Side::Left, u"&Left :", "Text7", &BoxMeasures::left},
    {Side::Top, u"T&op :", "Text8", &BoxMeasures::top},
};

}  // namespace

BoxPanel::BoxPanel(QWidget* parent) : QWidget(parent), id_(look::Hint(QString())) {
  auto* grid = new QGridLayout(this);
  look::SetSpace(grid, 0, look::kSpace8);
  grid->setColumnStretch(1, 1);
  auto* heading = new QHBoxLayout;
  look::SetSpace(heading, 0, look::kSpace8);
  heading->addWidget(look::Heading(tr("Selected box")));
  heading->addWidget(id_);
  heading->addStretch(1);
  grid->addLayout(heading, 0, 0, 1, 3);
  id_->setObjectName(u"Label13"_s);
  id_->setToolTip(tr("The number of the box: photos fill the boxes in this order"));
  for (const Field& field : kFields) {
    MeasureRow& row = rows_[static_cast<std::size_t>(field.side)];
    row = AddMeasureRow(grid, QString::fromUtf16(field.caption), field.name);
    connect(row.field, &QLineEdit::textChanged, this, [this, &field](const QString& text) {
      if (filling_) return;
      Guarded("frmtemplate", field.name, [&] { Q_EMIT Typed(field.side, text); });
    });
    connect(row.field, &QLineEdit::editingFinished, this, &BoxPanel::Left);
  }
}

void BoxPanel::ShowBox(const TemplateDesign& design) {
  Fill(design, false);
}

void BoxPanel::SwitchUnit(const TemplateDesign& design) {
  Fill(design, true);
}

void BoxPanel::Fill(const TemplateDesign& design, bool keepsWords) {
  const QScopedValueRollback filling(filling_, true);
  const auto box = design.FirstBox();
  id_->setText(box ? QString::number(design.Selected().front()) : QString());
  for (const Field& field : kFields) {
    const MeasureRow& row = rows_[static_cast<std::size_t>(field.side)];
    row.unit->setText(UnitWord(design.ShownUnit()));
    row.field->setEnabled(box.has_value());
    row.field->setToolTip(box ? QString() : tr("Select a picture box first"));
    if (!box) {
      row.field->clear();
      continue;
    }
    const Measure& measure = (*box).*field.measure;
    const QString text = measure.Text(design.ShownUnit());
    row.field->setText(keepsWords ? SwitchedText(row.field->text(), measure, design.ShownUnit())
                                  : text);
  }
}

}  // namespace zqm
