// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/masters/watermark_masters.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>
#include <numbers>

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

struct TextStyle {
  double height = 100;  ///< pixels
  double angle = 0;     ///< degrees counter-clockwise
  int transparency = 255;
  bool bold = false, italic = false;
};

/// A white text whose outline, turned, begins at `corner`.
VectorObject Text(const QString& text, QPointF corner, const TextStyle& style) {
  VectorObject object;
  object.kind = ObjectKind::Text;
  object.penColour = Qt::white;
  object.penStyle = PenStyle::None;
  object.fontQuality = FontQuality::Smoothed;
  object.textAlign = TextAlign::Centre;
  object.textEditable = false;
  object.fontBold = style.bold;
  object.fontItalic = style.italic;
  object.fontAngle = style.angle;
  object.transparency = style.transparency;
  SetProperty(object, u"TEXT", text);
  SetProperty(object, u"FONTHEIGHT", QString::number(style.height));
  return Moved(object, corner - object.Outline().boundingRect().topLeft());
}

/// A dark veil, so that a white text is read on bright photos too.
VectorObject Veil(const QRectF& box, int transparency) {
  VectorObject object;
  object.kind = ObjectKind::Rectangle;
  object.left = box.left(), object.top = box.top();
  object.width = box.width(), object.height = box.height();
  object.penStyle = PenStyle::None;
  object.brushStyle = BrushStyle::Solid;
  object.brushColour = Qt::black;
  object.transparency = transparency;
  return object;
}

VectorObject Line(QPointF from, QPointF to, double width) {
  VectorObject object;
  object.kind = ObjectKind::Line;
  object.left = from.x(), object.top = from.y();
  object.width = to.x() - from.x(), object.height = to.y() - from.y();
  object.penColour = Qt::white;
  object.penWidth = width;
  return object;
}

VectorObjects ListOf(std::vector<VectorObject> layers) {
  VectorObjects objects;
  int id = 0;
  for (VectorObject& layer : layers) {
    layer.id = ++id;
    objects.Insert(layer);
  }
  return objects;
}

VectorObjects Signature() {
  const VectorObject name =
      Text(u"Your Name"_s, {80, 70}, {.height = 130, .transparency = 235, .italic = true});
  const QRectF box = name.Outline().boundingRect();
  VectorObject craft =
      Text(u"PHOTOGRAPHY"_s, {80, box.bottom() + 24}, {.height = 40, .transparency = 235});
  craft = Moved(craft, {box.center().x() - craft.Outline().boundingRect().center().x(), 0});
  VectorObject line = Line(box.bottomLeft() + QPointF(0, 8), box.bottomRight() + QPointF(0, 8), 4);
  line.transparency = 235;
  return ListOf({name, line, craft});
}

VectorObjects CopyrightLine() {
  const VectorObject text = Text(u"© Your Name. All rights reserved."_s, {64, 56}, {.height = 64});
  return ListOf({Veil(text.Box().adjusted(-32, -16, 32, 16), 130), text});
}

VectorObjects Proof() {
  return ListOf({Text(u"PROOF"_s, {160, 140}, {.height = 560, .transparency = 115, .bold = true})});
}

VectorObjects Diagonal() {
  return ListOf(
      {Text(u"© Your Name"_s, {120, 120}, {.height = 330, .angle = 32, .transparency = 125})});
}

/// Rows that stand half a step aside from each other, so that no stretch of the photo is free.
VectorObjects TiledProof() {
  constexpr double kAcross = 640, kDown = 420;
  const TextStyle style{.height = 100, .angle = 28, .transparency = 100, .bold = true};
  std::vector<VectorObject> layers;
  for (int row = 0; row * kDown < kMasterSurface.height(); ++row) {
    const double aside = row % 2 == 0 ? 0.0 : kAcross / 2;
    for (double x = 40 + aside; x < kMasterSurface.width(); x += kAcross)
      layers.push_back(Text(u"PROOF"_s, {x, 40 + row * kDown}, style));
  }
  return ListOf(std::move(layers));
}

/// A lens iris: six blades that leave a hexagon open.
QImage DrawIris(int side) {
  QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(side / 2.0, side / 2.0);
  const double outer = side * 0.47, inner = side * 0.4, opening = side * 0.19;
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, 120));
  painter.drawEllipse(QPointF(), outer, outer);
  QPainterPath iris;
  iris.addEllipse(QPointF(), inner, inner);
  QPainterPath hole;
  const auto at = [](double radius, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    return QPointF(radius * std::cos(angle), radius * std::sin(angle));
  };
  for (int i = 0; i < 6; ++i)
    i == 0 ? hole.moveTo(at(opening, 0)) : hole.lineTo(at(opening, 60.0 * i));
  hole.closeSubpath();
  painter.fillPath(iris.subtracted(hole), Qt::white);
  painter.setPen(QPen(QColor(40, 40, 40), side / 90.0, Qt::SolidLine, Qt::FlatCap));
  painter.setBrush(Qt::NoBrush);
  for (int i = 0; i < 6; ++i) {
    // Each blade's edge runs on along a side of the opening.
    const QPointF from = at(opening, 60.0 * i), next = at(opening, 60.0 * (i + 1));
    const QPointF along = (next - from) / std::hypot(next.x() - from.x(), next.y() - from.y());
    const double ahead = -QPointF::dotProduct(from, along);
    const double foot = QPointF::dotProduct(from, from) - ahead * ahead;
    painter.drawLine(from, from + along * (ahead + std::sqrt(inner * inner - foot)));
  }
  painter.setPen(QPen(Qt::white, side / 60.0));
  painter.drawEllipse(QPointF(), side * 0.44, side * 0.44);
  painter.end();
  return image.convertToFormat(QImage::Format_ARGB32);
}

VectorObjects PictureLogo() {
  constexpr int kSide = 360;
  VectorObject logo;
  logo.kind = ObjectKind::Picture;
  logo.left = logo.top = 60;
  logo.width = logo.height = kSide;
  logo.transparency = 210;
  logo.picture = DrawIris(kSide);
  return ListOf({logo});
}

}  // namespace

std::vector<MasterTemplate> WatermarkMasters() {
  return {{u"Signature"_s, Signature()},
          {u"Copyright line"_s, CopyrightLine()},
          {u"Proof"_s, Proof()},
          {u"Diagonal"_s, Diagonal()},
          {u"Tiled proof 12 MP"_s, TiledProof()},
          {u"Picture logo"_s, PictureLogo()}};
}

}  // namespace zqm
