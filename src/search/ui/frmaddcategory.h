// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "catalogue/catalogue.h"

class QLineEdit;

namespace zqm {

/// Adds categories to the list, one after the other.
class frmaddcategory : public QDialog {
  Q_OBJECT
 public:
  explicit frmaddcategory(Catalogue& catalogue, QWidget* parent = nullptr);

 Q_SIGNALS:
  void Added();

 private:
  void Command1_Click();

  Catalogue& catalogue_;
  QLineEdit* name_;
};

}  // namespace zqm
