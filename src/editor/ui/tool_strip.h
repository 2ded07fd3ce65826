// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <span>

class QToolButton;

namespace zqm {

/// A way of selecting with the mouse.
struct SelectionTool {
  const char16_t* letter;  ///< what it is called as the current tool
  const char16_t* mode;    ///< the picture's mouse mode
  const char16_t* caption;
  const char* icon;
};
/// Magic wand, rectangle, ellipse, polygon, lasso.
std::span<const SelectionTool> SelectionTools();

/// The buttons of the selection tools, and of moving the picture.
class ToolStrip : public QWidget {
  Q_OBJECT
 public:
  explicit ToolStrip(QWidget* parent = nullptr);

  /// The button of a tool's letter is pressed, all others are released.
  void SetTool(const QString& letter);

 Q_SIGNALS:
  void ToolClicked(int index);
  void NavigateClicked();

 private:
  std::vector<QToolButton*> tools_;
  QToolButton* navigate_;
};

}  // namespace zqm
