// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QHash>

#include "catalogue/catalogue.h"

class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace zqm {

class FolderTree;
class RunProgress;

/// Tells the catalogue where a folder is that was moved or renamed by another program.
class frmconnect : public QDialog {
  Q_OBJECT
 public:
  /// `folders` are those of the catalogue's photos.
  frmconnect(Catalogue& catalogue, const QStringList& folders, QWidget* parent = nullptr);

  void reject() override;
  QSize sizeHint() const override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QLayout* ComposeTrees();
  QLayout* ComposePaths();
  QLayout* ComposeButtons();
  void ShowFolders(const QStringList& folders);
  void Timer1_Timer();
  void TreeView1_NodeClick(const QTreeWidgetItem* node);
  void Command1_Click();
  void SetLocked(bool locked);

  Catalogue& catalogue_;
  QTreeWidget* found_;
  QHash<QString, QTreeWidgetItem*> nodes_;  // by their folders
  FolderTree* disk_;
  QLineEdit* oldFolder_;
  QLineEdit* newFolder_;
  RunProgress* progress_;
  QPushButton* reconnectButton_;
  QPushButton* cancelButton_;
  bool running_ = false;
};

}  // namespace zqm
