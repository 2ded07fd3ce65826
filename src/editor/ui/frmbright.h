// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/ui/change_dialog.h"

namespace zqm {

/// Brightness and contrast, with the levels before and after.
class frmbright : public ChangeDialog {
  Q_OBJECT
 public:
  explicit frmbright(const QImage& picture, QWidget* parent = nullptr);
};

}  // namespace zqm
