// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>

namespace zqm {

/// How far a piece of work is, told by whoever does it and read by whoever waits, on any thread.
/// Work in several passes, whose number nobody knows, fills with each pass three quarters of what
/// is left: the figure only rises.
class ProgressSink {
 public:
  /// 0 to 99: when it is done the work itself tells.
  int Percent() const { return percent_.load(std::memory_order_relaxed); }

 private:
  friend class ProgressPass;
  std::atomic<int> percent_ = 0;
};

/// Has the work of this thread tell a sink while it lives; null tells nobody.
class ProgressScope {
 public:
  explicit ProgressScope(ProgressSink* sink);
  ~ProgressScope();
  ProgressScope(const ProgressScope&) = delete;
  ProgressScope& operator=(const ProgressScope&) = delete;

 private:
  ProgressSink* before_;
};

/// One pass over `total` rows, made on the thread that has the scope; the rows may be done on
/// others.
class ProgressPass {
 public:
  explicit ProgressPass(std::int64_t total);
  void Done(std::int64_t rows);

 private:
  ProgressSink* sink_;
  std::int64_t total_;
  int from_ = 0, to_ = 0;
  std::atomic<std::int64_t> done_ = 0;
};

}  // namespace zqm
