// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/slideshow_transition.h"

#include <QMetaObject>
#include <utility>

namespace zqm {
namespace {

constexpr double kUsualPace = 60, kSlowest = 10, kFastest = 1000;  // hertz
constexpr double kUndrawn = -1;                                    // no progress

}  // namespace

Clock SteadyClock() {
  return [] {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
  };
}

TransitionPlayer::TransitionPlayer(Clock clock) : clock_(std::move(clock)) {
  pool_.setMaxThreadCount(1);
  pace_.setTimerType(Qt::PreciseTimer);
  SetPace(kUsualPace);
  connect(&pace_, &QTimer::timeout, this, &TransitionPlayer::Tick);
}

TransitionPlayer::~TransitionPlayer() {
  pool_.clear();
  pool_.waitForDone();
}

void TransitionPlayer::PrepareTransition(int number, const QSize& screen) {
  if (number == number_ && screen == screen_) return;
  Finish();
  number_ = number;
  screen_ = screen;
  frames_.reset();
  pool_.clear();
  pool_.start([this, number, screen] {
    auto frames = std::make_shared<const TransitionFrames>(TransitionAt(number), screen);
    QMetaObject::invokeMethod(this, [this, number, screen, frames] {
      if (number != number_ || screen != screen_) return;  // another one is wanted meanwhile
      frames_ = frames;
      Q_EMIT Prepared();
    });
  });
}

void TransitionPlayer::SetPace(double hertz) {
  // Some screens tell 0 or nonsense.
  const bool plausible = hertz >= kSlowest && hertz <= kFastest;
  pace_.setInterval(static_cast<int>(1000 / (plausible ? hertz : kUsualPace)));
}

void TransitionPlayer::Show(const QImage& picture) {
  pace_.stop();
  next_ = frame_ = QImage();
  shown_ = picture;
  Q_EMIT FrameDue();
}

void TransitionPlayer::RunTransition(const QImage& next, std::chrono::milliseconds duration) {
  Finish();
  if (!frames_ || shown_.isNull()) return Show(next);
  next_ = next;
  began_ = clock_();
  duration_ = duration;
  progress_ = 0;
  drawn_ = kUndrawn;
  pace_.start();
  Q_EMIT FrameDue();
}

void TransitionPlayer::Finish() {
  if (IsRunning()) Show(std::exchange(next_, {}));
}

void TransitionPlayer::Tick() {
  if (!IsRunning()) return;
  const std::chrono::duration<double> passed = clock_() - began_;
  progress_ = passed / std::chrono::duration<double>(duration_);
  if (progress_ < 1)
    Q_EMIT FrameDue();
  else
    Finish();
}

const QImage& TransitionPlayer::Frame() {
  if (!IsRunning()) return shown_;
  if (drawn_ != progress_) {
    frames_->Draw(shown_, next_, progress_, frame_);
    drawn_ = progress_;
  }
  return frame_;
}

}  // namespace zqm
