// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QStringList>

#include "catalogue/core_database.h"

class QCheckBox;
class QListWidget;

namespace zqm {

/// Opens photos in an editor that the user chooses.
class frmexternaleditor : public QDialog {
  Q_OBJECT
 public:
  frmexternaleditor(const CoreDatabase& core, QStringList photos, QWidget* parent = nullptr);

 private:
  void cmdok_Click();

  std::vector<ExternalEditor> editors_;
  QStringList photos_;
  QListWidget* list_;
  QCheckBox* multiple_;
};

}  // namespace zqm
