// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/vector_objects.h"

#include <QTransform>
#include <algorithm>
#include <cmath>

#include "imaging/object_keys.h"
#include "imaging/pixel_formats.h"
#include "imaging/resample.h"
#include "imaging/text_shape.h"

namespace zqm {
namespace {

constexpr int kSmallestVersion = 64;  // pixels of its shorter side

double DistanceToLine(QPointF point, QPointF from, QPointF to) {
  const QPointF along = to - from;
  const double squared = QPointF::dotProduct(along, along);
  const double at =
      squared > 0 ? std::clamp(QPointF::dotProduct(point - from, along) / squared, 0.0, 1.0) : 0;
  const QPointF off = point - (from + at * along);
  return std::hypot(off.x(), off.y());
}

bool Hits(const VectorObject& object, QPointF pixel, double tolerance) {
  if (object.kind == ObjectKind::Line) {
    const QPolygonF ends = object.Outline();
    return DistanceToLine(pixel, ends.at(0), ends.at(1)) <= tolerance + object.penWidth / 2;
  }
  const QPointF flat = object.Turning().inverted().map(pixel);
  return object.Box().adjusted(-tolerance, -tolerance, tolerance, tolerance).contains(flat);
}

}  // namespace

ObjectPicture::ObjectPicture(const QImage& image) : image_(InWorkFormat(image)) {
  QImage last = image_;
  while (std::min(last.width(), last.height()) >= 2 * kSmallestVersion) {
    last = Resample(last, (last.size() + QSize(1, 1)) / 2, ResampleFilter::Triangle);
    if (last.isNull()) return;
    smaller_.push_back(last);
  }
}

const QImage& ObjectPicture::AtLeast(QSizeF size) const {
  const QImage* best = &image_;
  for (const QImage& version : smaller_) {
    if (version.width() < size.width() || version.height() < size.height()) break;
    best = &version;
  }
  return *best;
}

QRectF VectorObject::Box() const {
  return QRectF(left, top, width, height).normalized();
}

QTransform VectorObject::Turning() const {
  if (kind != ObjectKind::Text || fontAngle == 0) return {};
  const QPointF centre = Box().center();
  QTransform turning;
  turning.translate(centre.x(), centre.y());
  turning.rotate(-fontAngle);
  turning.translate(-centre.x(), -centre.y());
  return turning;
}

QPolygonF VectorObject::Outline() const {
  if (kind == ObjectKind::Line)
    return QPolygonF({QPointF(left, top), QPointF(left + width, top + height)});
  const QRectF box = Box();
  return Turning().map(
      QPolygonF({box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()}));
}

QRectF VectorObject::Bounds() const {
  const QRectF around = Outline().boundingRect();
  if (kind != ObjectKind::Line) return around;
  const double pen = std::max(penWidth, 1.0);
  const double reach = endShape == EndShape::Arrow ? ArrowLength() : pen / 2;
  return around.adjusted(-reach, -reach, reach, reach);
}

double VectorObject::ArrowLength() const {
  constexpr double kPens = 4, kLeast = 8;
  return std::max(kPens * penWidth, kLeast);
}

// The list.

std::vector<VectorObject>::iterator VectorObjects::At(int id) {
  return std::ranges::find(objects_, id, &VectorObject::id);
}

const VectorObject* VectorObjects::Find(int id) const {
  const auto found = std::ranges::find(objects_, id, &VectorObject::id);
  return found == objects_.end() ? nullptr : &*found;
}

int VectorObjects::Add(ObjectKind kind) {
  VectorObject object;
  object.id = ++lastId_;
  object.kind = kind;
  FitText(object);
  objects_.push_back(object);
  return object.id;
}

int VectorObjects::AddLine(QPointF from, QPointF to) {
  const int id = Add(ObjectKind::Line);
  VectorObject& line = objects_.back();
  line.left = from.x();
  line.top = from.y();
  line.width = to.x() - from.x();
  line.height = to.y() - from.y();
  return id;
}

bool VectorObjects::Insert(const VectorObject& object) {
  if (object.id <= 0 || Contains(object.id)) return false;
  objects_.push_back(object);
  lastId_ = std::max(lastId_, object.id);
  return true;
}

std::vector<int> VectorObjects::Ids() const {
  std::vector<int> ids;
  std::ranges::transform(objects_, std::back_inserter(ids), &VectorObject::id);
  return ids;
}

bool VectorObjects::SetObjectProperty(int id, QStringView key, const QString& value) {
  const auto object = At(id);
  return object != objects_.end() && SetProperty(*object, key, value);
}

QString VectorObjects::GetObjectProperty(int id, QStringView key) const {
  const VectorObject* object = Find(id);
  return object ? ObjectProperty(*object, key) : QString();
}

bool VectorObjects::SetAllObjects(QStringView key, const QString& value) {
  bool all = true;
  for (VectorObject& object : objects_)
    all = SetProperty(object, key, value) && all;
  return all;
}

void VectorObjects::SetPicture(int id, const ObjectPicture& picture) {
  if (const auto object = At(id); object != objects_.end()) object->picture = picture;
}

QImage VectorObjects::PictureOf(int id) const {
  const VectorObject* object = Find(id);
  return object ? object->picture.Image() : QImage();
}

bool VectorObjects::Replace(const VectorObject& object) {
  const auto old = At(object.id);
  if (old == objects_.end()) return false;
  *old = object;
  return true;
}

void VectorObjects::Remove(int id) {
  std::erase_if(objects_, [id](const VectorObject& object) { return object.id == id; });
}

void VectorObjects::SendToBack(int id) {
  if (const auto object = At(id); object != objects_.end())
    std::rotate(objects_.begin(), object, object + 1);
}

void VectorObjects::BringToFront(int id) {
  if (const auto object = At(id); object != objects_.end())
    std::rotate(object, object + 1, objects_.end());
}

QRectF VectorObjects::BoundsOf(int id) const {
  const VectorObject* object = Find(id);
  return object ? object->Bounds() : QRectF();
}

int VectorObjects::HitTest(QPointF pixel, double tolerance) const {
  const auto hit = std::find_if(objects_.rbegin(), objects_.rend(), [&](const VectorObject& each) {
    return each.visible && each.selectable && Hits(each, pixel, tolerance);
  });
  return hit == objects_.rend() ? -1 : hit->id;
}

Handle VectorObjects::HitHandle(int id, QPointF pixel, double tolerance) const {
  const VectorObject* object = Find(id);
  if (!object || !object->sizeable) return Handle::None;
  Handle nearest = Handle::None;
  double least = tolerance;
  for (const Handle handle : HandlesOf(*object)) {
    const QPointF off = pixel - HandlePoint(*object, handle);
    const double distance = std::hypot(off.x(), off.y());
    if (distance > least || (distance == least && nearest != Handle::None)) continue;
    least = distance;
    nearest = handle;
  }
  return nearest;
}

}  // namespace zqm
