// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "shell/result.h"

class QLineEdit;

namespace zqm {

/// Asks for a template's name, whether one that stands may be overwritten, and writes it.
class TemplateNameDialog : public QDialog {
  Q_OBJECT
 public:
  /// Under which the template was written; "" as long as it wasn't.
  const QString& SavedName() const { return savedName_; }

  void reject() override;

 protected:
  /// `window` is the object name, also for reports; `name` is proposed.
  TemplateNameDialog(const char* window, QString folder, const QString& name, QWidget* parent);

  const QString& Folder() const { return folder_; }
  /// The name in its own spelling under which a template stands in the folder; "" when none does.
  virtual QString Standing(const QString& name) const;
  /// May give windows time to paint. Reasons are messages to the user.
  virtual Outcome Write(const QString& name) = 0;

 private:
  void Command1_Click();

  QString folder_;
  QLineEdit* name_;
  QString savedName_;
  bool saving_ = false;
};

}  // namespace zqm
