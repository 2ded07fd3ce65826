// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "batch/carry_photos.h"
#include "batch/ui/batch_dialog.h"

class QComboBox;
class QLineEdit;

namespace zqm {

class FolderTree;

/// Carries photos to a folder that the user chooses.
class CarryDialog : public BatchDialog {
  Q_OBJECT
 protected:
  /// What the two windows differ in.
  struct Kind {
    const char* name;
    const char16_t* caption;
    const char16_t* label;     ///< above the bar
    const char16_t* eachFile;  ///< what goes before a file's name there, "" for nothing
    const BatchTexts& texts;
    decltype(&MovePhotos) run;
  };
  static const Kind kMove, kCopy;
  CarryDialog(const Kind& kind, BatchPlace place, const QString& startFolder, QWidget* parent);

 private:
  QLayout* ComposeNewFolder();
  QLayout* ComposeExisting();
  void Choose(const QString& folder);
  void Command1_Click();
  void cmdok_Click();

  const Kind& kind_;
  QString chosen_;
  FolderTree* tree_;
  QLineEdit* folder_;
  QLineEdit* newFolderEdit_;
  QComboBox* existing_;
};

/// Moves photos, their rows with them.
class frmmove : public CarryDialog {
  Q_OBJECT
 public:
  frmmove(BatchPlace place, const QString& startFolder, QWidget* parent = nullptr);
};

/// Copies photos.
class frmcopy : public CarryDialog {
  Q_OBJECT
 public:
  frmcopy(BatchPlace place, const QString& startFolder, QWidget* parent = nullptr);
};

}  // namespace zqm
