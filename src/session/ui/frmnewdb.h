// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "shell/session_folders.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace zqm {

/// Makes an empty catalogue beside the others. The run keeps the one that it has.
class frmnewdb : public QDialog {
  Q_OBJECT
 public:
  explicit frmnewdb(SessionFolders folders, QWidget* parent = nullptr);

  void reject() override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void cmdok_Click();
  void SetLocked(bool locked);

  SessionFolders folders_;
  QLineEdit* nameEdit_;
  QLabel* status_;
  QPushButton* createButton_;
  QPushButton* cancelButton_;
  bool running_ = false;
};

}  // namespace zqm
