// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QPushButton>
#include <memory>

#include "batch/ui/batch_dialog.h"
#include "tests/batch/batch_fixture.h"

namespace zqm::test {

/// A window over photos. `View` is what it tells of its run.
template <class View>
class BatchWindowTest : public BatchTest {
 protected:
  template <class Window, class... More>
  void Open(const QStringList& photos, const More&... more) {
    window_ = std::make_unique<Window>(BatchPlace{TheCatalogue(), &told_, photos}, more...);
    window_->show();
  }
  template <class Widget>
  Widget* Find(const char16_t* name) {
    auto* widget = window_->findChild<Widget*>(QString::fromUtf16(name));
    EXPECT_NE(widget, nullptr) << QString::fromUtf16(name).toStdString();
    return widget;
  }
  void Click(const char16_t* button) {
    QTest::mouseClick(this->template Find<QPushButton>(button), Qt::LeftButton);
  }

  View told_;
  std::unique_ptr<QDialog> window_;
};

}  // namespace zqm::test
