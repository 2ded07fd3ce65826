// SPDX-License-Identifier: GPL-3.0-or-later
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QToolButton>

#include "browser/ui/rating_stars.h"
#include "browser/ui/value_list.h"
#include "imaging/ui/image_x.h"
#include "shell/files.h"
#include "tests/browser/catalogue_holder.h"
#include "tests/browser/ui/main_window_fixture.h"
#include "tests/support/print_text.h"
#include "viewers/ui/frmconfigureslideshow.h"
#include "viewers/ui/frmslideshow.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using MainWindow = test::MainWindowTest;

TEST_F(MainWindow, TypingSavesOnceForAllSelectedPhotos) {
  QStringList paths;
  for (int i = 0; i < 10; ++i)
    paths.append(AddPhoto(u"%1.jpg"_s.arg(i)));
  CatalogueThem(paths);
  Open();
  EXPECT_EQ(Text(u"lblcounter"), u"10 Photos /  0 Selected"_s);
  Trigger(u"mnuselectall");
  EXPECT_EQ(Text(u"lblcounter"), u"10 Photos / 10 Selected"_s);
  auto* notes = Find<QPlainTextEdit>(u"Text16");
  notes->setFocus();
  QTest::keyClicks(notes, u"Sun & sea"_s);
  ASSERT_TRUE(
      test::Eventually([&] { return Stored(paths.last(), Column::Notes) == u"Sun & sea"_s; }));
  for (const QString& path : paths)
    EXPECT_EQ(Stored(path, Column::Notes), u"Sun & sea"_s);
}

