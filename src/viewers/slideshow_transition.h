// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QThreadPool>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>

#include "imaging/transitions.h"

namespace zqm {

/// Time from any moment on, never backwards.
using Clock = std::function<std::chrono::milliseconds()>;
Clock SteadyClock();

/// How long one picture takes to give way to the next, in the show and in its preview.
inline constexpr std::chrono::milliseconds kTransitionTime(1000);

/// Shows one picture after the other, with a transition between them. A frame is drawn for the
/// moment at which it is asked for: where drawing is slow, frames are left out and it takes no
/// longer. Pictures are RGB32 of the screen's size.
class TransitionPlayer : public QObject {
  Q_OBJECT
 public:
  explicit TransitionPlayer(Clock clock = SteadyClock());
  ~TransitionPlayer() override;

  /// Makes what a transition needs on a screen of this size (device pixels), beside the interface
  /// thread; `Prepared` tells when. What runs ends, unless it is this one.
  void PrepareTransition(int number, const QSize& screen);
  bool IsPrepared() const { return frames_ != nullptr; }

  /// How often a second the screen shows another picture.
  void SetPace(double hertz);

  void Show(const QImage& picture);
  /// From the picture that is shown to the next; without its frames it comes at once.
  void RunTransition(const QImage& next, std::chrono::milliseconds duration);
  bool IsRunning() const { return !next_.isNull(); }
  void Finish();
  /// Looks at the clock, as it does by itself at the screen's pace.
  void Tick();

  /// What the screen shows now; null before the first picture.
  const QImage& Frame();

 Q_SIGNALS:
  void Prepared();
  /// `Frame` is another one.
  void FrameDue();

 private:
  Clock clock_;
  int number_ = -1;
  QSize screen_;
  std::shared_ptr<const TransitionFrames> frames_;
  QImage shown_, next_;  // `next_` only while it runs
  QImage frame_;
  std::chrono::milliseconds began_{}, duration_{};
  double progress_ = 0, drawn_ = 0;
  QTimer pace_;
  QThreadPool pool_;
};

}  // namespace zqm
