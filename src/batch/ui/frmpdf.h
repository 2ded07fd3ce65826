// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "batch/pdf_photos.h"
#include "batch/ui/batch_dialog.h"

class QButtonGroup;
class QComboBox;
class QGridLayout;
class QLineEdit;

namespace zqm {

class FolderTree;

/// Writes photos into PDF files.
class frmpdf : public BatchDialog {
  Q_OBJECT
 public:
  frmpdf(BatchPlace place, const PictureSettings& load, const QString& startFolder,
         QWidget* parent = nullptr);

 private:
  void ComposeType(QGridLayout* grid);
  void ComposeInfo(QGridLayout* grid);
  QLineEdit* AddField(QGridLayout* grid, const QString& caption, const char* name);
  QComboBox* AddList(QGridLayout* grid, const QString& caption, const char* name);
  void Option_Click();
  PdfOptions Options() const;
  void Command3_Click();

  PictureSettings load_;
  QString chosen_;
  QButtonGroup* types_;
  FolderTree* tree_;
  QLineEdit* folder_;
  QLineEdit* name_ = nullptr;
  QComboBox* compression_ = nullptr;
  QComboBox* existing_ = nullptr;
  QLineEdit* title_ = nullptr;
  QLineEdit* author_ = nullptr;
  QLineEdit* subject_ = nullptr;
  QLineEdit* keywords_ = nullptr;
};

}  // namespace zqm
