// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>

namespace zqm {

/// A switch of two boxes side by side: green and white when on, white and red when off.
class SwitchBoxes : public QAbstractButton {
  Q_OBJECT
 public:
  explicit SwitchBoxes(const QString& what, QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace zqm
