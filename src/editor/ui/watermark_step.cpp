// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/watermark_step.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QPushButton>
#include <QSlider>

#include "editor/ui/number_edit.h"
#include "editor/watermark_text.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kOpaque = 255;

QString ColourText(const QColor& colour) {
  return u"%1,%2,%3"_s.arg(colour.red()).arg(colour.green()).arg(colour.blue());
}

/// "r,g,b"; invalid for anything else.
QColor ColourOf(const QString& text) {
  const QStringList parts = text.split(u',');
  if (parts.size() != 3) return {};
  int samples[3];
  for (qsizetype i = 0; i < 3; ++i) {
    bool ok = false;
    samples[i] = parts.at(i).trimmed().toInt(&ok);
    if (!ok || samples[i] < 0 || samples[i] > 255) return {};
  }
  return QColor(samples[0], samples[1], samples[2]);
}

}  // namespace

WatermarkStep::WatermarkStep(ImageX& picture)
    : EditStep("frawater", tr("Watermark"), tr("The text can be moved on the picture."), picture) {
  ComposeText();
  ComposeLook();
  AddButton(
      tr("&Apply"), "Command14", [this] { Apply(); }, true);
  AddButton(tr("Clea&r"), "Command13", [this] { Image().RemoveAllObjects(); });
  const auto preview = [this] {
    Guarded("frmedit", "PreviewWatermark", [this] { PreviewWatermark(); });
  };
  for (QLineEdit* field : {text_, size_, angle_})
    connect(field, &QLineEdit::textChanged, this, preview);
  connect(colour_, &QLineEdit::textEdited, this, [this, preview](const QString& typed) {
    if (const QColor colour = ColourOf(typed); colour.isValid()) ShowColour(colour);
    preview();
  });
  connect(font_, &QComboBox::currentTextChanged, this, preview);
  for (QCheckBox* box : {bold_, italic_, underline_, strikeout_})
    connect(box, &QCheckBox::toggled, this, preview);
  connect(transparency_, &QSlider::valueChanged, this, preview);
  connect(&picture, &ImageX::OnObjectMoved, this, &WatermarkStep::FollowMove);
}

void WatermarkStep::ComposeText() {
  QGridLayout* grid = AddGrid();
  text_ = new QLineEdit;
  text_->setObjectName(u"Text6"_s);
  look::MakeCompact(text_);
  constexpr int kMostText = 250;
  text_->setMaxLength(kMostText);
  size_ = new NumberEdit(TypedNumber::Digits, "Text7");
  angle_ = new NumberEdit(TypedNumber::Decimal, "Text8");
  constexpr int kMostDigits = 5;
  size_->setMaxLength(kMostDigits);
  angle_->setMaxLength(kMostDigits);
  font_ = new QComboBox;
  font_->setObjectName(u"Combo1"_s);
  font_->addItems(QFontDatabase::families());
  font_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  AddField(grid, tr("Text :"), text_);
  AddField(grid, tr("Size :"), size_);
  AddField(grid, tr("Angle :"), angle_);
  AddField(grid, tr("Font :"), font_);
}

void WatermarkStep::ComposeLook() {
  QGridLayout* grid = AddGrid();
  colour_ = new QLineEdit;
  colour_->setObjectName(u"Text10"_s);
  look::MakeCompact(colour_);
  swatch_ = new QPushButton;
  swatch_->setObjectName(u"Label30"_s);
  swatch_->setAccessibleName(tr("Pick a color"));
  swatch_->setToolTip(tr("Pick a color"));
  look::MakeCompact(swatch_);
  swatch_->setFixedWidth(look::kControlHeight);
  AddField(grid, tr("Color :"), colour_, swatch_);
  connect(swatch_, &QPushButton::clicked, this,
          [this] { Guarded("frmedit", "Label30_Click", [this] { PickColour(); }); });
  transparency_ = new QSlider(Qt::Horizontal);
  transparency_->setObjectName(u"Slider1"_s);
  transparency_->setRange(0, kOpaque);
  AddField(grid, tr("Opacity :"), transparency_);
  auto* boxes = new QGridLayout;
  look::SetSpace(boxes, 0, look::kSpace8);
  bold_ = AddBox(tr("&Bold"), "Check1");
  italic_ = AddBox(tr("&Italic"), "Check2");
  underline_ = AddBox(tr("&Underline"), "Check3");
  strikeout_ = AddBox(tr("Stri&keout"), "Check4");
  boxes->addWidget(bold_, 0, 0);
  boxes->addWidget(italic_, 0, 1);
  boxes->addWidget(underline_, 1, 0);
  boxes->addWidget(strikeout_, 1, 1);
  Body()->addLayout(boxes);
}

