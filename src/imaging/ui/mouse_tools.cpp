// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/mouse_tools.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace zqm {
namespace {

// Points of the screen.
constexpr double kNear = 5;         // to a handle, an object or the first corner
constexpr double kDragBegins = 3;   // a hand that clicks isn't still
constexpr double kLassoStep = 0.5;  // between its points

constexpr double kArrowStep = 1, kArrowLeap = 10;  // picture pixels

double Distance(const QPointF& a, const QPointF& b) {
  return std::hypot(a.x() - b.x(), a.y() - b.y());
}

QPointF Inside(const QPointF& at, const QSize& picture) {
  return {std::clamp<double>(at.x(), 0, picture.width()),
          std::clamp<double>(at.y(), 0, picture.height())};
}

/// A rectangle or an ellipse from corner to corner; with Shift a square or a circle.
class BoxTool : public MouseTool {
 public:
  enum class Shape { Rectangle, Ellipse };
  BoxTool(ToolHost& host, Shape shape) : MouseTool(host), shape_(shape) {}

  void Press(const ToolEvent& event) override {
    Host().TakeSelection({});
    drawing_ = true;
    from_ = event.pixel;
    box_ = QRectF();
  }
  void Move(const ToolEvent& event) override {
    if (!drawing_) return;
    SelectionLimits limits;
    if (shape_ == Shape::Rectangle) limits = Host().Limits();
    if (event.modifiers.testFlag(Qt::ShiftModifier) && limits.aspectRatio <= 0)
      limits.aspectRatio = 1;
    box_ = LimitedRectangle(from_, event.pixel, limits, Host().PictureSize());
  }
  void Release(const ToolEvent& event) override {
    if (!drawing_) return;
    Move(event);
    drawing_ = false;
    const QSize picture = Host().PictureSize();
    Host().TakeSelection(shape_ == Shape::Rectangle ? Selection::Rectangle(box_, picture)
                                                    : Selection::Ellipse(box_, picture));
  }
  bool IsBusy() const override { return drawing_; }
  void Cancel() override { drawing_ = false; }
  QPainterPath Draft() const override {
    QPainterPath path;
    if (!drawing_ || box_.isEmpty()) return path;
    if (shape_ == Shape::Rectangle)
      path.addRect(box_);
    else
      path.addEllipse(box_);
    return path;
  }

 private:
  Shape shape_;
  bool drawing_ = false;
  QPointF from_;
  QRectF box_;
};

/// Corner by corner; closed by a double click, Enter or a click on the first corner. Backspace
/// takes the last corner back.
class PolygonTool : public MouseTool {
 public:
  using MouseTool::MouseTool;

  void Press(const ToolEvent& event) override {
    const QPointF at = Inside(event.pixel, Host().PictureSize());
    if (corners_.empty()) Host().TakeSelection({});
    const double near = kNear * event.pixelsPerPoint;
    if (corners_.size() > 2 && Distance(at, corners_.front()) <= near) return Close();
    corners_.push_back(at);
    end_ = at;
  }
  void Move(const ToolEvent& event) override { end_ = Inside(event.pixel, Host().PictureSize()); }
  void Release(const ToolEvent&) override {}
  /// Its first click has set the last corner.
  void DoubleClick(const ToolEvent&) override { Close(); }
  bool Key(int key, const ToolEvent&) override {
    if (!IsBusy()) return false;
    switch (key) {
      case Qt::Key_Return:
      case Qt::Key_Enter:
        Close();
        return true;
      case Qt::Key_Backspace:
        corners_.pop_back();
        return true;
      default:
        return false;
    }
  }
  bool IsBusy() const override { return !corners_.empty(); }
  void Cancel() override { corners_.clear(); }
  QPainterPath Draft() const override {
    QPainterPath path;
    if (corners_.empty()) return path;
    path.addPolygon(corners_);
    path.lineTo(end_);
    return path;
  }

 private:
  void Close() {
    Host().TakeSelection(Selection::Polygon(std::exchange(corners_, {}), Host().PictureSize()));
  }

  QPolygonF corners_;
  QPointF end_;
};

/// Drawn in one stroke.
class LassoTool : public MouseTool {
 public:
  using MouseTool::MouseTool;

  void Press(const ToolEvent& event) override {
    Host().TakeSelection({});
    drawing_ = true;
    line_ = {Inside(event.pixel, Host().PictureSize())};
  }
  void Move(const ToolEvent& event) override {
    if (!drawing_) return;
    const QPointF at = Inside(event.pixel, Host().PictureSize());
    if (Distance(at, line_.back()) >= kLassoStep * event.pixelsPerPoint) line_.push_back(at);
  }
  void Release(const ToolEvent& event) override {
    if (!drawing_) return;
    Move(event);
    drawing_ = false;
    Host().TakeSelection(Selection::Polygon(line_, Host().PictureSize()));
  }
  bool IsBusy() const override { return drawing_; }
  void Cancel() override { drawing_ = false; }
  QPainterPath Draft() const override {
    QPainterPath path;
    if (drawing_) path.addPolygon(line_);
    return path;
  }

