// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <QVariantAnimation>
#include <QWidget>

#include "shell/busy.h"

class QLabel;
class QProgressBar;

namespace zqm {

/// What the program is busy with, over the panes. It takes their mouse at once and shows itself
/// when the work takes longer than a moment.
class BusyLabel : public QWidget {
  Q_OBJECT
 public:
  BusyLabel(Busy& busy, QWidget* over);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Update();
  void ShowStrip();
  void Place();

  Busy& busy_;
  QWidget* strip_;
  QLabel* text_;
  QProgressBar* bar_;
  QTimer patience_;
  QVariantAnimation fade_;
};

}  // namespace zqm
