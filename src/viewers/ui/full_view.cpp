// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/ui/full_view.h"

#include <QMouseEvent>
#include <QTimerEvent>
#include <QWheelEvent>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kNotch = 120;  // eighths of a degree
constexpr int kRestMilliseconds = 2000;

}  // namespace

FullView::FullView(QWidget* parent) : PictureView(parent) {
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  SetMouseInteract(u"MOUSEWHEELZOOM"_s, false);
  SetMouseInteract(u"SCROLL"_s, true);
  RestPointer();
}

void FullView::wheelEvent(QWheelEvent* event) {
  if (event->modifiers().testFlag(Qt::ControlModifier)) return PictureView::wheelEvent(event);
  const QPoint delta = event->angleDelta();
  // A swipe is never quite straight.
  const int turned = std::abs(delta.x()) > std::abs(delta.y()) ? delta.x() : delta.y();
  // The way back begins anew.
  if ((turned > 0) != (turned_ > 0)) turned_ = 0;
  turned_ += turned;
  event->accept();
  while (std::abs(turned_) >= kNotch) {
    const int step = turned_ > 0 ? -1 : 1;
    turned_ += step * kNotch;
    Q_EMIT Stepped(step);
  }
}

void FullView::mouseMoveEvent(QMouseEvent* event) {
  HideCursor(false);
  RestPointer();
  PictureView::mouseMoveEvent(event);
}

void FullView::RestPointer() {
  if (rest_ != 0) killTimer(rest_);
  rest_ = startTimer(kRestMilliseconds);
}

void FullView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != rest_) return PictureView::timerEvent(event);
  killTimer(rest_);
  rest_ = 0;
  HideCursor(true);
}

}  // namespace zqm
