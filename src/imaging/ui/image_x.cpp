// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/image_x.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <algorithm>

#include "imaging/object_painter.h"
#include "imaging/progress.h"
#include "imaging/ui/print_image.h"
#include "imaging/ui/view_overlays.h"
#include "shell/busy.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kAntMilliseconds = 120;
constexpr QStringView kObjectSelect = u"OBJECTSELECT", kScroll = u"SCROLL";

/// Does work on the pool while the window paints, and tells how far it is as long as `told` is
/// there to tell.
void RunWatched(const QPointer<ImageX>& told, const std::function<void()>& work) {
  const auto sink = std::make_shared<ProgressSink>();
  int percent = 0;
  RunAside(
      [&work, sink] {
        const ProgressScope scope(sink.get());
        work();
      },
      [&] {
        if (!told || sink->Percent() == percent) return;
        percent = sink->Percent();
        Q_EMIT told->OnProgress(percent);
      });
  if (told && percent > 0) Q_EMIT told->OnProgress(100);
}

}  // namespace

ImageX::ImageX(QWidget* parent) : PictureView(parent), picture_(std::make_shared<EditedPicture>()) {
  picture_->SetRunner([self = QPointer<ImageX>(this)](const std::function<void()>& work) {
    RunWatched(self, work);
  });
  ants_.setInterval(kAntMilliseconds);
  connect(&ants_, &QTimer::timeout, this, &ImageX::March);
  connect(this, &PictureView::OnViewChange, this, [this] { outlineStale_ = true; });
}

ImageX::~ImageX() = default;

// Work.

/// Runs something that may yield to the interface; false when this control hasn't outlived it or
/// is occupied already.
bool ImageX::Occupied(const std::function<void(EditedPicture&)>& body) {
  if (working_) return false;
  const QPointer<ImageX> self(this);
  const std::shared_ptr<EditedPicture> picture = picture_;
  if (tool_) tool_->Cancel();
  working_ = true;
  body(*picture);
  if (!self) return false;
  working_ = false;
  return true;
}

Outcome ImageX::Work(const Operation& operation, Ending ending) {
  if (working_) return Failure{u"The picture is still being worked on"_s};
  Outcome done;
  const bool alive = Occupied([&](EditedPicture& picture) { done = operation(picture); });
  if (!alive || !done) return done;
  const QPointer<ImageX> self(this);
  ShowEdited();
  if (self && ending == Ending::Finished) Q_EMIT OnFinishWork();
  return done;
}

Outcome ImageX::Run(const Operation& operation) {
  return Work(operation, Ending::Finished);
}

/// Shows the picture that is worked on as it is now.
void ImageX::ShowEdited() {
  std::vector<QImage> levels;
  const bool alive = Occupied([&, scale = ScaleToShow(picture_->Image().size())](EditedPicture& p) {
    if (p.Image().isNull()) return;
    RunAside([&, image = p.Image()] { levels = MakeLevels(image, scale); });
  });
  if (!alive) return;
  outlineStale_ = true;
  ShowLevels(std::move(levels));
  ObjectsChanged();
  SelectionChanged();
}

void ImageX::SetScratchFolder(const QString& folder) {
  picture_->SetScratchFolder(folder);
}

Outcome ImageX::LoadFromFile(const QString& path) {
  return Work([&](EditedPicture& picture) { return picture.LoadFromFile(path); }, Ending::Silent);
}

Outcome ImageX::ReadParamsFromFile(const QString& path) {
  return picture_->ReadParamsFromFile(path);
}

Outcome ImageX::SaveToFile(const QString& path) {
  return picture_->PictureForSaving().SaveToFile(path);
}

void ImageX::Assign(const Picture& picture) {
  if (working_) return;
  picture_->Assign(picture);
  ShowEdited();
}

void ImageX::AssignSelectionTo(ImageX& other) const {
  other.Assign(picture_->SelectedPicture());
}

void ImageX::Clear() {
  if (working_) return;
  picture_->Clear();
  PictureView::Clear();
  ObjectsChanged();
  SelectionChanged();
}

