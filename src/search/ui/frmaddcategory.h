// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "catalogue/catalogue.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace zqm {

/// Adds categories to the catalogue's list, one after the other, until it is closed.
class frmaddcategory : public QDialog {
  Q_OBJECT
 public:
  explicit frmaddcategory(Catalogue& catalogue, QWidget* parent = nullptr);

 Q_SIGNALS:
  /// It stands in the list under this name.
  void Added(const QString& name);

 private:
  void Command1_Click();
  void Text1_Change();

  Catalogue& catalogue_;
  QLineEdit* nameEdit_;
  QLabel* takenAs_;
  QPushButton* addButton_;
};

}  // namespace zqm
