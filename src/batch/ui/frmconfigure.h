// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <vector>

#include "catalogue/core_database.h"

class QLineEdit;
class QListWidget;
class QMenu;
class QPushButton;

namespace zqm {

/// Name and place of an editor that is to be added.
class frmconfirmeditor : public QDialog {
  Q_OBJECT
 public:
  frmconfirmeditor(CoreDatabase& core, const ExternalEditor& proposal, QWidget* parent = nullptr);

 private:
  void cmdok_Click();

  CoreDatabase& core_;
  QLineEdit* nameEdit_;
  QLineEdit* location_;
};

/// The list of external editors. Cancel leaves it as it was when the window opened.
class frmconfigure : public QDialog {
  Q_OBJECT
 public:
  explicit frmconfigure(CoreDatabase& core, QWidget* parent = nullptr);
  void reject() override;

 private:
  void ShowEditors();
  void FillInstalled();
  void cmdadd_Click();
  void Propose(const ExternalEditor& editor);
  void cmdremove_Click();

  CoreDatabase& core_;
  std::vector<ExternalEditor> before_;
  QListWidget* list_;
  QMenu* installed_;
  QPushButton* removeButton_;
};

}  // namespace zqm
