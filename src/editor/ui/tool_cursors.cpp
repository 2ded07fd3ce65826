// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/tool_cursors.h"

#include <QPainterPath>
#include <QPixmap>

#include "editor/ui/edit_step.h"

namespace zqm {
namespace {

constexpr int kSide = 32;
constexpr QPointF kHot(10, 10);
constexpr QRectF kSign(17, 17, 11, 9);  // below and right of the cross

QPainterPath Cross() {
  QPainterPath path;
  constexpr double kFrom = 3, kReach = 9;
  for (const QPointF direction : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)}) {
    path.moveTo(kHot + direction * kFrom);
    path.lineTo(kHot + direction * kReach);
  }
  return path;
}

QPainterPath Lines(std::initializer_list<QPointF> points) {
  QPainterPath path(*points.begin());
  for (const QPointF& point : points)
    path.lineTo(point);
  return path;
}

QPainterPath Wand() {
  QPainterPath path = Lines({kSign.bottomLeft(), kSign.center()});
  for (const QPointF way : {QPointF(4, 0), QPointF(0, -4), QPointF(3, -3), QPointF(3, 3)}) {
    path.moveTo(kSign.center() + way * 0.5);
    path.lineTo(kSign.center() + way);
  }
  return path;
}

QPainterPath Rectangle() {
  QPainterPath path;
  path.addRect(kSign);
  return path;
}

QPainterPath Ellipse() {
  QPainterPath path;
  path.addEllipse(kSign);
  return path;
}

QPainterPath Polygon() {
  QPainterPath path = Lines({{17, 25}, {19, 17}, {27, 19}, {28, 26}});
  path.closeSubpath();
  return path;
}

QPainterPath Lasso() {
  QPainterPath path({18, 26});
  path.cubicTo({12, 20}, {24, 13}, {28, 19});
  path.cubicTo({30, 24}, {22, 26}, {21, 22});
  return path;
}

QPainterPath Level() {
  return Lines({kSign.bottomLeft(), kSign.topRight()});
}

QPainterPath Crop() {
  QPainterPath path = Lines({{19, 15}, {19, 25}, {29, 25}});
  path.addPath(Lines({{16, 18}, {26, 18}, {26, 28}}));
  return path;
}

struct Sign {
  const char16_t* tool;
  QPainterPath (*path)();
};
constexpr Sign kSigns[] = {
    {u"M", Wand},  {u"R", Rectangle},          {u"C", Ellipse},         {u"P", Polygon},
    {u"L", Lasso}, {edit_tool::kLevel, Level}, {edit_tool::kCrop, Crop}};

QCursor Draw(const QPainterPath& sign) {
  QPixmap pixmap(kSide, kSide);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(0.5, 0.5);
  // Dark on light, so that it shows on any picture.
  for (const auto& [colour, width] : {std::pair{Qt::white, 3.0}, std::pair{Qt::black, 1.2}}) {
    painter.setPen(QPen(colour, width));
    painter.drawPath(Cross());
    painter.drawPath(sign);
  }
  painter.end();
  return QCursor(pixmap, static_cast<int>(kHot.x()), static_cast<int>(kHot.y()));
}

}  // namespace

std::optional<QCursor> ToolCursor(const QString& tool) {
  for (const Sign& sign : kSigns)
    if (tool == QStringView(sign.tool)) return Draw(sign.path());
  return std::nullopt;
}

}  // namespace zqm
