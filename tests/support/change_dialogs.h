// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QSet>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <set>

#include "imaging/ui/before_after.h"
#include "imaging/ui/change_dialog.h"
#include "imaging/ui/image_x.h"

namespace zqm::test {

/// Soft colours with some detail.
inline QImage Gradient(const QSize& size, QImage::Format format = QImage::Format_RGB32) {
  QImage picture(size, QImage::Format_RGB32);
  for (int y = 0; y < size.height(); ++y) {
    for (int x = 0; x < size.width(); ++x)
      picture.setPixel(x, y,
                       qRgb(40 + x * 150 / size.width(), 60 + y * 120 / size.height(),
                            90 + (x / 8 + y / 8) % 2 * 30));
  }
  return picture.convertToFormat(format);
}

/// A dialog over a picture, driven as a user does.
class ShownDialog {
 public:
  explicit ShownDialog(ChangeDialog& dialog) : dialog_(dialog) {
    dialog_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&dialog_));
    EXPECT_TRUE(Settled());
  }

  bool Settled() {
    return QTest::qWaitFor(
        [this] { return Views().IsCurrent() && !Views().BeforeProxy().isNull(); }, 20'000);
  }
  BeforeAfter& Views() const { return *dialog_.Views(); }
  template <class Widget>
  Widget* Find(const char* name) const {
    auto* widget = dialog_.findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  void Slide(const char* name, int value) { Find<QSlider>(name)->setValue(value); }
  void Click(const char* button) {
    QTest::mouseClick(Find<QAbstractButton>(button), Qt::LeftButton);
  }
  /// What the change makes of a picture; the picture itself where there is none.
  QImage Applied(const QImage& picture) {
    Click("cmdok");
    const std::optional<PictureChange> change = dialog_.Change();
    return change ? (*change)(picture) : picture;
  }
  /// No letter leads to two places.
  void CheckMnemonics() const {
    std::set<QChar> letters;
    const auto take = [&](const QString& text) {
      const qsizetype at = text.indexOf(u'&');
      if (at < 0) return;
      EXPECT_TRUE(letters.insert(text.at(at + 1).toUpper()).second) << text.toStdString();
    };
    for (const auto* label : dialog_.findChildren<QLabel*>())
      take(label->text());
    for (const auto* button : dialog_.findChildren<QAbstractButton*>())
      take(button->text());
  }

 private:
  ChangeDialog& dialog_;
};

}  // namespace zqm::test
