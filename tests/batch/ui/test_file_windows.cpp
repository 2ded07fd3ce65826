// SPDX-License-Identifier: GPL-3.0-or-later
// The windows that move, copy, delete and rename photos.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTimer>

#include "batch/delete_photos.h"
#include "batch/ui/frmdelete.h"
#include "batch/ui/frmmove.h"
#include "batch/ui/frmrename.h"
#include "shell/ui/folder_tree.h"
#include "shell/ui/frmerror.h"
#include "tests/batch/ui/batch_window_fixture.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Does something in the middle of a run.
struct Meddler : test::ToldView {
  std::function<void()> act;
  void RemovePhoto(const QString& path) override {
    ToldView::RemovePhoto(path);
    if (const auto once = std::exchange(act, {})) once();
  }
};

class FileWindows : public test::BatchWindowTest<Meddler> {
 protected:
  /// Choosing a folder as a click in the tree does.
  void Choose(const QString& folder) {
    Q_EMIT Find<FolderTree>(u"FolderTreeview1")->FolderClick(folder);
  }
  /// Closes the list of failures that comes, and keeps it.
  void ExpectFailures() {
    QObject::connect(&look_, &QTimer::timeout, &look_, [this] {
      auto* dialog = qobject_cast<frmerror*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      look_.stop();
      heading_ = dialog->findChild<QLabel*>(u"Label1"_s)->text();
      failures_ = dialog->findChild<QTableView*>(u"ListView1"_s)->model()->rowCount();
      dialog->accept();
    });
    look_.start(10);
  }

  QTimer look_;
  QString heading_;
  int failures_ = 0;
};

TEST_F(FileWindows, MovingNeedsADestinationAndClosesWhenItIsDone) {
  const QString path = Photo("a/1.jpg");
  Open<frmmove>({path}, In("a"));
  EXPECT_EQ(window_->windowTitle(), u"Move To Folder..."_s);
  Click(u"cmdok");
  Click(u"Command1");
  EXPECT_EQ(messages_,
            (QStringList{u"Select destination folder."_s, u"Enter the name of the new folder."_s}));
  EXPECT_EQ(Find<QComboBox>(u"Combo1")->currentText(), u"Skip"_s);
  Choose(In("b"));
  EXPECT_EQ(Find<QLineEdit>(u"Text1")->text(), In("b/"));
  Click(u"Command1");
  EXPECT_EQ(messages_.last(), u"Enter the name of the new folder."_s);
  QTest::keyClicks(Find<QLineEdit>(u"Text7"), u"new"_s);
  Click(u"Command1");
  EXPECT_EQ(Find<QLineEdit>(u"Text1")->text(), In("b/new/"));

  QStringList during;
  told_.act = [&] {
    window_->close();
    window_->reject();
    for (const char16_t* name : {u"cmdok", u"cmdcancel", u"Command1"})
      if (Find<QPushButton>(name)->isEnabled()) during.append(QString::fromUtf16(name));
    during.append(Find<QLabel>(u"Label3")->text());
    if (!window_->isVisible()) during.append(u"closed"_s);
  };
  Click(u"cmdok");
  EXPECT_EQ(during, QStringList{u"Moving: 1.jpg"_s});
  EXPECT_EQ(messages_.last(), u"Selected photos have been moved to the specified folder."_s);
  EXPECT_FALSE(window_->isVisible());
  EXPECT_TRUE(Photos().IsCatalogued(In("b/new/1.jpg")));
}

TEST_F(FileWindows, CopyingListsWhatStandsAlready) {
  const QString path = Photo("a/1.jpg"), other = Photo("a/2.jpg");
  Photo("b/1.jpg");
  Open<frmcopy>({path, other}, In("a"));
  Choose(In("b"));
  ExpectFailures();
  Click(u"cmdok");
  EXPECT_EQ(heading_, u"The following photos could not be copied:"_s);
  EXPECT_EQ(failures_, 1);
  EXPECT_TRUE(messages_.isEmpty());
  EXPECT_EQ(Names("b"), (QStringList{u"1.jpg"_s, u"2.jpg"_s}));
  Open<frmcopy>({path, other}, In("a"));
  Choose(In("b"));
  Find<QComboBox>(u"Combo1")->setCurrentText(u"Overwrite"_s);
  Click(u"cmdok");
  EXPECT_EQ(messages_, QStringList{u"Selected photos have been copied to the specified folder."_s});
  EXPECT_FALSE(Photos().IsCatalogued(In("b/1.jpg")));
}

