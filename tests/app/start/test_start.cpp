// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAction>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>

#include "app/start/start_up.h"
#include "app/start/start_windows.h"
#include "browser/ui/frmmain.h"
#include "tests/browser/home_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

TEST(Screen, NeedsItsLeastSize) {
  EXPECT_FALSE(ScreenTooSmall({1024, 768}));
  EXPECT_FALSE(ScreenTooSmall({1920, 1080}));
  EXPECT_TRUE(ScreenTooSmall({1023, 768}));
  const auto text = ScreenTooSmall({1024, 767});
  ASSERT_TRUE(text);
  EXPECT_TRUE(
      text->contains(u"\nYour screen resolution is 1024 x 767 pixels, but Zolmira QM needs "
                     u"a minimum of 1024 x 768 pixels to work."_s));
}

class Start : public test::HomeTest {
 protected:
  Start() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, scratch_.Path("config"));
    folders_ = session_->Folders();
    // The program opens the home by itself.
    session_.reset();
  }
  std::unique_ptr<StartUp> Begin(const QStringList& paths = {}) {
    auto start = std::make_unique<StartUp>(StartOptions{{}, {}, paths}, folders_);
    QObject::connect(start.get(), &StartUp::Finished, start.get(),
                     [this](int exitCode) { exitCodes_.push_back(exitCode); });
    start->Begin();
    return start;
  }
  void AddCatalogue(const QString& name) {
    ASSERT_TRUE(CreateCatalogueFile(folders_.WorkingFolder() + u'/' + name));
  }
  static frmcheckDB* Choice() {
    for (QWidget* window : QApplication::topLevelWidgets())
      if (auto* choice = qobject_cast<frmcheckDB*>(window)) return choice;
    return nullptr;
  }

  SessionFolders folders_;
  std::vector<int> exitCodes_;
};

TEST_F(Start, OneCatalogueOpensTheWindow) {
  const auto start = Begin();
  ASSERT_TRUE(test::Eventually([&] { return start->MainWindow() != nullptr; }));
  EXPECT_EQ(start->MainWindow()->windowTitle(), u"Zolmira QM"_s);
  EXPECT_TRUE(start->MainWindow()->close());
  EXPECT_EQ(exitCodes_, std::vector{0});
  EXPECT_TRUE(messages_.isEmpty());
}

TEST_F(Start, NoCatalogueIsSaidAndEndsTheProgram) {
  ASSERT_TRUE(QFile::remove(folders_.WorkingFolder() + u"/Zolmira QM.mdb"_s));
  const auto start = Begin();
  ASSERT_TRUE(test::Eventually([&] { return !exitCodes_.empty(); }));
  EXPECT_EQ(messages_, QStringList{u"Cannot locate any Zolmira QM compatible database in\n"_s +
                                   folders_.WorkingFolder()});
  EXPECT_EQ(start->MainWindow(), nullptr);
  EXPECT_EQ(exitCodes_, std::vector{2});
}

TEST_F(Start, OfSeveralCataloguesTheUserChooses) {
  AddCatalogue(u"Älter.mdb"_s);
  const auto start = Begin();
  ASSERT_TRUE(test::Eventually([] { return Choice() != nullptr; }));
  auto* list = Choice()->findChild<QListWidget*>(u"List1"_s);
  auto* ok = Choice()->findChild<QPushButton*>(u"cmdok"_s);
  EXPECT_EQ(list->count(), 2);
  list->clearSelection();
  QTest::mouseClick(ok, Qt::LeftButton);
  EXPECT_EQ(messages_, QStringList{u"Select the database to be loaded."_s});
  EXPECT_EQ(start->MainWindow(), nullptr);
  list->setCurrentItem(list->findItems(u"Älter.mdb"_s, Qt::MatchExactly).first());
  QTest::mouseClick(ok, Qt::LeftButton);
  ASSERT_NE(start->MainWindow(), nullptr);
  EXPECT_TRUE(start->MainWindow()->close());
}

TEST_F(Start, TheChoiceCanBeLeft) {
  AddCatalogue(u"Other.mdb"_s);
  const auto start = Begin();
  ASSERT_TRUE(test::Eventually([] { return Choice() != nullptr; }));
  QTest::mouseClick(Choice()->findChild<QPushButton*>(u"cmdcancel"_s), Qt::LeftButton);
  EXPECT_EQ(exitCodes_, std::vector{0});
  EXPECT_EQ(start->MainWindow(), nullptr);
}

TEST_F(Start, ADamagedCatalogueIsSaidToBe) {
  QFile file(folders_.WorkingFolder() + u"/Zolmira QM.mdb"_s);
  ASSERT_TRUE(file.open(QFile::WriteOnly));
  file.write("this is no catalogue");
  file.close();
  const auto start = Begin();
  ASSERT_TRUE(test::Eventually([&] { return !exitCodes_.empty(); }));
  ASSERT_EQ(messages_.size(), 1);
  EXPECT_EQ(messages_[0], QString::fromUtf16(session_text::kDamaged));
}

TEST_F(Start, ASecondWriterIsTurnedAway) {
  Session other(folders_);
  ASSERT_TRUE(other.LockHome());
  const auto start = Begin();
  EXPECT_EQ(exitCodes_, std::vector{2});
  EXPECT_EQ(messages_, QStringList{u"Zolmira QM is running. Close it first."_s});
}

TEST_F(Start, TheRestartMarkerIsUsedUp) {
  const QString marker = folders_.ScratchFolder() + u"/Optimize.txt"_s;
  QFile file(marker);
  ASSERT_TRUE(file.open(QFile::WriteOnly));
  file.close();
  const auto start = Begin();
  EXPECT_FALSE(QFile::exists(marker));
  ASSERT_TRUE(test::Eventually([&] { return start->MainWindow() != nullptr; }));
  EXPECT_TRUE(start->MainWindow()->close());
}

}  // namespace
}  // namespace zqm
