// SPDX-License-Identifier: GPL-3.0-or-later
#include "watermark/ui/frmwatername.h"

#include "imaging/template_files.h"

namespace zqm {

frmwatername::frmwatername(QString folder, const VectorObjects& objects, QSize surface,
                           const QString& name, QWidget* parent)
    : TemplateNameDialog("frmwatername", std::move(folder), name, parent),
      objects_(objects),
      surface_(surface) {}

Outcome frmwatername::Write(const QString& name) {
  return SaveTemplate(TemplatePath(Folder(), name), objects_, surface_);
}

}  // namespace zqm