Outcome ImageX::ResampleTo(ImageX& target, int width, int height, ResampleFilter filter) {
  Outcome done = Failure{u"The picture is still being worked on"_s};
  const QPointer<ImageX> shown(&target);
  const bool alive = Occupied([&, other = target.picture_](EditedPicture& picture) {
    done = picture.ResampleTo(*other, width, height, filter);
  });
  if (alive && shown && done) target.ShowEdited();
  return done;
}

void ImageX::PrintImageDialog(const QString& title) {
  zqm::PrintImageDialog(picture_->Image(), title, this);
}

// The way back.

void ImageX::SaveState(void (EditedPicture::*save)()) {
  Occupied([save](EditedPicture& picture) { (picture.*save)(); });
}

Outcome ImageX::UndoAt(int index) {
  return Work([=](EditedPicture& picture) { return picture.UndoAt(index); }, Ending::Silent);
}

Outcome ImageX::RedoAt(int index) {
  return Work([=](EditedPicture& picture) { return picture.RedoAt(index); }, Ending::Silent);
}

// Modes.

void ImageX::SwitchTool(const QString& mode) {
  if (mode == toolMode_) return;
  if (tool_) tool_->Cancel();
  const QString before = std::exchange(toolMode_, mode);
  tool_ = MakeMouseTool(mode, *this);
  if (!before.isEmpty()) SwitchMode(before, false);
  if (!mode.isEmpty()) SwitchMode(mode, true);
  viewport()->update();
}

void ImageX::SetMouseInteract(const QString& mode, bool on) {
  const QString upper = mode.toUpper();
  if (IsToolMode(upper)) {
    if (on || upper == toolMode_) SwitchTool(on ? upper : QString());
    return;
  }
  PictureView::SetMouseInteract(upper, on);
  if (on && upper == kScroll && toolMode_ != kObjectSelect) SwitchTool({});
}

bool ImageX::LeftButtonPans() const {
  if (!PictureView::LeftButtonPans()) return false;
  return !tool_ || (toolMode_ == kObjectSelect && Objects().IsEmpty());
}

void ImageX::SetMouseCursor(const QCursor& cursor) {
  cursor_ = cursor;
  UpdateCursor();
}

void ImageX::ResetMouseCursor() {
  cursor_.reset();
  UpdateCursor();
}

QCursor ImageX::IdleCursor() const {
  if (cursor_) return *cursor_;
  return tool_ ? tool_->CursorAt(hover_) : QCursor(Qt::ArrowCursor);
}

// Selection.

void ImageX::Select(const Selection& selection) {
  const bool had = HasSelection();
  picture_->Select(selection);
  if (had || HasSelection()) SelectionChanged();
}

void ImageX::TakeMagicWand(const QPoint& seed) {
  const bool alive =
      Occupied([&](EditedPicture& picture) { picture.SelectByMagicWand(seed, tolerance_); });
  if (alive) SelectionChanged();
}

void ImageX::SelectionChanged() {
  outlineStale_ = true;
  HasSelection() && isVisible() ? ants_.start() : ants_.stop();
  viewport()->update();
  Q_EMIT OnSelectionChange();
}

void ImageX::March() {
  phase_ = (phase_ + 1) % kAntPhases;
  if (outlineStale_)
    viewport()->update();
  else
    viewport()->update(outlineRegion_);
}

void ImageX::UpdateOutline() {
  if (!std::exchange(outlineStale_, false)) return;
  const QRectF visible(ToBitmap(QPointF(0, 0)),
                       ToBitmap(QPointF(viewport()->width(), viewport()->height())));
  outline_ = InView(Selected().Outline(visible, Scale()));
  outlineRegion_ = RegionOfAnts(outline_, viewport()->rect());
}

// Objects.

void ImageX::SetObjects(const VectorObjects& objects) {
  picture_->Objects() = objects;
  ObjectsChanged();
}

