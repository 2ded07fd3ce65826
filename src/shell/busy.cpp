// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/busy.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace zqm {
namespace {
constexpr int kYieldMilliseconds = 30;
}

BusyRun::BusyRun(Busy& busy, const QString& text) : busy_(busy), base_(text) {
  ++busy_.depth_;
  busy_.text_ = text;
  busy_.percent_ = -1;
  sinceYield_.start();
  Q_EMIT busy_.Changed();
}

BusyRun::~BusyRun() {
  if (--busy_.depth_ == 0) {
    busy_.text_.clear();
    busy_.percent_ = -1;
  }
  Q_EMIT busy_.Changed();
}

void BusyRun::Progress(int done, int total) {
  if (sinceYield_.elapsed() < kYieldMilliseconds) return;
  busy_.percent_ = total > 0 ? static_cast<int>(qint64{100} * done / total) : 100;
  busy_.text_ = base_ + QStringLiteral(" %1%").arg(busy_.percent_);
  Q_EMIT busy_.Changed();
  YieldToInterface();
  sinceYield_.restart();
}

void YieldToInterface() {
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace zqm
