// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

#include "cataloguing/ui/frmcatalog.h"
#include "imaging/ui/image_multi_x.h"
#include "shell/ui/folder_tree.h"
#include "shell/ui/frmerror.h"
#include "tests/browser/home_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Does something when the first photo has been added.
struct View : BrowserView {
  std::function<void()> act;
  void MarkCatalogued(const QString&) override {
    if (const auto once = std::exchange(act, {})) once();
  }
};

class ImportWindow : public test::HomeTest {
 protected:
  void Open(BrowserView* view = nullptr) {
    window_ = std::make_unique<frmcatalog>(*session_, view, QString());
    tree_ = window_->findChild<FolderTree*>(u"FolderTreeview1"_s);
    tree_->SetRoots({{u"Photos"_s, scratch_.Path("photos"), "folder"},
                     {u"Empty"_s, scratch_.Path("empty"), "folder"}});
    window_->show();
  }
  void Tick(int root) {
    tree_->model()->setData(tree_->model()->index(root, 0), Qt::Checked, Qt::CheckStateRole);
  }
  void Catalog() {
    QTest::mouseClick(window_->findChild<QPushButton*>(u"cmdimport"_s), Qt::LeftButton);
  }
  QLineEdit* Date() { return window_->findChild<QLineEdit*>(u"txtdate"_s); }

  std::unique_ptr<frmcatalog> window_;
  FolderTree* tree_ = nullptr;
};

TEST_F(ImportWindow, SaysWhatIsMissingAndKeepsWhatWasTyped) {
  QDir().mkpath(scratch_.Path("empty"));
  AddPhoto(u"a.jpg"_s);
  Open();
  Catalog();
  EXPECT_EQ(messages_.last(), u"No folder has been selected."_s);
  Tick(0);
  QTest::keyClicks(Date(), u"31/02/2020"_s);
  Catalog();
  EXPECT_EQ(messages_.last(), u"Invalid date format."_s);
  EXPECT_EQ(Date()->text(), u"31/02/2020"_s);
  EXPECT_EQ(Photos().Count(), 0);
  tree_->ClearTicks();
  Date()->clear();
  Tick(1);
  Catalog();
  EXPECT_EQ(messages_.last(), u"No Images were found in the selected folders."_s);
  EXPECT_TRUE(window_->findChild<QPushButton*>(u"cmdimport"_s)->isEnabled());
}

TEST_F(ImportWindow, AddsTheTickedFoldersWithTheirTexts) {
  const QString a = AddPhoto(u"Föhn's.jpg"_s);
  const QString below = scratch_.Write("photos/below/b.jpg", test::SampleJpeg(50, 50));
  Open();
  Tick(0);
  QTest::keyClicks(window_->findChild<QPlainTextEdit*>(u"txtnotes"_s), u"Summer"_s);
  QTest::keyClicks(window_->findChild<QLineEdit*>(u"txtauthor"_s), u"Jo"_s);
  QTest::keyClicks(Date(), u"02/01/2020"_s);
  Catalog();
  EXPECT_EQ(messages_, QStringList{QString::fromUtf16(import_text::kDone)});
  EXPECT_EQ(Stored(a, Column::Notes), u"Summer"_s);
  EXPECT_EQ(Stored(a, Column::Author), u"Jo"_s);
  EXPECT_EQ(Stored(a, Column::Date), u"2020-01-02"_s);
  EXPECT_EQ(Stored(a, Column::Flag), u"Unflagged"_s);
  EXPECT_FALSE(Photos().IsCatalogued(below));
  EXPECT_EQ(Date()->text(), QString());
}

TEST_F(ImportWindow, ListsWhatCouldNotBeAdded) {
  CatalogueThem({AddPhoto(u"a.jpg"_s)});
  scratch_.Write("photos/broken.jpg", "not a picture");
  AddPhoto(u"c.jpg"_s);
  Open();
  Tick(0);
  QStringList shown;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&] {
    auto* dialog = qobject_cast<frmerror*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    look.stop();
    shown.append(dialog->findChild<QLabel*>(u"Label1"_s)->text());
    const auto* rows = dialog->findChild<QTableView*>(u"ListView1"_s)->model();
    for (int row = 0; row < rows->rowCount(); ++row)
      shown.append(rows->index(row, 1).data().toString());
    dialog->accept();
  });
  look.start(10);
  Catalog();
  EXPECT_EQ(shown, (QStringList{u"The following files could to be added to Zolmira QM Database:"_s,
                                u"File already exists in database"_s,
                                u"File could not be read as an image"_s}));
  EXPECT_EQ(Photos().Count(), 2);
}

