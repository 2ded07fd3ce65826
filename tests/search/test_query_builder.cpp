// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <random>

#include "catalogue/like_pattern.h"
#include "catalogue/statements.h"
#include "search/categories.h"
#include "search/filter_lists.h"
#include "search/query_builder.h"
#include "shell/error.h"
#include "shell/messages.h"
#include "tests/catalogue/catalogue_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

QString Condition(const SearchCriteria& criteria) {
  const auto statement = BuildSQL(criteria);
  EXPECT_TRUE(statement) << statement.Reason().toStdString();
  return statement ? statement->condition : QString();
}

TEST(BuildSQL, EveryCriterionHasItsClauseInOrder) {
  SearchCriteria criteria{u"sunset, beach"_s};
  criteria.author = u"Ann"_s;
  criteria.dateFrom = u"1/1/2007"_s;
  criteria.dateTo = u"12/31/2007"_s;
  criteria.ratings = {u"2"_s, u"5"_s};
  criteria.categories = {u"Family"_s, u"Travel"_s};
  criteria.advancedSearch = true;
  criteria.advancedClause = sql({FilterClause(Column::CameraMake, {u"Canon"_s})});
  const QString expected =
      u"Select * from qryphoto WHERE (([Tags] LIKE \"%sunset%\" AND [Tags] LIKE \"%beach%\") OR "
      u"([Notes] LIKE \"%sunset%\" AND [Notes] LIKE \"%beach%\") OR ([Keywords(IPTC)] LIKE "
      u"\"%sunset%\" AND [Keywords(IPTC)] LIKE \"%beach%\") OR ([Other Categories] LIKE "
      u"\"%sunset%\" AND [Other Categories] LIKE \"%beach%\") OR ([Image Description] LIKE "
      u"\"%sunset%\" AND [Image Description] LIKE \"%beach%\") OR ([Comments] LIKE \"%sunset%\" "
      u"AND [Comments] LIKE \"%beach%\") OR ([Caption] LIKE \"%sunset%\" AND [Caption] LIKE "
      u"\"%beach%\")) AND ([Rating] = '2' OR [Rating] = '5') AND ([Categories] LIKE "
      u"\"%,Family,%\" OR [Categories] LIKE \"%,Travel,%\") AND ([Author] LIKE \"%Ann%\") AND "
      u"([Date] Between #1/1/2007# AND #12/31/2007#) AND ([Camera Make] =\"Canon\")"_s;
  EXPECT_EQ(BuildSQL(criteria)->Text(), expected);
  criteria.wordMode = WordMode::AnyOfTheseWords;
  EXPECT_EQ(BuildSQL(criteria)->Text(),
            QString(expected).replace(u"\"%sunset%\" AND"_s, u"\"%sunset%\" OR"_s));
  criteria.advancedSearch = false;
  EXPECT_FALSE(BuildSQL(criteria)->Text().contains(u"Camera Make"));
}

TEST(BuildSQL, OneCriterionStandsAlone) {
  SearchCriteria rating;
  rating.ratings = {u"3"_s};
  EXPECT_EQ(BuildSQL(rating)->Text(), u"Select * from qryphoto WHERE ([Rating] = '3')"_s);
  SearchCriteria advanced;
  advanced.advancedSearch = true;
  advanced.advancedClause = u"([Flag] =\"Flagged\")"_s;
  EXPECT_EQ(Condition(advanced), u"([Flag] =\"Flagged\")"_s);
  SearchCriteria author;
  author.author = u"O'\"[Neill]"_s;
  EXPECT_EQ(Condition(author), u"([Author] LIKE \"%O'Neill%\")"_s);
  // Nothing is left of these.
  author.author = u"[\"]"_s;
  author.keywords = u" , [],\"\" ,,"_s;
  EXPECT_EQ(BuildSQL(author)->Text(), QString());
}

TEST(BuildSQL, WordsAreSeparatedByCommasOnly) {
  EXPECT_EQ(KeywordWords(u" red car ,\"quoted\", [a-z],50%_, O'Neill,,"_s),
            (QStringList{u"red car"_s, u"quoted"_s, u"a-z"_s, u"50%_"_s, u"O'Neill"_s}));
}