int ImageX::AddObject(ObjectKind kind) {
  VectorObjects& objects = picture_->Objects();
  const int id = objects.Add(kind);
  for (const auto& [key, value] : nextObject_)
    objects.SetObjectProperty(id, key, value);
  ObjectsChanged();
  return id;
}

int ImageX::PutLine(const QPointF& from, const QPointF& to) {
  VectorObjects& objects = picture_->Objects();
  const int id = objects.AddLine(from, to);
  for (const auto& [key, value] : nextObject_)
    objects.SetObjectProperty(id, key, value);
  ObjectsChanged();
  return id;
}

bool ImageX::SetObjectProperty(int id, QStringView key, const QString& value) {
  if (id == kNextObject) {
    VectorObject trial;
    if (!SetProperty(trial, key, value)) return false;
    const QString upper = key.toString().toUpper();
    std::erase_if(nextObject_, [&](const auto& set) { return set.first == upper; });
    nextObject_.emplace_back(upper, value);
    return true;
  }
  const bool done = picture_->Objects().SetObjectProperty(id, key, value);
  if (done) viewport()->update();
  return done;
}

QString ImageX::GetObjectProperty(int id, QStringView key) const {
  if (id != kNextObject) return Objects().GetObjectProperty(id, key);
  VectorObject next;
  for (const auto& [name, value] : nextObject_)
    SetProperty(next, name, value);
  return ObjectProperty(next, key);
}

void ImageX::SetObjectPicture(int id, const QImage& picture) {
  picture_->Objects().SetPicture(id, picture);
  viewport()->update();
}

void ImageX::RemoveObject(int id) {
  picture_->Objects().Remove(id);
  ObjectsChanged();
}

void ImageX::RemoveAllObjects() {
  picture_->Objects().RemoveAllObjects();
  ObjectsChanged();
}

void ImageX::SendToBack(int id) {
  picture_->Objects().SendToBack(id);
  viewport()->update();
}

void ImageX::BringToFront(int id) {
  picture_->Objects().BringToFront(id);
  viewport()->update();
}

void ImageX::ReplaceObject(const VectorObject& object) {
  picture_->Objects().Replace(object);
  viewport()->update();
}

void ImageX::TellMoved(const std::vector<int>& ids) {
  for (const int id : ids)
    Q_EMIT OnObjectMoved(id);
}

/// What isn't there any more isn't selected either.
void ImageX::ObjectsChanged() {
  const auto gone = std::erase_if(selected_, [this](int id) { return !Objects().Contains(id); });
  viewport()->update();
  UpdateCursor();
  if (gone > 0) Q_EMIT OnSelectObject();
}

std::vector<int> ImageX::SelectedObjects() const {
  std::vector<int> ids = Objects().Ids();
  std::erase_if(ids, [this](int id) { return !IsObjectSelected(id); });
  return ids;
}

void ImageX::SetSelected(std::set<int> ids) {
  if (ids == selected_) return;
  selected_ = std::move(ids);
  viewport()->update();
  Q_EMIT OnSelectObject();
}

void ImageX::SelectObject(int id, bool on) {
  std::set<int> ids = selected_;
  if (!on)
    ids.erase(id);
  else if (Objects().Contains(id))
    ids.insert(id);
  SetSelected(std::move(ids));
}

void ImageX::SelectOnly(const std::vector<int>& ids) {
  SetSelected({ids.begin(), ids.end()});
}

void ImageX::SelectAllObjects() {
  std::set<int> ids;
  for (const VectorObject& object : Objects().All()) {
    if (object.selectable) ids.insert(object.id);
  }
  SetSelected(std::move(ids));
}

// Painting.

QTransform ImageX::ToView() const {
  const QPointF origin = FromBitmap({0, 0});
  const double scale = Scale() / devicePixelRatioF();
  return QTransform(scale, 0, 0, scale, origin.x(), origin.y());
}

