// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/ui/template_name_dialog.h"
#include "printing/print_template.h"

namespace zqm {

/// Asks for the name of a printing template and writes it.
class frmname : public TemplateNameDialog {
  Q_OBJECT
 public:
  frmname(QString folder, PrintTemplate layout, const QString& name, QWidget* parent = nullptr);

 protected:
  /// Also one of which only half is there: a text that somebody keeps isn't written over unasked.
  QString Standing(const QString& name) const override;
  Outcome Write(const QString& name) override;

 private:
  PrintTemplate layout_;
};

}  // namespace zqm
