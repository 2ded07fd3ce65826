// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/ui/frmconnect.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "cataloguing/reconnect.h"
#include "cataloguing/ui/catalogue_tree.h"
#include "shell/error.h"
#include "shell/messages.h"
#include "shell/ui/folder_tree.h"
#include "shell/ui/frmerror.h"
#include "shell/ui/look.h"
#include "shell/ui/run_progress.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kSize{880, 600};

void Tell(const char16_t* text) {
  MsgBox(QString::fromUtf16(text), MessageKind::Information);
}

QLineEdit* PathField(const char16_t* name, const QString& accessibleName, const QString& empty) {
  auto* field = new QLineEdit;
  field->setObjectName(QString::fromUtf16(name));
  field->setAccessibleName(accessibleName);
  field->setPlaceholderText(empty);
  field->setReadOnly(true);
  return field;
}

void ShowPath(QLineEdit* field, const QString& path) {
  field->setText(path);
  field->setToolTip(path);
}

/// A tree under its heading, the chosen folder below.
QVBoxLayout* Pane(const QString& heading, QTreeView* tree, QLineEdit* chosen) {
  auto* column = new QVBoxLayout;
  look::SetSpace(column, 0, look::kSpace8);
  column->addWidget(look::Heading(heading));
  column->addWidget(tree, 1);
  column->addWidget(chosen);
  return column;
}

}  // namespace

frmconnect::frmconnect(Catalogue& catalogue, const QStringList& folders, QWidget* parent)
    : QDialog(parent),
      catalogue_(catalogue),
      foundTree_(new CatalogueTree),
      diskTree_(new FolderTree(FolderTree::Ticks::No)),
      oldFolder_(PathField(u"Text6", tr("Folder in the database"),
                           tr("The folder that was moved or renamed"))),
      newFolder_(PathField(u"Text7", tr("Folder on the disk"), tr("Where it is now"))),
      progress_(new RunProgress("Label3")),
      reconnectButton_(new QPushButton(tr("&Reconnect"))),
      cancelButton_(new QPushButton(tr("Cancel"))) {
  setObjectName(u"frmconnect"_s);
  setWindowTitle(QString::fromUtf16(reconnect_text::kTitle));
  reconnectButton_->setObjectName(u"Command1"_s);
  look::MakePrimary(reconnectButton_);
  cancelButton_->setObjectName(u"cmdcancel"_s);
  auto* buttons = new QHBoxLayout;
  look::SetSpace(buttons, 0, look::kSpace8);
  buttons->addStretch();
  buttons->addWidget(cancelButton_);
  buttons->addWidget(reconnectButton_);

  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace12);
  column->addWidget(
      look::Hint(tr("Photos of the folder on the left, and of the folders in it, are looked for in "
                    "the folder on the right from now on. No file is moved.")));
  column->addLayout(ComposePanes(), 1);
  column->addWidget(progress_);
  column->addLayout(buttons);

  connect(foundTree_, &CatalogueTree::FolderClick, this,
          [this](const QString& folder) { ShowPath(oldFolder_, folder); });
  connect(diskTree_, &FolderTree::FolderClick, this,
          [this](const QString& folder) { ShowPath(newFolder_, WithSeparator(folder)); });
  connect(cancelButton_, &QPushButton::clicked, this, &frmconnect::reject);
  connect(reconnectButton_, &QPushButton::clicked, this,
          [this] { Guarded("frmconnect", "Command1_Click", [this] { Command1_Click(); }); });
  resize(sizeHint().boundedTo(screen()->availableSize() * 9 / 10));
  SetLocked(false);
  foundTree_->SetFolders(folders);
  foundTree_->setFocus();
}

QSize frmconnect::sizeHint() const {
  return kSize;
}

QLayout* frmconnect::ComposePanes() {
  foundTree_->setObjectName(u"TreeView1"_s);
  foundTree_->setAccessibleName(tr("Folders found in database"));
  diskTree_->setObjectName(u"FolderTreeview1"_s);
  diskTree_->setAccessibleName(tr("Locate folder"));
  auto* panes = new QHBoxLayout;
  look::SetSpace(panes, 0, look::kSpace16);
  panes->addLayout(Pane(u"Folders Found in Database :"_s, foundTree_, oldFolder_), 1);
  panes->addLayout(Pane(u"Locate Folder :"_s, diskTree_, newFolder_), 1);
  return panes;
}

void frmconnect::Command1_Click() {
  if (running_) return;
  const QString from = foundTree_->CurrentFolder(), to = diskTree_->CurrentFolder();
  if (from.isEmpty()) return Tell(reconnect_text::kNoOldFolder);
  if (to.isEmpty()) return Tell(reconnect_text::kNoNewFolder);
  SetLocked(true);
  const FailureList failures = ReconnectFolder(
      catalogue_, from, to, [this](int done, int total) { ShowProgress(done, total); });
  // What the user clicked and typed meanwhile was for locked controls.
  QCoreApplication::processEvents();
  SetLocked(false);
  foundTree_->SetFolders(CatalogueFolders(catalogue_));
  if (failures.Empty())
    Tell(reconnect_text::kDone);
  else
    ShowFailures(failures, this);
  setWindowTitle(QString::fromUtf16(reconnect_text::kTitle));
  foundTree_->setFocus();
}

void frmconnect::ShowProgress(int done, int total) {
  if (progress_->Show(done, total))
    setWindowTitle(QString::fromUtf16(reconnect_text::kReconnectingTitle) +
                   u" %1%"_s.arg(qint64{100} * done / total));
}

void frmconnect::SetLocked(bool locked) {
  running_ = locked;
  for (QWidget* widget : std::initializer_list<QWidget*>{foundTree_, diskTree_, oldFolder_,
                                                         newFolder_, cancelButton_})
    widget->setEnabled(!locked);
  const bool readOnly = catalogue_.ReadOnly();
  reconnectButton_->setEnabled(!locked && !readOnly);
  reconnectButton_->setToolTip(readOnly ? tr("The catalogue is read-only.") : QString());
  if (locked)
    progress_->Begin(QString::fromUtf16(reconnect_text::kReconnecting));
  else
    progress_->End();
}

void frmconnect::reject() {
  if (!running_) QDialog::reject();
}

void frmconnect::closeEvent(QCloseEvent* event) {
  if (running_) return event->ignore();
  QDialog::closeEvent(event);
}

}  // namespace zqm