TEST(BuildSQL, DatesFillEachOtherAndMustBeDates) {
  const struct {
    const char16_t *from, *to, *shownFrom, *shownTo;
  } kinds[] = {
      {u"1/2/2007", u"", u"1/2/2007", u"1/2/2007"},
      {u"", u"29.2.2008", u"29.2.2008", u"29.2.2008"},
      {u"2007-05-01", u"31/12/2007", u"2007-05-01", u"31/12/2007"},
  };
  for (const auto& kind : kinds) {
    SearchCriteria criteria;
    criteria.dateFrom = QString::fromUtf16(kind.from);
    criteria.dateTo = QString::fromUtf16(kind.to);
    const auto statement = BuildSQL(criteria);
    ASSERT_TRUE(statement);
    EXPECT_EQ(statement->dateFrom, QString::fromUtf16(kind.shownFrom));
    EXPECT_EQ(statement->dateTo, QString::fromUtf16(kind.shownTo));
    EXPECT_EQ(statement->condition, u"([Date] Between #"_s + statement->dateFrom + u"# AND #"_s +
                                        statement->dateTo + u"#)"_s);
  }
  for (const char16_t* bad : {u"29/2/2007", u"soon", u" ", u"1/1/2007#"}) {
    SearchCriteria criteria;
    criteria.dateTo = QString::fromUtf16(bad);
    EXPECT_EQ(BuildSQL(criteria).Reason(), u"Invalid date format."_s);
  }
}

// Whatever the locale, the day that is picked is the day that is searched for.
TEST(BuildSQL, APickedDayIsThatDay) {
  const QLocale before;
  for (const char* name : {"en_US", "de_DE", "en_GB", "sv_SE"}) {
    QLocale::setDefault(QLocale(QString::fromLatin1(name)));
    for (const QDate day : {QDate(2007, 2, 1), QDate(2007, 12, 31), QDate(1999, 3, 3)}) {
      SearchCriteria criteria;
      criteria.dateFrom = DateBoxText(day);
      EXPECT_EQ(DateLiteralToIso(Condition(criteria).section(u'#', 1, 1)),
                day.toString(Qt::ISODate))
          << name;
    }
  }
  QLocale::setDefault(before);
}

// ---- Against a matcher that knows nothing of statements -----------------------------------------

using MadeRow = std::map<Column, QString>;

bool ContainsFolded(const QString& text, const QString& part) {
  return FoldCase(text).contains(FoldCase(part));
}

bool MatchesWords(const MadeRow& row, const SearchCriteria& criteria) {
  const QStringList words = KeywordWords(criteria.keywords);
  if (words.isEmpty()) return true;
  const bool all = criteria.wordMode == WordMode::AllOfTheseWords;
  for (const Column column :
       {Column::Tags, Column::Notes, Column::KeywordsIptc, Column::OtherCategories,
        Column::ImageDescription, Column::Comments, Column::Caption}) {
    const auto found = std::ranges::count_if(
        words, [&](const QString& word) { return ContainsFolded(row.at(column), word); });
    if (all ? found == words.size() : found > 0) return true;
  }
  return false;
}

bool MatchesNaively(const MadeRow& row, const SearchCriteria& criteria, QDate from, QDate to,
                    const QStringList& makes) {
  if (!MatchesWords(row, criteria)) return false;
  if (!criteria.ratings.isEmpty() && !criteria.ratings.contains(row.at(Column::Rating)))
    return false;
  const QStringList assigned = CategoryNames(row.at(Column::Categories));
  if (!criteria.categories.isEmpty() &&
      std::ranges::none_of(criteria.categories, [&](const QString& category) {
        return assigned.contains(category, Qt::CaseInsensitive);
      }))
    return false;
  if (!ContainsFolded(row.at(Column::Author), criteria.author)) return false;
  if (from.isValid()) {
    const QDate date = QDate::fromString(row.at(Column::Date), Qt::ISODate);
    if (!date.isValid() || date < std::min(from, to) || date > std::max(from, to)) return false;
  }
  return makes.isEmpty() || makes.contains(row.at(Column::CameraMake), Qt::CaseInsensitive);
}

class Search : public test::CatalogueTest {
 protected:
  template <class List>
  const auto& Any(const List& list) {
    return list[static_cast<qsizetype>(random_() % static_cast<unsigned>(list.size()))];
  }
  bool Chance(unsigned of) { return random_() % of == 0; }

