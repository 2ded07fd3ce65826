// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/work_pool.h"

#include <QThreadPool>

namespace zqm {

QThreadPool& WorkPool() {
  static QThreadPool pool;
  return pool;
}

}  // namespace zqm