 private:
  bool drawing_ = false;
  QPolygonF line_;
};

class WandTool : public MouseTool {
 public:
  using MouseTool::MouseTool;

  void Press(const ToolEvent& event) override {
    Host().TakeMagicWand({static_cast<int>(std::floor(event.pixel.x())),
                          static_cast<int>(std::floor(event.pixel.y()))});
  }
  void Move(const ToolEvent&) override {}
  void Release(const ToolEvent&) override {}
};

/// Draws one line object.
class LineTool : public MouseTool {
 public:
  using MouseTool::MouseTool;

  void Press(const ToolEvent& event) override {
    drawing_ = true;
    from_ = to_ = event.pixel;
  }
  void Move(const ToolEvent& event) override { to_ = event.pixel; }
  void Release(const ToolEvent& event) override {
    if (!std::exchange(drawing_, false)) return;
    if (Distance(from_, event.pixel) >= kDragBegins * event.pixelsPerPoint)
      Host().PutLine(from_, event.pixel);
  }
  bool IsBusy() const override { return drawing_; }
  void Cancel() override { drawing_ = false; }
  QPainterPath Draft() const override {
    QPainterPath path;
    if (!drawing_) return path;
    path.moveTo(from_);
    path.lineTo(to_);
    return path;
  }

 private:
  bool drawing_ = false;
  QPointF from_, to_;
};

QCursor CursorOf(Handle handle) {
  switch (handle) {
    case Handle::TopLeft:
    case Handle::BottomRight:
      return Qt::SizeFDiagCursor;
    case Handle::TopRight:
    case Handle::BottomLeft:
      return Qt::SizeBDiagCursor;
    case Handle::Top:
    case Handle::Bottom:
      return Qt::SizeVerCursor;
    case Handle::Left:
    case Handle::Right:
      return Qt::SizeHorCursor;
    case Handle::None:
      break;
  }
  return Qt::ArrowCursor;
}

/// Selects objects, moves and sizes the selected ones; dragging over the ground selects what lies
/// under the band. Shift and Ctrl add and take away; arrow keys move.
class ObjectTool : public MouseTool {
 public:
  using MouseTool::MouseTool;

  void Press(const ToolEvent& event) override {
    from_ = event.pixel;
    const auto [id, handle] = HandleAt(event);
    if (id > 0) return BeginDrag(What::Sizing, {*Host().ObjectList().Find(id)}, handle);
    const bool adds = Adds(event);
    const int hit = Host().ObjectList().HitTest(event.pixel, kNear * event.pixelsPerPoint);
    if (hit < 0) {
      if (!adds) Host().SelectOnly({});
      what_ = What::Band;
      band_ = QRectF(from_, from_);
      return;
    }
    if (adds) return Host().ToggleObject(hit);
    if (!Host().IsObjectSelected(hit)) Host().SelectOnly({hit});
    const bool held = !Host().ObjectList().Find(hit)->moveable;
    BeginDrag(What::Moving, held ? std::vector<VectorObject>() : SelectedMoveable(), Handle::None);
  }

  void Move(const ToolEvent& event) override {
    if (what_ == What::Band) band_ = QRectF(from_, event.pixel).normalized();
    if (what_ != What::Moving && what_ != What::Sizing) return;
    const bool still = Distance(from_, event.pixel) < kDragBegins * event.pixelsPerPoint;
    if (!moved_ && still) return;
    moved_ = true;
    const bool aspect = Host().KeepsObjectAspect() || event.modifiers.testFlag(Qt::ShiftModifier);
    for (const VectorObject& object : taken_) {
      Host().ReplaceObject(what_ == What::Moving ? Moved(object, event.pixel - from_)
                                                 : Sized(object, handle_, event.pixel, aspect));
    }
  }

  void Release(const ToolEvent& event) override {
    Move(event);
    const What what = std::exchange(what_, What::Nothing);
    if (what == What::Band) return SelectUnderBand(Adds(event));
    if (!std::exchange(moved_, false)) return;
    std::vector<int> ids;
    for (const VectorObject& object : taken_)
      ids.push_back(object.id);
    Host().TellMoved(ids);
  }

  bool Key(int key, const ToolEvent& event) override {
    const double step = event.modifiers.testFlag(Qt::ShiftModifier) ? kArrowLeap : kArrowStep;
    QPointF by;
    switch (key) {
      case Qt::Key_Left:
        by = {-step, 0};
        break;
      case Qt::Key_Right:
        by = {step, 0};
        break;
      case Qt::Key_Up:
        by = {0, -step};
        break;
      case Qt::Key_Down:
        by = {0, step};
        break;
      default:
        return false;
    }
    std::vector<int> ids;
    for (const VectorObject& object : SelectedMoveable()) {
      Host().ReplaceObject(Moved(object, by));
      ids.push_back(object.id);
    }
    Host().TellMoved(ids);
    return Host().SelectedCount() > 0;
  }

