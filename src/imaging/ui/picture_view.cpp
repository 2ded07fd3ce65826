// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/picture_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "imaging/row_blocks.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr double kSmallestScale = 0.01, kLargestScale = 32;
constexpr double kWheelStep = 1.2;  // a notch
constexpr double kKeyStep = 1.25;
constexpr double kPixelsShowFrom = 2;   // from here single pixels are what the user looks at
constexpr double kEnoughPixels = 1.05;  // device pixels of an image pixel before it looks soft
constexpr int kLineStep = 40;
constexpr int kMessageMargin = look::kSpace24;

constexpr QStringView kScroll = u"SCROLL", kWheelZoom = u"MOUSEWHEELZOOM";
constexpr std::array kModes = {kScroll, kWheelZoom};

/// The mean of each two by two pixels.
QImage Halved(const QImage& image) {
  const QSize size((image.width() + 1) / 2, (image.height() + 1) / 2);
  if (image.format() != QImage::Format_RGB32)
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  QImage half(size, QImage::Format_RGB32);
  // Two channels at a time; the two bits that the sum of four needs fit between them.
  constexpr quint32 kEven = 0x00ff00ff, kRound = 0x00020002;
  const auto evens = [](QRgb pixel) { return pixel & kEven; };
  const auto odds = [](QRgb pixel) { return (pixel >> 8) & kEven; };
  for (int y = 0; y < size.height(); ++y) {
    const auto* above = reinterpret_cast<const QRgb*>(image.constScanLine(2 * y));
    const auto* below =
        reinterpret_cast<const QRgb*>(image.constScanLine(std::min(2 * y + 1, image.height() - 1)));
    auto* out = reinterpret_cast<QRgb*>(half.scanLine(y));
    for (int x = 0; x < size.width(); ++x) {
      const int left = 2 * x, right = std::min(2 * x + 1, image.width() - 1);
      const quint32 even =
          evens(above[left]) + evens(above[right]) + evens(below[left]) + evens(below[right]);
      const quint32 odd =
          odds(above[left]) + odds(above[right]) + odds(below[left]) + odds(below[right]);
      out[x] = (((even + kRound) >> 2) & kEven) | ((((odd + kRound) >> 2) & kEven) << 8);
    }
  }
  return half;
}

/// The picture with its colours weighed by alpha. In pieces that the toolkit converts at once:
/// larger ones it hands to the threads that painting waits for.
QImage Weighed8(const QImage& image) {
  constexpr int kPiece = 1 << 16;
  QImage out(image.size(), QImage::Format_ARGB32_Premultiplied);
  uchar* bits = out.bits();
  if (out.isNull() || !bits) return {};
  const int rows = std::max(1, kPiece / image.width());
  const int pieces = (image.height() + rows - 1) / rows;
  const qsizetype stride = out.bytesPerLine();
  ForRowBlocks(pieces, std::int64_t{rows} * image.width() * 4, [&](int begin, int end) {
    for (int piece = begin; piece < end; ++piece) {
      const int top = piece * rows, height = std::min(rows, image.height() - top);
      const QImage part = image.copy(0, top, image.width(), height)
                              .convertToFormat(QImage::Format_ARGB32_Premultiplied);
      for (int y = 0; y < part.height(); ++y)
        std::memcpy(bits + (top + y) * stride, part.constScanLine(y),
                    static_cast<std::size_t>(stride));
    }
  });
  return out;
}

/// The smallest level of a picture that still has a pixel for each of the device, made when it is
/// missing.
std::size_t LevelIn(std::vector<QImage>& levels, double deviceScale) {
  std::size_t level = 0;
  while (deviceScale <= 0.5 && levels[level].width() > 1 && levels[level].height() > 1) {
    deviceScale *= 2;
    ++level;
    if (level == levels.size()) levels.push_back(Halved(levels.back()));
  }
  return level;
}

}  // namespace

PictureView::PictureView(QWidget* parent)
    : QAbstractScrollArea(parent), background_(look::kGround), modes_{kWheelZoom.toString()} {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setMouseTracking(true);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  horizontalScrollBar()->setSingleStep(kLineStep);
  verticalScrollBar()->setSingleStep(kLineStep);
}

