// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "editor/ui/edit_step.h"

class QLineEdit;

namespace zqm {

/// How alike colours must be for the magic wand: no step, but a panel like one.
class MagicWandStep : public EditStep {
  Q_OBJECT
 public:
  /// `folder` is where the tolerance is kept.
  MagicWandStep(ImageX& picture, const QString& folder);
  void LoadMagicWandSettings();

 private:
  void ApplySetting();

  QString folder_;
  QLineEdit* tolerance_;
};

}  // namespace zqm
