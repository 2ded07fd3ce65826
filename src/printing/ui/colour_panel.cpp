// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/ui/colour_panel.h"

#include <QColorDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "imaging/ui/picture_view.h"
#include "printing/box_layout.h"
#include "printing/design_pictures.h"
#include "shell/error.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {
constexpr int kPaletteHeight = 74;
}

ColourPanel::ColourPanel(const QString& folder, QWidget* parent)
    : QWidget(parent),
      palette_(PalettePicture(folder)),
      view_(new PictureView),
      swatch_(new QPushButton),
      text_(look::Hint(QString())) {
  ComposePalette();
  swatch_->setObjectName(u"lblswatch"_s);
  swatch_->setAutoDefault(false);
  swatch_->setFixedWidth(look::kControlHeight);
  look::MakeCompact(swatch_);
  connect(swatch_, &QPushButton::clicked, this,
          [this] { Guarded("frmtemplate", "Swatch_Click", [this] { Swatch_Click(); }); });
  QLabel* caption = look::Caption(u"Box Colo&r :"_s);
  caption->setBuddy(swatch_);
  text_->setObjectName(u"Text17"_s);
  auto* row = new QHBoxLayout;
  look::SetSpace(row, 0, look::kSpace8);
  row->addWidget(caption);
  row->addWidget(swatch_);
  row->addWidget(text_);
  row->addStretch(1);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, 0, look::kSpace8);
  column->addLayout(row);
  column->addWidget(view_);
  TakeColour(QColor(kBoxColour));
}

void ColourPanel::ComposePalette() {
  view_->setObjectName(u"ImageX2"_s);
  view_->setAccessibleName(tr("Palette"));
  view_->setToolTip(tr("The color of the boxes that you add next"));
  view_->setFocusPolicy(Qt::NoFocus);  // the swatch is the keyboard's way
  view_->setFixedHeight(kPaletteHeight);
  view_->SetBackground(QColor(look::kPanel));
  view_->SetMouseInteract(u"MOUSEWHEELZOOM"_s, false);
  view_->ShowImage(palette_, palette_.size());
  const auto pick = [this](const QPointF& pixel) {
    Guarded("frmtemplate", "ImageX2_OnMouseMove", [&] {
      if (picking_) TakeColour(ColourAt(palette_, pixel));
    });
  };
  connect(view_, &PictureView::OnMouseDown, this,
          [this, pick](const QPointF& pixel, Qt::MouseButton button) {
            picking_ = button == Qt::LeftButton;
            pick(pixel);
          });
  connect(view_, &PictureView::OnMouseMove, this, pick);
  connect(view_, &PictureView::OnMouseUp, this, [this] { picking_ = false; });
}

void ColourPanel::TakeColour(const QColor& colour) {
  if (!colour.isValid()) return;
  colour_ = colour.toRgb();
  QPixmap filled(look::kIconSize, look::kIconSize);
  filled.fill(colour_);
  swatch_->setIcon(filled);
  const QString number = VBHexColor(colour_);
  swatch_->setToolTip(number);
  swatch_->setAccessibleName(tr("Pick a color") + u' ' + number);
  text_->setText(DecimalColour(colour_));
}

void ColourPanel::Swatch_Click() {
  TakeColour(QColorDialog::getColor(colour_, this, tr("Color of the Boxes")));
}

}  // namespace zqm
