// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QStringList>
#include <QTimer>
#include <chrono>
#include <optional>

#include "batch/photo_commands.h"
#include "imaging/photo_reader.h"
#include "viewers/photos_ahead.h"
#include "viewers/slideshow_transition.h"

namespace zqm {

struct SlideshowPlan {
  QStringList photos;
  int transition = 0;                        ///< number in `Transitions()`
  std::chrono::milliseconds interval{5000};  ///< from one photo to the next, transition included
  bool keys = false;                         ///< whether the user may pause and step
  ReadRequest request;
  bool upright = false;  ///< turned by the orientation tag
};

/// Photos one after the other, for ever, without a window: what the screen shows and when the next
/// one comes. The old photo stays until the next one is read; one that can't be read is passed
/// over.
class Slideshow : public QObject {
  Q_OBJECT
 public:
  explicit Slideshow(SlideshowPlan plan, Clock clock = SteadyClock());

  /// In device pixels. The first one begins the show.
  void SetScreen(const QSize& screen);
  void SetPace(double hertz) { player_.SetPace(hertz); }

  /// Photos are fitted and centred on black; null before the first one.
  const QImage& Frame() { return player_.Frame(); }
  /// Place in the list of the photo that is shown or comes in; -1 before the first one.
  int Current() const { return current_; }
  /// Whether the next photo is just coming in.
  bool IsChanging() const { return player_.IsRunning(); }
  /// How much of the photo that is waited for has been read; nothing while none is.
  std::optional<int> Waiting() const;

  bool IsPaused() const { return paused_; }
  void SetPaused(bool paused);
  /// Now, to the next photo (1) or the one before (-1).
  void Step(int by);
  /// Looks at the clock, as it does by itself in time.
  void Tick();

 Q_SIGNALS:
  /// `Frame` is another one.
  void FrameDue();
  /// The next photo is due and has still to be read.
  void Waits();
  /// The next photo was due and these, before it, can't be shown.
  void PassedOver(const QStringList& names);
  /// None of the photos can be shown; the show is over.
  void NothingToShow(const QString& name, const QString& reason);

 private:
  int Beside(int place, int by) const;
  bool IsAlone() const { return plan_.photos.size() == 1; }
  bool IsDue() const;
  void Want();
  void RenewShown();
  void FindComing();
  void BeginSlide();
  void Schedule();

  SlideshowPlan plan_;
  Clock clock_;
  PhotosAhead ahead_;
  TransitionPlayer player_;
  QTimer due_;
  QSize screen_;

  int current_ = -1;
  QImage photo_;        // the current one as it was read
  bool renew_ = false;  // it was read for a screen of another size

  int candidate_ = 0;  // place of the next photo, as far as is known
  int direction_ = 1;
  QImage coming_, frame_;  // the next photo, and how it will be shown
  QStringList passed_;     // names, since the current one
  QString reason_;         // of the last of them
  std::chrono::milliseconds dueAt_{};
  bool stepped_ = false;  // the next one is due whatever the clock says
  bool paused_ = false;
  bool over_ = false;
};

namespace slideshow_text {
inline constexpr char16_t kLoading[] = u"Loading Image. Please wait...";
inline constexpr char16_t kNothing[] = u"None of the photos can be shown.";
}  // namespace slideshow_text

/// The main window's command.
inline constexpr PhotoCommand kSlideshowCommand = {
    0, u"", u"Loading Slideshow settings. Please wait...",
    u"The image(s) that you have selected are either offline or missing and thus cannot be shown.",
    true};

}  // namespace zqm
