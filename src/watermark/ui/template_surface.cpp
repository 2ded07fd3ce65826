// SPDX-License-Identifier: GPL-3.0-or-later
#include "watermark/ui/template_surface.h"

#include <QMouseEvent>
#include <QPainter>

#include "shell/ui/look.h"
#include "watermark/watermark_layers.h"

namespace zqm {
namespace {
constexpr double kReach = 8;  // pixels of the screen
}

TemplateSurface::TemplateSurface(QWidget* parent) : ImageX(parent) {
  SetMouseInteract(QStringLiteral("OBJECTSELECT"), true);
  SetKeepObjectAspect(true);
}

// Cancelled drags bring back what was there; whatever else keeps its size has been moved.
bool TemplateSurface::Snaps(const VectorObject& object) const {
  const VectorObject* was = before_.Find(object.id);
  return dragging_ && !freely_ && SelectedObjects().size() == 1 && was != nullptr &&
         object != *was && object.width == was->width && object.height == was->height;
}

void TemplateSurface::ReplaceObject(const VectorObject& object) {
  SnappedObject placed{object, {}, {}};
  if (Snaps(object))
    placed = SnapToSurface(object, {ImageWidth(), ImageHeight()},
                           kReach * devicePixelRatioF() * 100 / Zoom());
  lineX_ = placed.x;
  lineY_ = placed.y;
  VectorObjects objects = Objects();
  objects.Replace(placed.object);
  SetObjects(objects);
}

void TemplateSurface::PaintOver(QPainter& painter, const QRegion& region) {
  ImageX::PaintOver(painter, region);
  painter.setPen(QPen(QColor(look::kAccent), 1, Qt::DashLine));
  const QPointF end = FromBitmap(QPointF(ImageWidth(), ImageHeight())), start = FromBitmap({0, 0});
  if (lineX_) {
    const double x = FromBitmap({*lineX_, 0}).x();
    painter.drawLine(QPointF(x, start.y()), QPointF(x, end.y()));
  }
  if (lineY_) {
    const double y = FromBitmap({0, *lineY_}).y();
    painter.drawLine(QPointF(start.x(), y), QPointF(end.x(), y));
  }
}

void TemplateSurface::mousePressEvent(QMouseEvent* event) {
  before_ = Objects();
  dragging_ = true;
  freely_ = false;
  ImageX::mousePressEvent(event);
}

void TemplateSurface::mouseMoveEvent(QMouseEvent* event) {
  freely_ = event->modifiers().testFlag(Qt::ControlModifier);
  ImageX::mouseMoveEvent(event);
}

void TemplateSurface::mouseReleaseEvent(QMouseEvent* event) {
  ImageX::mouseReleaseEvent(event);
  dragging_ = false;
  lineX_.reset();
  lineY_.reset();
  viewport()->update();
}

}  // namespace zqm
