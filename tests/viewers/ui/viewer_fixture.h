// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QSettings>
#include <QTest>
#include <QWheelEvent>

#include "imaging/ui/picture_view.h"
#include "tests/browser/home_fixture.h"

namespace zqm::test {

/// A viewer's window over a home of its own.
class ViewerTest : public HomeTest {
 protected:
  ViewerTest() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, scratch_.Path("config"));
  }

  template <class Window>
  Window& Show(std::unique_ptr<Window> window) {
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    Window& shown = *window;
    window_ = std::move(window);
    return shown;
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(window_.get(), key, modifiers);
  }
  QString Text(const char16_t* label, const char16_t* side = nullptr) {
    const QWidget* in =
        side == nullptr ? window_.get() : window_->findChild<QWidget*>(QString::fromUtf16(side));
    return in->findChild<QLabel*>(QString::fromUtf16(label))->text();
  }

  std::unique_ptr<QWidget> window_;
};

}  // namespace zqm::test
