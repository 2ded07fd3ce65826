// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/wheel_guard.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QScrollBar>
#include <QWidget>

namespace zqm {
namespace {

class WheelGuard : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() != QEvent::Wheel || static_cast<QWidget*>(object)->hasFocus()) return false;
    event->ignore();  // goes on to the panel
    return true;
  }
};

bool TurnsByWheel(QWidget* widget) {
  if (qobject_cast<QScrollBar*>(widget) != nullptr) return false;
  return qobject_cast<QComboBox*>(widget) != nullptr ||
         qobject_cast<QAbstractSlider*>(widget) != nullptr ||
         qobject_cast<QAbstractSpinBox*>(widget) != nullptr;
}

}  // namespace

void KeepFromWheel(QWidget& panel) {
  auto* guard = new WheelGuard(&panel);
  for (QWidget* widget : panel.findChildren<QWidget*>()) {
    if (!TurnsByWheel(widget)) continue;
    if (widget->focusPolicy() == Qt::WheelFocus) widget->setFocusPolicy(Qt::StrongFocus);
    widget->installEventFilter(guard);
  }
}

}  // namespace zqm
