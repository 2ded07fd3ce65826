// SPDX-License-Identifier: GPL-3.0-or-later
// Where objects are taken and what dragging makes of them.
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <iterator>

#include "imaging/text_shape.h"
#include "imaging/vector_objects.h"

namespace zqm {
namespace {

struct Place {
  Handle handle;
  double x, y;  // in parts of the box
};
// Corners first: of a tiny box they are the better ones to take.
constexpr Place kPlaces[] = {
    {Handle::TopLeft, 0, 0},    {Handle::TopRight, 1, 0}, {Handle::BottomRight, 1, 1},
    {Handle::BottomLeft, 0, 1}, {Handle::Top, 0.5, 0},    {Handle::Right, 1, 0.5},
    {Handle::Bottom, 0.5, 1},   {Handle::Left, 0, 0.5},
};
constexpr Handle kBoxHandles[] = {Handle::TopLeft,    Handle::TopRight, Handle::BottomRight,
                                  Handle::BottomLeft, Handle::Top,      Handle::Right,
                                  Handle::Bottom,     Handle::Left};
constexpr Handle kLineHandles[] = {Handle::TopLeft, Handle::BottomRight};

const Place* PlaceOf(Handle handle) {
  const auto* place = std::ranges::find(kPlaces, handle, &Place::handle);
  return place == std::end(kPlaces) ? nullptr : place;
}

QPointF PointIn(const QRectF& box, double x, double y) {
  return {box.left() + x * box.width(), box.top() + y * box.height()};
}

VectorObject SizedLine(VectorObject line, Handle handle, QPointF to) {
  const QPointF end(line.left + line.width, line.top + line.height);
  const QPointF from = handle == Handle::TopLeft ? to : QPointF(line.left, line.top);
  const QPointF until = handle == Handle::TopLeft ? end : to;
  line.left = from.x();
  line.top = from.y();
  line.width = until.x() - from.x();
  line.height = until.y() - from.y();
  return line;
}

/// One side of a box when a handle at `place` (0 low side, 1 high side, else neither) of it is at
/// `to`.
double Side(double place, double low, double high, double to) {
  if (place == 0) return std::max(high - to, 1.0);
  if (place == 1) return std::max(to - low, 1.0);
  return high - low;
}

QSizeF NewSize(const QRectF& box, const Place& place, QPointF to, bool keepAspect) {
  const QSizeF size(Side(place.x, box.left(), box.right(), to.x()),
                    Side(place.y, box.top(), box.bottom(), to.y()));
  if (!keepAspect || box.width() <= 0 || box.height() <= 0) return size;
  const double across = size.width() / box.width(), down = size.height() / box.height();
  const double wanted = place.x == 0.5 ? down : place.y == 0.5 ? across : std::max(across, down);
  const double factor = std::max({wanted, 1 / box.width(), 1 / box.height()});
  return box.size() * factor;
}

/// Moves the object so that a point of its box, in parts of it, stands at `anchor`.
void Anchor(VectorObject& object, double x, double y, QPointF anchor) {
  const QPointF off = anchor - object.Turning().map(PointIn(object.Box(), x, y));
  object.left += off.x();
  object.top += off.y();
}

}  // namespace

std::span<const Handle> HandlesOf(const VectorObject& object) {
  if (object.kind == ObjectKind::Line) return kLineHandles;
  return kBoxHandles;
}

QPointF HandlePoint(const VectorObject& object, Handle handle) {
  if (object.kind == ObjectKind::Line)
    return object.Outline().at(handle == Handle::BottomRight ? 1 : 0);
  const Place* place = PlaceOf(handle);
  if (!place) return object.Box().center();
  return object.Turning().map(PointIn(object.Box(), place->x, place->y));
}

VectorObject Moved(VectorObject object, QPointF by) {
  object.left += by.x();
  object.top += by.y();
  return object;
}

VectorObject Sized(const VectorObject& object, Handle handle, QPointF to, bool keepAspect) {
  const Place* place = PlaceOf(handle);
  if (!place) return object;
  if (object.kind == ObjectKind::Line) return SizedLine(object, handle, to);
  const bool byFont = object.kind == ObjectKind::Text && object.textAutosize;
  const QRectF box = object.Box();
  const QPointF anchor = object.Turning().map(PointIn(box, 1 - place->x, 1 - place->y));
  const QPointF flat = object.Turning().inverted().map(to);
  const QSizeF size = NewSize(box, *place, flat, keepAspect || byFont);
  VectorObject sized = object;
  sized.width = size.width();
  sized.height = size.height();
  if (byFont) {
    const double height = std::round(object.fontHeight * size.height() / box.height());
    (void)SetProperty(sized, u"FONTHEIGHT", QString::number(std::max(height, 1.0), 'f', 0));
    FitText(sized);
  }
  Anchor(sized, 1 - place->x, 1 - place->y, anchor);
  return sized;
}

}  // namespace zqm
