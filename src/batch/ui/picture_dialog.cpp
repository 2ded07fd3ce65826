// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/picture_dialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include "batch/ui/destination_row.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kOwn = 0, kFolder = 1;

}  // namespace

PictureDialog::PictureDialog(BatchPlace place, const QString& caption, const char* labelName,
                             const Captions& captions, ReadRequest read, QWidget* parent)
    : BatchDialog(std::move(place), caption, labelName, parent),
      captions_(captions),
      read_(read),
      place_(new QButtonGroup(this)),
      folder_(new DestinationRow(captions.folderField)),
      existingCaption_(look::Caption(QString::fromUtf16(captions.existing))),
      existing_(new QComboBox),
      catalogue_(new QCheckBox(QString::fromUtf16(captions.catalogue))),
      previewPane_(new QWidget),
      preview_(new QLabel) {
  existingCaption_->setObjectName(u"Label5"_s);
  existingCaption_->setBuddy(existing_);
  existing_->setObjectName(u"Combo1"_s);
  existing_->addItems({u"Skip"_s, u"Overwrite"_s});
  catalogue_->setObjectName(u"Check1"_s);
  preview_->setObjectName(u"ImageX2"_s);
  preview_->setAlignment(Qt::AlignCenter);
  preview_->setMinimumHeight(kPreviewBox.height());
  preview_->setAccessibleName(tr("The picture in work"));
  auto* column = new QVBoxLayout(previewPane_);
  look::SetSpace(column, 0, look::kSpace12);
  column->addWidget(look::Heading(QString::fromUtf16(captions.progress)));
  column->addWidget(preview_, 1);
  previewPane_->hide();
  AddBelow(previewPane_);
}

void PictureDialog::AddPlace(QGridLayout* grid) {
  const auto addOption = [&](int id, const char16_t* caption, const char* name) {
    auto* option = new QRadioButton(QString::fromUtf16(caption));
    option->setObjectName(QString::fromLatin1(name));
    place_->addButton(option, id);
    grid->addWidget(option, grid->rowCount(), 0, 1, 2);
  };
  addOption(kOwn, captions_.own, "Option1");
  addOption(kFolder, captions_.folder, "Option2");
  grid->addWidget(folder_, grid->rowCount(), 0, 1, 2);
  const int row = grid->rowCount();
  grid->addWidget(existingCaption_, row, 0);
  grid->addWidget(existing_, row, 1);
  grid->addWidget(catalogue_, row + 1, 1);
  // What destroys nothing comes first.
  place_->button(ownPlaceOverwrites_ ? kFolder : kOwn)->setChecked(true);
  connect(place_, &QButtonGroup::idToggled, this, [this](int, bool on) {
    if (on) UpdatePlace();
  });
}

void PictureDialog::UpdatePlace() {
  folder_->setEnabled(!InOwnPlace());
  const bool choice = !InOwnPlace() || !ownPlaceOverwrites_;
  for (QWidget* widget : {static_cast<QWidget*>(existingCaption_), static_cast<QWidget*>(existing_),
                          static_cast<QWidget*>(catalogue_)})
    widget->setEnabled(choice);
}

bool PictureDialog::InOwnPlace() const {
  return place_->checkedId() == kOwn;
}

QString PictureDialog::Folder() const {
  return folder_->Folder();
}

OutputOptions PictureDialog::Output() const {
  return {existing_->currentIndex() == 1 ? ExistingFiles::Overwrite : ExistingFiles::Skip,
          catalogue_->isChecked(), read_};
}

void PictureDialog::RunPictures(const BatchTexts& texts, const QString& label,
                                const PictureWork& work, const LabelOf& labelOf) {
  Run(
      texts, label,
      [&](const BatchObserver& observer) -> Result<BatchResult> {
        return BatchResult(
            work({TheCatalogue(), View(), observer, [this](const QString&, const QImage& image) {
                    preview_->setPixmap(QPixmap::fromImage(image));
                  }}));
      },
      labelOf);
}

void PictureDialog::RunShown(bool running) {
  QWidget* options = Body()->parentWidget();
  if (running) previewPane_->setMinimumSize(options->size());
  options->setVisible(!running);
  previewPane_->setVisible(running);
}

}  // namespace zqm
