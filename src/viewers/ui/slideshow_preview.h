// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QTimer>
#include <QWidget>

#include "viewers/slideshow_transition.h"

namespace zqm {

/// Runs a transition between two landscapes, to and fro.
class SlideshowPreview : public QWidget {
  Q_OBJECT
 public:
  explicit SlideshowPreview(QWidget* parent = nullptr);

  /// Shown at once, then every few seconds.
  void SetTransition(int number);
  int TransitionNumber() const { return number_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void DrawSamples();
  void Timer1_Timer();

  int number_ = 0;
  QImage samples_[2];
  int marker_ = 0;  // which of them is shown
  TransitionPlayer player_;
  QTimer timer_;
};

}  // namespace zqm
