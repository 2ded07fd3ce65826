// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/ui/frmname.h"

#include "shell/busy.h"
#include "shell/files.h"

namespace zqm {

frmname::frmname(QString folder, PrintTemplate layout, const QString& name, QWidget* parent)
    : TemplateNameDialog("frmname", std::move(folder), name, parent), layout_(std::move(layout)) {}

QString frmname::Standing(const QString& name) const {
  const QString standing = TemplateNameDialog::Standing(name);
  const bool half = standing.isEmpty() && FileExists(TemplateRecordFile(Folder(), name));
  return half ? name : standing;
}

Outcome frmname::Write(const QString& name) {
  return RunAside([&] { return SaveTemplate(Folder(), name, layout_); });
}

}  // namespace zqm
