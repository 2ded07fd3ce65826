// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/ui/change_dialog.h"

namespace zqm {

/// Takes a cast of colour away, by a pixel that should be gray, by temperature and by tint.
class frmcolorcast : public ChangeDialog {
  Q_OBJECT
 public:
  explicit frmcolorcast(const QImage& picture, QWidget* parent = nullptr);
};

}  // namespace zqm
