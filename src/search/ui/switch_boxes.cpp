// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/ui/switch_boxes.h"

#include <QPainter>

#include "shell/ui/look.h"

namespace zqm {
namespace {

constexpr QSize kBox{14, 14};
constexpr int kRound = 2;

}  // namespace

SwitchBoxes::SwitchBoxes(const QString& what, QWidget* parent) : QAbstractButton(parent) {
  setCheckable(true);
  setAccessibleName(what);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  const auto tell = [this, what](bool on) {
    setToolTip(what + (on ? tr(" is on") : tr(" is off")));
  };
  connect(this, &QAbstractButton::toggled, this, tell);
  tell(false);
}

QSize SwitchBoxes::sizeHint() const {
  constexpr int kRim = look::kSpace4;
  return {2 * kBox.width() + 3 * kRim, kBox.height() + 2 * kRim};
}

void SwitchBoxes::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const auto paintBox = [&painter, y = (height() - kBox.height()) / 2](int x, QRgb colour) {
    painter.setBrush(QColor(colour));
    painter.drawRoundedRect(QRect({x, y}, kBox), kRound, kRound);
  };
  paintBox(look::kSpace4, isChecked() ? look::kSwitchOn : look::kSwitchBlank);
  paintBox(2 * look::kSpace4 + kBox.width(), isChecked() ? look::kSwitchBlank : look::kSwitchOff);
  if (!hasFocus()) return;
  painter.setPen(QPen(QColor(look::kAccent), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(rect().adjusted(1, 1, -1, -1), look::kRadius, look::kRadius);
}

}  // namespace zqm
