// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/frmresize.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

#include "shell/error.h"
#include "shell/messages.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Those of all that are offered.
constexpr ResampleFilter kOffered[] = {ResampleFilter::FastLinear, ResampleFilter::Bilinear,
                                       ResampleFilter::Bicubic};

QString NameOf(ResampleFilter filter) {
  for (const ResampleFilterName& row : ResampleFilterNames())
    if (row.filter == filter) return row.name.toString();
  return {};
}

QLineEdit* NumberField(const QString& text, const char* name) {
  auto* field = new QLineEdit(text);
  field->setObjectName(QString::fromLatin1(name));
  return field;
}

void AddRow(QGridLayout* grid, const QString& caption, QWidget* field, QWidget* unit = nullptr,
            QWidget* behind = nullptr) {
  QLabel* label = look::Caption(caption);
  label->setBuddy(field);
  const int row = grid->rowCount();
  grid->addWidget(label, row, 0);
  grid->addWidget(field, row, 1);
  if (unit != nullptr) grid->addWidget(unit, row, 2);
  if (behind != nullptr) grid->addWidget(behind, row, 3);
}

}  // namespace

frmresize::frmresize(BatchPlace place, const PictureSettings& load, const ReadRequest& read,
                     QWidget* parent)
    : PictureDialog(
          std::move(place), u"Resize Images"_s, "Label6",
          {u"Apply resize to original files", u"Place resized files in the following folder:",
           u"Overwrite existing files:", u"Catalog Resized Files:", "Text3", u"Resizing"},
          read, parent),
      load_(load) {
  setObjectName(u"frmresize"_s);
  SetOwnPlaceOverwrites();
  auto* head = new QHBoxLayout;
  look::SetSpace(head, 0, look::kSpace8);
  head->addWidget(look::Heading(tr("Size")), 1);
  head->addWidget(look::Hint(PhotoCount()));
  Body()->addLayout(head);
  auto* size = new QGridLayout;
  look::SetSpace(size, 0, look::kSpace8);
  size->setColumnStretch(1, 1);
  ComposeSize(size);
  ComposeQuality(size);
  Body()->addLayout(size);
  Body()->addWidget(look::Heading(tr("Destination")));
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  grid->setColumnStretch(1, 1);
  Body()->addLayout(grid);
  AddPlace(grid);
  UpdatePlace();

  QPushButton* resize = AddButton(tr("&Resize"), "cmdresize");
  look::MakePrimary(resize);
  connect(resize, &QPushButton::clicked, this,
          [this] { Guarded("frmresize", "cmdresize_Click", [this] { cmdresize_Click(); }); });
  width_->setFocus();
  width_->selectAll();
}

void frmresize::ComposeSize(QGridLayout* grid) {
  const ResizeOptions standard;
  width_ = NumberField(standard.width, "Text1");
  height_ = NumberField(standard.height, "Text2");
  autoWidth_ = new QCheckBox(tr("Auto"));
  autoWidth_->setObjectName(u"Check2"_s);
  autoWidth_->setToolTip(tr("The width follows the height"));
  autoHeight_ = new QCheckBox(tr("Auto"));
  autoHeight_->setObjectName(u"Check3"_s);
  autoHeight_->setToolTip(tr("The height follows the width"));
  AddRow(grid, u"Width:"_s, width_, look::Hint(u"Pixels"_s), autoWidth_);
  AddRow(grid, u"Height:"_s, height_, look::Hint(u"Pixels"_s), autoHeight_);
  connect(autoWidth_, &QCheckBox::toggled, this, [this] { Auto_Click(autoWidth_, autoHeight_); });
  connect(autoHeight_, &QCheckBox::toggled, this, [this] { Auto_Click(autoHeight_, autoWidth_); });
}

void frmresize::ComposeQuality(QGridLayout* grid) {
  dpi_ = NumberField(ResizeOptions().dpi, "Text9");
  filter_ = new QComboBox;
  filter_->setObjectName(u"Combo3"_s);
  for (const ResampleFilter filter : kOffered)
    filter_->addItem(NameOf(filter));
  sharpen_ = new QSlider(Qt::Horizontal);
  sharpen_->setObjectName(u"Slider1"_s);
  sharpen_->setRange(0, 100);
  QLabel* amount = look::Hint(u"0"_s);
  amount->setObjectName(u"txtsharpen"_s);
  connect(sharpen_, &QSlider::valueChanged, amount, qOverload<int>(&QLabel::setNum));
  AddRow(grid, u"DPI:"_s, dpi_);
  AddRow(grid, u"Filter:"_s, filter_);
  AddRow(grid, u"Sharpen:"_s, sharpen_, amount);
}

void frmresize::Auto_Click(QCheckBox* clicked, QCheckBox* other) {
  if (clicked->isChecked()) other->setChecked(false);
  width_->setEnabled(!autoWidth_->isChecked());
  height_->setEnabled(!autoHeight_->isChecked());
}

void frmresize::cmdresize_Click() {
  ResizeOptions options;
  options.width = width_->text();
  options.height = height_->text();
  options.autoWidth = autoWidth_->isChecked();
  options.autoHeight = autoHeight_->isChecked();
  options.dpi = dpi_->text();
  options.filter = kOffered[static_cast<std::size_t>(filter_->currentIndex())];
  options.sharpen = sharpen_->value();
  options.inPlace = InOwnPlace();
  options.folder = Folder();
  options.output = Output();
  options.load = load_;
  if (const Outcome valid = CheckResize(options); !valid) {
    MsgBox(valid.Reason(), MessageKind::Information);
    return;
  }
  RunPictures(resize_text::kResize, QString::fromUtf16(resize_text::kResize.wait),
              [&](const PictureRun& run) { return ResizePhotos(run, Photos(), options); });
}

}  // namespace zqm
