// SPDX-License-Identifier: GPL-3.0-or-later
#include "watermark/ui/text_layer_panel.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "shell/error.h"
#include "shell/ui/look.h"
#include "watermark/ui/symbol_picker.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kTextLines = 3;
constexpr int kLongestNumber = 8;

/// Invalid for what is no "r,g,b".
QColor ColourOf(const QString& text) {
  VectorObject object;
  return SetProperty(object, u"PENCOLOR", text) ? object.penColour : QColor();
}

QLineEdit* NumberField(const char* name) {
  auto* field = new QLineEdit;
  field->setObjectName(QString::fromLatin1(name));
  field->setMaxLength(kLongestNumber);
  look::MakeCompact(field);
  return field;
}

void AddRow(QGridLayout* grid, const QString& caption, QWidget* field, QWidget* behind = nullptr) {
  QLabel* label = look::Caption(caption);
  label->setBuddy(field);
  const int row = grid->rowCount();
  grid->addWidget(label, row, 0);
  grid->addWidget(field, row, 1, 1, behind == nullptr ? 2 : 1);
  if (behind != nullptr) grid->addWidget(behind, row, 2);
}

}  // namespace

TextLayerPanel::TextLayerPanel(QWidget* parent) : QWidget(parent) {
  setObjectName(u"Frame1"_s);
  auto* grid = new QGridLayout(this);
  look::SetSpace(grid, 0, look::kSpace8);
  grid->setColumnStretch(1, 1);
  ComposeText(grid);
  ComposeLook(grid);
  SetPanel(TextPanel());
}

void TextLayerPanel::ComposeText(QGridLayout* grid) {
  text_ = new QPlainTextEdit;
  text_->setObjectName(u"Text1"_s);
  text_->setTabChangesFocus(true);
  text_->setAccessibleName(tr("Text"));
  text_->setFixedHeight(kTextLines * text_->fontMetrics().lineSpacing() + look::kSpace16);
  connect(text_, &QPlainTextEdit::textChanged, this, [this] { Tell(text_part::kText); });
  symbols_ = new QPushButton(tr("S&ym"));
  symbols_->setObjectName(u"Command2"_s);
  symbols_->setToolTip(tr("Put a symbol into the text"));
  symbols_->setAutoDefault(false);
  look::MakeCompact(symbols_);
  symbols_->setFixedWidth(look::kControlHeight * 3 / 2);
  picker_ = new SymbolPicker(this);
  connect(symbols_, &QPushButton::clicked, this, [this] { picker_->ShowBelow(*symbols_); });
  connect(picker_, &SymbolPicker::Picked, this, [this](const QString& symbol) {
    text_->insertPlainText(symbol);
    text_->setFocus();
  });
  AddRow(grid, u"Te&xt :"_s, text_, symbols_);
  grid->setAlignment(symbols_, Qt::AlignTop);
  size_ = NumberField("Text2");
  angle_ = NumberField("Text3");
  connect(size_, &QLineEdit::textChanged, this, [this] { Tell(text_part::kSize); });
  connect(angle_, &QLineEdit::textChanged, this, [this] { Tell(text_part::kAngle); });
  AddRow(grid, u"Si&ze :"_s, size_, look::Hint(tr("pixels")));
  AddRow(grid, u"An&gle :"_s, angle_, look::Hint(tr("degrees")));
}

