// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAction>
#include <QListWidget>
#include <QLocalSocket>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QTimer>

#include "app/start/sample_offer.h"
#include "app/start/start_up.h"
#include "app/start/start_windows.h"
#include "browser/ui/frmmain.h"
#include "imaging/ui/image_multi_x.h"
#include "shell/busy.h"
#include "shell/files.h"
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
  std::unique_ptr<StartUp> Begin(const StartOptions& options = {}) {
    auto start = std::make_unique<StartUp>(options, folders_);
    QObject::connect(start.get(), &StartUp::Finished, start.get(),
                     [this](int exitCode) { exitCodes_.push_back(exitCode); });
    start->Begin();
    return start;
  }
  std::unique_ptr<StartUp> Open(const StartOptions& options = {}) {
    auto start = Begin(options);
    EXPECT_TRUE(test::Eventually([&] { return start->MainWindow() != nullptr; }));
    return start;
  }
  bool Ended(int exitCode) {
    return test::Eventually([this] { return !exitCodes_.empty(); }) &&
           exitCodes_ == std::vector{exitCode};
  }
  /// A second start as another process would do it, with its answer.
  bool StartAgain(const QStringList& paths) {
    const QString folder = GetParentFolderName(folders_.ScratchFolder());
    return RunAside([folder, paths] { return SingleInstance(folder).ActivatePrevInstance(paths); });
  }
  void AddCatalogue(const QString& name) {
    ASSERT_TRUE(CreateCatalogueFile(folders_.WorkingFolder() + u'/' + name));
  }
  static frmcheckDB* Choice() {
    for (QWidget* window : QApplication::topLevelWidgets())
      if (auto* choice = qobject_cast<frmcheckDB*>(window)) return choice;
    return nullptr;
  }

  bool OpenSession(const QString& name = u"Zolmira QM.mdb"_s) {
    session_ = std::make_unique<Session>(folders_);
    return session_->LockHome() && session_->Activate(name);
  }

  SessionFolders folders_;
  std::vector<int> exitCodes_;
};

TEST_F(Start, OneCatalogueOpensTheWindow) {
  const auto start = Open();
  EXPECT_EQ(start->MainWindow()->windowTitle(), u"Zolmira QM"_s);
  EXPECT_TRUE(start->MainWindow()->close());
  EXPECT_TRUE(Ended(0));
  EXPECT_TRUE(messages_.isEmpty());
  // The home is free and the next start finds everything closed.
  EXPECT_TRUE(Session(folders_).LockHome());
}

TEST_F(Start, NoCatalogueIsSaidAndEndsTheProgram) {
  ASSERT_TRUE(QFile::remove(folders_.WorkingFolder() + u"/Zolmira QM.mdb"_s));
  const auto start = Begin();
  EXPECT_TRUE(Ended(2));
  EXPECT_EQ(messages_, QStringList{u"Cannot locate any Zolmira QM compatible database in\n"_s +
                                   folders_.WorkingFolder()});
  EXPECT_EQ(start->MainWindow(), nullptr);
}

TEST_F(Start, OfSeveralCataloguesTheUserChooses) {
  AddCatalogue(u"Älter.mdb"_s);
  const auto start = Begin();
  ASSERT_TRUE(test::Eventually([] { return Choice() != nullptr; }));
  EXPECT_EQ(Choice()->windowTitle(), u"Select Database"_s);
  auto* list = Choice()->findChild<QListWidget*>(u"List1"_s);
  EXPECT_EQ(list->count(), 2);
  QTest::mouseClick(Choice()->findChild<QPushButton*>(u"cmdok"_s), Qt::LeftButton);
  EXPECT_EQ(messages_, QStringList{u"Select the database to be loaded."_s});
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_EQ(messages_.size(), 2);
  EXPECT_EQ(start->MainWindow(), nullptr);
  list->setCurrentItem(list->findItems(u"Älter.mdb"_s, Qt::MatchExactly).first());
  QTest::keyClick(list, Qt::Key_Return);
  ASSERT_NE(start->MainWindow(), nullptr);
  EXPECT_TRUE(test::Eventually([] { return Choice() == nullptr; }));
  EXPECT_TRUE(start->MainWindow()->close());
  EXPECT_TRUE(Ended(0));
}