QCheckBox* WatermarkStep::AddBox(const QString& caption, const char* name) {
  auto* box = new QCheckBox(caption);
  box->setObjectName(QString::fromLatin1(name));
  return box;
}

void WatermarkStep::Enter() {
  PreviewWatermark();
}

void WatermarkStep::SetPanel(const WatermarkPanel& panel) {
  filling_ = true;
  text_->setText(panel.text);
  size_->setText(panel.size);
  angle_->setText(panel.angle);
  const int font = font_->findText(panel.fontName);
  font_->setCurrentIndex(std::max(0, font));
  ShowColour(panel.colour);
  bold_->setChecked(panel.bold);
  italic_->setChecked(panel.italic);
  underline_->setChecked(panel.underline);
  strikeout_->setChecked(panel.strikeout);
  transparency_->setValue(panel.transparency);
  filling_ = false;
}

WatermarkPanel WatermarkStep::Panel() const {
  WatermarkPanel panel;
  panel.text = text_->text();
  panel.size = size_->text();
  panel.angle = angle_->text();
  panel.fontName = font_->currentText();
  panel.colour = inkColour_;
  panel.bold = bold_->isChecked();
  panel.underline = underline_->isChecked();
  panel.italic = italic_->isChecked();
  panel.strikeout = strikeout_->isChecked();
  panel.transparency = transparency_->value();
  return panel;
}

void WatermarkStep::ShowColour(const QColor& colour) {
  inkColour_ = colour;
  if (ColourOf(colour_->text()) != colour) colour_->setText(ColourText(colour));
  QPixmap filled(look::kIconSize, look::kIconSize);
  filled.fill(colour);
  swatch_->setIcon(filled);
}

void WatermarkStep::PickColour() {
  const QColor picked = QColorDialog::getColor(Panel().colour, this, tr("Color of the Text"));
  if (!picked.isValid()) return;
  ShowColour(picked);
  PreviewWatermark();
}

void WatermarkStep::PreviewWatermark() {
  if (filling_ || !isVisible()) return;
  Q_EMIT ToolWanted(QString::fromUtf16(edit_tool::kWatermark));
  Image().Deselect();
  VectorObjects objects = Image().Objects();
  int id = zqm::PreviewWatermark(objects, Panel(), corner_);
  // Where it was moved to may be outside of what is left of the picture, or of the next one.
  if (!objects.BoundsOf(id).intersects(QRectF(0, 0, Image().ImageWidth(), Image().ImageHeight()))) {
    corner_ = QPointF();
    id = zqm::PreviewWatermark(objects, Panel(), corner_);
  }
  Image().SetObjects(objects);
  Image().SetMouseInteract(u"OBJECTSELECT"_s, true);
  Image().SelectObject(id, true);
}

void WatermarkStep::FollowMove(int id) {
  if (const VectorObject* object = Image().Objects().Find(id);
      object != nullptr && object->kind == ObjectKind::Text)
    corner_ = {object->left, object->top};
}

void WatermarkStep::Apply() {
  if (Image().Objects().IsEmpty() || text_->text().trimmed().isEmpty()) return;
  Image().SaveUndo();
  if (const Outcome merged = Image().MergeObjects(); !merged) {
    Image().DiscardUndo();
    return Tell(merged);
  }
  Image().RemoveAllObjects();
  Q_EMIT ToolWanted(QString());
}

}  // namespace zqm
