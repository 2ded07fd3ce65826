// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTimer>

#include "shell/messages.h"
#include "tests/support/eventually.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"
#include "viewers/slideshow_settings.h"
#include "viewers/ui/frmconfigureslideshow.h"
#include "viewers/ui/frmslideshow.h"
#include "viewers/ui/viewer_actions.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace zqm::test {
namespace {

class SlideshowWindows : public ::testing::Test {
 protected:
  SlideshowWindows() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, scratch_.Path("config"));
    before_ = SetMessageHandler([this](const QString& text, MessageKind, Buttons) {
      told_.append(text);
      return Answer::Ok;
    });
  }
  ~SlideshowWindows() override { SetMessageHandler(before_); }
  QString Told() { return told_.isEmpty() ? QString() : told_.takeLast(); }

  Scratch scratch_;
  const QString wide_ = scratch_.Write("wide.jpg", SampleJpeg(400, 200)),
                tall_ = scratch_.Write("tall.jpg", SampleJpeg(200, 400));
  QStringList told_;
  MessageHandler before_;
};

class SettingsWindow : public SlideshowWindows {
 protected:
  void Open() {
    window_ = std::make_unique<frmconfigureslideshow>(QStringList{wide_, tall_}, ReadRequest(),
                                                      scratch_.Path());
    window_->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
  }
  template <class Widget>
  Widget* Find(const char16_t* name) {
    return window_->findChild<Widget*>(QString::fromUtf16(name));
  }
  QListWidget* List() { return Find<QListWidget>(u"List1"); }
  QLineEdit* Duration() { return Find<QLineEdit>(u"Text1"); }
  void Start() { Find<QPushButton>(u"Command2")->click(); }

  std::unique_ptr<frmconfigureslideshow> window_;
};

TEST_F(SettingsWindow, WhatIsStartedIsRemembered) {
  Open();
  ASSERT_EQ(List()->count(), 164);
  EXPECT_EQ(List()->item(26)->text(), u"26 : Random Boxes");
  EXPECT_EQ(List()->currentRow(), 0);
  EXPECT_EQ(Duration()->text(), u"5");
  EXPECT_FALSE(Find<QCheckBox>(u"Check1")->isChecked());
  QTest::keyClick(List(), Qt::Key_End);
  Duration()->setText(u"60"_s);
  Find<QCheckBox>(u"Check1")->setChecked(true);
  EXPECT_FALSE(Find<QCheckBox>(u"chkupright")->isChecked());
  Find<QCheckBox>(u"chkupright")->setChecked(true);
  QTest::keyClick(window_.get(), Qt::Key_Return);
  EXPECT_EQ(window_->result(), QDialog::Accepted);
  EXPECT_EQ(window_->Plan().photos, (QStringList{wide_, tall_}));
  EXPECT_EQ(window_->Plan().transition, 163);
  EXPECT_EQ(window_->Plan().interval, 60s);
  EXPECT_TRUE(window_->Plan().keys && window_->Plan().upright);
  EXPECT_TRUE(ShownUpright()) << "one answer for all viewers";
  Open();
  EXPECT_EQ(List()->currentRow(), 163);
  EXPECT_EQ(Duration()->text(), u"60");
  EXPECT_TRUE(Find<QCheckBox>(u"Check1")->isChecked());
}

TEST_F(SettingsWindow, AnotherDurationIsRefusedAndNothingIsKept) {
  Open();
  QTest::keyClick(List(), Qt::Key_Down);
  for (const auto& [typed, message] : {std::pair(u"", slideshow_text::kNoDuration),
                                       {u"x", slideshow_text::kInvalidDuration},
                                       {u"4.9", slideshow_text::kTooShort},
                                       {u"60.1", slideshow_text::kTooLong}}) {
    Duration()->setText(QString::fromUtf16(typed));
    Start();
    EXPECT_EQ(Told(), QString::fromUtf16(message));
    EXPECT_TRUE(window_->isVisible());
  }
  Duration()->setText(u"8"_s);
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  EXPECT_FALSE(window_->isVisible());
  EXPECT_EQ(window_->result(), QDialog::Rejected);
  EXPECT_FALSE(QFile::exists(scratch_.Path("STRN.dat")));
}

