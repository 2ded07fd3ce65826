// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/slideshow.h"

#include <QPainter>
#include <utility>

#include "imaging/row_sink.h"
#include "shell/error.h"
#include "shell/files.h"

namespace zqm {
namespace {

/// Null where there is no memory for it.
QImage OnBlack(const QImage& photo, const QSize& screen) {
  QImage frame(screen, QImage::Format_RGB32);
  if (frame.isNull()) return frame;
  frame.fill(Qt::black);
  const QSize size = FitInto(photo.size(), screen);
  const QPoint at((screen.width() - size.width()) / 2, (screen.height() - size.height()) / 2);
  QPainter painter(&frame);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(QRect(at, size), photo);
  return frame;
}

}  // namespace

Slideshow::Slideshow(SlideshowPlan plan, Clock clock)
    : plan_(std::move(plan)), clock_(clock), ahead_(plan_.request), player_(std::move(clock)) {
  const auto tick = [this] { Guarded("frmslideshow", "Timer1", [this] { Tick(); }); };
  ahead_.SetUpright(plan_.upright);
  due_.setSingleShot(true);
  due_.setTimerType(Qt::PreciseTimer);
  connect(&due_, &QTimer::timeout, this, tick);
  connect(&ahead_, &PhotosAhead::Ready, this, tick);
  connect(&player_, &TransitionPlayer::Prepared, this, tick);
  connect(&player_, &TransitionPlayer::FrameDue, this, &Slideshow::FrameDue);
}

void Slideshow::SetScreen(const QSize& screen) {
  if (screen.isEmpty() || screen == screen_) return;
  screen_ = screen;
  ahead_.SetBox(screen);
  player_.PrepareTransition(plan_.transition, screen);
  coming_ = frame_ = QImage();
  if (current_ >= 0) {
    renew_ = true;
    player_.Show(OnBlack(photo_, screen_));
  }
  Tick();
}

int Slideshow::Beside(int place, int by) const {
  const int count = static_cast<int>(plan_.photos.size());
  return (place + by + count) % count;
}

bool Slideshow::IsDue() const {
  if (current_ < 0) return true;
  return !IsAlone() && (stepped_ || (!paused_ && clock_() >= dueAt_));
}

std::optional<int> Slideshow::Waiting() const {
  if (over_ || !IsDue() || player_.IsRunning()) return std::nullopt;
  return frame_.isNull() ? ahead_.Percent(plan_.photos.at(candidate_)) : 99;
}

void Slideshow::SetPaused(bool paused) {
  if (paused == paused_) return;
  paused_ = paused;
  dueAt_ = clock_() + plan_.interval;
  Tick();
}

void Slideshow::Step(int by) {
  if (over_ || current_ < 0 || IsAlone()) return;
  player_.Finish();
  const int place = Beside(stepped_ ? candidate_ : current_, by);
  if (place != candidate_ || by != direction_) {
    candidate_ = place;
    direction_ = by;
    coming_ = frame_ = QImage();
    passed_.clear();
  }
  stepped_ = true;
  Tick();
}

void Slideshow::Tick() {
  player_.Tick();
  if (over_ || screen_.isEmpty() || plan_.photos.isEmpty()) return;
  Want();
  if (renew_) RenewShown();
  if (current_ >= 0 && IsAlone()) return;
  FindComing();
  if (IsDue()) BeginSlide();
  Schedule();
  if (Waiting()) Q_EMIT Waits();
}

/// The next photo first; where the user steps, also the one on the other side.
void Slideshow::Want() {
  QStringList paths;
  if (renew_) paths.append(plan_.photos.at(current_));
  paths.append(plan_.photos.at(candidate_));
  if (plan_.keys && current_ >= 0) {
    paths.append(plan_.photos.at(Beside(current_, 1)));
    paths.append(plan_.photos.at(Beside(current_, -1)));
  }
  ahead_.Want(paths);
}

void Slideshow::RenewShown() {
  const auto* photo = ahead_.Get(plan_.photos.at(current_));
  if (photo == nullptr) return;
  renew_ = false;
  if (!*photo || (*photo)->image.isNull()) return;  // gone meanwhile: what is shown stays
  photo_ = (*photo)->image;
  player_.Show(OnBlack(photo_, screen_));
}

void Slideshow::FindComing() {
  while (frame_.isNull() && passed_.size() < plan_.photos.size()) {
    const QString path = plan_.photos.at(candidate_);
    const auto* photo = ahead_.Get(path);
    if (photo == nullptr) return;  // still being read
    if (*photo && !(*photo)->image.isNull()) {
      coming_ = (*photo)->image;
      frame_ = OnBlack(coming_, screen_);
    }
    if (!frame_.isNull()) return;
    reason_ = !*photo ? photo->Reason() : (*photo)->reason;
    passed_.append(GetFileName(path));
    candidate_ = Beside(candidate_, direction_);
    Want();
  }
}

void Slideshow::BeginSlide() {
  if (frame_.isNull()) {
    if (passed_.size() < plan_.photos.size()) return;
    over_ = true;
    Q_EMIT NothingToShow(passed_.last(), reason_);
    return;
  }
  if (!player_.IsPrepared() && current_ >= 0) return;
  const bool another = current_ >= 0 && candidate_ != current_;
  current_ = std::exchange(candidate_, Beside(candidate_, 1));
  direction_ = 1;
  photo_ = std::exchange(coming_, {});
  renew_ = stepped_ = false;
  dueAt_ = clock_() + plan_.interval;
  ahead_.Want({});  // a photo is what its file is when its turn comes near
  const QImage frame = std::exchange(frame_, {});
  if (another)
    player_.RunTransition(frame, kTransitionTime);
  else
    player_.Show(frame);
  if (!passed_.isEmpty()) Q_EMIT PassedOver(std::exchange(passed_, {}));
  if (!IsAlone()) Want();
}

void Slideshow::Schedule() {
  if (over_ || paused_ || IsDue()) return due_.stop();
  due_.start(dueAt_ - clock_());
}

}  // namespace zqm
