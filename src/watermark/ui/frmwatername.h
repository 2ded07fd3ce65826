// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>

#include "imaging/ui/template_name_dialog.h"
#include "imaging/vector_objects.h"

namespace zqm {

/// Asks for the name of a watermark template and writes it.
class frmwatername : public TemplateNameDialog {
  Q_OBJECT
 public:
  frmwatername(QString folder, const VectorObjects& objects, QSize surface, const QString& name,
               QWidget* parent = nullptr);

 protected:
  Outcome Write(const QString& name) override;

 private:
  VectorObjects objects_;
  QSize surface_;
};

}  // namespace zqm
