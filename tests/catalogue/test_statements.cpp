// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include "catalogue/statements.h"
#include "shell/error.h"
#include "tests/catalogue/catalogue_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class StatementTest : public test::CatalogueTest {
 protected:
  void SetUp() override {
    CatalogueTest::SetUp();
    using enum Column;
    const test::Fields rows[] = {
        {{Photo, u"a"_s},
         {Tags, u"Sunset,beach"_s},
         {Rating, u"2"_s},
         {Date, u"2007-01-01"_s},
         {Categories, u",Family,Travel,"_s},
         {Author, u"Ann O'Neil"_s},
         {CameraMake, u"CANON"_s}},
        {{Photo, u"b"_s},
         {Tags, u"sunset"_s},
         {Caption, u"Beach"_s},
         {Rating, u"5"_s},
         {Date, u"2007-12-31"_s},
         {Categories, u",Familyfeast,"_s},
         {AuthorExif, u"Ödön"_s}},
        {{Photo, u"c"_s},
         {KeywordsIptc, u"50% off"_s},
         {Rating, u"10"_s},
         {CameraMake, u"Nikon"_s},
         {DateTimeOriginal, u"1/2/2003 4:05:06 PM"_s}},
        {{Photo, u"d"_s}, {Notes, u"say \"cheese\""_s}, {Author, u"ÄNNE"_s}},
    };
    for (const auto& row : rows)
      ASSERT_TRUE(Add(row.at(Photo), row));
  }

  std::string Hits(const QString& statement) {
    try {
      return catalogue->Query(statement, Column::Photo).join(QString()).toStdString();
    } catch (const Error& error) {
      EXPECT_EQ(error.Number(), error_number::kDatabase);
      return "error";
    }
  }
};