void TextLayerPanel::ComposeLook(QGridLayout* grid) {
  font_ = new QComboBox;
  font_->setObjectName(u"Combo1"_s);
  font_->addItems(QFontDatabase::families());
  font_->setPlaceholderText(tr("Program's own"));
  font_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  connect(font_, &QComboBox::currentTextChanged, this, [this] { Tell(text_part::kFont); });
  AddRow(grid, u"&Font Name :"_s, font_);
  colour_ = new QLineEdit;
  colour_->setObjectName(u"Text4"_s);
  look::MakeCompact(colour_);
  connect(colour_, &QLineEdit::textChanged, this, [this] {
    ShowColour();
    Tell(text_part::kColor);
  });
  for (QLineEdit* field : {size_, angle_, colour_})
    connect(field, &QLineEdit::editingFinished, this, &TextLayerPanel::FieldLeft);
  swatch_ = new QPushButton;
  swatch_->setObjectName(u"Label11"_s);
  swatch_->setAccessibleName(tr("Pick a color"));
  swatch_->setToolTip(tr("Pick a color"));
  swatch_->setAutoDefault(false);
  look::MakeCompact(swatch_);
  swatch_->setFixedWidth(look::kControlHeight);
  connect(swatch_, &QPushButton::clicked, this,
          [this] { Guarded("frmwatermarkcreator", "Label11_Click", [this] { Label11_Click(); }); });
  AddRow(grid, u"C&olor :"_s, colour_, swatch_);
  bold_ = AddBox(u"Font &Bold"_s, "Check1", text_part::kBold);
  italic_ = AddBox(u"Font &Italic"_s, "Check2", text_part::kItalic);
  underline_ = AddBox(u"Font &Underline"_s, "Check3", text_part::kUnderline);
  strikeout_ = AddBox(u"Font Stri&keout"_s, "Check4", text_part::kStrikeout);
  auto* boxes = new QGridLayout;
  look::SetSpace(boxes, 0, look::kSpace8);
  boxes->addWidget(bold_, 0, 0);
  boxes->addWidget(italic_, 0, 1);
  boxes->addWidget(underline_, 1, 0);
  boxes->addWidget(strikeout_, 1, 1);
  grid->addLayout(boxes, grid->rowCount(), 0, 1, 3);
}

QCheckBox* TextLayerPanel::AddBox(const QString& caption, const char* name, const char16_t* what) {
  auto* box = new QCheckBox(caption);
  box->setObjectName(QString::fromLatin1(name));
  connect(box, &QCheckBox::toggled, this, [this, what] { Tell(what); });
  return box;
}

void TextLayerPanel::Tell(const char16_t* what) {
  if (!filling_) Q_EMIT Altered(QString::fromUtf16(what));
}

void TextLayerPanel::SetPanel(const TextPanel& panel) {
  filling_ = true;
  if (text_->toPlainText() != panel.text) text_->setPlainText(panel.text);
  size_->setText(panel.size);
  angle_->setText(panel.angle);
  ShowFont(panel.fontName);
  colour_->setText(panel.colour);
  bold_->setChecked(panel.bold);
  italic_->setChecked(panel.italic);
  underline_->setChecked(panel.underline);
  strikeout_->setChecked(panel.strikeout);
  ShowColour();
  filling_ = false;
}

/// A font that isn't here joins the list: choosing another one must be the user's doing.
void TextLayerPanel::ShowFont(const QString& name) {
  if (!name.isEmpty() && font_->findText(name, Qt::MatchExactly) < 0) font_->addItem(name);
  font_->setCurrentIndex(name.isEmpty() ? -1 : font_->findText(name, Qt::MatchExactly));
}

TextPanel TextLayerPanel::Panel() const {
  TextPanel panel;
  panel.text = text_->toPlainText();
  panel.size = size_->text();
  panel.angle = angle_->text();
  panel.fontName = font_->currentText();
  panel.colour = colour_->text();
  panel.bold = bold_->isChecked();
  panel.italic = italic_->isChecked();
  panel.underline = underline_->isChecked();
  panel.strikeout = strikeout_->isChecked();
  return panel;
}

TextPanel TextLayerPanel::NewText() const {
  TextPanel panel;
  panel.fontName = font_->itemText(0);
  return panel;
}

void TextLayerPanel::LockText() {
  setEnabled(false);
  text_->moveCursor(QTextCursor::End);
}

void TextLayerPanel::UnlockText() {
  setEnabled(true);
}

void TextLayerPanel::BeginTyping() {
  text_->setFocus();
  text_->selectAll();
}

void TextLayerPanel::ShowColour() {
  const QColor colour = ColourOf(colour_->text());
  QPixmap filled(look::kIconSize, look::kIconSize);
  filled.fill(colour.isValid() ? colour : QColor(Qt::transparent));
  swatch_->setIcon(filled);
}

void TextLayerPanel::Label11_Click() {
  const QColor picked =
      QColorDialog::getColor(ColourOf(colour_->text()), this, tr("Color of the Text"));
  if (picked.isValid())
    colour_->setText(u"%1,%2,%3"_s.arg(picked.red()).arg(picked.green()).arg(picked.blue()));
}

}  // namespace zqm
