// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/object_painter.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <cstring>

#include "imaging/pixel_formats.h"
#include "imaging/text_shape.h"

namespace zqm {
namespace {

/// Large areas are merged in bands of about so many pixels.
constexpr int kBandPixels = 1 << 21;

/// Pixels of the device for one of the painter.
double DeviceScale(const QPainter& painter) {
  return std::sqrt(std::abs(painter.deviceTransform().determinant()));
}

double VisiblePen(const QPainter& painter, const VectorObject& object) {
  const double scale = DeviceScale(painter);
  return scale > 0 ? std::max(object.penWidth, 1 / scale) : object.penWidth;
}

QPen PenOf(const QPainter& painter, const VectorObject& object) {
  QPen pen(object.penColour, VisiblePen(painter, object));
  pen.setJoinStyle(Qt::MiterJoin);
  pen.setCapStyle(object.penStyle == PenStyle::Solid ? Qt::RoundCap : Qt::FlatCap);
  if (object.penStyle == PenStyle::Dash) pen.setStyle(Qt::DashLine);
  if (object.penStyle == PenStyle::Dot) pen.setStyle(Qt::DotLine);
  return pen;
}

// The head's tip is the line's end; the line stops inside of it.
void PaintLine(QPainter& painter, const VectorObject& object) {
  if (object.penStyle == PenStyle::None) return;
  const QPolygonF ends = object.Outline();
  const QPointF from = ends.at(0), to = ends.at(1);
  const double length = std::hypot(object.width, object.height);
  painter.setPen(PenOf(painter, object));
  if (object.endShape == EndShape::None || length == 0) {
    painter.drawLine(from, to);
    return;
  }
  const double head = std::min(object.ArrowLength(), length);
  const QPointF along = (to - from) / length;
  const QPointF across(-along.y(), along.x());
  const QPointF neck = to - along * head;
  QPainterPath arrow(to);
  arrow.lineTo(neck + across * head / 3);
  arrow.lineTo(neck - across * head / 3);
  arrow.closeSubpath();
  painter.drawLine(from, neck);
  painter.fillPath(arrow, object.penColour);
}

// The frame lies inside the box, beside the filling: neither shows through the other.
void PaintRectangle(QPainter& painter, const VectorObject& object) {
  const QRectF box = object.Box();
  const bool framed = object.penStyle != PenStyle::None;
  const double most = std::min(box.width(), box.height()) / 2;
  const double pen = framed ? std::min(VisiblePen(painter, object), most) : 0;
  const QRectF inner = box.adjusted(pen, pen, -pen, -pen);
  if (object.brushStyle == BrushStyle::Solid) painter.fillRect(inner, object.brushColour);
  if (!framed) return;
  if (object.penStyle == PenStyle::Solid) {
    QPainterPath frame;
    frame.addRect(box);
    frame.addRect(inner);
    painter.fillPath(frame, object.penColour);
    return;
  }
  painter.setPen(PenOf(painter, object));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(box.adjusted(pen / 2, pen / 2, -pen / 2, -pen / 2));
}

void PaintPicture(QPainter& painter, const VectorObject& object) {
  const QRectF box = object.Box();
  if (object.picture.Image().isNull() || box.isEmpty()) return;
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(box, object.picture.AtLeast(box.size() * DeviceScale(painter)));
}

void PaintText(QPainter& painter, const VectorObject& object) {
  const QRectF box = object.Box();
  painter.setTransform(object.Turning(), true);
  if (object.brushStyle == BrushStyle::Solid) painter.fillRect(box, object.brushColour);
  if (!object.textAutosize) painter.setClipRect(box, Qt::IntersectClip);
  if (object.fontQuality == FontQuality::Smoothed) painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(box.topLeft());
  for (const QPainterPath& outline : ShapeText(object).outlines)
    painter.fillPath(outline, object.penColour);
}

// Merging.

bool IsColoured(const QColor& colour) {
  return colour.red() != colour.green() || colour.green() != colour.blue();
}

bool HasColour(const VectorObject& object) {
  if (object.kind == ObjectKind::Picture) {
    const QImage& image = object.picture.Image();
    return !image.isNull() && !IsGray(InWorkFormat(image)) && !image.allGray();
  }
  const bool pen = object.kind == ObjectKind::Text || object.penStyle != PenStyle::None;
  const bool brush = object.kind != ObjectKind::Line && object.brushStyle == BrushStyle::Solid;
  return (pen && IsColoured(object.penColour)) || (brush && IsColoured(object.brushColour));
}

bool Shows(const VectorObject& object, const QRect& picture) {
  return object.visible && object.transparency > 0 &&
         object.Bounds().toAlignedRect().intersects(picture);
}

QImage InColour(const QImage& gray) {
  return gray.convertToFormat(IsDeep(gray) ? QImage::Format_RGBX64 : QImage::Format_RGB32);
}

/// What is painted on, for a picture in a work format.
QImage::Format PaintFormat(const QImage& picture) {
  if (picture.hasAlphaChannel())
    return IsDeep(picture) ? QImage::Format_RGBA64_Premultiplied
                           : QImage::Format_ARGB32_Premultiplied;
  return IsDeep(picture) ? QImage::Format_RGBX64 : QImage::Format_RGB32;
}

uchar* PixelsOf(QImage& picture, const QPoint& at) {
  return picture.scanLine(at.y()) +
         static_cast<std::size_t>(at.x()) * static_cast<std::size_t>(picture.depth() / 8);
}

void PaintOnCanvas(QImage& canvas, const QPoint& corner, const VectorObject& object) {
  QPainter painter(&canvas);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(-corner);
  PaintObject(painter, object);
}

/// Paints an object into a band of the picture. False when there is no memory for it.
bool PaintBand(QImage& picture, const QRect& band, const VectorObject& object) {
  if (picture.format() == PaintFormat(picture) && !IsGray(picture)) {
    QImage canvas(PixelsOf(picture, band.topLeft()), band.width(), band.height(),
                  picture.bytesPerLine(), picture.format());
    PaintOnCanvas(canvas, band.topLeft(), object);
    return true;
  }
  QImage canvas = picture.copy(band).convertToFormat(PaintFormat(picture));
  if (canvas.isNull()) return false;
  const QImage plain = picture.hasAlphaChannel() ? canvas : QImage();
  PaintOnCanvas(canvas, band.topLeft(), object);
  const QImage painted = plain.isNull() ? QImage() : canvas;
  canvas = IsGray(picture) ? GrayOfEqualSamples(canvas) : canvas.convertToFormat(picture.format());
  if (canvas.isNull()) return false;
  const auto pixelBytes = static_cast<std::size_t>(picture.depth() / 8);
  const auto rowBytes = static_cast<std::size_t>(band.width()) * pixelBytes;
  for (int y = 0; y < band.height(); ++y) {
    uchar* row = PixelsOf(picture, band.topLeft() + QPoint(0, y));
    if (plain.isNull()) {
      std::memcpy(row, canvas.constScanLine(y), rowBytes);
      continue;
    }
    // Colours that hardly show don't survive the way to premultiplied ones and back.
    for (std::size_t at = 0; at < rowBytes; at += pixelBytes)
      if (std::memcmp(plain.constScanLine(y) + at, painted.constScanLine(y) + at, pixelBytes) != 0)
        std::memcpy(row + at, canvas.constScanLine(y) + at, pixelBytes);
  }
  return true;
}

bool PaintInto(QImage& picture, const VectorObject& object) {
  const QRect area = object.Bounds().toAlignedRect() & picture.rect();
  const int rows = std::max(kBandPixels / std::max(area.width(), 1), 1);
  for (int y = area.top(); y <= area.bottom(); y += rows) {
    const QRect band(area.left(), y, area.width(), std::min(rows, area.bottom() + 1 - y));
    if (!PaintBand(picture, band, object)) return false;
  }
  return true;
}

}  // namespace

void PaintObject(QPainter& painter, const VectorObject& object) {
  if (!object.visible || object.transparency == 0) return;
  painter.save();
  painter.setOpacity(painter.opacity() * object.transparency / 255);
  switch (object.kind) {
    case ObjectKind::Line:
      PaintLine(painter, object);
      break;
    case ObjectKind::Rectangle:
      PaintRectangle(painter, object);
      break;
    case ObjectKind::Picture:
      PaintPicture(painter, object);
      break;
    case ObjectKind::Text:
      PaintText(painter, object);
      break;
  }
  painter.restore();
}

void PaintObjects(QPainter& painter, const VectorObjects& objects) {
  for (const VectorObject& object : objects.All())
    PaintObject(painter, object);
}

QImage Merged(QImage picture, const VectorObjects& objects) {
  std::vector<const VectorObject*> shown;
  for (const VectorObject& object : objects.All())
    if (Shows(object, picture.rect())) shown.push_back(&object);
  if (shown.empty()) return picture;
  QImage merged = InWorkFormat(picture);
  picture = QImage();
  if (IsGray(merged) &&
      std::ranges::any_of(shown, [](const VectorObject* object) { return HasColour(*object); }))
    merged = InColour(merged);
  if (merged.isNull() || !merged.bits()) return {};
  for (const VectorObject* object : shown)
    if (!PaintInto(merged, *object)) return {};
  return merged;
}

}  // namespace zqm
