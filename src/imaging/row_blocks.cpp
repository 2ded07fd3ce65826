// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/row_blocks.h"

#include <QSemaphore>
#include <QThreadPool>
#include <atomic>

#include "imaging/progress.h"
#include "shell/work_pool.h"

namespace zqm {

void ForRowBlocks(int rows, std::int64_t rowCost, const std::function<void(int, int)>& work) {
  constexpr std::int64_t kWorthAThread = 1 << 20;
  constexpr int kBlocksAThread = 16;  // so that none is waited for long, and progress has steps
  QThreadPool& pool = WorkPool();
  const int threads = static_cast<int>(
      std::min<std::int64_t>({pool.maxThreadCount(), rows, rows * rowCost / kWorthAThread}));
  if (threads < 2) {
    work(0, rows);
    return;
  }
  ProgressPass pass(rows);
  const int size = std::max(1, rows / (threads * kBlocksAThread));
  std::atomic<int> next = 0;
  const auto takeBlocks = [&] {
    for (int begin = next.fetch_add(size); begin < rows; begin = next.fetch_add(size)) {
      const int end = std::min(rows, begin + size);
      work(begin, end);
      pass.Done(end - begin);
    }
  };
  QSemaphore done;
  int helpers = 0;
  while (helpers < threads - 1 && pool.tryStart([&] {
    takeBlocks();
    done.release();
  }))
    ++helpers;
  takeBlocks();
  done.acquire(helpers);
}

}  // namespace zqm
