// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/ui/change_dialog.h"

namespace zqm {

/// Sharpens, blurs and takes out noise.
class frmsharpen : public ChangeDialog {
  Q_OBJECT
 public:
  explicit frmsharpen(const QImage& picture, QWidget* parent = nullptr);
};

}  // namespace zqm