TEST_F(MainWindow, ChoosingAnotherPhotoSavesBeforeTheWaitIsOver) {
  AutoSave::SetTickMilliseconds(60'000);
  const QString a = AddPhoto(u"a.jpg"_s), b = AddPhoto(u"b.jpg"_s);
  CatalogueThem({a, b});
  Open();
  Click(0);
  QTest::keyClicks(Find<QLineEdit>(u"Text17"), u"O'Neill & Sons"_s);
  QTest::keyClicks(Find<QLineEdit>(u"Text30"), u"31.2.2020"_s);
  Click(1);
  EXPECT_EQ(Stored(a, Column::Author), u"O'Neill & Sons"_s);
  EXPECT_EQ(Stored(a, Column::Date), QString());
  EXPECT_EQ(Find<QLineEdit>(u"Text17")->text(), QString());
  Click(0);
  EXPECT_EQ(Find<QLineEdit>(u"Text17")->text(), u"O'Neill & Sons"_s);
}

TEST_F(MainWindow, StarsFlagsAndTicksReachTheRow) {
  ASSERT_TRUE(session_->ActiveCatalogue().AddCategory(u"Family"_s));
  ASSERT_TRUE(session_->ActiveCatalogue().AddCategory(u"Travel"_s));
  const QString a = AddPhoto(u"a.jpg"_s);
  CatalogueThem({a});
  Open();
  Click(0);
  auto* stars = Find<RatingStars>(u"Imgrating");
  QTest::mouseClick(stars, Qt::LeftButton, {}, {stars->width() * 7 / 10, stars->height() / 2});
  EXPECT_EQ(stars->Rating(), 4);
  QTest::mouseClick(Find<QToolButton>(u"Imgflag1"), Qt::LeftButton);
  Find<QListWidget>(u"List3")->item(1)->setCheckState(Qt::Checked);
  ASSERT_TRUE(test::Eventually([&] {
    return Stored(a, Column::Rating) == u"4"_s && Stored(a, Column::Flag) == u"Rejected"_s &&
           Stored(a, Column::Categories) == u",Travel,"_s;
  }));
  Trigger(u"mnurate2");
  Trigger(u"mnuflag");
  EXPECT_EQ(stars->Rating(), 2);
  ASSERT_TRUE(test::Eventually([&] { return Stored(a, Column::Rating) == u"2"_s; }));
  EXPECT_EQ(Stored(a, Column::Flag), u"Flagged"_s);
}

TEST_F(MainWindow, APhotoWithoutARowCannotBeAnnotated) {
  AddPhoto(u"a.jpg"_s);
  Open();
  Click(0);
  EXPECT_FALSE(Find<QPlainTextEdit>(u"Text16")->isEnabled());
  EXPECT_FALSE(Find<QLabel>(u"lblhint")->text().isEmpty());
  Trigger(u"mnucatalogindividual");
  EXPECT_EQ(messages_, QStringList{u"The selected file(s) have been added to the database."_s});
  EXPECT_TRUE(Find<QPlainTextEdit>(u"Text16")->isEnabled());
  EXPECT_TRUE(Find<QLabel>(u"lblhint")->text().isEmpty());
}

TEST_F(MainWindow, PanelsShowTheFileThenTheRowOnceItIsAway) {
  const QString a = AddPhoto(u"a.jpg"_s, {{u"EXIF_Make", u"Canon"}});
  CatalogueThem({a});
  Open();
  Click(0);
  const auto says = [this](const char16_t* page, const QString& text) {
    for (const QLabel* label : Find<ValueList>(page)->findChildren<QLabel*>())
      if (label->text() == text) return true;
    return false;
  };
  EXPECT_TRUE(test::Eventually([&] { return says(u"pageexif", u"Canon"_s); }));
  EXPECT_TRUE(says(u"pageproperties", u"320 Pixels"_s));
  QFile::remove(a);
  EXPECT_TRUE(test::Eventually(
      [this] { return Text(u"lblstatus") == u"a.jpg is missing or is offline."_s; }));
  EXPECT_TRUE(says(u"pageexif", u"Canon"_s));
  EXPECT_TRUE(Find<ImageX>(u"ImageX1")->HasImage());
  EXPECT_FALSE(Find<QPlainTextEdit>(u"Text16")->isEnabled());
}

TEST_F(MainWindow, TheLayoutComesBack) {
  AddPhoto(u"a.jpg"_s);
  Open();
  Trigger(u"mnumultiplerows");
  Find<QTabWidget>(u"cmdinfo")->setCurrentIndex(2);
  Find<QTabWidget>(u"lblmeta")->setCurrentIndex(1);
  QSignalSpy closed(window_.get(), &frmmain::Closed);
  EXPECT_TRUE(window_->close());
  EXPECT_EQ(closed.count(), 1);
  const QString state = GetParentFolderName(session_->Folders().ScratchFolder());
  EXPECT_EQ(test::Scratch::Read(state + u"/MIS.dat"_s), "162");
  EXPECT_EQ(test::Scratch::Read(state + u"/Thumbnails.dat"_s), "TMu");
  Open();
  EXPECT_TRUE(window_->findChild<QAction*>(u"mnumultiplerows"_s)->isChecked());
  EXPECT_EQ(Find<QTabWidget>(u"cmdinfo")->currentIndex(), 2);
  EXPECT_EQ(Find<QTabWidget>(u"lblmeta")->currentIndex(), 1);
}

TEST_F(MainWindow, AGivenPhotoIsBrowsedAndSelected) {
  AddPhoto(u"a.jpg"_s);
  const QString wanted = scratch_.Write("other/wänted.jpg", test::SampleJpeg(100, 100));
  scratch_.Write("other/z.jpg", test::SampleJpeg(100, 100));
  Open();
  window_->OpenPath(wanted);
  ASSERT_TRUE(test::Eventually([&] { return List()->SelectedPaths() == QStringList{wanted}; }));
  EXPECT_EQ(Text(u"lblcounter"), u"2 Photos / 1 Selected"_s);
  window_->OpenPath(scratch_.Path("nowhere/x.jpg"));
  EXPECT_EQ(messages_.size(), 1);
}

TEST_F(MainWindow, ARefusedSelectionGoesBack) {
  AutoSave::SetTickMilliseconds(60'000);
  const QString a = AddPhoto(u"a.jpg"_s), b = AddPhoto(u"b.jpg"_s);
  CatalogueThem({a, b});
  Open();
  Click(0);
  QTest::keyClicks(Find<QLineEdit>(u"Text19"), u"precious"_s);
  {
    const test::CatalogueHolder holder(session_->ActiveCatalogue().Path());
    Click(1);
  }
  EXPECT_EQ(messages_.size(), 1);
  EXPECT_EQ(List()->SelectedPaths(), QStringList{a});
  EXPECT_EQ(Find<QLineEdit>(u"Text19")->text(), u"precious"_s);
  Click(1);
  EXPECT_EQ(Stored(a, Column::Tags), u"precious"_s);
}

TEST_F(MainWindow, TheSelectedPhotosThatStandArePlayed) {
  const QString a = AddPhoto(u"a.jpg"_s), b = AddPhoto(u"b.jpg"_s), c = AddPhoto(u"c.jpg"_s);
  Open();
  Find<QAction>(u"mnuselectall")->trigger();
  QFile::remove(b);
  QStringList planned;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&] {
    QWidget* window = QApplication::activeModalWidget();
    if (auto* settings = qobject_cast<frmconfigureslideshow*>(window)) {
      planned = settings->Plan().photos;
      settings->findChild<QPushButton*>(u"Command2"_s)->click();
    } else if (auto* show = qobject_cast<frmslideshow*>(window);
               show && show->Show().Current() == 0) {
      QTest::keyClick(show, Qt::Key_Escape);
    }
  });
  look.start(10);
  Trigger(u"mnuslide");
  look.stop();
  EXPECT_EQ(planned, (QStringList{a, c}));
  EXPECT_TRUE(window_->isVisible());
  EXPECT_TRUE(messages_.isEmpty());

  QFile::remove(a);
  QFile::remove(c);
  Trigger(u"mnuslide");
  EXPECT_EQ(messages_.size(), 1);
}

}  // namespace
}  // namespace zqm
