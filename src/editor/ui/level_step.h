// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "editor/level_line.h"
#include "editor/ui/edit_step.h"

class QLineEdit;
class QRadioButton;

namespace zqm {

/// "1. Level/Rotate": the user draws a line along something that should be level or upright, or
/// types an angle.
class LevelStep : public EditStep {
  Q_OBJECT
 public:
  explicit LevelStep(ImageX& picture);
  void Enter() override;

 private:
  void BeginLine(const QPointF& pixel);
  void EndLine(const QPointF& pixel);
  TurnDirection Direction() const;
  void Rotate();
  void Clear();

  QLineEdit* angle_;
  QRadioButton *clockwise_, *counterClockwise_;
  std::optional<QPointF> from_;
};

}  // namespace zqm
