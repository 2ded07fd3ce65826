// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "batch/rename_photos.h"
#include "batch/ui/batch_dialog.h"

class QButtonGroup;
class QGridLayout;
class QLineEdit;
class QTableView;

namespace zqm {

class NamesModel;

/// Renames photos; what the preview shows is what they get.
class frmrename : public BatchDialog {
  Q_OBJECT
 public:
  explicit frmrename(BatchPlace place, QWidget* parent = nullptr);

 private:
  QLayout* ComposeModes();
  QLineEdit* AddField(QGridLayout* grid, RenameMode mode, const QString& caption, const char* name);
  void AddOption(QGridLayout* grid, RenameMode mode, const QString& caption, const char* name);
  RenameMode Mode() const;
  RenameOptions Options() const;
  void Option_Click();
  void Text1_Change();
  void Text2_Change();
  void Rebuild();
  void Command1_Click();

  QButtonGroup* modes_;
  std::vector<std::pair<RenameMode, QWidget*>> fields_;  // with their captions
  QLineEdit* customText_;
  QLineEdit* startNumber_;
  QLineEdit* searchFor_;
  QLineEdit* replaceBy_;
  QLineEdit* newName_;
  NamesModel* names_;
};

}  // namespace zqm