TEST_F(SettingsWindow, ARecordThatCantBeWrittenKeepsNobodyFromTheShow) {
  Open();
  ASSERT_TRUE(QDir().mkpath(scratch_.Path("STRN.dat/in the way")));
  Start();
  EXPECT_FALSE(Told().isEmpty());
  EXPECT_EQ(window_->result(), QDialog::Accepted);
}

TEST_F(SettingsWindow, ThePreviewRunsWhatIsSelected) {
  Open();
  auto* preview = Find<QWidget>(u"ImageX1");
  const auto middle = [&] {
    const QImage shown = preview->grab().toImage();
    return shown.pixel(shown.rect().center() / 2);
  };
  const QRgb first = middle();
  List()->setCurrentRow(7);
  EXPECT_TRUE(Eventually([&] { return middle() != first; }));
}

class ShowWindow : public SlideshowWindows {
 protected:
  void Play(const QStringList& photos, bool keys = false) {
    window_ = std::make_unique<frmslideshow>(SlideshowPlan{photos, 1, 5000ms, keys, {}}, nullptr,
                                             [this] { return now_; });
    window_->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
  }
  bool Reaches(int place) {
    return Eventually([&] { return window_->Show().Current() == place; });
  }
  void Pass(std::chrono::milliseconds time) {
    now_ += time;
    window_->Show().Tick();
  }

  std::chrono::milliseconds now_{0};
  std::unique_ptr<frmslideshow> window_;
};

TEST_F(ShowWindow, FillsTheScreenAndOnlyEscapeEndsIt) {
  Play({wide_, tall_});
  EXPECT_EQ(window_->size(), window_->screen()->size());
  EXPECT_EQ(window_->cursor().shape(), Qt::BlankCursor);
  ASSERT_TRUE(Reaches(0));
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Right, Qt::Key_Left, Qt::Key_Q})
    QTest::keyClick(window_.get(), key);
  EXPECT_TRUE(window_->isVisible());
  EXPECT_FALSE(window_->Show().IsPaused());
  EXPECT_EQ(window_->Show().Current(), 0);
  Pass(5000ms);
  ASSERT_TRUE(Reaches(1));
  Pass(500ms);
  const QRgb corner = window_->grab().toImage().pixel(0, 0);
  EXPECT_EQ(corner, qRgb(0, 0, 0));
  QTest::keyClick(window_.get(), Qt::Key_Escape);  // in the middle of the transition
  EXPECT_FALSE(window_->isVisible());
  Play({wide_, tall_});
  QTest::keyClick(window_.get(), Qt::Key_Escape);  // before the first photo
  EXPECT_FALSE(window_->isVisible());
  EXPECT_EQ(Told(), u"");
}

TEST_F(ShowWindow, KeysPauseAndStepWhereTheUserWantsThem) {
  Play({wide_, tall_, wide_}, true);
  ASSERT_TRUE(Reaches(0));
  QTest::keyClick(window_.get(), Qt::Key_Right);
  ASSERT_TRUE(Reaches(1));
  QTest::keyClick(window_.get(), Qt::Key_Left);
  ASSERT_TRUE(Reaches(0));
  QTest::keyClick(window_.get(), Qt::Key_Space);
  EXPECT_TRUE(window_->Show().IsPaused());
  EXPECT_EQ(window_->findChild<QLabel*>(u"Label1"_s)->text(), u"Paused");
}

TEST_F(ShowWindow, APhotoThatIsPassedOverIsNamedAndWithoutAnyTheUserIsTold) {
  Play({scratch_.Path("away.jpg"), wide_});
  ASSERT_TRUE(Reaches(1));
  const auto* notice = window_->findChild<QLabel*>(u"Label1"_s);
  EXPECT_TRUE(notice->isVisible());
  EXPECT_TRUE(notice->text().contains(u"away.jpg"_s));
  ASSERT_TRUE(QFile::remove(wide_));
  ASSERT_TRUE(Eventually([&] { return Pass(5000ms), !window_->isVisible(); }));
  EXPECT_TRUE(Told().startsWith(QString::fromUtf16(slideshow_text::kNothing)));
}

}  // namespace
}  // namespace zqm::test