TEST_F(Start, TheChoiceCanBeMadeByDoubleClickOrLeft) {
  AddCatalogue(u"Other.mdb"_s);
  {
    const auto start = Begin();
    ASSERT_TRUE(test::Eventually([] { return Choice() != nullptr; }));
    auto* list = Choice()->findChild<QListWidget*>(u"List1"_s);
    const QPoint second = list->visualItemRect(list->item(1)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, second);
    ASSERT_NE(start->MainWindow(), nullptr);
    EXPECT_TRUE(start->MainWindow()->close());
    EXPECT_TRUE(Ended(0));
  }
  exitCodes_.clear();
  const auto start = Begin();
  ASSERT_TRUE(test::Eventually([] { return Choice() != nullptr; }));
  QTest::mouseClick(Choice()->findChild<QPushButton*>(u"cmdcancel"_s), Qt::LeftButton);
  EXPECT_TRUE(Ended(0));
  EXPECT_EQ(start->MainWindow(), nullptr);
}

TEST_F(Start, ANamedCatalogueNeedsNoChoiceButMustBeThere) {
  AddCatalogue(u"Other.mdb"_s);
  {
    const auto start = Open({.catalogue = u"Other"_s});
    EXPECT_EQ(Choice(), nullptr);
    EXPECT_TRUE(start->MainWindow()->close());
    EXPECT_TRUE(Ended(0));
  }
  exitCodes_.clear();
  const auto start = Begin({.catalogue = u"Others"_s});
  EXPECT_TRUE(Ended(2));
  EXPECT_EQ(messages_,
            QStringList{u"Select the database to be loaded.\nOther.mdb\nZolmira QM.mdb"_s});
}

TEST_F(Start, ADamagedCatalogueIsSaidToBe) {
  scratch_.Write("Documents/Zolmira/QM/Zolmira QM.mdb", "this is no catalogue");
  const auto start = Begin();
  EXPECT_TRUE(Ended(2));
  EXPECT_EQ(messages_, QStringList{QString::fromUtf16(session_text::kDamaged)});
}

TEST_F(Start, TheUserSwitchesToAnotherCatalogueAndBackWhenItIsLost) {
  AddCatalogue(u"Other.mdb"_s);
  ASSERT_TRUE(OpenSession(u"Other.mdb"_s));
  ASSERT_TRUE(session_->ActiveCatalogue().AddCategory(u"Harbour"_s));
  session_.reset();
  scratch_.Write("Documents/Zolmira/QM/Spoilt.mdb", "this is no catalogue");
  const auto start = Open({.catalogue = u"Zolmira QM"_s});
  const auto switchTo = [&start](const QString& name) {
    const QPointer<frmmain> before = start->MainWindow();
    QTimer::singleShot(0, [name] {
      auto* list = Choice()->findChild<QListWidget*>(u"List1"_s);
      list->setCurrentItem(list->findItems(name, Qt::MatchExactly).first());
      QTest::keyClick(list, Qt::Key_Return);
    });
    before->findChild<QAction*>(u"mnuselectdb"_s)->trigger();
    return test::Eventually([&] { return before == nullptr && start->MainWindow() != nullptr; });
  };
  const auto categories = [&start] {
    auto* list = start->MainWindow()->findChild<QWidget*>(u"searchpanel"_s);
    return list->findChild<QAbstractItemView*>(u"List2"_s)->model()->rowCount();
  };
  EXPECT_EQ(categories(), 0);
  ASSERT_TRUE(switchTo(u"Other.mdb"_s));
  EXPECT_EQ(categories(), 1);
  EXPECT_TRUE(messages_.isEmpty());
  // A second start still finds this one.
  EXPECT_TRUE(StartAgain({}));
  ASSERT_TRUE(switchTo(u"Spoilt.mdb"_s));
  EXPECT_EQ(messages_, QStringList{QString::fromUtf16(session_text::kDamaged)});
  EXPECT_EQ(categories(), 1);
  EXPECT_TRUE(start->MainWindow()->close());
  EXPECT_TRUE(Ended(0));
}

