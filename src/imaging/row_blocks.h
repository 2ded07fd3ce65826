// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace zqm {

/// Runs `work(begin, end)` over [0, rows) in blocks, on the work pool's free threads and on the
/// calling one, and returns when all are done. Small work (`rows` times `rowCost`, in samples) and
/// a pool without a free thread stay on the calling thread. Large work tells the progress sink of
/// the calling thread (progress.h). `work` must not throw, and what it
/// makes of a row must not depend on the block that the row came in.
void ForRowBlocks(int rows, std::int64_t rowCost, const std::function<void(int, int)>& work);

}  // namespace zqm
