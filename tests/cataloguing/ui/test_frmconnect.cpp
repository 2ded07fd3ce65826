// SPDX-License-Identifier: GPL-3.0-or-later
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include "cataloguing/reconnect.h"
#include "cataloguing/ui/frmconnect.h"
#include "shell/ui/folder_tree.h"
#include "shell/ui/frmerror.h"
#include "tests/browser/home_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class ReconnectWindow : public test::HomeTest {
 protected:
  /// A photo in the catalogue; its file stands where `kept`.
  QString Catalogued(const QString& name, bool kept) {
    const QString path = AddPhoto(name);
    CatalogueThem({path});
    if (!kept) QFile::remove(path);
    return path;
  }
  QString Folder(const QString& name) const { return PhotoPath(name) + u'/'; }

  void Open() {
    window_ = std::make_unique<frmconnect>(session_->ActiveCatalogue(),
                                           CatalogueFolders(session_->ActiveCatalogue()));
    found_ = window_->findChild<QTreeWidget*>(u"TreeView1"_s);
    disk_ = window_->findChild<FolderTree*>(u"FolderTreeview1"_s);
    disk_->SetRoots({{u"Photos"_s, scratch_.Path("photos"), "folder"}});
    window_->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  }
  QTreeWidgetItem* Node(const QString& caption) {
    const auto nodes = found_->findItems(caption, Qt::MatchExactly | Qt::MatchRecursive);
    EXPECT_EQ(nodes.size(), 1) << caption.toStdString();
    return nodes.value(0);
  }
  void Click(const QString& caption) {
    found_->scrollToItem(Node(caption));
    QTest::mouseClick(found_->viewport(), Qt::LeftButton, {},
                      found_->visualItemRect(Node(caption)).center());
  }
  void Reconnect() {
    QTest::mouseClick(window_->findChild<QPushButton*>(u"Command1"_s), Qt::LeftButton);
  }
  QString Chosen(const char16_t* name) {
    return window_->findChild<QLineEdit*>(QString::fromUtf16(name))->text();
  }
  /// What the list of failures shows, which is then closed.
  QStringList ReconnectWithFailures() {
    QStringList shown;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
      auto* dialog = qobject_cast<frmerror*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      look.stop();
      shown.append(dialog->findChild<QLabel*>(u"Label1"_s)->text());
      const auto* rows = dialog->findChild<QTableView*>(u"ListView1"_s)->model();
      for (int row = 0; row < rows->rowCount(); ++row)
        for (int column = 0; column < 2; ++column)
          shown.append(rows->index(row, column).data().toString());
      dialog->accept();
    });
    look.start(10);
    Reconnect();
    return shown;
  }

  std::unique_ptr<frmconnect> window_;
  QTreeWidget* found_ = nullptr;
  FolderTree* disk_ = nullptr;
};

TEST_F(ReconnectWindow, ShowsTheFoldersAndMarksThoseThatAreGone) {
  Catalogued(u"here10/a.jpg"_s, true);
  Catalogued(u"here9/b.jpg"_s, true);
  Catalogued(u"gone/below/c.jpg"_s, false);
  ASSERT_TRUE(QDir(PhotoPath(u"gone"_s)).removeRecursively());
  Open();
  ASSERT_EQ(found_->topLevelItemCount(), 1);
  EXPECT_EQ(found_->topLevelItem(0)->text(0), u"/"_s);
  QStringList captions;
  for (QTreeWidgetItemIterator at(Node(u"photos"_s)); *at != nullptr; ++at) {
    captions.append((*at)->text(0));
    EXPECT_TRUE((*at)->childCount() == 0 || (*at)->isExpanded());
  }
  EXPECT_EQ(captions, (QStringList{u"photos"_s, u"gone"_s, u"below"_s, u"here9"_s, u"here10"_s}));
  const auto isMarked = [&](const QString& caption) {
    return Node(caption)->toolTip(0).contains(u"This folder is not there any more"_s);
  };
  EXPECT_TRUE(test::Eventually([&] { return isMarked(u"below"_s); }));
  EXPECT_TRUE(isMarked(u"gone"_s));
  EXPECT_FALSE(isMarked(u"photos"_s) || isMarked(u"here9"_s));
  // Also one that no photo is right in.
  Click(u"gone"_s);
  EXPECT_EQ(Chosen(u"Text6"), Folder(u"gone"_s));
  Click(u"/"_s);
  EXPECT_EQ(Chosen(u"Text6"), u"/"_s);
}

TEST_F(ReconnectWindow, AsksForBothFolders) {
  Catalogued(u"old/a.jpg"_s, false);
  Open();
  Reconnect();
  Click(u"old"_s);
  Reconnect();
  EXPECT_EQ(messages_, (QStringList{QString::fromUtf16(reconnect_text::kNoOldFolder),
                                    QString::fromUtf16(reconnect_text::kNoNewFolder)}));
  EXPECT_EQ(window_->windowTitle(), u"Reconnect Folder to Database"_s);
}