TEST_F(FileWindows, DeletingNeedsAnAnswerThatEnterDoesNotGive) {
  const QString a = Photo("a/1.jpg"), b = Photo("a/2.jpg");
  Open<frmdelete>({a, b}, delete_text::kAskSelected);
  EXPECT_EQ(Find<QListWidget>(u"List1")->count(), 2);
  QTest::keyClick(window_.get(), Qt::Key_Return);
  EXPECT_FALSE(window_->isVisible());
  EXPECT_EQ(Photos().Count(), 2);
  Open<frmdelete>({a}, delete_text::kAskRejected);
  Click(u"cmdremove");
  EXPECT_EQ(messages_.last(), u"Selected photo(s) have been removed from the database."_s);
  EXPECT_TRUE(FileExists(a));
  Open<frmdelete>({b}, delete_text::kAskSelected);
  Click(u"cmddelete");
  EXPECT_EQ(messages_.last(),
            u"Selected photo(s) have been removed from disk and from database."_s);
  EXPECT_FALSE(FileExists(b));
}

class RenameWindow : public FileWindows {
 protected:
  QStringList Preview() {
    const auto* rows = Find<QTableView>(u"ListView1")->model();
    QStringList names;
    for (int row = 0; row < rows->rowCount(); ++row)
      names.append(rows->index(row, 1).data().toString());
    return names;
  }
  void Type(const char16_t* field, const QString& text) {
    auto* edit = Find<QLineEdit>(field);
    edit->clear();
    QTest::keyClicks(edit, text);
  }
};

TEST_F(RenameWindow, ThePreviewIsWhatIsDone) {
  const QString a = Photo("a/one.jpg"), b = Photo("a/two.jpg");
  Open<frmrename>({a, b});
  const QString today = QDate::currentDate().toString(u"yyyy-MM-dd");
  EXPECT_EQ(Preview(), (QStringList{today + u"-1.jpg"_s, today + u"-2.jpg"_s}));
  // What is no number leaves the preview, and an emptied number comes back with the text.
  Type(u"Text2", u"7x"_s);
  EXPECT_EQ(Preview().first(), today + u"-7.jpg"_s);
  Click(u"Command1");
  EXPECT_EQ(messages_.last(), u"Enter a valid number in the start number field."_s);
  Find<QLineEdit>(u"Text2")->clear();
  Type(u"Text1", u"Trip"_s);
  EXPECT_EQ(Find<QLineEdit>(u"Text2")->text(), u"1"_s);
  EXPECT_EQ(Preview(), (QStringList{u"Trip-1.jpg"_s, u"Trip-2.jpg"_s}));

  EXPECT_TRUE(Find<QRadioButton>(u"Option3")->isHidden());
  QTest::mouseClick(Find<QRadioButton>(u"Option2"), Qt::LeftButton);
  EXPECT_FALSE(Find<QLineEdit>(u"Text1")->isEnabled());
  Type(u"Text4", u"0"_s);
  EXPECT_EQ(Preview(), (QStringList{u"one.jpg"_s, u"two.jpg"_s}));
  Type(u"Text3", u"o"_s);
  EXPECT_EQ(Preview(), (QStringList{u"0ne.jpg"_s, u"tw0.jpg"_s}));
  Click(u"Command1");
  EXPECT_EQ(messages_.last(), u"Renaming Images Completed."_s);
  EXPECT_EQ(Names("a"), (QStringList{u"0ne.jpg"_s, u"tw0.jpg"_s}));
  EXPECT_EQ(told_.told.last(), u"live"_s);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(RenameWindow, ASinglePhotoHasAModeOfItsOwn) {
  const QString a = Photo("a/one.jpg");
  Open<frmrename>({a});
  QTest::mouseClick(Find<QRadioButton>(u"Option3"), Qt::LeftButton);
  EXPECT_EQ(Preview(), QStringList{u"one.jpg"_s});
  Find<QLineEdit>(u"Text10")->clear();
  Click(u"Command1");
  EXPECT_EQ(messages_.last(), u"Enter the new name of the image."_s);
  EXPECT_TRUE(window_->isVisible());
  Find<QLineEdit>(u"Text10")->setText(u"Föhn's"_s);
  Click(u"Command1");
  EXPECT_TRUE(Photos().IsCatalogued(In("a/Föhn's.jpg")));
}

}  // namespace
}  // namespace zqm
