// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/crop_step.h"

#include <QGridLayout>
#include <QLabel>
#include <cmath>

#include "editor/ui/number_edit.h"
#include "imaging/codec.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Whole pixels, 0 for without limit.
int Limit(double pixels) {
  return pixels > 0 ? static_cast<int>(std::clamp(std::round(pixels), 1.0, double{kMostPixels}))
                    : 0;
}

}  // namespace

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
      tr("Cro&p"), "Command6", [this] { Crop(); }, true);
  AddButton(tr("Clea&r"), "Command7", [this] { Image().Deselect(); });
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
  Image().SetSelectionMaxWidth(Limit(limits.maxWidth));
  Image().SetSelectionMaxHeight(Limit(limits.maxHeight));
  Image().SetSelectionAspectRatio(limits.aspect);
}

void CropStep::ShowSelection() {
  const QRect box = Image().Selected().Bounds();
  selected_->setText(box.isEmpty() ? QString() : u"%1 × %2"_s.arg(box.width()).arg(box.height()));
}

void CropStep::Crop() {
  if (!Image().HasSelection()) return;
  const Outcome cropped = Image().CropToSelection();
  if (cropped) Image().Deselect();
  Tell(cropped);
}

}  // namespace zqm
