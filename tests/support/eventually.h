// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

namespace zqm::test {

/// Runs the event loop until `done`, or for a time that no sound run needs.
template <class Done>
bool Eventually(const Done& done) {
  const QDeadlineTimer patience(std::chrono::seconds(20));
  while (!done()) {
    if (patience.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return true;
}

}  // namespace zqm::test
