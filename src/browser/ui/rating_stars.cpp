// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ui/rating_stars.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "shell/ui/look.h"

namespace zqm {
namespace {

constexpr int kStars = 5;
constexpr int kStarWidth = 22;
constexpr qreal kOuterRadius = 8.5;
constexpr qreal kInnerRadius = 3.8;

QPainterPath Star(const QPointF& centre) {
  QPainterPath star;
  for (int corner = 0; corner < 10; ++corner) {
    const qreal angle = std::numbers::pi * (corner / 5.0 - 0.5);
    const qreal radius = corner % 2 == 0 ? kOuterRadius : kInnerRadius;
    const QPointF at = centre + radius * QPointF(std::cos(angle), std::sin(angle));
    corner == 0 ? star.moveTo(at) : star.lineTo(at);
  }
  star.closeSubpath();
  return star;
}

}  // namespace

RatingStars::RatingStars(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::TabFocus);
  setMouseTracking(true);
  setFixedSize(sizeHint());
  setToolTip(tr("Rating: 1 to 5 stars"));
  setAccessibleName(tr("Rating"));
}

QSize RatingStars::sizeHint() const {
  return {kStars * kStarWidth, look::kControlHeight};
}

void RatingStars::SetRating(int rating) {
  rating_ = std::clamp(rating, 0, kStars);
  setAccessibleDescription(tr("%1 of 5 stars").arg(rating_));
  update();
}

int RatingStars::StarAt(int x) const {
  return std::clamp(x / kStarWidth + 1, 1, kStars);
}

void RatingStars::SetHovered(int star) {
  hovered_ = star;
  update();
}

void RatingStars::Choose(int rating) {
  SetRating(rating);
  Q_EMIT Rated(rating);
}

void RatingStars::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const int filled = hovered_ > 0 ? hovered_ : rating_;
  const QColor full(!isEnabled() ? look::kLine : hovered_ > 0 ? look::kAccent : look::kText);
  for (int star = 1; star <= kStars; ++star) {
    const QPointF centre((star - 0.5) * kStarWidth, height() / 2.0);
    painter.setPen(
        QPen(star <= filled ? full : QColor(isEnabled() ? look::kQuiet : look::kLine), 1));
    painter.setBrush(star <= filled ? QBrush(full) : Qt::NoBrush);
    painter.drawPath(Star(centre));
  }
  if (!hasFocus()) return;
  painter.setPen(QPen(QColor(look::kAccent), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), look::kRadius, look::kRadius);
}

void RatingStars::mouseMoveEvent(QMouseEvent* event) {
  SetHovered(StarAt(event->pos().x()));
}

void RatingStars::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
    Choose(StarAt(event->pos().x()));
}

void RatingStars::leaveEvent(QEvent*) {
  SetHovered(0);
}

void RatingStars::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key >= Qt::Key_1 && key <= Qt::Key_5) return Choose(key - Qt::Key_0);
  if (key == Qt::Key_Right || key == Qt::Key_Up) return Choose(std::min(rating_ + 1, kStars));
  if (key == Qt::Key_Left || key == Qt::Key_Down) return Choose(std::max(rating_ - 1, 1));
  QWidget::keyPressEvent(event);
}

}  // namespace zqm
