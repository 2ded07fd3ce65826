// SPDX-License-Identifier: GPL-3.0-or-later
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTimer>

#include "search/categories.h"
#include "search/ui/check_list.h"
#include "search/ui/frmaddcategory.h"
#include "search/ui/search_panel.h"
#include "shell/ui/frmerror.h"
#include "tests/browser/ui/main_window_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class Catalogued : public test::MainWindowTest {
 protected:
  Catalogued() {
    CatalogueThem({AddPhoto(u"a.jpg"_s), AddPhoto(u"b.jpg"_s), AddPhoto(u"c.jpg"_s)});
    AddPhoto(u"d.jpg"_s);
    Give(u"a.jpg"_s, Column::Tags, u"Sunset"_s);
    Give(u"b.jpg"_s, Column::Tags, u"sunset too"_s);
    Give(u"b.jpg"_s, Column::Date, u"2007-05-01"_s);
  }
  void Give(const QString& name, Column column, const QString& text) {
    ASSERT_TRUE(Photos().LocateRow(PhotoPath(name)));
    Photos().SetField(column, text);
    ASSERT_TRUE(Photos().MoveFirst());
  }
  void Type(const char16_t* field, const QString& text) { Find<QLineEdit>(field)->setText(text); }
  void Search() { Press(Find<SearchPanel>(u"searchpanel"), u"Command1"); }
  static void Press(QWidget* parent, const char16_t* button) {
    auto* found = parent->findChild<QPushButton*>(QString::fromUtf16(button));
    ASSERT_NE(found, nullptr);
    QTest::mouseClick(found, Qt::LeftButton);
  }
  QStringList Shown() {
    QStringList names;
    for (int row = 0; row < List()->model()->rowCount(); ++row)
      names.append(List()->model()->index(row, 0).data().toString());
    return names;
  }
  /// Looks at the next dialog as soon as it is open, and closes it.
  template <class Dialog>
  void WithDialog(const std::function<void(Dialog&)>& look) {
    auto* watch = new QTimer(window_.get());
    QObject::connect(watch, &QTimer::timeout, watch, [watch, look] {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      watch->stop();
      look(*dialog);
      dialog->close();
    });
    watch->start(5);
  }
};