TEST_F(ReconnectWindow, RowsFollowTheFolderWhileTheUserIsKeptOut) {
  Catalogued(u"Jörg's/a.jpg"_s, false);
  Catalogued(u"Jörg's/below/b.jpg"_s, false);
  Catalogued(u"beside/c.jpg"_s, true);
  ASSERT_TRUE(QDir(PhotoPath(u"Jörg's"_s)).removeRecursively());
  const QString a = AddPhoto(u"new/a.jpg"_s), b = AddPhoto(u"new/below/b.jpg"_s);
  Open();
  Click(u"Jörg's"_s);
  disk_->SetCurrentFolder(PhotoPath(u"new"_s));
  EXPECT_EQ(Chosen(u"Text6") + Chosen(u"Text7"), Folder(u"Jörg's"_s) + Folder(u"new"_s));
  QStringList titles;
  QObject::connect(
      window_.get(), &QWidget::windowTitleChanged, window_.get(), [&](const QString& title) {
        titles.append(title);
        if (titles.size() > 1) return;
        for (const char16_t* name :
             {u"Command1", u"cmdcancel", u"TreeView1", u"FolderTreeview1", u"Text6", u"Text7"})
          EXPECT_FALSE(window_->findChild<QWidget*>(QString::fromUtf16(name))->isEnabled());
        for (const char16_t* name : {u"Label3", u"ProgressBar1"})
          EXPECT_TRUE(window_->findChild<QWidget*>(QString::fromUtf16(name))->isVisible());
        EXPECT_FALSE(window_->close());
        QTest::keyClick(window_.get(), Qt::Key_Escape);
      });
  Reconnect();
  EXPECT_EQ(messages_, QStringList{u"Selected folder has been reconnected to the database."_s});
  EXPECT_EQ(titles.takeLast(), u"Reconnect Folder to Database"_s);
  EXPECT_EQ(titles.last(), u"Reconnecting folders to database. Please wait... 100%"_s);
  EXPECT_EQ(Stored(a, Column::ParentFolder), PhotoPath(u"new"_s));
  EXPECT_EQ(Stored(b, Column::ParentFolder), PhotoPath(u"new/below"_s));
  EXPECT_TRUE(Photos().IsCatalogued(PhotoPath(u"beside/c.jpg"_s)));
  // Ready for the next folder: the tree has the catalogue's folders of now.
  EXPECT_TRUE(window_->isVisible() && found_->isEnabled());
  EXPECT_FALSE(window_->findChild<QWidget*>(u"Label3"_s)->isVisible());
  EXPECT_EQ(Chosen(u"Text6"), QString());
  EXPECT_TRUE(found_->findItems(u"Jörg's"_s, Qt::MatchExactly | Qt::MatchRecursive).isEmpty());
  Click(u"new"_s);
  EXPECT_EQ(Chosen(u"Text6"), Folder(u"new"_s));
  QTest::mouseClick(window_->findChild<QPushButton*>(u"cmdcancel"_s), Qt::LeftButton);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(ReconnectWindow, ListsThePhotosThatStayed) {
  const QString lost = Catalogued(u"old/lost.jpg"_s, false);
  Catalogued(u"old/found.jpg"_s, false);
  const QString found = AddPhoto(u"new/found.jpg"_s);
  Open();
  Click(u"old"_s);
  disk_->SetCurrentFolder(PhotoPath(u"new"_s));
  EXPECT_EQ(ReconnectWithFailures(),
            (QStringList{QString::fromUtf16(reconnect_text::kFailures), lost,
                         QString::fromUtf16(reconnect_text::kNotLocated)}));
  EXPECT_TRUE(Photos().IsCatalogued(lost) && Photos().IsCatalogued(found));
  EXPECT_TRUE(messages_.isEmpty());
  EXPECT_EQ(window_->windowTitle(), u"Reconnect Folder to Database"_s);
  // Still there, still chosen.
  EXPECT_EQ(Chosen(u"Text6"), Folder(u"old"_s));
  // A folder onto itself: the photo found before is there already.
  Click(u"new"_s);
  EXPECT_EQ(ReconnectWithFailures(),
            (QStringList{QString::fromUtf16(reconnect_text::kFailures), found,
                         QString::fromUtf16(reconnect_text::kDuplicates)}));
}

TEST_F(ReconnectWindow, SaysWhyACatalogueTakesNothing) {
  session_ = std::make_unique<Session>(session_->Folders());
  ASSERT_TRUE(session_->Activate(u"Zolmira QM.mdb"_s));  // without the home's lock
  Open();
  const auto* button = window_->findChild<QPushButton*>(u"Command1"_s);
  EXPECT_FALSE(button->isEnabled() || button->toolTip().isEmpty());
}

}  // namespace
}  // namespace zqm
