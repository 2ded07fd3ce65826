// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/dialog_foot.h"

#include <QPushButton>

#include "shell/ui/look.h"

namespace zqm {

DialogFoot::DialogFoot(const QString& okCaption)
    : ok_(new QPushButton(okCaption.isEmpty() ? tr("OK") : okCaption)),
      cancel_(new QPushButton(tr("Cancel"))) {
  ok_->setObjectName(QStringLiteral("cmdok"));
  cancel_->setObjectName(QStringLiteral("cmdcancel"));
  look::MakePrimary(ok_);
  look::SetSpace(this, 0, look::kSpace8);
  addStretch();
  addWidget(cancel_);
  addWidget(ok_);
}

}  // namespace zqm
