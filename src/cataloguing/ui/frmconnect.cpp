// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/ui/frmconnect.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QTreeWidget>

#include "cataloguing/reconnect.h"
#include "shell/busy.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "shell/ui/folder_tree.h"
#include "shell/ui/frmerror.h"
#include "shell/ui/look.h"
#include "shell/ui/run_progress.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kPathRole = Qt::UserRole;

QLineEdit* PathField(const char* name, const QString& caption) {
  auto* field = new QLineEdit;
  field->setObjectName(QString::fromLatin1(name));
  field->setAccessibleName(caption);
  field->setReadOnly(true);
  return field;
}

/// The node of a folder, with those above it.
QTreeWidgetItem* NodeOf(QTreeWidget* tree, const QString& folder,
                        QHash<QString, QTreeWidgetItem*>& nodes) {
  if (QTreeWidgetItem* node = nodes.value(folder)) return node;
  const QString parent = GetParentFolderName(folder);
  const bool top = parent.isEmpty() || parent == folder;
  auto* node = top ? new QTreeWidgetItem(tree) : new QTreeWidgetItem(NodeOf(tree, parent, nodes));
  node->setText(0, top ? folder : GetFileName(folder));
  node->setData(0, kPathRole, folder);
  node->setIcon(0, look::Icon("folder"));
  node->setToolTip(0, folder);
  nodes.insert(folder, node);
  return node;
}

}  // namespace

frmconnect::frmconnect(Catalogue& catalogue, const QStringList& folders, QWidget* parent)
    : QDialog(parent),
      catalogue_(catalogue),
      found_(new QTreeWidget),
      disk_(new FolderTree(FolderTree::Ticks::No)),
      oldFolder_(PathField("Text6", tr("Old folder"))),
      newFolder_(PathField("Text7", tr("New folder"))),
      progress_(new RunProgress("Label3")) {
  setObjectName(u"frmconnect"_s);
  setWindowTitle(QString::fromUtf16(reconnect_text::kTitle));
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace12);
  column->addLayout(ComposeTrees(), 1);
  column->addLayout(ComposePaths());
  column->addWidget(progress_);
  column->addLayout(ComposeButtons());
  resize(sizeHint().boundedTo(screen()->availableSize() * 9 / 10));
  ShowFolders(folders);
  found_->setFocus();
}

QSize frmconnect::sizeHint() const {
  return {880, 600};
}

QLayout* frmconnect::ComposeTrees() {
  found_->setObjectName(u"TreeView1"_s);
  found_->setAccessibleName(tr("Folders found in database"));
  found_->setHeaderHidden(true);
  disk_->setObjectName(u"FolderTreeview1"_s);
  disk_->setAccessibleName(tr("Folders on this computer"));
  connect(found_, &QTreeWidget::itemSelectionChanged, this, [this] {
    const QList<QTreeWidgetItem*> chosen = found_->selectedItems();
    TreeView1_NodeClick(chosen.isEmpty() ? nullptr : chosen.first());
  });
  connect(disk_, &FolderTree::FolderClick, this,
          [this](const QString& path) { newFolder_->setText(WithSeparator(path)); });
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  grid->setHorizontalSpacing(look::kSpace16);
  grid->addWidget(look::Heading(u"Folders Found in Database :"_s), 0, 0);
  grid->addWidget(look::Heading(u"Locate Folder :"_s), 0, 1);
  grid->addWidget(found_, 1, 0);
  grid->addWidget(disk_, 1, 1);
  grid->setColumnStretch(0, 1);
  grid->setColumnStretch(1, 1);
  return grid;
}

QLayout* frmconnect::ComposePaths() {
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  grid->addWidget(look::Caption(tr("Old folder")), 0, 0);
  grid->addWidget(oldFolder_, 0, 1);
  grid->addWidget(look::Caption(tr("New folder")), 1, 0);
  grid->addWidget(newFolder_, 1, 1);
  return grid;
}

