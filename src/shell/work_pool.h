// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QThreadPool;

namespace zqm {

/// The threads for all heavy work of ours, as many as there are cores. Not the toolkit's global
/// pool: painting a scaled picture shares that one's threads and waits for them, so that a window
/// would stand still as long as work of ours holds them.
QThreadPool& WorkPool();

}  // namespace zqm
