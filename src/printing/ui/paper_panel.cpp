// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/ui/paper_panel.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QScopedValueRollback>

#include "shell/error.h"
#include "shell/locale_info.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Digits and one separator of the user's locale.
QValidator* DigitsOnly(QObject* parent) {
  const QString separator =
      QRegularExpression::escape(GetUserLocaleInfo(LocaleInfo::DecimalSeparator));
  return new QRegularExpressionValidator(QRegularExpression(u"[0-9]*(%1[0-9]*)?"_s.arg(separator)),
                                         parent);
}

QLabel* Words(QGridLayout* grid, const char* name) {
  QLabel* label = look::Hint(QString());
  label->setObjectName(QString::fromLatin1(name));
  grid->addWidget(label, grid->rowCount(), 0, 1, 3);
  return label;
}

}  // namespace

PaperPanel::PaperPanel(QWidget* parent) : QWidget(parent) {
  auto* grid = new QGridLayout(this);
  look::SetSpace(grid, 0, look::kSpace8);
  grid->setColumnStretch(1, 1);
  grid->addWidget(look::Heading(tr("Paper")), 0, 0, 1, 3);
  ComposeUnits(grid);
  ComposePaper(grid);
  ShowPaper(Paper());
}

QRadioButton* PaperPanel::AddOption(const QString& caption, const char* name, Unit unit) {
  auto* option = new QRadioButton(caption);
  option->setObjectName(QString::fromLatin1(name));
  connect(option, &QRadioButton::toggled, this, [this, name, unit](bool on) {
    if (on) Guarded("frmtemplate", name, [this, unit] { Option_Click(unit); });
  });
  return option;
}

void PaperPanel::ComposeUnits(QGridLayout* grid) {
  millimetres_ = AddOption(u"&mm"_s, "Option1", Unit::Millimetres);
  inches_ = AddOption(u"&inches"_s, "Option2", Unit::Inches);
  auto* row = new QHBoxLayout;
  look::SetSpace(row, 0, look::kSpace16);
  row->addWidget(millimetres_);
  row->addWidget(inches_);
  row->addStretch(1);
  grid->addLayout(row, grid->rowCount(), 0, 1, 3);
}

void PaperPanel::ComposePaper(QGridLayout* grid) {
  width_ = AddMeasureRow(grid, u"Paper &Width :"_s, "Text1");
  height_ = AddMeasureRow(grid, u"Paper &Height :"_s, "Text2");
  width_.unit->setObjectName(u"Text9"_s);
  for (auto [row, measure] : {std::pair(&width_, &typedWidth_), {&height_, &typedHeight_}}) {
    row->field->setValidator(DigitsOnly(row->field));
    connect(row->field, &QLineEdit::textChanged, this,
            [this, row, measure] { Text_Change(*row, *measure); });
    connect(row->field, &QLineEdit::returnPressed, this, &PaperPanel::SetPaperAsked);
  }
  leastWidth_ = Words(grid, "lblleastwidth");
  leastHeight_ = Words(grid, "lblleastheight");
  auto* set = new QPushButton(u"Set &Paper"_s);
  set->setObjectName(u"Command1"_s);
  set->setAutoDefault(false);
  connect(set, &QPushButton::clicked, this, &PaperPanel::SetPaperAsked);
  grid->addWidget(set, grid->rowCount(), 0, 1, 3);
  current_ = Words(grid, "lblpaper");
  current_->setWordWrap(true);
}

void PaperPanel::ShowPaper(const Paper& paper) {
  unit_ = Unit::Millimetres;
  millimetres_->setChecked(true);
  const QScopedValueRollback filling(filling_, true);
  width_.field->setText(paper.width.Text(unit_));
  height_.field->setText(paper.height.Text(unit_));
  Text9_Change();
  ShowCurrent(paper);
}

void PaperPanel::ShowCurrent(const Paper& paper) {
  typedWidth_ = paper.width;
  typedHeight_ = paper.height;
  current_->setText(PaperLabel(paper, unit_));
}

void PaperPanel::Option_Click(Unit unit) {
  if (unit == unit_) return;
  unit_ = unit;
  {
    const QScopedValueRollback filling(filling_, true);
    width_.field->setText(SwitchedText(width_.field->text(), typedWidth_, unit));
    height_.field->setText(SwitchedText(height_.field->text(), typedHeight_, unit));
    Text9_Change();
  }
  Q_EMIT UnitChosen(unit);
}

void PaperPanel::Text_Change(const MeasureRow& row, Measure& measure) {
  if (!filling_) measure.Type(row.field->text(), unit_);
}

void PaperPanel::Text9_Change() {
  for (const MeasureRow& row : {width_, height_})
    row.unit->setText(UnitWord(unit_));
  const auto [width, height] = LimitLabels(unit_);
  leastWidth_->setText(width);
  leastHeight_->setText(height);
}

bool PaperPanel::Shows(const Paper& paper) const {
  return width_.field->text() == paper.width.Text(unit_) &&
         height_.field->text() == paper.height.Text(unit_);
}

PaperPanel::Typed PaperPanel::AsTyped() const {
  return {width_.field->text(), height_.field->text(), {typedWidth_, typedHeight_}};
}

}  // namespace zqm
