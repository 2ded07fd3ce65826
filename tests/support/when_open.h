// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

namespace zqm::test {

/// Does something once in a window that `parent` is about to run, as soon as it is shown; not any
/// more when what is given back has gone.
template <class Window>
[[nodiscard]] std::unique_ptr<QTimer> WhenOpen(const QWidget& parent,
                                               std::function<void(Window&)> body) {
  auto timer = std::make_unique<QTimer>();
  QObject::connect(timer.get(), &QTimer::timeout, [&parent, body, waiting = timer.get()] {
    auto* window = parent.findChild<Window*>();
    if (window == nullptr || !window->isVisible()) return;
    waiting->stop();
    body(*window);
  });
  timer->start(10);
  return timer;
}

}  // namespace zqm::test
