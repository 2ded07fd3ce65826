// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>

#include "editor/editor_settings.h"
#include "editor/ui/edit_step.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QSlider;

namespace zqm {

/// "9. Watermark": one line of text, shown on the picture while it is typed and moved with the
/// mouse.
class WatermarkStep : public EditStep {
  Q_OBJECT
 public:
  explicit WatermarkStep(ImageX& picture);
  void Enter() override;

  void SetPanel(const WatermarkPanel& panel);
  WatermarkPanel Panel() const;

 private:
  void ComposeText();
  void ComposeLook();
  QCheckBox* AddBox(const QString& caption, const char* name);
  void ShowColour(const QColor& colour);
  void PickColour();
  void PreviewWatermark();
  void FollowMove(int id);
  void Apply();

  QLineEdit *text_, *size_, *angle_, *colour_;
  QComboBox* font_;
  QPushButton* swatch_;
  QCheckBox *bold_, *italic_, *underline_, *strikeout_;
  QSlider* transparency_;
  QColor inkColour_;  // the last that was typed or picked
  QPointF corner_;    // of the text's box
  bool filling_ = false;
};

}  // namespace zqm
