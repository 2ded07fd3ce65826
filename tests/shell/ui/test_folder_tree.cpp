// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/folder_tree.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kPatience = 20'000;

class FolderTreeTest : public ::testing::Test {
 protected:
  void Open(FolderTree::Ticks ticks, const QStringList& folders) {
    for (const QString& folder : folders)
      QDir().mkpath(scratch_.Path(folder));
    tree_ = std::make_unique<FolderTree>(ticks);
    tree_->SetRoots({{u"Root"_s, scratch_.Path(), "folder"}});
    tree_->resize(300, 600);
    tree_->show();
    QObject::connect(tree_.get(), &FolderTree::FolderClick, tree_.get(),
                     [this](const QString& path) { clicks_ += Relative(path); });
  }
  QString Relative(const QString& path) const {
    return QDir(scratch_.Path()).relativeFilePath(path);
  }
  static QStringList Names(const QModelIndex& parent) {
    QStringList names;
    for (int row = 0; row < parent.model()->rowCount(parent); ++row)
      names += parent.model()->index(row, 0, parent).data().toString();
    return names;
  }
  QModelIndex Root() const { return tree_->model()->index(0, 0); }
  QModelIndex Child(const QModelIndex& parent, const QString& name) const {
    const qsizetype row = Names(parent).indexOf(name);
    return row < 0 ? QModelIndex() : tree_->model()->index(static_cast<int>(row), 0, parent);
  }
  /// Opens a folder and waits for what is in it.
  bool Expand(const QModelIndex& index, const QStringList& expected) {
    tree_->expand(index);
    return QTest::qWaitFor([&] { return Names(index) == expected; }, kPatience);
  }
  void Tick(const QModelIndex& index) {
    tree_->model()->setData(index, Qt::Checked, Qt::CheckStateRole);
  }
  QStringList Ticked() const {
    QStringList names;
    for (const QString& path : tree_->TickedFolders())
      names += Relative(path);
    return names;
  }
  void Click(const QModelIndex& index) {
    QTest::mouseClick(tree_->viewport(), Qt::LeftButton, {}, tree_->visualRect(index).center());
  }
  bool Clicked(const QStringList& expected) {
    return QTest::qWaitFor([&] { return clicks_ == expected; }, kPatience);
  }

  test::Scratch scratch_;
  std::unique_ptr<FolderTree> tree_;
  QStringList clicks_;
};

TEST_F(FolderTreeTest, UnfoldsToAFolderMadeAMomentAgo) {
  Open(FolderTree::Ticks::No, {u"Graz/Föhn's Tag"_s, u"empty"_s});
  ASSERT_TRUE(Expand(Root(), {u"empty"_s, u"Graz"_s}));
  ASSERT_TRUE(Expand(Child(Root(), u"Graz"_s), {u"Föhn's Tag"_s}));
  QDir().mkpath(scratch_.Path("Graz/Föhn's Tag/2020"));
  tree_->SetCurrentFolder(scratch_.Path("Graz/./Föhn's Tag/2020/"));
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return tree_->currentIndex().data() == u"2020"_s; }, kPatience));
  EXPECT_EQ(clicks_, QStringList{u"Graz/Föhn's Tag/2020"_s});
  EXPECT_TRUE(tree_->viewport()->rect().contains(tree_->visualRect(tree_->currentIndex())));
  // Nothing in it: the sign for opening it goes.
  EXPECT_TRUE(Expand(Child(Root(), u"empty"_s), {}));
}

TEST_F(FolderTreeTest, TellsWhatTheUserChooses) {
  Open(FolderTree::Ticks::No, {u"a"_s, u"b"_s});
  ASSERT_TRUE(Expand(Root(), {u"a"_s, u"b"_s}));
  Click(Child(Root(), u"a"_s));
  EXPECT_TRUE(Clicked({u"a"_s}));
  QTest::keyClick(tree_.get(), Qt::Key_Down);
  EXPECT_TRUE(Clicked({u"a"_s, u"b"_s}));
  // The same one again, as after a search.
  QTest::qWait(QApplication::doubleClickInterval() + 50);
  Click(Child(Root(), u"b"_s));
  EXPECT_TRUE(Clicked({u"a"_s, u"b"_s, u"b"_s}));
}