QLayout* frmconnect::ComposeButtons() {
  reconnectButton_ = new QPushButton(tr("Reconnect"));
  reconnectButton_->setObjectName(u"Command1"_s);
  reconnectButton_->setEnabled(!catalogue_.ReadOnly());
  if (catalogue_.ReadOnly()) reconnectButton_->setToolTip(tr("The catalogue is read-only."));
  look::MakePrimary(reconnectButton_);
  cancelButton_ = new QPushButton(tr("Cancel"));
  cancelButton_->setObjectName(u"Command2"_s);
  connect(reconnectButton_, &QPushButton::clicked, this,
          [this] { Guarded("frmconnect", "Command1_Click", [this] { Command1_Click(); }); });
  connect(cancelButton_, &QPushButton::clicked, this, &frmconnect::reject);
  auto* row = new QHBoxLayout;
  look::SetSpace(row, 0, look::kSpace8);
  row->addWidget(look::Hint(tr("Files stay where they are. Folders below come along.")), 1);
  row->addWidget(cancelButton_);
  row->addWidget(reconnectButton_);
  return row;
}

void frmconnect::ShowFolders(const QStringList& folders) {
  nodes_.clear();
  found_->clear();
  for (const QString& folder : folders)
    NodeOf(found_, StripSlash(folder), nodes_);
  found_->sortItems(0, Qt::AscendingOrder);
  found_->expandAll();
  QTimer::singleShot(0, this,
                     [this] { Guarded("frmconnect", "Timer1_Timer", [this] { Timer1_Timer(); }); });
}

/// Marks the folders that are gone, which are those that one comes here for. Asked for beside the
/// interface thread: a disk may be slow to answer.
void frmconnect::Timer1_Timer() {
  const QStringList gone = RunAside([folders = nodes_.keys()]() mutable {
    folders.removeIf([](const QString& folder) { return FolderExists(folder); });
    return folders;
  });
  for (const QString& folder : gone) {
    QTreeWidgetItem* node = nodes_.value(folder);
    if (node == nullptr) continue;  // the run has changed the tree meanwhile
    node->setIcon(0, look::Icon("emblem-warning"));
    node->setForeground(0, QColor(look::kRejectedText));
    node->setToolTip(0, folder + u'\n' + tr("This folder is not there any more."));
  }
}

void frmconnect::TreeView1_NodeClick(const QTreeWidgetItem* node) {
  oldFolder_->setText(node ? WithSeparator(node->data(0, kPathRole).toString()) : QString());
}

void frmconnect::Command1_Click() {
  const auto refuse = [](const char16_t* text) {
    MsgBox(QString::fromUtf16(text), MessageKind::Information);
  };
  if (running_) return;
  if (oldFolder_->text().isEmpty()) return refuse(reconnect_text::kNoOldFolder);
  if (newFolder_->text().isEmpty()) return refuse(reconnect_text::kNoNewFolder);
  SetLocked(true);
  progress_->Begin(QString::fromUtf16(reconnect_text::kReconnecting));
  const FailureList failures = ReconnectFolder(
      catalogue_, oldFolder_->text(), newFolder_->text(), [this](int done, int total) {
        if (progress_->Show(done, total))
          setWindowTitle(QString::fromUtf16(reconnect_text::kReconnectingTitle) +
                         u" %1%"_s.arg(100 * done / total));
      });
  progress_->End();
  // What the user clicked meanwhile was for locked controls.
  QCoreApplication::processEvents();
  SetLocked(false);
  if (failures.Empty())
    MsgBox(QString::fromUtf16(reconnect_text::kDone), MessageKind::Information);
  else
    ShowFailures(failures, this);
  setWindowTitle(QString::fromUtf16(reconnect_text::kTitle));
  ShowFolders(CatalogueFolders(catalogue_));
}

void frmconnect::SetLocked(bool locked) {
  running_ = locked;
  for (QWidget* widget :
       std::initializer_list<QWidget*>{found_, disk_, reconnectButton_, cancelButton_})
    widget->setEnabled(!locked);
}

void frmconnect::reject() {
  if (!running_) QDialog::reject();
}

void frmconnect::closeEvent(QCloseEvent* event) {
  if (running_) return event->ignore();
  QDialog::closeEvent(event);
}

}  // namespace zqm