void PictureView::ShowImage(const QImage& image, const QSize& fullSize, KeepView keep) {
  if (image.isNull()) return Clear();
  const QPointF middle = QRectF(viewport()->rect()).center();
  const QPointF before = ToBitmap(middle);
  const QSize sizeBefore = fullSize_;
  const bool keeps = keep != KeepView::No && HasImage() && !fit_;
  std::vector<QImage> levels = MakeLevels(image, 1);
  if (levels.empty()) return Clear();
  levels_ = std::move(levels);
  fullSize_ = fullSize.isEmpty() ? image.size() : fullSize;
  asked_ = false;
  if (!keeps) {
    Fit();
  } else {
    // A stand-in may have told another size.
    const double across = static_cast<double>(fullSize_.width()) / sizeBefore.width();
    const double down = static_cast<double>(fullSize_.height()) / sizeBefore.height();
    if (keep == KeepView::SamePhoto)
      scale_ = std::clamp(scale_ / across, kSmallestScale, kLargestScale);
    UpdateScrollBars();
    MoveTo({before.x() * across, before.y() * down}, middle);
    AskForPixels();
  }
  Reshow();
  Q_EMIT OnImageChange();
}

void PictureView::ShowLevels(std::vector<QImage> levels) {
  if (levels.empty()) return Clear();
  const bool keeps = HasImage() && levels.front().size() == fullSize_;
  levels_ = std::move(levels);
  fullSize_ = levels_.front().size();
  asked_ = false;
  if (!keeps) Fit();
  Reshow();
  Q_EMIT OnImageChange();
}

void PictureView::Clear() {
  if (!HasImage()) return;
  levels_.clear();
  fullSize_ = QSize();
  scale_ = 1;
  fit_ = true;
  UpdateScrollBars();
  Reshow();
  Q_EMIT OnImageChange();
}

void PictureView::SetMessage(const QString& message) {
  if (message == message_) return;
  message_ = message;
  setAccessibleDescription(message);
  viewport()->update();
}

void PictureView::SetBackground(const QColor& colour) {
  background_ = colour;
  Reshow();
}

// The view.

QSizeF PictureView::ShownSize() const {
  return QSizeF(fullSize_) * (scale_ / devicePixelRatioF());
}

/// Where the picture's corner lies in the viewport: in the middle what is smaller than the view.
QPointF PictureView::Origin() const {
  const QSizeF shown = ShownSize();
  const QSizeF room = viewport()->size();
  const double x = shown.width() <= room.width() ? (room.width() - shown.width()) / 2
                                                 : -horizontalScrollBar()->value();
  const double y = shown.height() <= room.height() ? (room.height() - shown.height()) / 2
                                                   : -verticalScrollBar()->value();
  // On whole device pixels, or a picture that fits exactly would be blurred.
  const double ratio = devicePixelRatioF();
  return {std::round(x * ratio) / ratio, std::round(y * ratio) / ratio};
}

QPointF PictureView::ToBitmap(const QPointF& at) const {
  return (at - Origin()) * (devicePixelRatioF() / scale_);
}

QPointF PictureView::FromBitmap(const QPointF& pixel) const {
  return Origin() + pixel * (scale_ / devicePixelRatioF());
}

double PictureView::ToBitmapX(double x) const {
  return ToBitmap({x, 0}).x();
}
double PictureView::ToBitmapY(double y) const {
  return ToBitmap({0, y}).y();
}

double PictureView::FitScale(const QSize& picture) const {
  // The room without scroll bars, which are gone once the picture fits.
  const QSizeF room = QSizeF(maximumViewportSize()) * devicePixelRatioF();
  if (picture.isEmpty() || room.isEmpty()) return 1;
  return std::max(kSmallestScale, std::min({1.0, room.width() / picture.width(),
                                            room.height() / picture.height()}));
}

void PictureView::Fit() {
  fit_ = true;
  if (!HasImage()) return;
  scale_ = FitScale(fullSize_);
  UpdateScrollBars();
  AskForPixels();
  Reshow();
  Q_EMIT OnViewChange();
}

double PictureView::ScaleToShow(const QSize& picture) const {
  return HasImage() && picture == fullSize_ ? scale_ : FitScale(picture);
}

void PictureView::SetZoom(double percent) {
  SetScale(percent / 100, QRectF(viewport()->rect()).center());
}

void PictureView::SetScale(double scale, const QPointF& about) {
  if (!HasImage()) return;
  const QPointF pixel = ToBitmap(about);
  fit_ = false;
  scale_ = std::clamp(scale, kSmallestScale, kLargestScale);
  UpdateScrollBars();
  MoveTo(pixel, about);
  AskForPixels();
  Reshow();
  Q_EMIT OnViewChange();
}

