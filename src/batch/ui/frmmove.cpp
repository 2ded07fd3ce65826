// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/frmmove.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "shell/ui/folder_tree.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kSize{560, 600};

}  // namespace

const CarryDialog::Kind CarryDialog::kMove = {
    "frmmove",   u"Move To Folder...", u"Moving selected files. Please wait...",
    u"Moving: ", carry_text::kMove,    MovePhotos};
const CarryDialog::Kind CarryDialog::kCopy = {
    "frmcopy", u"Copy To Folder...", u"Copying selected files. Please wait...",
    u"",       carry_text::kCopy,    CopyPhotos};

CarryDialog::CarryDialog(const Kind& kind, BatchPlace place, const QString& startFolder,
                         QWidget* parent)
    : BatchDialog(std::move(place), QString::fromUtf16(kind.caption), "Label3", parent),
      kind_(kind),
      tree_(new FolderTree(FolderTree::Ticks::No)),
      folder_(new QLineEdit) {
  setObjectName(QString::fromLatin1(kind.name));
  tree_->setObjectName(u"FolderTreeview1"_s);
  tree_->setAccessibleName(tr("Destination folder"));
  folder_->setObjectName(u"Text1"_s);
  folder_->setAccessibleName(tr("Chosen folder"));
  folder_->setReadOnly(true);
  folder_->setPlaceholderText(tr("No folder chosen yet"));
  auto* head = new QHBoxLayout;
  look::SetSpace(head, 0, look::kSpace8);
  head->addWidget(look::Heading(tr("Destination Folder")), 1);
  head->addWidget(look::Hint(PhotoCount()));
  Body()->addLayout(head);
  Body()->addWidget(tree_, 1);
  Body()->addWidget(folder_);
  Body()->addLayout(ComposeNewFolder());
  Body()->addLayout(ComposeExisting());

  QPushButton* ok = AddButton(tr("OK"), "cmdok");
  look::MakePrimary(ok);
  connect(ok, &QPushButton::clicked, this,
          [this] { Guarded(kind_.name, "cmdok_Click", [this] { cmdok_Click(); }); });
  resize(kSize.boundedTo(screen()->availableSize() * 9 / 10));
  // The tree opens where the photos are; choosing is the user's.
  if (!startFolder.isEmpty()) tree_->SetCurrentFolder(startFolder);
  connect(tree_, &FolderTree::FolderClick, this, &CarryDialog::Choose);
  tree_->setFocus();
}

QLayout* CarryDialog::ComposeNewFolder() {
  newFolderEdit_ = new QLineEdit;
  newFolderEdit_->setObjectName(u"Text7"_s);
  newFolderEdit_->setAccessibleName(tr("Name of the new folder"));
  newFolderEdit_->setPlaceholderText(tr("Name of a new folder in the chosen one"));
  auto* create = new QPushButton(tr("Create &Folder"));
  create->setObjectName(u"Command1"_s);
  create->setAutoDefault(false);
  const auto make = [this] { Guarded(kind_.name, "Command1_Click", [this] { Command1_Click(); }); };
  connect(create, &QPushButton::clicked, this, make);
  auto* row = new QHBoxLayout;
  look::SetSpace(row, 0, look::kSpace8);
  row->addWidget(newFolderEdit_, 1);
  row->addWidget(create);
  return row;
}

QLayout* CarryDialog::ComposeExisting() {
  existing_ = new QComboBox;
  existing_->setObjectName(u"Combo1"_s);
  existing_->addItems({u"Skip"_s, u"Overwrite"_s});
  QLabel* caption = look::Caption(u"Overwrite Existing Files"_s);
  caption->setBuddy(existing_);
  auto* row = new QHBoxLayout;
  look::SetSpace(row, 0, look::kSpace8);
  row->addWidget(caption);
  row->addWidget(existing_, 1);
  return row;
}

void CarryDialog::Choose(const QString& folder) {
  chosen_ = folder;
  folder_->setText(PathIn(folder, QString()));
  folder_->setToolTip(folder_->text());
}

void CarryDialog::Command1_Click() {
  const QString name = newFolderEdit_->text();
  Outcome made = CheckFolderName(name);
  if (made) made = CheckDestination(chosen_);
  if (made) made = CreateFolderIn(chosen_, name);
  if (!made) {
    MsgBox(made.Reason(), MessageKind::Information);
    newFolderEdit_->setFocus();
    return;
  }
  tree_->SetCurrentFolder(PathIn(chosen_, newFolderEdit_->text()));
  newFolderEdit_->clear();
  tree_->setFocus();
}

void CarryDialog::cmdok_Click() {
  const CarryOptions options{
      chosen_, existing_->currentIndex() == 1 ? ExistingFiles::Overwrite : ExistingFiles::Skip};
  if (const Outcome valid = CheckDestination(options.folder); !valid) {
    MsgBox(valid.Reason(), MessageKind::Information);
    return;
  }
  const QString before = QString::fromUtf16(kind_.eachFile);
  Run(
      kind_.texts, QString::fromUtf16(kind_.label),
      [&](const BatchObserver& observer) {
        return kind_.run(TheCatalogue(), Photos(), options, View(), observer);
      },
      [&before](const BatchProgress& at) {
        return before.isEmpty() ? QString() : before + GetFileName(at.path);
      });
}

frmmove::frmmove(BatchPlace place, const QString& startFolder, QWidget* parent)
    : CarryDialog(kMove, std::move(place), startFolder, parent) {}

frmcopy::frmcopy(BatchPlace place, const QString& startFolder, QWidget* parent)
    : CarryDialog(kCopy, std::move(place), startFolder, parent) {}

}  // namespace zqm