TEST_F(ImportWindow, KeepsTheUserOutAndGoesOnWhenAPhotoVanishes) {
  View view;
  const QString first = AddPhoto(u"a.jpg"_s);
  const QString vanishing = AddPhoto(u"b.jpg"_s);
  const QString last = AddPhoto(u"c.jpg"_s);
  Open(&view);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
  Tick(0);
  auto* cancel = window_->findChild<QPushButton*>(u"cmdcancel"_s);
  view.act = [&] {
    QFile::remove(vanishing);
    for (const char16_t* name : {u"cmdimport", u"cmdcancel", u"Check1", u"FolderTreeview1",
                                 u"txtnotes", u"txtauthor", u"txtdate"})
      EXPECT_FALSE(window_->findChild<QWidget*>(QString::fromUtf16(name))->isEnabled());
    EXPECT_TRUE(window_->findChild<QWidget*>(u"Frame1"_s)->isVisible());
    EXPECT_FALSE(window_->close());
    QTest::keyClick(window_.get(), Qt::Key_Escape);
  };
  QStringList shown;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&] {
    auto* dialog = qobject_cast<frmerror*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    look.stop();
    const auto* rows = dialog->findChild<QTableView*>(u"ListView1"_s)->model();
    for (int row = 0; row < rows->rowCount(); ++row)
      for (int column = 0; column < 2; ++column)
        shown.append(rows->index(row, column).data().toString());
    dialog->accept();
  });
  look.start(10);
  Catalog();
  EXPECT_EQ(shown, (QStringList{vanishing, u"File is offline or missing"_s}));
  EXPECT_TRUE(Photos().IsCatalogued(first) && Photos().IsCatalogued(last));
  QCoreApplication::processEvents();
  EXPECT_TRUE(window_->isVisible());
  EXPECT_FALSE(window_->findChild<QWidget*>(u"Frame1"_s)->isVisible());
  QTest::mouseClick(cancel, Qt::LeftButton);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(ImportWindow, PreviewsTheClickedFolder) {
  AddPhoto(u"a.jpg"_s);
  AddPhoto(u"b.jpg"_s);
  QDir().mkpath(scratch_.Path("empty"));
  Open();
  tree_->SetCurrentFolder(scratch_.Path("photos"));
  auto* list = window_->findChild<ImageMultiX*>(u"ImageMultiX1"_s);
  auto* box = window_->findChild<QCheckBox*>(u"Check1"_s);
  EXPECT_EQ(list->model()->rowCount(), 0);
  box->click();
  EXPECT_TRUE(test::Eventually([&] { return list->model()->rowCount() == 2; }));
  tree_->SetCurrentFolder(scratch_.Path("empty"));
  EXPECT_TRUE(test::Eventually([&] { return list->model()->rowCount() == 0; }));
  tree_->SetCurrentFolder(scratch_.Path("photos"));
  EXPECT_TRUE(test::Eventually([&] { return list->model()->rowCount() == 2; }));
  box->click();
  EXPECT_EQ(list->model()->rowCount(), 0);
}

TEST_F(ImportWindow, SaysWhyACatalogueTakesNothing) {
  session_ = std::make_unique<Session>(session_->Folders());
  ASSERT_TRUE(session_->Activate(u"Zolmira QM.mdb"_s));  // without the home's lock
  Open();
  auto* button = window_->findChild<QPushButton*>(u"cmdimport"_s);
  EXPECT_FALSE(button->isEnabled());
  EXPECT_FALSE(button->toolTip().isEmpty());
  Tick(0);
  EXPECT_FALSE(button->isEnabled());
}

}  // namespace
}  // namespace zqm
