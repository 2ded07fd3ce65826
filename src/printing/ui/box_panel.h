// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>

#include "printing/template_design.h"
#include "printing/ui/measure_row.h"

namespace zqm {

/// The measures of the first selected box.
class BoxPanel : public QWidget {
  Q_OBJECT
 public:
  explicit BoxPanel(QWidget* parent = nullptr);

  /// What the design has; without a selection the fields are empty and can't be typed into.
  void ShowBox(const TemplateDesign& design);
  /// The unit of the design has changed: a text that is no number stays.
  void SwitchUnit(const TemplateDesign& design);

 Q_SIGNALS:
  /// By the user.
  void Typed(zqm::TemplateDesign::Side side, const QString& text);
  /// The user has left a field.
  void Left();

 private:
  void Fill(const TemplateDesign& design, bool keepsWords);

  std::array<MeasureRow, 4> rows_;  // by side
  QLabel* id_;
  bool filling_ = false;  // the fields are the code's, not the user's
};

}  // namespace zqm
