// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/before_after.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMetaObject>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>

#include "imaging/pixel_formats.h"
#include "imaging/resample.h"
#include "imaging/ui/image_x.h"
#include "imaging/ui/patch_view.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr double kEnoughPixels = 1.05;  // device pixels of an image pixel before it looks soft
constexpr QSize kLeastView(160, 100);

/// Screens show 8 bits, and less is done sooner.
QImage Shallow(const QImage& picture) {
  const QImage in = InWorkFormat(picture);
  switch (in.format()) {
    case QImage::Format_Grayscale16:
      return in.convertToFormat(QImage::Format_Grayscale8);
    case QImage::Format_RGBX64:
      return in.convertToFormat(QImage::Format_RGB32);
    case QImage::Format_RGBA64:
      return in.convertToFormat(QImage::Format_ARGB32);
    default:
      return in;
  }
}

QSize Scaled(const QSize& size, double scale) {
  return {std::max(1, static_cast<int>(std::lround(size.width() * scale))),
          std::max(1, static_cast<int>(std::lround(size.height() * scale)))};
}

QImage Smaller(const QImage& picture, const QSize& size) {
  if (size == picture.size()) return Shallow(picture);
  return Shallow(Resample(picture, size, ResampleFilter::Triangle));
}

QPoint Scaled(const QPoint& point, double scale) {
  return {static_cast<int>(std::lround(point.x() * scale)),
          static_cast<int>(std::lround(point.y() * scale))};
}

}  // namespace

BeforeAfter::BeforeAfter(const QImage& picture, QWidget* parent)
    : QWidget(parent),
      picture_(picture),
      before_(new ImageX),
      after_(new ImageX),
      beforePatch_(new PatchView(before_)),
      afterPatch_(new PatchView(after_)),
      zoom_(look::Caption(QString())) {
  worker_.setMaxThreadCount(1);
  before_->setObjectName(u"ImageX1"_s);
  after_->setObjectName(u"ImageX2"_s);
  auto* row = new QHBoxLayout(this);
  look::SetSpace(row, 0, look::kSpace8);
  row->addWidget(ComposeSide(tr("Before"), before_, false), 1);
  row->addWidget(ComposeSide(tr("After"), after_, true), 1);
  LinkViews(before_, after_);
  LinkViews(after_, before_);
  ListenForClicks();
}

BeforeAfter::~BeforeAfter() {
  worker_.waitForDone();
}

QWidget* BeforeAfter::ComposeSide(const QString& caption, ImageX* view, bool last) {
  for (const char16_t* mode : {u"SCROLL", u"MOUSEWHEELZOOM"})
    view->SetMouseInteract(QString::fromUtf16(mode), true);
  view->setMinimumSize(kLeastView);
  view->setAccessibleName(caption);
  auto* side = new QWidget;
  auto* column = new QVBoxLayout(side);
  look::SetSpace(column, 0, look::kSpace4);
  auto* head = new QHBoxLayout;
  look::SetSpace(head, 0, look::kSpace4);
  QLabel* title = look::Caption(caption);
  title->setMinimumHeight(look::kControlHeight);
  head->addWidget(title);
  head->addStretch();
  if (last) {
    zoom_->setObjectName(u"lblzoom"_s);
    head->addWidget(zoom_);
    QToolButton* fit = look::IconButton("zoom-fit-best", tr("Fit the picture (0)"));
    fit->setObjectName(u"cmdfit"_s);
    connect(fit, &QToolButton::clicked, before_, &ImageX::Fit);
    QToolButton* actual = look::IconButton("zoom-original", tr("Actual size (1)"));
    actual->setObjectName(u"cmdactual"_s);
    connect(actual, &QToolButton::clicked, before_, [this] { before_->SetZoom(100); });
    head->addWidget(fit);
    head->addWidget(actual);
  }
  column->addLayout(head);
  column->addWidget(view, 1);
  return side;
}

void BeforeAfter::LinkViews(ImageX* from, ImageX* to) {
  connect(from, &ImageX::OnViewChange, this, [this, from, to] {
    if (linking_ || !from->HasImage()) return;
    linking_ = true;
    if (to->HasImage()) to->SetView(from->View());
    linking_ = false;
    zoom_->setText(u"%1 %"_s.arg(std::lround(from->Zoom())));
    Next();
  });
}

void BeforeAfter::ListenForClicks() {
  // A dragged picture moves with the pointer, so the pixel under it doesn't tell a drag.
  const auto inWindow = [this](const QPointF& pixel) {
    const QPointF corner(before_->ToBitmapX(0), before_->ToBitmapY(0));
    return (pixel - corner) * (before_->Zoom() / 100 / devicePixelRatioF());
  };
  connect(
      before_, &ImageX::OnMouseDown, this,
      [this, inWindow](const QPointF& pixel, Qt::MouseButton) { pressedAt_ = inWindow(pixel); });
  connect(before_, &ImageX::OnMouseUp, this,
          [this, inWindow](const QPointF& pixel, Qt::MouseButton button) {
            constexpr double kStill = 4;  // pixels of the window
            const double moved = (inWindow(pixel) - pressedAt_).manhattanLength();
            if (button != Qt::LeftButton || moved > kStill) return;
            const QPoint at(static_cast<int>(std::floor(pixel.x())),
                            static_cast<int>(std::floor(pixel.y())));
            if (picture_.rect().contains(at)) Q_EMIT PixelClicked(at);
          });
}

