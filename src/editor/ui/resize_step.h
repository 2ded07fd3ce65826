// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "editor/editor_settings.h"
#include "editor/ui/edit_step.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace zqm {

/// "3. Resize".
class ResizeStep : public EditStep {
  Q_OBJECT
 public:
  explicit ResizeStep(ImageX& picture);
  void Enter() override;

  void SetPanel(const ResizePanel& panel);
  ResizePanel Panel() const;

 private:
  void ShowSize();
  void WidthTyped();
  void HeightTyped();
  void Resize();

  QLineEdit *width_, *height_, *dpi_;
  QComboBox* filter_;
  QCheckBox* keepAspect_;
  QSize shown_;  // of the picture when the boxes were last filled
};

}  // namespace zqm
