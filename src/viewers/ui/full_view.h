// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/ui/picture_view.h"

namespace zqm {

/// A picture that fills the screen: the wheel steps through photos and zooms with Ctrl held; the
/// pointer goes when it rests.
class FullView : public PictureView {
  Q_OBJECT
 public:
  explicit FullView(QWidget* parent = nullptr);

 Q_SIGNALS:
  /// 1 for the next photo, -1 for the one before; once for each notch.
  void Stepped(int step);

 protected:
  void wheelEvent(QWheelEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void RestPointer();

  int turned_ = 0;  // of a notch that isn't full yet
  int rest_ = 0;    // the timer of the resting pointer
};

}  // namespace zqm
