// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "search/ui/check_list.h"
#include "search/ui/filter_slot.h"
#include "search/ui/search_panel.h"
#include "search/ui/switch_boxes.h"
#include "tests/catalogue/catalogue_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class Panel : public test::CatalogueTest {
 protected:
  void SetUp() override {
    CatalogueTest::SetUp();
    ASSERT_TRUE(
        Add(u"/a.jpg"_s, {{Column::CameraMake, u"Canon"_s}, {Column::ISOSpeed, u"ISO-400"_s}}));
    ASSERT_TRUE(
        Add(u"/b.jpg"_s, {{Column::CameraMake, u"Nikon"_s}, {Column::ISOSpeed, u"ISO-50"_s}}));
    panel_ = std::make_unique<SearchPanel>(*catalogue, busy_);
    panel_->SetCategories({u"Family"_s, u"Travel"_s, u"Öl"_s});
    panel_->resize(240, 900);
    panel_->show();
  }

  template <class Widget>
  Widget* Child(const QString& name) {
    Widget* child = panel_->findChild<Widget*>(name);
    EXPECT_NE(child, nullptr) << name.toStdString();
    return child;
  }
  void Type(const QString& name, const QString& text) {
    auto* edit = Child<QLineEdit>(name);
    edit->clear();
    QTest::keyClicks(edit, text);
  }
  /// A click on the row of that text.
  void Tick(const QString& list, const QString& item) {
    auto* view = Child<CheckList>(list);
    for (int row = 0; row < view->model()->rowCount(); ++row) {
      const QModelIndex index = view->model()->index(row, 0);
      if (index.data().toString() != item) continue;
      QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(index).center());
    }
  }
  void Choose(int slot, const QString& action) {
    auto* chosen = Child<FilterSlot>(u"filterslot(%1)"_s.arg(slot))->findChild<QAction*>(action);
    ASSERT_NE(chosen, nullptr) << action.toStdString();
    chosen->trigger();
  }
  QString Condition() {
    const auto statement = BuildSQL(panel_->Criteria());
    return statement ? statement->condition : statement.Reason();
  }

  Busy busy_;
  std::unique_ptr<SearchPanel> panel_;
};

TEST_F(Panel, EveryFieldNarrows) {
  EXPECT_EQ(Condition(), QString());
  Type(u"Text31"_s, u"Ann"_s);
  Type(u"Text9"_s, u"1/1/2007"_s);
  Tick(u"List1"_s, u"5"_s);
  Tick(u"List1"_s, u"2"_s);
  Tick(u"List2"_s, u"Öl"_s);
  EXPECT_EQ(Condition(),
            u"([Rating] = '2' OR [Rating] = '5') AND ([Categories] LIKE \"%,Öl,%\") "
            u"AND ([Author] LIKE \"%Ann%\") AND ([Date] Between #1/1/2007# AND "
            u"#1/1/2007#)"_s);
  Tick(u"List1"_s, u"5"_s);  // and off again
  panel_->SetCategories({u"Öl"_s, u"New"_s});
  EXPECT_TRUE(Condition().startsWith(u"([Rating] = '2') AND ([Categories] LIKE \"%,Öl,%\")"_s));

  QTest::mouseClick(Child<QPushButton>(u"cmdclear"_s), Qt::LeftButton);
  EXPECT_EQ(Condition(), QString());
  Type(u"Text6"_s, u"a, b"_s);
  QTest::keyClick(Child<QComboBox>(u"Combo1"_s), Qt::Key_Down);
  EXPECT_TRUE(Condition().startsWith(u"(([Tags] LIKE \"%a%\" OR [Tags] LIKE \"%b%\")"_s));
}

TEST_F(Panel, EnterAndTheButtonSearch) {
  const QSignalSpy wanted(panel_.get(), &SearchPanel::SearchWanted);
  QTest::keyClick(Child<QLineEdit>(u"Text6"_s), Qt::Key_Return);
  EXPECT_EQ(wanted.size(), 1);
  QTest::mouseClick(Child<QPushButton>(u"Command1"_s), Qt::LeftButton);
  EXPECT_EQ(wanted.size(), 2);
}

TEST_F(Panel, FiltersCountOnlyWhileTheSwitchIsOn) {
  auto* advanced = Child<SwitchBoxes>(u"lblnmnm(13)"_s);
  EXPECT_FALSE(Child<FilterSlot>(u"filterslot(0)"_s)->isVisible());
  QTest::mouseClick(advanced, Qt::LeftButton);
  EXPECT_TRUE(panel_->AdvancedSearch());
  Choose(0, u"mnumake"_s);
  Choose(2, u"mnuiso"_s);
  EXPECT_EQ(Child<CheckList>(u"lstfilter(2)"_s)->Items(), (QStringList{u"ISO-50"_s, u"ISO-400"_s}));
  Tick(u"lstfilter(0)"_s, u"Canon"_s);
  Tick(u"lstfilter(2)"_s, u"ISO-400"_s);
  const QString both = u"([Camera Make] =\"Canon\") AND ([ISO-Speed] =\"ISO-400\")"_s;
  EXPECT_EQ(Condition(), both);
  QTest::keyClick(advanced, Qt::Key_Space);
  EXPECT_EQ(Condition(), QString());
  QTest::mouseClick(advanced, Qt::LeftButton);
  EXPECT_EQ(Condition(), both);
  // Another heading, or none, empties the slot.
  Choose(0, u"mnumodel"_s);
  Choose(2, u"mnunone"_s);
  EXPECT_EQ(Condition(), QString());
  EXPECT_FALSE(Child<CheckList>(u"lstfilter(2)"_s)->isVisible());
}

TEST_F(Panel, AValueIsFoundByTypingAndTicksStay) {
  QStringList values;
  for (int i = 0; i < 5000; ++i)
    values.append(u"Value %1"_s.arg(i));
  CheckList list;
  list.SetItems(values);
  const QSignalSpy changes(&list, &CheckList::ItemCheck);
  list.SetTicked({u"Value 3"_s, u"Value 4999"_s});
  list.Find(u"E 499"_s);
  EXPECT_EQ(list.model()->rowCount(), 11);
  list.show();
  list.setCurrentIndex(list.model()->index(0, 0));
  QTest::keyClick(&list, Qt::Key_Space);
  list.Find(QString());
  EXPECT_EQ(list.Ticked(), (QStringList{u"Value 3"_s, u"Value 499"_s, u"Value 4999"_s}));
  EXPECT_GT(changes.size(), 0);
}

}  // namespace
}  // namespace zqm
