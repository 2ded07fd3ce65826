// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/crop_step.h"

#include <QGridLayout>
#include <QLabel>

#include "editor/ui/number_edit.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {

CropStep::CropStep(ImageX& picture)
    : EditStep("fracrop", tr("Crop"),
               tr("Draw a rectangle. With a width and a height it keeps their aspect and grows no "
                  "larger."),
               picture) {
  QGridLayout* grid = AddGrid();
  width_ = new NumberEdit(TypedNumber::Decimal, "txtwidth");
  height_ = new NumberEdit(TypedNumber::Decimal, "txtheight");
  AddField(grid, tr("Width:"), width_, look::Hint(tr("Pixels")));
  AddField(grid, tr("Height:"), height_, look::Hint(tr("Pixels")));
  selected_ = look::Hint({});
  selected_->setObjectName(u"lblselection"_s);
  Body()->addWidget(selected_);
  AddButton(
      tr("&Crop"), "Command6", [this] { Crop(); }, true);
  AddButton(tr("Cl&ear"), "Command7", [this] { Image().Deselect(); });
  connect(&picture, &ImageX::OnMouseDown, this, [this](const QPointF&, Qt::MouseButton button) {
    if (button == Qt::LeftButton && Image().GetMouseInteract(u"SELECTRECT"_s))
      Guarded("frmedit", "ImageX1_OnMouseDown", [this] { TakeLimits(); });
  });
  connect(&picture, &ImageX::OnSelectionChange, this, &CropStep::ShowSelection);
}

void CropStep::Enter() {
  Image().RemoveAllObjects();
  Image().Deselect();
  Q_EMIT ToolWanted(QString::fromUtf16(edit_tool::kCrop));
  Image().SetMouseInteract(u"SELECTRECT"_s, true);
}

void CropStep::TakeLimits() {
  const CropLimits limits = ReadCropLimits(width_->text(), height_->text());
  Image().SetSelectionMaxWidth(static_cast<int>(limits.maxWidth));
  Image().SetSelectionMaxHeight(static_cast<int>(limits.maxHeight));
  Image().SetSelectionAspectRatio(limits.aspect);
}

void CropStep::ShowSelection() {
  const QRect box = Image().Selected().Bounds();
  selected_->setText(box.isEmpty() ? QString() : u"%1 × %2"_s.arg(box.width()).arg(box.height()));
}

void CropStep::Crop() {
  Tell(Image().CropToSelection());
  Image().Deselect();
}

}  // namespace zqm
