// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QTimer>
#include <QVariantAnimation>
#include <QWidget>

#include "shell/busy.h"

class QLabel;
class QProgressBar;

namespace zqm {

/// What the program is busy with, over the panes. It takes their mouse and keys at once and shows
/// itself when the work takes longer than a moment.
class BusyLabel : public QWidget {
  Q_OBJECT
 public:
  /// Lies in the window of `over`, not in `over` itself: a splitter would make it a pane.
  BusyLabel(Busy& busy, QWidget* over);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Update();
  void ShowStrip();
  void Place();
  bool Covers(const QObject* object) const;

  Busy& busy_;
  QPointer<QWidget> over_;
  QWidget* strip_;
  QLabel* text_;
  QProgressBar* bar_;
  QTimer patience_;
  QVariantAnimation fade_;
};

}  // namespace zqm
