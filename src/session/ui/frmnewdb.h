// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "shell/session_folders.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace zqm {

/// Makes a further, empty catalogue; the active one stays.
class frmnewdb : public QDialog {
  Q_OBJECT
 public:
  explicit frmnewdb(SessionFolders folders, QWidget* parent = nullptr);

 private:
  void cmdok_Click();

  SessionFolders folders_;
  QLineEdit* name_;
  QLabel* status_;
  QPushButton* ok_;
};

}  // namespace zqm