TEST_F(Catalogued, ASearchShowsItsHitsFromFileOrRow) {
  Open();
  Trigger(u"mnusearch");
  EXPECT_TRUE(Find<SearchPanel>(u"searchpanel")->isVisible());
  Type(u"Text6", u"sunset"_s);
  QFile::remove(PhotoPath(u"b.jpg"_s));
  Search();
  EXPECT_EQ(Shown(), (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
  EXPECT_EQ(Text(u"lblcounter"), u"2 Photos /  0 Selected"_s);
  Click(1);
  EXPECT_EQ(Text(u"lblstatus").simplified(), u"b.jpg is missing or is offline."_s);
  // One date is both; its copy shows.
  Type(u"Text9", u"5/1/2007"_s);
  Search();
  EXPECT_EQ(Shown(), QStringList{u"b.jpg"_s});
  EXPECT_EQ(Find<QLineEdit>(u"Text7")->text(), u"5/1/2007"_s);
  Give(u"a.jpg"_s, Column::Date, u"2007-05-01"_s);
  Trigger(u"mnurefresh");
  EXPECT_EQ(Shown(), (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
  EXPECT_EQ(messages_, QStringList());
}

TEST_F(Catalogued, ASearchWithoutHitsSaysSo) {
  Open();
  Type(u"Text7", u"31.2.2007"_s);
  Search();
  EXPECT_EQ(messages_.takeFirst(), u"Invalid date format."_s);
  EXPECT_EQ(Shown(), QStringList());
  Type(u"Text7", QString());
  Search();
  EXPECT_EQ(messages_, QStringList());
  EXPECT_EQ(Text(u"lblcounter"), u"0 Photo / 0 Selected"_s);
  Type(u"Text6", u"snow"_s);
  Search();
  EXPECT_EQ(messages_.takeFirst(), u"Search is complete. There are no results to display."_s);
  EXPECT_EQ(Shown(), QStringList());
}

TEST_F(Catalogued, AHitThatCantBeShownIsListed) {
  ASSERT_TRUE(Photos().LocateRow(PhotoPath(u"a.jpg"_s)));
  Photos().WriteThumbnail(QByteArray());
  ASSERT_TRUE(Photos().MoveFirst());
  Open();
  QFile::remove(PhotoPath(u"a.jpg"_s));
  Type(u"Text6", u"sunset"_s);
  QString label;
  WithDialog<frmerror>(
      [&label](frmerror& list) { label = list.findChild<QLabel*>(u"Label1"_s)->text(); });
  Search();
  EXPECT_EQ(
      label,
      u"The following files are missing or offline but could not be loaded from the database:"_s);
  EXPECT_EQ(Shown(), QStringList{u"b.jpg"_s});
}

TEST_F(Catalogued, WhatIsTypedIsSavedBeforeTheSearch) {
  Open();
  Click(0);
  QTest::keyClicks(Find<QLineEdit>(u"Text19"), u" snow"_s);
  Type(u"Text6", u"snow"_s);
  Search();
  EXPECT_EQ(Shown(), QStringList{u"a.jpg"_s});
  EXPECT_EQ(Stored(PhotoPath(u"a.jpg"_s), Column::Tags), u" snowSunset"_s);
}

TEST_F(Catalogued, CategoriesAreAddedAndDeletedEverywhere) {
  Open();
  WithDialog<frmaddcategory>([this](frmaddcategory& dialog) {
    auto* name = dialog.findChild<QLineEdit*>(u"Text1"_s);
    for (const QString& text : {u""_s, u"\"Travel\""_s, u"travel"_s, u"Öl"_s}) {
      name->setText(text);
      Press(&dialog, u"Command1");
    }
  });
  Press(window_.get(), u"cmdinfo(0)");
  EXPECT_EQ(messages_,
            (QStringList{u"'Travel' has been added to the list of categories."_s,
                         u"'travel' already exists in the list of categories. Specify a category "
                         u"with a different name."_s,
                         u"'Öl' has been added to the list of categories."_s}));
  EXPECT_EQ(Find<CheckList>(u"List2")->Items(), (QStringList{u"Travel"_s, u"Öl"_s}));

  auto* list = Find<QListWidget>(u"List3");
  auto* remove = Find<QPushButton>(u"cmdinfo(1)");
  EXPECT_FALSE(remove->isEnabled());
  list->setCurrentRow(0);
  Give(u"c.jpg"_s, Column::Categories, u",Travel,"_s);
  messages_.clear();
  remove->click();
  EXPECT_EQ(messages_.takeFirst(),
            u"Cannot delete the selected category since it has existing items assigned to it."_s);
  Give(u"c.jpg"_s, Column::Categories, QString());
  remove->click();  // and the answer is No
  EXPECT_EQ(messages_.takeFirst(), u"Delete Travel from the list of categories?"_s);
  EXPECT_EQ(list->count(), 2);
  answer_ = Answer::Yes;
  remove->click();
  EXPECT_EQ(list->count(), 1);
  EXPECT_EQ(Find<CheckList>(u"List2")->Items(), QStringList{u"Öl"_s});
  EXPECT_EQ(session_->ActiveCatalogue().Categories(), QStringList{u"Öl"_s});
}

TEST_F(Catalogued, RebuildingReadsTheSelectedFilesAgain) {
  Open();
  Click(0);
  Click(1, Qt::ControlModifier);
  AddPhoto(u"a.jpg"_s, {{u"EXIF_Make", u"Lumora"}});
  AddPhoto(u"b.jpg"_s, {{u"EXIF_Make", u"Lumora"}});
  Trigger(u"mnurebuild");
  EXPECT_EQ(messages_,
            QStringList{u"Thumbnails and Metadata information for the selected photo(s) have "
                        u"been updated."_s});
  for (const QString& name : {u"a.jpg"_s, u"b.jpg"_s})
    EXPECT_EQ(Stored(PhotoPath(name), Column::CameraMake), u"Lumora"_s);
  EXPECT_EQ(Stored(PhotoPath(u"a.jpg"_s), Column::Tags), u"Sunset"_s);
}

TEST_F(Catalogued, OptimisingEndsInARestart) {
  Open();
  Click(0);
  QTest::keyClicks(Find<QLineEdit>(u"Text19"), u" snow"_s);
  const QSignalSpy closed(window_.get(), &frmmain::Closed);
  Trigger(u"mnuoptimize");
  ASSERT_EQ(messages_.size(), 1);
  EXPECT_TRUE(messages_.first().endsWith(u" %\nZolmira QM will now restart."_s))
      << messages_.first().toStdString();
  EXPECT_EQ(closed.size(), 1);
  EXPECT_TRUE(window_->RestartRequested());
  EXPECT_FALSE(session_->HasActiveCatalogue());
  window_.reset();
  ASSERT_TRUE(session_->Activate(u"Zolmira QM.mdb"_s));
  EXPECT_EQ(Photos().Count(), 3);
  EXPECT_EQ(Stored(PhotoPath(u"a.jpg"_s), Column::Tags), u" snowSunset"_s);
}

TEST_F(Catalogued, ACatalogueThatCantBeOptimisedStaysOpen) {
  Open();
  QFile::remove(session_->ActiveCatalogue().Path());
  Trigger(u"mnuoptimize");
  EXPECT_EQ(messages_, QStringList{u"Cannot locate Zolmira QM database."_s});
  EXPECT_FALSE(window_->RestartRequested());
  EXPECT_TRUE(window_->isVisible());
}

TEST_F(Catalogued, TheAdvancedSwitchIsRemembered) {
  Open();
  auto* panel = Find<SearchPanel>(u"searchpanel");
  EXPECT_FALSE(panel->AdvancedSearch());
  panel->SetAdvancedSearch(true);
  window_->close();
  Open();
  EXPECT_TRUE(Find<SearchPanel>(u"searchpanel")->AdvancedSearch());
}

}  // namespace
}  // namespace zqm
