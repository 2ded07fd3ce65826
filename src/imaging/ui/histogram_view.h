// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "imaging/effects/histogram.h"

namespace zqm {

/// Levels from dark to light: brightness as an area, red, green and blue as lines, and the
/// brightness from before as a quiet line.
class HistogramView : public QWidget {
  Q_OBJECT
 public:
  explicit HistogramView(QWidget* parent = nullptr);

  void Show(const Histogram& before, const Histogram& after);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Histogram before_, after_;
};

}  // namespace zqm
