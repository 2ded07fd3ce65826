// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "catalogue/catalogue.h"

class QLayout;
class QLineEdit;
class QPushButton;

namespace zqm {

class CatalogueTree;
class FolderTree;
class RunProgress;

/// Tells the catalogue where a folder is that another program has moved or renamed. Stays open for
/// the next one.
class frmconnect : public QDialog {
  Q_OBJECT
 public:
  /// `folders` as `CatalogueFolders` gives them.
  frmconnect(Catalogue& catalogue, const QStringList& folders, QWidget* parent = nullptr);

  void reject() override;
  QSize sizeHint() const override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QLayout* ComposePanes();
  void Command1_Click();
  void ShowProgress(int done, int total);
  void SetLocked(bool locked);

  Catalogue& catalogue_;
  CatalogueTree* foundTree_;
  FolderTree* diskTree_;
  QLineEdit* oldFolder_;
  QLineEdit* newFolder_;
  RunProgress* progress_;
  QPushButton* reconnectButton_;
  QPushButton* cancelButton_;
  bool running_ = false;
};

}  // namespace zqm