/// Scrolls so that a pixel of the picture lies at a place of the viewport, as far as it goes.
void PictureView::MoveTo(const QPointF& pixel, const QPointF& at) {
  const QPointF now = Origin() + pixel * (scale_ / devicePixelRatioF());
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qRound(now.x() - at.x()));
  verticalScrollBar()->setValue(verticalScrollBar()->value() + qRound(now.y() - at.y()));
}

ImageView PictureView::View() const {
  return {Zoom(), ToBitmap(QRectF(viewport()->rect()).center()), fit_};
}

void PictureView::SetView(const ImageView& view) {
  if (!HasImage()) return;
  if (view.fit) return Fit();
  const QPointF middle = QRectF(viewport()->rect()).center();
  SetZoom(view.zoom);
  MoveTo(view.centre, middle);
}

void PictureView::UpdateScrollBars() {
  const QSizeF shown = HasImage() ? ShownSize() : QSizeF(0, 0);
  const auto set = [](QScrollBar* bar, double length, int room) {
    // Half a pixel over is rounding and no reason for a scroll bar.
    bar->setRange(0, std::max(0, static_cast<int>(std::ceil(length - 0.5)) - room));
    bar->setPageStep(room);
  };
  // A bar that comes takes room from the other direction.
  for (int pass = 0; pass < 2; ++pass) {
    set(horizontalScrollBar(), shown.width(), viewport()->width());
    set(verticalScrollBar(), shown.height(), viewport()->height());
  }
  UpdateCursor();
}

void PictureView::AskForPixels() {
  if (asked_ || !HasImage()) return;
  const QImage& image = levels_.front();
  const double devicePerImagePixel =
      scale_ * fullSize_.width() / static_cast<double>(image.width());
  if (image.width() >= fullSize_.width() || devicePerImagePixel <= kEnoughPixels) return;
  asked_ = true;
  Q_EMIT FullSizeWanted();
}

std::vector<QImage> PictureView::MakeLevels(const QImage& image, double deviceScale) {
  if (image.isNull()) return {};
  const bool plain =
      image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_Grayscale8;
  std::vector<QImage> levels = {plain ? image : Weighed8(image)};
  if (levels.front().isNull()) return {};
  LevelIn(levels, deviceScale);
  return levels;
}

const QImage& PictureView::LevelFor(double deviceScale) {
  return levels_[LevelIn(levels_, deviceScale)];
}

/// What the viewport shows has changed, but for what lies over the picture.
void PictureView::Reshow() {
  frame_ = QImage();
  viewport()->update();
}

void PictureView::DrawPicture(QPainter& painter) {
  const QRectF target(Origin(), ShownSize());
  const double deviceScale =
      scale_ * fullSize_.width() / static_cast<double>(levels_.front().width());
  const QImage& level = LevelFor(deviceScale);
  const QSizeF device = target.size() * devicePixelRatioF();
  const QSizeF off = device - QSizeF(level.size());
  if (std::abs(off.width()) < 1 && std::abs(off.height()) < 1) {
    QImage exact = level;
    exact.setDevicePixelRatio(devicePixelRatioF());
    painter.drawImage(target.topLeft(), exact);
    return;
  }
  const QRectF visible = target & QRectF(viewport()->rect());
  const double sx = level.width() / target.width(), sy = level.height() / target.height();
  const QPointF from = visible.topLeft() - target.topLeft();
  const QRectF source(from.x() * sx, from.y() * sy, visible.width() * sx, visible.height() * sy);
  painter.setRenderHint(QPainter::SmoothPixmapTransform, deviceScale < kPixelsShowFrom);
  painter.drawImage(visible, level, source);
}

/// Scaling is done once for each view: what lies over the picture moves more often.
const QImage& PictureView::Frame() {
  const double ratio = devicePixelRatioF();
  const QSize size = (QSizeF(viewport()->size()) * ratio).toSize();
  if (frame_.size() == size && frame_.devicePixelRatio() == ratio) return frame_;
  frame_ = QImage(size, QImage::Format_RGB32);
  frame_.setDevicePixelRatio(ratio);
  frame_.fill(background_);
  if (HasImage() && !frame_.isNull()) {
    QPainter painter(&frame_);
    DrawPicture(painter);
  }
  return frame_;
}

void PictureView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.drawImage(QPointF(0, 0), Frame());
  PaintOver(painter, event->region());
  if (message_.isEmpty()) return;
  const QRect room = viewport()->rect().marginsRemoved(
      {kMessageMargin, kMessageMargin, kMessageMargin, kMessageMargin});
  painter.setPen(QColor(look::kQuiet));
  painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, message_);
}