  QString MadeText() {
    QStringList words;
    for (unsigned count = random_() % 4; count > 0; --count)
      words.append(Any(kWords));
    return words.join(u' ');
  }
  QString MadeCategories() {
    QStringList names;
    for (const QString& name : kCategories)
      if (Chance(4)) names.append(name);
    return CategoriesText(names);
  }
  MadeRow MakeRow() {
    MadeRow row;
    for (const Column column :
         {Column::Tags, Column::Notes, Column::KeywordsIptc, Column::OtherCategories,
          Column::ImageDescription, Column::Comments, Column::Caption})
      row[column] = Chance(2) ? MadeText() : QString();
    row[Column::Rating] = Chance(3) ? QString() : QString::number(1 + random_() % 5);
    row[Column::Categories] = MadeCategories();
    row[Column::Author] = Any(kAuthors);
    row[Column::Date] = Chance(4) ? QString() : MadeDate().toString(Qt::ISODate);
    row[Column::CameraMake] = Any(kMakes);
    return row;
  }
  QDate MadeDate() { return QDate(2007, 1, 1).addDays(random_() % 500); }

  const QStringList kWords{u"Sunset"_s,  u"beach"_s, u"ÜBER"_s,  u"straße"_s, u"O'Neill"_s,
                           u"red car"_s, u"SUN"_s,   u"Ωmega"_s, u"été"_s,    u"a\"b"_s};
  const QStringList kAuthors{u""_s, u"Ann"_s, u"JOANNA Öst"_s, u"Bob"_s, u"ann-marie"_s};
  const QStringList kMakes{u""_s, u"Canon"_s, u"NIKON"_s, u"nikon "_s, u"Ärger"_s};
  const QStringList kCategories{u"Family"_s, u"Travel"_s, u"Grün"_s};
  std::mt19937 random_{20261123};
};

TEST_F(Search, HitsAreThoseOfANaiveMatcher) {
  constexpr int kRows = 1500, kSearches = 400;
  std::vector<MadeRow> rows;
  for (int i = 0; i < kRows; ++i) {
    rows.push_back(MakeRow());
    ASSERT_TRUE(Add(u"/p/%1.jpg"_s.arg(i), rows.back()));
  }
  int hits = 0;
  for (int i = 0; i < kSearches; ++i) {
    SearchCriteria criteria;
    if (Chance(2)) criteria.keywords = Any(kWords).toLower() + (Chance(2) ? u", sun"_s : u","_s);
    if (Chance(2)) criteria.wordMode = WordMode::AnyOfTheseWords;
    if (Chance(3)) criteria.ratings = {u"1"_s, u"4"_s};
    if (Chance(3)) criteria.categories = {Any(kCategories).toUpper(), u"None of these"_s};
    if (Chance(3)) criteria.author = u"aNN"_s;
    QDate from, to;
    if (Chance(3)) {
      from = MadeDate();
      to = MadeDate();
      criteria.dateFrom = DateBoxText(from);
      criteria.dateTo = DateBoxText(to);
    }
    QStringList makes;
    if (Chance(3)) makes = {u"cANON"_s, u"ärger"_s};
    criteria.advancedSearch = true;
    criteria.advancedClause = sql({FilterClause(Column::CameraMake, makes), QString()});
    const auto statement = BuildSQL(criteria);
    ASSERT_TRUE(statement);
    if (statement->condition.isEmpty()) continue;
    QStringList expected;
    for (int row = 0; row < kRows; ++row)
      if (MatchesNaively(rows[static_cast<size_t>(row)], criteria, from, to, makes))
        expected.append(u"/p/%1.jpg"_s.arg(row));
    ASSERT_EQ(catalogue->Query(statement->Text(), Column::Photo), expected)
        << statement->Text().toStdString();
    hits += static_cast<int>(expected.size());
  }
  EXPECT_GT(hits, 1000);
}

TEST_F(Search, WildcardsAndOddCategories) {
  ASSERT_TRUE(
      Add(u"/a.jpg"_s, {{Column::Tags, u"50 per cent"_s}, {Column::Categories, u",a,b,"_s}}));
  ASSERT_TRUE(Add(u"/b.jpg"_s, {{Column::Tags, u"5x0"_s}}));
  const auto found = [this](const SearchCriteria& criteria) {
    return catalogue->Query(BuildSQL(criteria)->Text(), Column::Photo);
  };
  EXPECT_EQ(found({u"5_0"_s}), QStringList{u"/b.jpg"_s});
  EXPECT_EQ(found({u"5%cent"_s}), QStringList{u"/a.jpg"_s});
  // A name with a comma was two categories from the moment it was stored.
  SearchCriteria criteria;
  criteria.categories = {u"a,b"_s};
  EXPECT_EQ(found(criteria), QStringList{u"/a.jpg"_s});
  criteria.categories = {u"a\"b"_s};
  EXPECT_THROW(found(criteria), Error);
}

