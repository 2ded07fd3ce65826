// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QTimer>

#include "viewers/slideshow.h"

class QLabel;

namespace zqm {

/// Plays photos on the whole screen until the Escape key. The window that opens it stays where it
/// is, behind: one that is hidden and shown again has another place on some desktops.
class frmslideshow : public QDialog {
  Q_OBJECT
 public:
  explicit frmslideshow(SlideshowPlan plan, QWidget* parent = nullptr, Clock clock = SteadyClock());

  Slideshow& Show() { return show_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void ComposeNotice();
  void ConnectShow();
  void FitScreen();
  void Form_KeyPress(int key);
  void OnProgress();
  void Tell(const QString& text);
  void SetPaused(bool paused);
  void End(const QString& name, const QString& reason);

  Slideshow show_;
  bool keys_;
  QWidget* strip_;
  QLabel* notice_;
  QTimer patience_;       // before waiting is told, and between its percents
  QTimer silence_;        // how long a notice stands
  bool loading_ = false;  // the notice is that of waiting
};

}  // namespace zqm