void PictureView::PaintOver(QPainter&, const QRegion&) {}

void PictureView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  if (fit_)
    Fit();
  else
    UpdateScrollBars();
  Q_EMIT OnViewChange();
}

void PictureView::scrollContentsBy(int, int) {
  Reshow();
  Q_EMIT OnViewChange();
}

// Mouse and keys.

void PictureView::SwitchMode(const QString& mode, bool on) {
  if (on)
    modes_.insert(mode);
  else
    modes_.remove(mode);
  UpdateCursor();
}

void PictureView::SetMouseInteract(const QString& mode, bool on) {
  const QString upper = mode.toUpper();
  if (std::ranges::find(kModes, QStringView(upper)) != kModes.end()) SwitchMode(upper, on);
}

bool PictureView::LeftButtonPans() const {
  return modes_.contains(kScroll.toString());
}

bool PictureView::HasRoomToPan() const {
  return horizontalScrollBar()->maximum() > 0 || verticalScrollBar()->maximum() > 0;
}

void PictureView::UpdateCursor() {
  const bool pans = (spaceHeld_ || LeftButtonPans()) && HasRoomToPan();
  if (cursorHidden_)
    viewport()->setCursor(Qt::BlankCursor);
  else if (panning_)
    viewport()->setCursor(Qt::ClosedHandCursor);
  else
    viewport()->setCursor(pans ? QCursor(Qt::OpenHandCursor) : IdleCursor());
}

void PictureView::HideCursor(bool hidden) {
  if (hidden == cursorHidden_) return;
  cursorHidden_ = hidden;
  UpdateCursor();
}

void PictureView::HoldSpace(bool held) {
  spaceHeld_ = held;
  UpdateCursor();
}

void PictureView::wheelEvent(QWheelEvent* event) {
  const int turned = event->angleDelta().y();
  const bool zooms =
      modes_.contains(kWheelZoom.toString()) || event->modifiers().testFlag(Qt::ControlModifier);
  if (!zooms || turned == 0) return QAbstractScrollArea::wheelEvent(event);
  constexpr double kNotch = 120;  // eighths of a degree
  SetScale(scale_ * std::pow(kWheelStep, turned / kNotch), event->position());
  event->accept();
}

bool PictureView::BeginPan(QMouseEvent* event) {
  const bool pans = event->button() == Qt::MiddleButton ||
                    (event->button() == Qt::LeftButton && (spaceHeld_ || LeftButtonPans()));
  if (!pans || !HasRoomToPan()) return false;
  panning_ = true;
  panFrom_ = event->pos();
  UpdateCursor();
  return true;
}

bool PictureView::MovePan(QMouseEvent* event) {
  if (!panning_) return false;
  const QPoint moved = event->pos() - panFrom_;
  panFrom_ = event->pos();
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() - moved.x());
  verticalScrollBar()->setValue(verticalScrollBar()->value() - moved.y());
  return true;
}

bool PictureView::EndPan(QMouseEvent* event) {
  const bool ended = panning_ && (event->buttons() & (Qt::LeftButton | Qt::MiddleButton)) == 0;
  if (ended) panning_ = false;
  UpdateCursor();
  return ended;
}

void PictureView::mousePressEvent(QMouseEvent* event) {
  Q_EMIT OnMouseDown(ToBitmap(event->position()), event->button());
  BeginPan(event);
}

void PictureView::mouseMoveEvent(QMouseEvent* event) {
  MovePan(event);
  Q_EMIT OnMouseMove(ToBitmap(event->position()));
}

void PictureView::mouseReleaseEvent(QMouseEvent* event) {
  EndPan(event);
  Q_EMIT OnMouseUp(ToBitmap(event->position()), event->button());
}

void PictureView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  fit_ ? SetScale(1, event->position()) : Fit();
}

void PictureView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      return SetZoom(Zoom() * kKeyStep);
    case Qt::Key_Minus:
      return SetZoom(Zoom() / kKeyStep);
    case Qt::Key_0:
      return Fit();
    case Qt::Key_1:
      return SetZoom(100);
    case Qt::Key_Space:
      return HoldSpace(true);
    default:
      return QAbstractScrollArea::keyPressEvent(event);
  }
}

void PictureView::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Space || event->isAutoRepeat())
    return QAbstractScrollArea::keyReleaseEvent(event);
  HoldSpace(false);
}

void PictureView::focusOutEvent(QFocusEvent* event) {
  HoldSpace(false);
  QAbstractScrollArea::focusOutEvent(event);
}

}  // namespace zqm
