// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/progress.h"

namespace zqm {
namespace {
thread_local ProgressSink* current = nullptr;
}

ProgressScope::ProgressScope(ProgressSink* sink) : before_(current) {
  current = sink;
}
ProgressScope::~ProgressScope() {
  current = before_;
}

ProgressPass::ProgressPass(std::int64_t total) : sink_(current), total_(total) {
  if (!sink_) return;
  from_ = sink_->Percent();
  to_ = from_ + (100 - from_) * 3 / 4;
}

void ProgressPass::Done(std::int64_t rows) {
  if (!sink_ || total_ <= 0) return;
  const std::int64_t done = done_.fetch_add(rows, std::memory_order_relaxed) + rows;
  const int percent = from_ + static_cast<int>((to_ - from_) * done / total_);
  int told = sink_->percent_.load(std::memory_order_relaxed);
  // Another thread may have told more already.
  while (told < percent &&
         !sink_->percent_.compare_exchange_weak(told, percent, std::memory_order_relaxed)) {
  }
}

}  // namespace zqm
