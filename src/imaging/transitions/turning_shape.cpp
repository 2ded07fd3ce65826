// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/transitions/turning_shape.h"

#include <QPainter>
#include <QPolygonF>
#include <QTransform>
#include <cmath>
#include <numbers>

#include "imaging/transitions/pixel_mix.h"

namespace zqm {
namespace {

/// Upright about (0, 0), at the size that covers a screen.
QPolygonF Shape(int points, const QSizeF& screen) {
  if (points == 0)
    return QRectF(-screen.width() / 2, -screen.height() / 2, screen.width(), screen.height());
  constexpr double kValley = 0.5;  // of the points' length
  const double valley =
      std::hypot(screen.width(), screen.height()) / 2 / std::cos(std::numbers::pi / points);
  QPolygonF star;
  for (int i = 0; i < 2 * points; ++i) {
    const double angle = std::numbers::pi * i / points;
    const double length = i % 2 == 0 ? valley / kValley : valley;
    star << QPointF(std::sin(angle) * length, -std::cos(angle) * length);
  }
  return star;
}

}  // namespace

void DrawTurningShape(const TurningShape& shape, const QImage& from, const QImage& to,
                      double progress, QImage& out) {
  CopyPixels(from, out);
  QTransform place;
  place.translate(out.width() / 2.0, out.height() / 2.0);
  place.rotate(360 * shape.turns * progress);
  // Slower at first: the last corners are reached late, and the shape is seen for longer.
  const double grown = progress * (1 + progress) / 2;
  place.scale(grown, grown);
  QPainter painter(&out);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QBrush(to));
  painter.drawPolygon(place.map(Shape(shape.points, out.size())));
}

}  // namespace zqm
