// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "cataloguing/browser_view.h"
#include "cataloguing/folder_import.h"
#include "imaging/thumbnail_list.h"
#include "session/session.h"

class QCheckBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace zqm {

class FolderTree;
class ImageMultiX;
class RunProgress;

/// Adds the photos of ticked folders to the catalogue.
class frmcatalog : public QDialog {
  Q_OBJECT
 public:
  /// `view` hears of each added photo; `startFolder` is where the tree opens, "" for nowhere.
  frmcatalog(Session& session, BrowserView* view, const QString& startFolder,
             QWidget* parent = nullptr);

  void reject() override;
  QSize sizeHint() const override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* ComposeTexts();
  void cmdimport_Click();
  QStringList ScanFolders(const QStringList& folders, FailureList& failures);
  void RunImport(const QStringList& files, const ImportTexts& texts, FailureList unread);
  void FolderTreeview1_FolderClick(const QString& path);
  void Check1_Click();
  void LockControlsImport();
  void UnlockControlsImport();
  void SetLocked(bool locked);
  void UpdateImportButton();

  Session& session_;
  BrowserView* view_;
  ThumbnailList preview_;
  FolderTree* tree_;
  QCheckBox* showPreview_;
  ImageMultiX* previewList_;
  QPlainTextEdit* notesEdit_;
  QLineEdit* authorEdit_;
  QLineEdit* dateEdit_;
  RunProgress* progress_;
  QPushButton* importButton_;
  QPushButton* cancelButton_;
  QString shownFolder_;
  bool running_ = false;
};

}  // namespace zqm
