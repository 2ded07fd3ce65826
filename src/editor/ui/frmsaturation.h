// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/ui/change_dialog.h"

namespace zqm {

/// Colours stronger or weaker, turned round the circle, lighter or darker.
class frmsaturation : public ChangeDialog {
  Q_OBJECT
 public:
  explicit frmsaturation(const QImage& picture, QWidget* parent = nullptr);
};

}  // namespace zqm
