// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "editor/ui/edit_step.h"

class QLabel;
class QLineEdit;

namespace zqm {

/// "2. Crop": to a rectangle, free or of a given size and aspect at most.
class CropStep : public EditStep {
  Q_OBJECT
 public:
  explicit CropStep(ImageX& picture);
  void Enter() override;

 private:
  void TakeLimits();
  void ShowSelection();
  void Crop();

  QLineEdit *width_, *height_;
  QLabel* selected_;
};

}  // namespace zqm
