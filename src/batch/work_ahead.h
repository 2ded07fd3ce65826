// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QThread>
#include <QThreadPool>
#include <chrono>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <utility>

namespace zqm {

/// Does the work for a list's places ahead of their turn, on as many threads as there are cores,
/// and hands the results over in order. All calls come from one thread; the destructor waits for
/// what has begun.
template <class Value>
class WorkAhead {
 public:
  /// `work` is pure: it gets a place from 0 to `count` - 1.
  WorkAhead(qsizetype count, std::function<Value(qsizetype place)> work)
      : count_(count), work_(std::move(work)) {
    pool_.setMaxThreadCount(QThread::idealThreadCount());
    Fill();
  }
  ~WorkAhead() {
    pool_.clear();
    pool_.waitForDone();
  }

  /// The result for `place`, places rising; those left out are thrown away. `wait` runs about every
  /// 30 ms meanwhile.
  Value Take(qsizetype place, const std::function<void()>& wait) {
    while (first_ < place) {
      if (running_.empty()) Fill();
      running_.front().wait();
      running_.pop_front();
      ++first_;
    }
    Fill();
    std::future<Value> next = std::move(running_.front());
    running_.pop_front();
    ++first_;
    Fill();
    while (next.wait_for(std::chrono::milliseconds(30)) != std::future_status::ready)
      wait();
    return next.get();
  }

 private:
  // Pictures are large: one waits beside those in work.
  void Fill() {
    const auto most = static_cast<std::size_t>(pool_.maxThreadCount()) + 1;
    while (running_.size() < most && first_ + std::ssize(running_) < count_) {
      auto task = std::make_shared<std::packaged_task<Value()>>(
          [this, place = first_ + std::ssize(running_)] { return work_(place); });
      running_.push_back(task->get_future());
      pool_.start([task] { (*task)(); });
    }
  }

  qsizetype count_;
  std::function<Value(qsizetype)> work_;
  qsizetype first_ = 0;  // the place of the first one running
  std::deque<std::future<Value>> running_;
  QThreadPool pool_;  // last: waits for its work before the rest goes
};

}  // namespace zqm
