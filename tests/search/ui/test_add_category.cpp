// SPDX-License-Identifier: GPL-3.0-or-later
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

#include "search/ui/frmaddcategory.h"
#include "shell/messages.h"
#include "tests/catalogue/catalogue_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class AddCategoryWindow : public test::CatalogueTest {
 protected:
  AddCategoryWindow() {
    before_ = SetMessageHandler([this](const QString& text, MessageKind, Buttons) {
      messages_.append(text);
      return Answer::Ok;
    });
  }
  ~AddCategoryWindow() override { SetMessageHandler(before_); }

  void Open() {
    window_ = std::make_unique<frmaddcategory>(*catalogue);
    edit_ = window_->findChild<QLineEdit*>(u"Text1"_s);
    add_ = window_->findChild<QPushButton*>(u"Command1"_s);
    window_->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  }

  std::unique_ptr<frmaddcategory> window_;
  QLineEdit* edit_ = nullptr;
  QPushButton* add_ = nullptr;
  QStringList messages_;

 private:
  MessageHandler before_;
};

TEST_F(AddCategoryWindow, AddsOneAfterTheOther) {
  Open();
  const QSignalSpy added(window_.get(), &frmaddcategory::Added);
  edit_->setText(u"Fam[\"i]ly"_s);
  EXPECT_TRUE(window_->findChild<QLabel*>(u"Label1"_s)->text().contains(u"'Family'"_s));
  QTest::mouseClick(add_, Qt::LeftButton);
  EXPECT_EQ(edit_->text(), QString());
  EXPECT_TRUE(edit_->hasFocus());
  edit_->setText(u"Föhn's"_s);
  QTest::keyClick(edit_, Qt::Key_Return);
  EXPECT_EQ(messages_, (QStringList{u"'Family' has been added to the list of categories."_s,
                                    u"'Föhn's' has been added to the list of categories."_s}));
  ASSERT_EQ(added.size(), 2);
  EXPECT_EQ(added[0][0].toString() + added[1][0].toString(), u"FamilyFöhn's"_s);
  EXPECT_EQ(catalogue->Categories(), (QStringList{u"Family"_s, u"Föhn's"_s}));
  EXPECT_TRUE(window_->isVisible());
  QTest::mouseClick(window_->findChild<QPushButton*>(u"Command2"_s), Qt::LeftButton);
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(AddCategoryWindow, TakesNothingThatCantBeAdded) {
  ASSERT_TRUE(catalogue->AddCategory(u"Family"_s));
  Open();
  const QSignalSpy added(window_.get(), &frmaddcategory::Added);
  for (const QString& nothing : {u""_s, u"  "_s, u"[\"]"_s}) {
    edit_->setText(nothing);
    QTest::mouseClick(add_, Qt::LeftButton);
    QTest::keyClick(edit_, Qt::Key_Return);
  }
  EXPECT_TRUE(messages_.isEmpty());
  EXPECT_TRUE(window_->isVisible());
  edit_->setText(u"fAmily"_s);
  QTest::mouseClick(add_, Qt::LeftButton);
  EXPECT_EQ(messages_, QStringList{u"'fAmily' already exists in the list of categories. Specify a "
                                   u"category with a different name."_s});
  EXPECT_EQ(edit_->text(), u"fAmily"_s);
  EXPECT_TRUE(edit_->hasFocus());
  EXPECT_TRUE(added.isEmpty());
  EXPECT_EQ(catalogue->Categories(), QStringList{u"Family"_s});
}

TEST_F(AddCategoryWindow, SaysWhyACatalogueTakesNone) {
  Reopen(CatalogueAccess::Reading);
  Open();
  edit_->setText(u"Family"_s);
  EXPECT_FALSE(add_->isEnabled() || add_->toolTip().isEmpty());
}

}  // namespace
}  // namespace zqm