TEST_F(Search, AllOfThousandsOfTickedValuesAreAlternatives) {
  QStringList values;
  for (int i = 0; i < 5000; ++i)
    values.append(u"Model %1 \"s\""_s.arg(i));
  ASSERT_TRUE(Add(u"/a.jpg"_s, {{Column::CameraModel, u"model 4999 s"_s}}));
  ASSERT_TRUE(Add(u"/b.jpg"_s, {{Column::CameraModel, values.first()}}));
  SearchCriteria criteria;
  criteria.advancedSearch = true;
  criteria.advancedClause = FilterClause(Column::CameraModel, values);
  EXPECT_EQ(catalogue->Query(BuildSQL(criteria)->Text(), Column::Photo), QStringList{u"/a.jpg"_s});
}

// ---- Categories ---------------------------------------------------------------------------------

TEST_F(Search, CategoriesAreAddedOnceAndDeletedWhenUnused) {
  EXPECT_EQ(*AddCategory(*catalogue, u"Fam\"[i]ly"_s),
            u"'Family' has been added to the list of categories."_s);
  EXPECT_EQ(AddCategory(*catalogue, u"fAMILY"_s).Reason(),
            u"'fAMILY' already exists in the list of categories. Specify a category with a "
            u"different name."_s);
  EXPECT_EQ(*AddCategory(*catalogue, u"[]\""_s), QString());
  EXPECT_EQ(catalogue->Categories(), QStringList{u"Family"_s});
  ASSERT_TRUE(Add(u"/a.jpg"_s, {{Column::Categories, u",Family,Travel,"_s}}));
  EXPECT_TRUE(CategoryInUse(*catalogue, u"family"_s));
  EXPECT_FALSE(CategoryInUse(*catalogue, u"Fam"_s));
  EXPECT_FALSE(CategoryInUse(*catalogue, u"a\"b"_s));
}

TEST_F(Search, CategoriesGoWhenTheUserAgrees) {
  QStringList messages;
  Answer answer = Answer::No;
  const auto before = SetMessageHandler([&](const QString& text, MessageKind, Buttons buttons) {
    messages.append(text);
    return buttons == Buttons::YesNo ? answer : Answer::Ok;
  });
  for (const QString& name : {u"Family"_s, u"Föhn's"_s})
    ASSERT_TRUE(catalogue->AddCategory(name));
  ASSERT_TRUE(Add(u"/a.jpg"_s, {{Column::Categories, u",Family,"_s}}));
  EXPECT_FALSE(AskAndDeleteCategory(*catalogue, QString()));
  EXPECT_FALSE(AskAndDeleteCategory(*catalogue, u"Family"_s));
  EXPECT_FALSE(AskAndDeleteCategory(*catalogue, u"Föhn's"_s));
  EXPECT_EQ(catalogue->Categories().size(), 2);
  answer = Answer::Yes;
  EXPECT_TRUE(AskAndDeleteCategory(*catalogue, u"Föhn's"_s));
  EXPECT_EQ(catalogue->Categories(), QStringList{u"Family"_s});
  const QString question = u"Delete Föhn's from the list of categories?"_s;
  EXPECT_EQ(messages, (QStringList{QString::fromUtf16(category_text::kInUse), question, question}));
  // What can't be written is told, and nothing is gone.
  ASSERT_TRUE(catalogue->AddCategory(u"Spare"_s));
  Reopen(CatalogueAccess::Reading);
  EXPECT_FALSE(AskAndDeleteCategory(*catalogue, u"Spare"_s));
  EXPECT_EQ(messages.last(), u"The database is read-only"_s);
  EXPECT_EQ(catalogue->Categories().size(), 2);
  SetMessageHandler(before);
}

TEST(Categories, NamesStandBetweenCommas) {
  EXPECT_EQ(CategoriesText({u"Family"_s, u"Travel"_s}), u",Family,Travel,"_s);
  EXPECT_EQ(CategoriesText({}), QString());
  EXPECT_EQ(CategoryNames(u",Family,,Travel,"_s), (QStringList{u"Family"_s, u"Travel"_s}));
}

}  // namespace
}  // namespace zqm