TEST_F(Start, AHomeInUseOrOutOfReachIsSaidToBe) {
  {
    Session other(folders_);
    ASSERT_TRUE(other.LockHome());
    const auto start = Begin();
    EXPECT_EQ(exitCodes_, std::vector{2});
    EXPECT_EQ(messages_, QStringList{u"Zolmira QM is running. Close it first."_s});
  }
  messages_.clear();
  const QString lock = GetParentFolderName(folders_.ScratchFolder()) + u"/zolmira-qm.lock"_s;
  QFile::remove(lock);
  QDir().mkpath(lock);
  const auto start = Begin();
  ASSERT_EQ(messages_.size(), 1);
  EXPECT_TRUE(messages_[0].startsWith(lock));
}

TEST_F(Start, TheRestartMarkerIsUsedUpAndTheOldOneIsWaitedFor) {
  const QString marker = scratch_.Write("AppData/Zolmira/QM/Temp/Optimize.txt", QByteArray());
  auto old = std::make_unique<Session>(folders_);
  ASSERT_TRUE(old->LockHome());
  QTimer::singleShot(1500, [&old] { old.reset(); });
  const auto start = Open();
  EXPECT_EQ(old, nullptr);
  EXPECT_FALSE(QFile::exists(marker));
  EXPECT_TRUE(messages_.isEmpty());
  EXPECT_TRUE(start->MainWindow()->close());
  EXPECT_TRUE(Ended(0));
}

TEST_F(Start, ASecondStartHandsItsPathsToTheFirst) {
  const QString wanted = AddPhoto(u"Jörg's wänted.jpg"_s);
  EXPECT_FALSE(StartAgain({wanted}));
  const auto start = Open();
  start->MainWindow()->showMinimized();
  EXPECT_TRUE(StartAgain({}));
  EXPECT_TRUE(test::Eventually([&] { return !start->MainWindow()->isMinimized(); }));
  auto* list = start->MainWindow()->findChild<ImageMultiX*>(u"ImageMultiX1"_s);
  {
    // A dialog is waiting for its answer: nothing changes behind it.
    QDialog dialog(start->MainWindow());
    dialog.setModal(true);
    dialog.show();
    EXPECT_TRUE(StartAgain({wanted}));
    QTest::qWait(500);
    EXPECT_TRUE(list->SelectedPaths().isEmpty());
  }
  EXPECT_TRUE(test::Eventually([&] { return list->SelectedPaths() == QStringList{wanted}; }));
  EXPECT_TRUE(start->MainWindow()->close());
  EXPECT_FALSE(StartAgain({wanted}));
}

TEST_F(Start, ASecondStartFindsTheChoiceAndItsPathIsOpenedAfterwards) {
  AddCatalogue(u"Other.mdb"_s);
  const QString first = AddPhoto(u"a.jpg"_s), second = AddPhoto(u"b.jpg"_s);
  const auto start = Begin({.paths = {first}});
  ASSERT_TRUE(test::Eventually([] { return Choice() != nullptr; }));
  EXPECT_TRUE(StartAgain({second}));
  ASSERT_TRUE(test::Eventually([] { return Choice()->isActiveWindow(); }));
  auto* list = Choice()->findChild<QListWidget*>(u"List1"_s);
  list->setCurrentRow(0);
  QTest::mouseClick(Choice()->findChild<QPushButton*>(u"cmdok"_s), Qt::LeftButton);
  ASSERT_NE(start->MainWindow(), nullptr);
  auto* shown = start->MainWindow()->findChild<ImageMultiX*>(u"ImageMultiX1"_s);
  EXPECT_TRUE(test::Eventually([&] { return shown->SelectedPaths() == QStringList{second}; }));
}

