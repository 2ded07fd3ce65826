// SPDX-License-Identifier: GPL-3.0-or-later
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>

#include "shell/ui/busy_label.h"
#include "shell/ui/folder_tree.h"
#include "shell/ui/frmerror.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class Folders : public ::testing::Test {
 protected:
  Folders() {
    for (const char16_t* path : {u"a/b 2/c", u"a/b 10", u"a/.hidden", u"Öl's"})
      QDir().mkpath(scratch_.Path(QString::fromUtf16(path)));
    tree_.SetRoots({{u"Top"_s, scratch_.Path(), "folder"}});
    tree_.show();
  }
  QModelIndex Find(const QModelIndex& parent, const QString& name) {
    for (int row = 0; row < tree_.model()->rowCount(parent); ++row)
      if (const QModelIndex at = tree_.model()->index(row, 0, parent); at.data() == name) return at;
    return {};
  }
  QModelIndex Top() { return tree_.model()->index(0, 0); }
  bool Has(const QModelIndex& parent, const QString& name) {
    return QTest::qWaitFor([&] { return Find(parent, name).isValid(); }, 20'000);
  }
  void Tick(const QModelIndex& at) { tree_.model()->setData(at, Qt::Checked, Qt::CheckStateRole); }

  test::Scratch scratch_;
  FolderTree tree_{FolderTree::Ticks::Yes};
};

TEST_F(Folders, AreOpenedDownToTheCurrentOne) {
  QSignalSpy clicked(&tree_, &FolderTree::FolderClick);
  const QString deep = scratch_.Path("a/b 2/c");
  tree_.SetCurrentFolder(deep + u'/');
  EXPECT_EQ(tree_.CurrentFolder(), deep);
  ASSERT_TRUE(QTest::qWaitFor([&] { return tree_.currentIndex().data() == u"c"_s; }, 20'000));
  EXPECT_EQ(clicked.count(), 1);
  const QModelIndex a = Find(Top(), u"a"_s);
  EXPECT_EQ(tree_.model()->rowCount(a), 2);
  EXPECT_EQ(tree_.model()->index(0, 0, a).data(), u"b 2"_s);
  tree_.SetCurrentFolder(scratch_.Path("nowhere"));
  EXPECT_EQ(tree_.CurrentFolder(), deep);
  tree_.setCurrentIndex(Find(Top(), u"Öl's"_s));
  EXPECT_TRUE(QTest::qWaitFor([&] { return clicked.count() == 2; }, 20'000));
  EXPECT_EQ(clicked.last().first().toString(), scratch_.Path(u"Öl's"_s));
}

TEST_F(Folders, TicksComeDepthFirstAndAreEachOnesOwn) {
  tree_.expand(Top());
  ASSERT_TRUE(Has(Top(), u"a"_s));
  tree_.expand(Find(Top(), u"a"_s));
  ASSERT_TRUE(Has(Find(Top(), u"a"_s), u"b 10"_s));
  Tick(Find(Top(), u"Öl's"_s));
  Tick(Find(Find(Top(), u"a"_s), u"b 10"_s));
  Tick(Top());
  EXPECT_EQ(tree_.TickedFolders(),
            (QStringList{scratch_.Path(), scratch_.Path("a/b 10"), scratch_.Path(u"Öl's"_s)}));
  tree_.ClearTicks();
  EXPECT_TRUE(tree_.TickedFolders().isEmpty());
}

TEST_F(Folders, FollowWhatIsMadeAndRemoved) {
  tree_.SetCurrentFolder(scratch_.Path("a/b 10"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return tree_.currentIndex().data() == u"b 10"_s; }, 20'000));
  Tick(Find(Top(), u"Öl's"_s));
  QDir().mkpath(scratch_.Path("new"));
  ASSERT_TRUE(Has(Top(), u"new"_s));
  EXPECT_EQ(tree_.TickedFolders(), QStringList{scratch_.Path(u"Öl's"_s)});
  QDir(scratch_.Path("a/b 10")).removeRecursively();
  EXPECT_TRUE(QTest::qWaitFor([&] { return tree_.CurrentFolder() == scratch_.Path("a"); }, 20'000));
}

TEST(FailureWindow, ListsSortsAndCopies) {
  frmerror window;
  FailureList failures{u"These could not:"_s, {}};
  failures.Add(u"/z/b.jpg"_s, u"Permission was denied"_s);
  failures.Add(u"/a/ä's.jpg"_s, u"File is offline or missing"_s);
  window.SetFailures(failures);
  window.show();
  EXPECT_EQ(window.findChild<QLabel*>(u"Label1"_s)->text(), u"These could not:"_s);
  auto* table = window.findChild<QTableView*>(u"ListView1"_s);
  EXPECT_EQ(table->model()->index(0, 0).data(), u"/z/b.jpg"_s);
  table->sortByColumn(0, Qt::AscendingOrder);
  EXPECT_EQ(table->model()->index(0, 0).data(), u"/a/ä's.jpg"_s);
  table->selectAll();
  for (QAction* action : table->actions())
    if (action->shortcut() == QKeySequence::Copy) action->trigger();
  EXPECT_EQ(QApplication::clipboard()->text(),
            u"/a/ä's.jpg\tFile is offline or missing\n/z/b.jpg\tPermission was denied"_s);
}

TEST(Busy, TheLabelKeepsTheMouseOutWhileWorkLasts) {
  QWidget pane;
  pane.resize(500, 300);
  QPushButton button(u"Press"_s, &pane);
  button.setGeometry(100, 100, 200, 50);
  Busy busy;
  const BusyLabel label(busy, &pane);
  pane.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&pane));
  QSignalSpy pressed(&button, &QPushButton::clicked);
  const auto press = [&pane] {
    QWidget* target = pane.childAt(150, 120);
    QTest::mouseClick(target, Qt::LeftButton, {}, target->mapFrom(&pane, QPoint(150, 120)));
  };
  {
    BusyRun run(busy, u"Working. Please wait..."_s);
    press();
    EXPECT_EQ(pressed.count(), 0);
    auto* strip = label.findChild<QWidget*>(u"busystrip"_s);
    EXPECT_FALSE(strip->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([strip] { return strip->isVisible(); }, 20'000));
    QTest::qWait(40);
    run.Progress(1, 4);
    EXPECT_EQ(busy.Text(), u"Working. Please wait... 25%"_s);
  }
  press();
  EXPECT_EQ(pressed.count(), 1);
}

}  // namespace
}  // namespace zqm
