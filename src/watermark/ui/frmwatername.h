// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QSize>

#include "imaging/vector_objects.h"

class QLineEdit;

namespace zqm {

/// Asks for a template's name and writes it.
class frmwatername : public QDialog {
  Q_OBJECT
 public:
  frmwatername(QString folder, const VectorObjects& objects, QSize surface, const QString& name,
               QWidget* parent = nullptr);

  /// Under which the template was written; "" as long as it wasn't.
  const QString& SavedName() const { return savedName_; }

  void reject() override;

 private:
  void Command1_Click();

  QString folder_;
  VectorObjects objects_;
  QSize surface_;
  QLineEdit* name_;
  QString savedName_;
  bool saving_ = false;
};

}  // namespace zqm
