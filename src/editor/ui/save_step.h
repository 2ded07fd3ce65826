// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "editor/ui/edit_step.h"

namespace zqm {

/// "10. Save".
class SaveStep : public EditStep {
  Q_OBJECT
 public:
  explicit SaveStep(ImageX& picture);

 Q_SIGNALS:
  void SaveWanted();
  void SaveAsWanted();
};

}  // namespace zqm
