// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/slideshow_samples.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <numbers>

namespace zqm {
namespace {

/// Hills from the left to the right, in shares of the picture.
struct Ridge {
  double base, height;  ///< from above; half of what the hills rise and fall
  double waves, phase;  ///< how many hills, and where in one the left edge is
  QRgb colour;
};

struct Landscape {
  QRgb zenith, horizon;
  double sunX, sunY, sunRadius;  ///< shares of width, height, height
  QRgb sun;
  Ridge ridges[3];  ///< the farthest first
};

constexpr Landscape kLandscapes[] = {
    {0xff1d1a4d,
     0xffff9a56,
     0.72,
     0.52,
     0.11,
     0xffffe6a8,
     {{0.62, 0.06, 1.7, 0.1, 0xff7c3d63},
      {0.72, 0.05, 2.3, 0.6, 0xff4a2850},
      {0.84, 0.04, 1.3, 0.3, 0xff221633}}},
    {0xff2f86d6,
     0xffd9f1ff,
     0.24,
     0.2,
     0.08,
     0xfffffbe0,
     {{0.5, 0.09, 1.2, 0.7, 0xff6fa3b8},
      {0.68, 0.05, 1.6, 0.2, 0xff63b25c},
      {0.82, 0.06, 1.1, 0.5, 0xff9bd14f}}},
};

void DrawRidge(QPainter& painter, const Ridge& ridge, const QSizeF& size) {
  constexpr int kSteps = 96;
  QPainterPath hills(QPointF(0, size.height()));
  for (int step = 0; step <= kSteps; ++step) {
    const double x = static_cast<double>(step) / kSteps;
    const double angle = 2 * std::numbers::pi * (ridge.waves * x + ridge.phase);
    const double y = ridge.base - ridge.height * std::sin(angle);
    hills.lineTo(x * size.width(), y * size.height());
  }
  hills.lineTo(size.width(), size.height());
  painter.fillPath(hills, QColor(ridge.colour));
}

}  // namespace

QImage DrawSlideSample(SlideSample sample, const QSize& size) {
  const Landscape& landscape = kLandscapes[static_cast<int>(sample)];
  QImage picture(size, QImage::Format_RGB32);
  if (picture.isNull()) return picture;
  const QSizeF room(size);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  QLinearGradient sky(0, 0, 0, room.height() * landscape.ridges[0].base);
  sky.setColorAt(0, QColor(landscape.zenith));
  sky.setColorAt(1, QColor(landscape.horizon));
  painter.fillRect(picture.rect(), sky);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(landscape.sun));
  const double radius = landscape.sunRadius * room.height();
  painter.drawEllipse(QPointF(landscape.sunX * room.width(), landscape.sunY * room.height()),
                      radius, radius);
  for (const Ridge& ridge : landscape.ridges)
    DrawRidge(painter, ridge, room);
  return picture;
}

}  // namespace zqm