/// A line of the picture in the viewport. The one along a picture's last pixels would lie just
/// outside where the picture fills the view.
QPainterPath ImageX::InView(const QPainterPath& line) const {
  QPainterPath path = ToView().map(line);
  const auto inside = [](double at, int room) {
    return at <= room ? std::min(at, room - 1.0) : at;
  };
  for (int i = 0; i < path.elementCount(); ++i) {
    const QPainterPath::Element at = path.elementAt(i);
    path.setElementPositionAt(i, inside(at.x, viewport()->width()),
                              inside(at.y, viewport()->height()));
  }
  return path;
}

void ImageX::PaintOver(QPainter& painter, const QRegion&) {
  if (!HasImage()) return;
  const QTransform toView = ToView();
  if (!Objects().IsEmpty()) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setTransform(toView, true);
    PaintObjects(painter, Objects());
    painter.restore();
    for (const int id : SelectedObjects())
      PaintHandles(painter, *Objects().Find(id), toView);
  }
  if (HasSelection()) {
    UpdateOutline();
    PaintAnts(painter, outline_, phase_);
  }
  if (tool_) PaintAnts(painter, InView(tool_->Draft()), phase_);
}

void ImageX::showEvent(QShowEvent* event) {
  PictureView::showEvent(event);
  if (HasSelection()) ants_.start();
}

void ImageX::hideEvent(QHideEvent* event) {
  ants_.stop();
  PictureView::hideEvent(event);
}

// Mouse and keys.

ToolEvent ImageX::EventAt(const QPointF& at, Qt::KeyboardModifiers modifiers) const {
  return {ToBitmap(at), modifiers, devicePixelRatioF() / Scale()};
}

/// Hands a mouse event to the tool. Whoever hears of what it does may switch tools or, while it
/// waits for work, end this control's life.
void ImageX::HandTo(void (MouseTool::*handler)(const ToolEvent&), const QMouseEvent* event) {
  hover_ = EventAt(event->position(), event->modifiers());
  const std::shared_ptr<MouseTool> tool = tool_;
  const QPointer<ImageX> self(this);
  (tool.get()->*handler)(hover_);
  if (self) viewport()->update();
}

void ImageX::mousePressEvent(QMouseEvent* event) {
  // A press that pans is nobody's drawing.
  const bool pans = BeginPan(event);
  if (!pans || LeftButtonPans()) Q_EMIT OnMouseDown(ToBitmap(event->position()), event->button());
  if (pans) return;
  if (event->button() == Qt::LeftButton && ToolWorks()) HandTo(&MouseTool::Press, event);
}

void ImageX::mouseMoveEvent(QMouseEvent* event) {
  if (!MovePan(event) && ToolWorks()) {
    hover_ = EventAt(event->position(), event->modifiers());
    if (tool_->IsBusy())
      HandTo(&MouseTool::Move, event);
    else
      UpdateCursor();
  }
  Q_EMIT OnMouseMove(ToBitmap(event->position()));
}

void ImageX::mouseReleaseEvent(QMouseEvent* event) {
  const bool panned = EndPan(event);
  if (!panned && event->button() == Qt::LeftButton && ToolWorks())
    HandTo(&MouseTool::Release, event);
  if (!panned || LeftButtonPans()) Q_EMIT OnMouseUp(ToBitmap(event->position()), event->button());
}

void ImageX::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !ToolWorks() || LeftButtonPans())
    return PictureView::mouseDoubleClickEvent(event);
  Q_EMIT OnMouseDown(ToBitmap(event->position()), event->button());
  if (ToolWorks()) HandTo(&MouseTool::DoubleClick, event);
}

void ImageX::keyPressEvent(QKeyEvent* event) {
  Q_EMIT OnKeyPress(event->key(), event->modifiers());
  if (ToolWorks()) {
    const bool cancels = event->key() == Qt::Key_Escape && tool_->IsBusy();
    if (cancels) tool_->Cancel();
    hover_.modifiers = event->modifiers();
    if (cancels || tool_->Key(event->key(), hover_)) return viewport()->update();
  }
  PictureView::keyPressEvent(event);
}

}  // namespace zqm
