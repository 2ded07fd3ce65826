// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/keyword_fields.h"
#include "tests/browser/catalogue_holder.h"
#include "tests/browser/home_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class Keywords : public test::HomeTest {
 protected:
  Keywords() {
    AutoSave::SetTickMilliseconds(1);
    QObject::connect(&keywords_, &KeywordFields::Saved, &keywords_,
                     [this](KeywordField field) { saved_.push_back(field); });
  }
  ~Keywords() override { AutoSave::SetTickMilliseconds(1000); }

  AutoSave& At(KeywordField field) { return keywords_.Field(field); }
  bool NothingWaits() {
    for (int i = 0; i < kKeywordFieldCount; ++i)
      if (At(static_cast<KeywordField>(i)).Unsaved()) return false;
    return true;
  }

  QStringList selected_;
  Busy busy_;
  KeywordFields keywords_{session_->ActiveCatalogue(), busy_, [this] { return selected_; }};
  std::vector<KeywordField> saved_;
};

TEST_F(Keywords, TenSelectedPhotosGetTheirNotesInOneSave) {
  for (int i = 0; i < 10; ++i)
    selected_.append(AddPhoto(u"%1.jpg"_s.arg(i)));
  CatalogueThem(selected_);
  const QString stranger = AddPhoto(u"not catalogued.jpg"_s);
  selected_.insert(3, stranger);
  AutoSave& notes = At(KeywordField::Notes);
  for (const char16_t* typed : {u"S", u"Su", u"Sun"}) {
    notes.KeyDown();
    notes.Edit(QString::fromUtf16(typed));
    notes.KeyUp();
  }
  ASSERT_TRUE(test::Eventually([&] { return !notes.Unsaved(); }));
  EXPECT_EQ(saved_, std::vector{KeywordField::Notes});
  for (const QString& path : selected_)
    EXPECT_EQ(Stored(path, Column::Notes), path == stranger ? u"(no row)"_s : u"Sun"_s);
  EXPECT_TRUE(keywords_.Queue().isEmpty());
  EXPECT_FALSE(busy_.IsUp());
}

TEST_F(Keywords, AKeyHeldDownHoldsTheSave) {
  selected_ = {AddPhoto(u"a.jpg"_s)};
  CatalogueThem(selected_);
  AutoSave& tags = At(KeywordField::Tags);
  tags.Edit(u"sea"_s);
  tags.KeyDown();
  bool due = false;
  QObject::connect(&tags, &AutoSave::Due, &tags, [&due] { due = true; });
  for (int i = 0; i < 50; ++i)
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 1);
  EXPECT_FALSE(due);
  EXPECT_EQ(Stored(selected_.first(), Column::Tags), u""_s);
  tags.KeyUp();
  ASSERT_TRUE(test::Eventually([&] { return !tags.Unsaved(); }));
  EXPECT_EQ(Stored(selected_.first(), Column::Tags), u"sea"_s);
}

TEST_F(Keywords, WhatIsNotValidLeavesTheRowAlone) {
  selected_ = {AddPhoto(u"a.jpg"_s)};
  CatalogueThem(selected_);
  struct Case {
    KeywordField field;
    Column column;
    const char16_t* text;
    const char16_t* stored;
  };
  // In order: each begins from what the one before has stored.
  const Case cases[] = {
      {KeywordField::Date, Column::Date, u"2/28/2007", u"2007-02-28"},
      {KeywordField::Date, Column::Date, u"2/31/2007", u"2007-02-28"},
      {KeywordField::Date, Column::Date, u"soon", u"2007-02-28"},
      {KeywordField::Date, Column::Date, u"31.12.2007", u"2007-12-31"},
      {KeywordField::Date, Column::Date, u"", u""},
      {KeywordField::Rating, Column::Rating, u"4", u"4"},
      {KeywordField::Rating, Column::Rating, u"x", u"4"},
      {KeywordField::Rating, Column::Rating, u"0", u"4"},
      {KeywordField::Rating, Column::Rating, u"6", u"4"},
      {KeywordField::Rating, Column::Rating, u"", u"4"},
      {KeywordField::Flag, Column::Flag, u"Rejected", u"Rejected"},
      {KeywordField::Flag, Column::Flag, u"rejected", u"Rejected"},
      {KeywordField::Author, Column::Author, u"Jörg O'Neill", u"Jörg O'Neill"},
      {KeywordField::Categories, Column::Categories, u",Family,", u",Family,"},
  };
  for (const Case& each : cases) {
    At(each.field).Edit(QString::fromUtf16(each.text));
    EXPECT_TRUE(keywords_.CheckUpdate());
    EXPECT_EQ(Stored(selected_.first(), each.column), QString::fromUtf16(each.stored))
        << QString::fromUtf16(each.text).toStdString();
  }
  EXPECT_TRUE(messages_.isEmpty());
}

TEST_F(Keywords, ARowShowsItsDateInTheUsersForm) {
  const test::ScopedLocale austrian("de_AT");
  selected_ = {AddPhoto(u"a.jpg"_s)};
  CatalogueThem(selected_);
  At(KeywordField::Date).Edit(u"31.12.2007"_s);
  EXPECT_TRUE(keywords_.CheckUpdate());
  keywords_.ResetKeywords();
  ASSERT_TRUE(Photos().LocateRow(selected_.first()));
  keywords_.LoadRow();
  EXPECT_EQ(At(KeywordField::Date).Text(), u"31.12.2007"_s);
  EXPECT_TRUE(NothingWaits());
}

TEST_F(Keywords, AnEmptyCatalogueTakesNoSave) {
  selected_ = {AddPhoto(u"a.jpg"_s)};
  At(KeywordField::Notes).Edit(u"lost?"_s);
  EXPECT_TRUE(keywords_.CheckUpdate());
  EXPECT_TRUE(saved_.empty());
}

TEST_F(Keywords, ASaveThatFailsKeepsTheTextUntilItSucceeds) {
  selected_ = {AddPhoto(u"a.jpg"_s), AddPhoto(u"b.jpg"_s)};
  CatalogueThem(selected_);
  At(KeywordField::Notes).Edit(u"written twice"_s);
  {
    const test::CatalogueHolder holder(session_->ActiveCatalogue().Path());
    EXPECT_FALSE(keywords_.CheckUpdate());
    EXPECT_EQ(messages_.size(), 1);
    EXPECT_EQ(At(KeywordField::Notes).Text(), u"written twice"_s);
    EXPECT_TRUE(At(KeywordField::Notes).Unsaved());
    EXPECT_TRUE(saved_.empty());
  }
  EXPECT_TRUE(keywords_.CheckUpdate());
  for (const QString& path : selected_)
    EXPECT_EQ(Stored(path, Column::Notes), u"written twice"_s);
}

}  // namespace
}  // namespace zqm