TEST_F(StatementTest, FindsTheRows) {
  const struct {
    const char16_t* condition;
    const char* hits;
  } cases[] = {
      {uR"((([Tags] LIKE "%sunset%" AND [Tags] LIKE "%BEACH%") OR ([Caption] LIKE "%sunset%" AND [Caption] LIKE "%beach%")))",
       "a"},
      {uR"((([Tags] LIKE "%sunset%" OR [Tags] LIKE "%beach%") OR ([Keywords(IPTC)] LIKE "%50[%]%")))",
       "abc"},
      {u"([Rating] = '2' OR [Rating] = '5')", "ab"},
      {u"([Rating] = '3')", ""},
      {uR"(([Categories] LIKE "%,family,%" OR [Categories] LIKE "%,None,%"))", "a"},
      {uR"(([Author] LIKE "%o'neil%"))", "a"},
      {uR"(([Author(EXIF)] LIKE "%öDÖN%"))", "b"},
      {u"([Date] Between #1/1/2007# AND #12/31/2007#)", "ab"},
      {u"([Date] Between #31/12/2007# AND #2007-12-31#)", "b"},
      {u"[Date] < #1/1/2050#", "ab"},
      {u"NOT [Date] < #1/1/2050#", ""},
      {u"[Date] = #1/1/2007#", "a"},
      {uR"([Date] <> "")", "ab"},
      {uR"(([Camera Make] ="canon" OR [Camera Make] ="NIKON"))", "ac"},
      {uR"(([Date/Time Original] ="1/2/2003 4:05:06 PM"))", "c"},
      {uR"([author] = "änne")", "d"},
      {uR"([Notes] = "say ""cheese""")", "d"},
      {u"[Notes] = 'say \"cheese\"'", "d"},
      {u"Author = 'Ann O''Neil'", "a"},
      {u"Photo LIKE 'B'", "b"},
      {u"Photo NOT LIKE '[!bc]'", "bc"},
      {u"[Photo] > 'B' AND [Photo] <= 'd'", "cd"},
      {u"[Photo] BETWEEN 'B' AND 'c'", "bc"},
      {u"[ID] = '2' OR ID = '4'", "bd"},
      {u"NOT ([Photo] = 'a' OR NOT [Photo] <> 'b')", "cd"},
      // OR binds less than AND
      {u"[Photo] = 'a' OR [Photo] = 'b' AND [Rating] = '2'", "a"},
      // a text never becomes part of the statement
      {uR"([Notes] = "' OR 1=1 --")", ""},
      {uR"([Notes] = "\' UNION SELECT sql FROM sqlite_schema")", ""},
      // refused
      {uR"([Categories] LIKE "%,a"b,%")", "error"},
      {u"[Nothing] = '1'", "error"},
      {u"[Thumbnail] = '1'", "error"},
      {u"[Rating] = 2", "error"},
      {u"[Rating] = #1/1/2007#", "error"},
      {u"[Date] LIKE #1/1/2007#", "error"},
      {u"[Date] BETWEEN #1/1/2007# AND 'b'", "error"},
      {u"[Date] = #2/30/2007#", "error"},
      {u"[Rating] = '2' ORDER BY Photo", "error"},
      {u"[Rating] = '2'; DELETE FROM texts", "error"},
      {u"[Rating] = '2", "error"},
      {u"([Rating] = '2'", "error"},
      {u"[Rating = '2'", "error"},
      {u"[Rating]", "error"},
      {u"", "error"},
  };
  for (const auto& c : cases) {
    const QString condition = QString::fromUtf16(c.condition);
    EXPECT_EQ(Hits(u"Select * from qryphoto WHERE "_s + condition), c.hits)
        << condition.toStdString();
  }
}

TEST_F(StatementTest, WorksOnTheWholeOfASearch) {
  EXPECT_EQ(
      Hits(
          uR"(Select * from qryphoto WHERE (([Tags] LIKE "%sunset%") OR ([Notes] LIKE "%sunset%") OR ([Keywords(IPTC)] LIKE "%sunset%") OR ([Other Categories] LIKE "%sunset%") OR ([Image Description] LIKE "%sunset%") OR ([Comments] LIKE "%sunset%") OR ([Caption] LIKE "%sunset%")) AND ([Rating] = '2' OR [Rating] = '5') AND ([Categories] LIKE "%,Family,%" OR [Categories] LIKE "%,Travel,%") AND ([Author] LIKE "%Ann%") AND ([Date] Between #1/1/2007# AND #12/31/2007#) AND ([Camera Make] ="Canon"))"_s),
      "a");
}

TEST_F(StatementTest, SelectsOneColumnInRowOrder) {
  const QStringList makes = {u"CANON"_s, u""_s, u"Nikon"_s, u""_s};
  EXPECT_EQ(catalogue->Query(u"Select [Camera Make] FROM qryphoto"_s, Column::CameraMake), makes);
  EXPECT_EQ(
      catalogue->Query(
          uR"(Select Categories,ID,Photo from qryphoto WHERE [Categories] like "%,Travel,%")"_s,
          Column::ID),
      QStringList{u"1"_s});
  // Row order survives a row that was changed and one that went.
  ASSERT_TRUE(catalogue->Photos().LocateRow(u"b"_s));
  ASSERT_TRUE(catalogue->Photos().DeleteCurrentRow());
  ASSERT_TRUE(catalogue->Photos().LocateRow(u"a"_s));
  catalogue->Photos().SetField(Column::Photo, u"z"_s);
  ASSERT_TRUE(catalogue->Photos().MoveFirst());
  EXPECT_EQ(Hits(u"select * from QRYPHOTO"_s), "zcd");
  for (const char16_t* refused :
       {u"Select [Author] FROM qryphoto", u"Select * from texts", u"Select * from qryphoto, texts",
        u"Delete from qryphoto", u"Select Photo", u"", u"\"", u"Select * from qryphoto WHERE"})
    EXPECT_EQ(Hits(QString::fromUtf16(refused)), "error");
  EXPECT_THROW((void)catalogue->Query(u"Select * from qryphoto"_s, Column::Thumbnail), Error);
}

TEST_F(StatementTest, TakesLongChainsAndRefusesDeepOnes) {
  const struct {
    QString term, joiner;
    const char* hits;
  } chains[] = {
      {u"[Photo] = 'x%1'"_s, u" OR "_s, "d"},
      {u"[Photo] LIKE '%x%1'"_s, u" OR "_s, "d"},
      {u"[Rating] <> 'x%1'"_s, u" AND "_s, "d"},
  };
  for (const auto& chain : chains) {
    QStringList terms;
    for (int i = 0; i < 20000; ++i)
      terms.append(chain.term.arg(i));
    terms.append(u"[Photo] = 'd'"_s);
    EXPECT_EQ(Hits(u"Select * from qryphoto WHERE ("_s + terms.join(chain.joiner) + u")"_s),
              chain.hits);
  }
  // As deep as is let through still runs, bundles included.
  QString deep = u"[Photo] = 'd'"_s;
  for (int i = 0; i < 12; ++i) {
    QString many;
    for (int k = 0; k < 100; ++k)
      many += u" OR [Tags] LIKE '%1'"_s.arg(k);
    deep = u"("_s + deep + u" AND [Photo] <> 'a')"_s + many;
  }
  EXPECT_THAT(Hits(u"Select * from qryphoto WHERE "_s + deep), ::testing::AnyOf("d", "error"));
  for (const char16_t* nest : {u"(", u"NOT "})
    EXPECT_EQ(Hits(u"Select * from qryphoto WHERE "_s + QString::fromUtf16(nest).repeated(100000)),
              "error");
}

}  // namespace
}  // namespace zqm
