// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QSettings>
#include <QTest>

#include "browser/ui/frmmain.h"
#include "imaging/ui/image_multi_x.h"
#include "tests/browser/home_fixture.h"

namespace zqm::test {

/// The main window over a home of its own, opened on the folder of photos.
class MainWindowTest : public HomeTest {
 protected:
  MainWindowTest() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, scratch_.Path("config"));
    AutoSave::SetTickMilliseconds(20);
    Settings settings = session_->CurrentSettings();
    settings.StartupType = QStringLiteral("Custom");
    settings.StartupFolder = scratch_.Path("photos");
    EXPECT_TRUE(session_->ChangeSettings(settings));
  }
  ~MainWindowTest() override { AutoSave::SetTickMilliseconds(1000); }

  /// With the folder of photos shown.
  void Open() {
    window_ = std::make_unique<frmmain>(*session_);
    window_->resize(1280, 800);
    window_->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
    const int count = static_cast<int>(QDir(scratch_.Path("photos")).count()) - 2;
    ASSERT_TRUE(Eventually([&] { return List()->model()->rowCount() == count; }));
  }
  template <class Widget>
  Widget* Find(const char16_t* name) {
    auto* widget = window_->findChild<Widget*>(QString::fromUtf16(name));
    EXPECT_NE(widget, nullptr) << QString::fromUtf16(name).toStdString();
    return widget;
  }
  ImageMultiX* List() { return window_->findChild<ImageMultiX*>(QStringLiteral("ImageMultiX1")); }
  QString Text(const char16_t* label) { return Find<QLabel>(label)->text(); }
  void Click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QRect cell = List()->visualRect(List()->model()->index(row, 0));
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, modifiers, cell.center());
  }
  void Trigger(const char16_t* action) {
    auto* found = window_->findChild<QAction*>(QString::fromUtf16(action));
    ASSERT_NE(found, nullptr);
    EXPECT_TRUE(found->isEnabled());
    found->trigger();
  }

  std::unique_ptr<frmmain> window_;
};

}  // namespace zqm::test