TEST_F(FolderTreeTest, FollowsTheDiskWithoutLosingWhatTheUserDid) {
  Open(FolderTree::Ticks::Yes, {u"b/inner"_s, u"c"_s});
  ASSERT_TRUE(Expand(Root(), {u"b"_s, u"c"_s}));
  ASSERT_TRUE(Expand(Child(Root(), u"b"_s), {u"inner"_s}));
  Tick(Child(Root(), u"b"_s));
  Click(Child(Root(), u"c"_s));
  QDir().mkpath(scratch_.Path("a"));
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        return Names(Root()) == QStringList({u"a"_s, u"b"_s, u"c"_s});
      },
      kPatience));
  EXPECT_TRUE(tree_->isExpanded(Child(Root(), u"b"_s)));
  EXPECT_EQ(Ticked(), QStringList{u"b"_s});
  EXPECT_EQ(tree_->currentIndex(), Child(Root(), u"c"_s));
  // What is gone takes its tick along, and the choice moves up.
  clicks_.clear();
  Click(Child(Child(Root(), u"b"_s), u"inner"_s));
  ASSERT_TRUE(Clicked({u"b/inner"_s}));
  ASSERT_TRUE(QDir(scratch_.Path("b")).removeRecursively());
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return tree_->CurrentFolder() == scratch_.Path(); }, kPatience));
  EXPECT_TRUE(Ticked().isEmpty());
}

TEST_F(FolderTreeTest, GivesTicksDepthFirst) {
  Open(FolderTree::Ticks::Yes, {u"a/deep/deeper"_s, u"b"_s});
  tree_->SetRoots(
      {{u"Root"_s, scratch_.Path(), "folder"}, {u"Again"_s, scratch_.Path("b"), "folder"}});
  ASSERT_TRUE(Expand(Root(), {u"a"_s, u"b"_s}));
  ASSERT_TRUE(Expand(Child(Root(), u"a"_s), {u"deep"_s}));
  Tick(tree_->model()->index(1, 0));
  Tick(Child(Root(), u"b"_s));
  Tick(Child(Child(Root(), u"a"_s), u"deep"_s));
  EXPECT_EQ(Ticked(), (QStringList{u"a/deep"_s, u"b"_s}));
  tree_->setCurrentIndex(Child(Root(), u"a"_s));
  QTest::keyClick(tree_.get(), Qt::Key_Space);
  EXPECT_EQ(Ticked(), (QStringList{u"a"_s, u"a/deep"_s, u"b"_s}));
  tree_->ClearTicks();
  EXPECT_TRUE(Ticked().isEmpty());
}

TEST_F(FolderTreeTest, TicksAllBelowAndNoLink) {
  Open(FolderTree::Ticks::Yes, {u"a/deep/deeper"_s, u"b"_s});
  QFile::link(scratch_.Path(), scratch_.Path("a/loop"));
  bool wasTicking = false;
  QObject::connect(tree_.get(), &FolderTree::TicksChanged, tree_.get(),
                   [&] { wasTicking = tree_->IsTicking(); });
  tree_->TickWithSubfolders(Root());
  EXPECT_TRUE(wasTicking);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !tree_->IsTicking(); }, kPatience));
  EXPECT_FALSE(wasTicking);
  EXPECT_EQ(Ticked(), (QStringList{u"."_s, u"a"_s, u"a/deep"_s, u"a/deep/deeper"_s, u"b"_s}));
}

TEST_F(FolderTreeTest, MayGoWhileFoldersAreRead) {
  Open(FolderTree::Ticks::Yes, {u"a/b/c"_s, u"d/e/f"_s});
  tree_->TickWithSubfolders(Root());
  tree_.reset();
  QTest::qWait(50);
  EXPECT_TRUE(clicks_.isEmpty());
}

}  // namespace
}  // namespace zqm