  bool IsBusy() const override { return what_ != What::Nothing; }
  void Cancel() override {
    for (const VectorObject& object : taken_) {
      if (moved_) Host().ReplaceObject(object);
    }
    what_ = What::Nothing;
    moved_ = false;
  }
  QPainterPath Draft() const override {
    QPainterPath path;
    if (what_ == What::Band) path.addRect(band_);
    return path;
  }
  QCursor CursorAt(const ToolEvent& event) const override {
    const auto [id, handle] = HandleAt(event);
    if (id > 0) return CursorOf(handle);
    const int hit = Host().ObjectList().HitTest(event.pixel, kNear * event.pixelsPerPoint);
    const VectorObject* object = Host().ObjectList().Find(hit);
    return object && object->moveable ? Qt::SizeAllCursor : Qt::ArrowCursor;
  }

 private:
  enum class What { Nothing, Moving, Sizing, Band };

  static bool Adds(const ToolEvent& event) {
    return (event.modifiers & (Qt::ShiftModifier | Qt::ControlModifier)) != 0;
  }
  void BeginDrag(What what, std::vector<VectorObject> objects, Handle handle) {
    what_ = what;
    handle_ = handle;
    taken_ = std::move(objects);
    moved_ = false;
  }
  /// The topmost of the selected objects' handles at a place; the ID is 0 where there is none.
  std::pair<int, Handle> HandleAt(const ToolEvent& event) const {
    std::vector<int> ids = Host().ObjectList().Ids();
    std::ranges::reverse(ids);
    for (const int id : ids) {
      if (!Host().IsObjectSelected(id)) continue;
      const Handle handle =
          Host().ObjectList().HitHandle(id, event.pixel, kNear * event.pixelsPerPoint);
      if (handle != Handle::None) return {id, handle};
    }
    return {0, Handle::None};
  }
  std::vector<VectorObject> SelectedMoveable() const {
    std::vector<VectorObject> objects;
    for (const VectorObject& object : Host().ObjectList().All()) {
      if (object.moveable && Host().IsObjectSelected(object.id)) objects.push_back(object);
    }
    return objects;
  }
  void SelectUnderBand(bool adds) {
    std::vector<int> ids;
    for (const VectorObject& object : Host().ObjectList().All()) {
      const bool under = object.visible && object.selectable && !band_.isEmpty() &&
                         band_.intersects(object.Bounds());
      if (under || (adds && Host().IsObjectSelected(object.id))) ids.push_back(object.id);
    }
    Host().SelectOnly(ids);
  }

  What what_ = What::Nothing;
  Handle handle_ = Handle::None;
  std::vector<VectorObject> taken_;  // as they were
  bool moved_ = false;
  QPointF from_;
  QRectF band_;
};

using Maker = std::unique_ptr<MouseTool> (*)(ToolHost& host);

template <class Tool>
std::unique_ptr<MouseTool> Make(ToolHost& host) {
  return std::make_unique<Tool>(host);
}
template <BoxTool::Shape shape>
std::unique_ptr<MouseTool> MakeBox(ToolHost& host) {
  return std::make_unique<BoxTool>(host, shape);
}

struct Mode {
  QStringView key;
  bool selects;
  Maker make;
};
constexpr std::array<Mode, 8> kModes = {{
    {u"SELECT", true, MakeBox<BoxTool::Shape::Rectangle>},
    {u"SELECTRECT", true, MakeBox<BoxTool::Shape::Rectangle>},
    {u"SELECTCIRCLE", true, MakeBox<BoxTool::Shape::Ellipse>},
    {u"SELECTPOLYGON", true, Make<PolygonTool>},
    {u"SELECTLASSO", true, Make<LassoTool>},
    {u"SELECTMAGICWAND", true, Make<WandTool>},
    {u"OBJECTSELECT", false, Make<ObjectTool>},
    {u"PUTLINE", false, Make<LineTool>},
}};

const Mode* FindMode(QStringView key) {
  const auto* mode = std::ranges::find(kModes, key, &Mode::key);
  return mode == kModes.end() ? nullptr : mode;
}

}  // namespace

bool IsToolMode(QStringView mode) {
  return FindMode(mode) != nullptr;
}

bool IsSelectionMode(QStringView mode) {
  const Mode* found = FindMode(mode);
  return found && found->selects;
}

std::unique_ptr<MouseTool> MakeMouseTool(QStringView mode, ToolHost& host) {
  const Mode* found = FindMode(mode);
  return found ? found->make(host) : nullptr;
}

}  // namespace zqm