class Socket : public Start {
 protected:
  Socket() : instance_(GetParentFolderName(folders_.ScratchFolder())) {
    QObject::connect(&instance_, &SingleInstance::Activated,
                     [this](const QStringList& paths) { heard_.push_back(paths); });
  }
  /// What the running one answers.
  QByteArray Say(const QByteArray& words) {
    QLocalSocket socket;
    socket.connectToServer(instance_.Address());
    EXPECT_TRUE(socket.waitForConnected());
    socket.write(words);
    EXPECT_TRUE(test::Eventually(
        [&] { return socket.state() == QLocalSocket::UnconnectedState || socket.canReadLine(); }));
    return socket.readAll();
  }

  SingleInstance instance_;
  std::vector<QStringList> heard_;
};

TEST_F(Socket, GarbageIsNotHeard) {
  instance_.Listen();
  EXPECT_EQ(Say("nonsense\n"), "");
  EXPECT_EQ(Say(QByteArray("\0\xff\n", 3)), "");
  EXPECT_EQ(Say("{\"path\": \"/etc\"}\n"), "");
  EXPECT_EQ(Say(QByteArray(5 << 20, '[')), "");
  EXPECT_EQ(Say("[\"half a line"), "");
  EXPECT_TRUE(heard_.empty());
  EXPECT_EQ(Say("[1, \"/a\", null, [\"/b\"]]\n[\"/c\"]\n"), "taken\n");
  EXPECT_TRUE(test::Eventually([this] { return heard_ == std::vector{QStringList{u"/a"_s}}; }));
}

TEST_F(Socket, WhatAKilledProcessLeftIsNoObstacle) {
  // The file without anybody behind it.
  const QString kept = instance_.Address() + u".kept"_s;
  QLocalServer stale;
  ASSERT_TRUE(stale.listen(instance_.Address()));
  ASSERT_TRUE(QFile::rename(instance_.Address(), kept));
  stale.close();
  ASSERT_TRUE(QFile::rename(kept, instance_.Address()));
  EXPECT_FALSE(StartAgain({}));
  instance_.Listen();
  EXPECT_TRUE(StartAgain({u"/a"_s}));
  EXPECT_TRUE(test::Eventually([this] { return heard_ == std::vector{QStringList{u"/a"_s}}; }));
}

QImage Grey(const QSize& size) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(Qt::gray);
  return image;
}

TEST_F(Start, SamplesAreOfferedOnceAndOnlyForAnEmptyCatalogue) {
  ASSERT_TRUE(OpenSession());
  EXPECT_TRUE(SamplesAreDue(*session_));
  const QString photo = AddPhoto(u"a.jpg"_s);
  CatalogueThem({photo});
  EXPECT_FALSE(SamplesAreDue(*session_));
  const QString folder = scratch_.Path("Pictures/Samples");
  EXPECT_EQ(OfferSamples(folder, nullptr), QString());
  EXPECT_EQ(messages_.size(), 1);
  EXPECT_FALSE(FolderExists(folder));
  ASSERT_TRUE(Photos().LocateRow(photo) && Photos().DeleteCurrentRow());
  EXPECT_FALSE(SamplesAreDue(*session_));
}

TEST_F(Start, SamplesAreDrawnBesideWhatIsThereUntilTheUserHasEnough) {
  answer_ = Answer::Yes;
  const QString own = scratch_.Write("Pictures/a.jpg", "the user's");
  const QString folder = scratch_.Path("Pictures");
  const std::vector<demo::Sample> samples{{u"a.jpg", {32, 24}, Grey, {}, {}, {}},
                                          {u"b.jpg", {32, 24}, Grey, {}, {}, {}}};
  QTimer::singleShot(0, [] {
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window->objectName() == u"frmsamples")
        QTest::mouseClick(window->findChild<QPushButton*>(u"cmdcancel"_s), Qt::LeftButton);
  });
  OfferSamples(folder, nullptr, samples);
  EXPECT_FALSE(FileExists(folder + u"/b.jpg"_s));
  EXPECT_EQ(OfferSamples(folder, nullptr, samples), folder);
  EXPECT_EQ(test::Scratch::Read(own), "the user's");
  EXPECT_TRUE(FileExists(folder + u"/b.jpg"_s));
}

}  // namespace
}  // namespace zqm
