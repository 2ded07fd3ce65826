// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QThreadPool>
#include <chrono>
#include <future>
#include <memory>
#include <type_traits>

#include "shell/work_pool.h"

namespace zqm {

/// What the window is busy with, as a text and a percentage. Whoever runs a long loop on the
/// interface thread holds a `BusyRun`; whoever shows it (a label over the panes that keeps the user
/// out) listens to `Changed`. While it is up, nobody else begins.
class Busy : public QObject {
  Q_OBJECT
 public:
  bool IsUp() const { return depth_ > 0; }
  const QString& Text() const { return text_; }
  /// 0 to 100, or -1 without one.
  int Percent() const { return percent_; }
  /// Someone was turned away: shows the label of what is under way, if only for a moment.
  void Refuse() { Q_EMIT Refused(); }

 Q_SIGNALS:
  void Changed();
  void Refused();

 private:
  friend class BusyRun;
  int depth_ = 0;
  QString text_;
  int percent_ = -1;
};

/// A stretch of work: up while it lives.
class BusyRun {
 public:
  /// "Loading Photos..."; shown as it is until the first `Progress`.
  BusyRun(Busy& busy, const QString& text);
  ~BusyRun();
  BusyRun(const BusyRun&) = delete;
  BusyRun& operator=(const BusyRun&) = delete;

  /// Shows "TEXT PERCENT%" and gives the window time to paint, at most about 30 times a second.
  void Progress(int done, int total);

 private:
  Busy& busy_;
  QString base_;
  QElapsedTimer sinceYield_;
};

/// Lets windows paint and timers run, without taking the user's input.
void YieldToInterface();

/// Runs `work`, which must not touch the catalogue or a window, on a thread of the work pool, and
/// gives windows time to paint until it is done; `tick` runs each time before they get it.
template <class Work, class Tick>
std::invoke_result_t<Work> RunAside(Work work, const Tick& tick) {
  using Value = std::invoke_result_t<Work>;
  constexpr std::chrono::milliseconds kBetweenYields(10);
  auto task = std::make_shared<std::packaged_task<Value()>>(std::move(work));
  std::future<Value> result = task->get_future();
  WorkPool().start([task] { (*task)(); });
  while (result.wait_for(kBetweenYields) != std::future_status::ready) {
    tick();
    YieldToInterface();
  }
  return result.get();
}

template <class Work>
std::invoke_result_t<Work> RunAside(Work work) {
  return RunAside(std::move(work), [] {});
}

}  // namespace zqm
