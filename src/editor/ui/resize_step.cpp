// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/resize_step.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>

#include "editor/ui/number_edit.h"
#include "shell/messages.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {

ResizeStep::ResizeStep(ImageX& picture) : EditStep("fraresize", tr("Resize"), {}, picture) {
  QGridLayout* grid = AddGrid();
  width_ = new NumberEdit(TypedNumber::Digits, "Text13");
  height_ = new NumberEdit(TypedNumber::Digits, "Text14");
  dpi_ = new NumberEdit(TypedNumber::Digits, "Text15", ResizePanel().dpi);
  filter_ = new QComboBox;
  filter_->setObjectName(u"Combo3"_s);
  for (const char16_t* name : kEditorFilters)
    filter_->addItem(QString::fromUtf16(name));
  AddField(grid, tr("Width :"), width_, look::Hint(tr("Pixels")));
  AddField(grid, tr("Height :"), height_, look::Hint(tr("Pixels")));
  AddField(grid, tr("DPI :"), dpi_);
  AddField(grid, tr("Filter :"), filter_);
  keepAspect_ = new QCheckBox(tr("&Keep Aspect Ratio"));
  keepAspect_->setObjectName(u"Check5"_s);
  Body()->addWidget(keepAspect_);
  AddButton(
      tr("Resi&ze"), "Command15", [this] { Resize(); }, true);
  // Only what the user types has a twin: what is written by the other box doesn't come back.
  connect(width_, &QLineEdit::textEdited, this, &ResizeStep::WidthTyped);
  connect(height_, &QLineEdit::textEdited, this, &ResizeStep::HeightTyped);
  connect(&picture, &ImageX::OnImageChange, this, [this] {
    if (QSize(Image().ImageWidth(), Image().ImageHeight()) != shown_) ShowSize();
  });
  connect(keepAspect_, &QCheckBox::toggled, this, &ResizeStep::WidthTyped);
}

void ResizeStep::Enter() {
  ShowSize();
  width_->setFocus();
  width_->selectAll();
}

void ResizeStep::ShowSize() {
  shown_ = QSize(Image().ImageWidth(), Image().ImageHeight());
  width_->setText(QString::number(shown_.width()));
  height_->setText(QString::number(shown_.height()));
}

void ResizeStep::WidthTyped() {
  if (keepAspect_->isChecked())
    height_->setText(TwinSide(width_->text(), Image().ImageWidth(), Image().ImageHeight()));
}

void ResizeStep::HeightTyped() {
  if (keepAspect_->isChecked())
    width_->setText(TwinSide(height_->text(), Image().ImageHeight(), Image().ImageWidth()));
}

void ResizeStep::Resize() {
  const auto resize = ReadResize(width_->text(), height_->text(), dpi_->text());
  if (!resize) {
    MsgBox(resize.Reason(), MessageKind::Warning);
    return;
  }
  Tell(Image().Resample(resize->size.width(), resize->size.height(),
                        EditorFilter(filter_->currentIndex()), resize->dpi.toInt()));
}

void ResizeStep::SetPanel(const ResizePanel& panel) {
  dpi_->setText(panel.dpi);
  filter_->setCurrentIndex(panel.filter);
  keepAspect_->setChecked(panel.keepAspect);
}

ResizePanel ResizeStep::Panel() const {
  return {dpi_->text(), filter_->currentIndex(), keepAspect_->isChecked()};
}

}  // namespace zqm