void BeforeAfter::SetChange(const PartChange& change, int reach) {
  change_ = change;
  reach_ = reach;
  ++newest_;
  if (!change_ && !base_.isNull()) {
    ShowAfter(base_, newest_);
    afterPatch_->Show(beforePatch_->Image(), patch_.area);
    patched_ = newest_;
  }
  Next();
}

bool BeforeAfter::IsCurrent() const {
  const Sight wanted = WantedSight();
  return shown_ == newest_ && (wanted.area.isEmpty() || (patched_ == newest_ && patch_ == wanted));
}

void BeforeAfter::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  Next();
}

void BeforeAfter::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Next();
}

QSize BeforeAfter::BaseSize() const {
  const QSizeF room = QSizeF(before_->maximumViewportSize()) * devicePixelRatioF();
  const double scale =
      std::min({1.0, room.width() / picture_.width(), room.height() / picture_.height()});
  return Scaled(picture_.size(), scale);
}

BeforeAfter::Sight BeforeAfter::WantedSight() const {
  if (base_.isNull()) return {};
  const double scale = before_->Zoom() / 100;
  const double baseScale = static_cast<double>(base_.width()) / picture_.width();
  if (base_.size() == picture_.size() || scale <= baseScale * kEnoughPixels) return {};
  const QSize room = before_->viewport()->size();
  const QRectF seen(QPointF(before_->ToBitmapX(0), before_->ToBitmapY(0)),
                    QPointF(before_->ToBitmapX(room.width()), before_->ToBitmapY(room.height())));
  return {seen.toAlignedRect() & picture_.rect(), std::min(1.0, scale)};
}

/// Begins what is missing most: the picture itself, then what is looked at closely, then all of it.
void BeforeAfter::Next() {
  if (running_ || !isVisible() || picture_.isNull()) return;
  constexpr double kTooSoft = 1.3;
  const QSize size = BaseSize();
  if (base_.isNull() || size.width() > base_.width() * kTooSoft)
    return Start({Kind::Base, newest_, {}});
  const Sight wanted = WantedSight();
  if (wanted.area.isEmpty()) {
    if (!patch_.area.isEmpty()) {
      patch_ = {};
      beforePatch_->Show({}, {});
      afterPatch_->Show({}, {});
    }
  } else if (patched_ != newest_ || !(patch_ == wanted)) {
    return Start({Kind::Patch, newest_, wanted});
  }
  if (shown_ == newest_) return;
  if (!change_) return ShowAfter(base_, newest_);
  Start({Kind::Proxy, newest_, {}});
}

void BeforeAfter::Start(const Job& job) {
  running_ = true;
  const auto make = [job, picture = picture_, base = base_, change = change_, reach = reach_,
                     size = BaseSize()]() -> Made {
    if (job.kind == Kind::Base) return {Smaller(picture, size), {}};
    if (job.kind == Kind::Proxy)
      return {{}, change(base, {static_cast<double>(base.width()) / picture.width(), {}, {}})};
    const QRect wide = job.sight.area.adjusted(-reach, -reach, reach, reach) & picture.rect();
    const double scale = job.sight.scale;
    const QImage part = Smaller(picture.copy(wide), Scaled(wide.size(), scale));
    const QRect inner(Scaled(job.sight.area.topLeft() - wide.topLeft(), scale),
                      Scaled(job.sight.area.size(), scale));
    const QImage before = part.copy(inner);
    if (!change || part.isNull()) return {before, before};
    const PartView view{scale, Scaled(wide.topLeft(), scale), Scaled(picture.size(), scale)};
    return {before, change(part, view).copy(inner)};
  };
  worker_.start([this, job, make] {
    const Made made = make();
    QMetaObject::invokeMethod(
        this, [this, job, made] { Take(job, made); }, Qt::QueuedConnection);
  });
}

void BeforeAfter::Take(const Job& job, const Made& made) {
  running_ = false;
  switch (job.kind) {
    case Kind::Base:
      TakeBase(made.before);
      break;
    case Kind::Proxy:
      // An empty change that came meanwhile is shown already.
      if (job.change > shown_) ShowAfter(made.after, job.change);
      break;
    case Kind::Patch:
      if (job.change < patched_ && !(job.change == newest_)) break;
      patch_ = job.sight;
      patched_ = job.change;
      beforePatch_->Show(made.before, job.sight.area);
      afterPatch_->Show(made.after, job.sight.area);
      break;
  }
  Next();
}

void BeforeAfter::TakeBase(const QImage& base) {
  if (base.isNull()) {
    picture_ = {};
    before_->SetMessage(tr("There is not enough memory to show the picture."));
    return;
  }
  base_ = base;
  shown_ = 0;
  before_->ShowImage(base_, picture_.size(), ImageX::KeepView::SamePhoto);
}

void BeforeAfter::ShowAfter(const QImage& picture, quint64 change) {
  shown_ = change;
  afterProxy_ = picture;
  after_->SetMessage(picture.isNull() ? tr("There is not enough memory for the preview.")
                                      : QString());
  const bool first = !after_->HasImage();
  after_->ShowImage(picture, picture_.size(), ImageX::KeepView::SamePhoto);
  if (first && after_->HasImage()) after_->SetView(before_->View());
  Q_EMIT ProxyChanged();
}

}  // namespace zqm
