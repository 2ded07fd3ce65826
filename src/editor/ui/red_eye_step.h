// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "editor/ui/edit_step.h"

namespace zqm {

/// "4. Red Eye Removal", within the selection.
class RedEyeStep : public EditStep {
  Q_OBJECT
 public:
  explicit RedEyeStep(ImageX& picture);
  void Enter() override;
};

}  // namespace zqm
