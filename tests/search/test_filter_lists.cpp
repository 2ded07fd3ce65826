// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QCollator>
#include <QSet>
#include <random>
#include <set>

#include "catalogue/like_pattern.h"
#include "search/filter_lists.h"
#include "shell/locale_info.h"
#include "tests/catalogue/catalogue_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class FilterLists : public test::CatalogueTest {
 protected:
  QStringList Listed(Column column, const QStringList& values) {
    static int number = 0;
    for (const QString& value : values)
      EXPECT_TRUE(Add(u"/%1.jpg"_s.arg(++number), {{column, value}}));
    return Populate(*catalogue, column);
  }
};

TEST_F(FilterLists, EachKindHasItsOrder) {
  const struct {
    Column column;
    QStringList stored, listed;
  } kinds[] = {
      {Column::ShutterSpeed,
       {u"1/250 sec"_s, u"bulb"_s, u"1/60 sec"_s, u"2 sec"_s, u"0.5 sec"_s, u"30. sec"_s,
        u"1/1000 sec"_s},
       {u"30. sec"_s, u"2 sec"_s, u"0.5 sec"_s, u"1/60 sec"_s, u"1/250 sec"_s, u"1/1000 sec"_s,
        u"bulb"_s}},
      {Column::LensAperture,
       {u"F/11"_s, u"F/2.8"_s, u"F/5,6"_s},
       {u"F/2.8"_s, u"F/5,6"_s, u"F/11"_s}},
      {Column::FocalLength,
       {u"105 mm"_s, u"50 mm"_s, u"7.4 mm"_s},
       {u"7.4 mm"_s, u"50 mm"_s, u"105 mm"_s}},
      {Column::ISOSpeed,
       {u"ISO-1600"_s, u"ISO-50"_s, u"ISO-400"_s},
       {u"ISO-50"_s, u"ISO-400"_s, u"ISO-1600"_s}},
      {Column::DistanceToFocusPoint,
       {u"Unknown"_s, u"10 m"_s, u"2.5 m"_s},
       {u"2.5 m"_s, u"10 m"_s, u"Unknown"_s}},
      {Column::ExposureCompensation,
       {u"0.33 Ev"_s, u"0 Ev"_s, u"-1 Ev"_s},
       {u"-1 Ev"_s, u"0 Ev"_s, u"0.33 Ev"_s}},
      {Column::ImageWidth, {u"4000"_s, u"640"_s, u"1600"_s}, {u"640"_s, u"1600"_s, u"4000"_s}},
      {Column::CameraMake,
       {u"nikon"_s, u"Äpfel"_s, u"Canon"_s, u"NIKON"_s, u"Apple"_s},
       {u"Äpfel"_s, u"Apple"_s, u"Canon"_s, u"nikon"_s}},
      {Column::City, {u""_s}, {}},
  };
  for (const auto& kind : kinds)
    EXPECT_EQ(Listed(kind.column, kind.stored), kind.listed)
        << ColumnName(kind.column).toStdString();
}

TEST_F(FilterLists, TextsStandInTheAlphabetOfTheLocaleEachOnce) {
  // Few letters of many kinds, so that texts differ in case, accents, marks and scripts alone.
  const QString letters = u"aAbÄäéezZ09 -_.'ßжЖאあ"_s;
  std::mt19937 random(20);
  QStringList stored;
  for (int i = 0; i < 1500; ++i) {
    QString text;
    for (auto size = 1 + random() % 6; size > 0; --size)
      text += letters.at(static_cast<qsizetype>(random()) % letters.size());
    // As typed into a search: blanks at the ends wouldn't be stored.
    if (text == text.trimmed()) stored.append(text);
  }
  const QStringList listed = Listed(Column::Notes, stored);
  QSet<QString> spellings, listedSpellings;
  for (const QString& text : stored)
    spellings.insert(FoldCase(text));
  for (const QString& text : listed)
    listedSpellings.insert(FoldCase(text));
  EXPECT_EQ(listedSpellings, spellings);
  EXPECT_EQ(listed.size(), spellings.size());
  QCollator collator{UserLocale()};
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  for (qsizetype i = 1; i < listed.size(); ++i)
    EXPECT_LE(collator.compare(listed.at(i - 1), listed.at(i)), 0)
        << qUtf8Printable(listed.at(i - 1)) << " before " << qUtf8Printable(listed.at(i));
}

TEST_F(FilterLists, SlotsNarrowAndValuesWiden) {
  EXPECT_EQ(sql({FilterClause(Column::CameraMake, {u"Canon"_s, u"Nikon"_s}), QString(),
                 FilterClause(Column::ISOSpeed, {u"ISO-400"_s})}),
            u"([Camera Make] =\"Canon\" OR [Camera Make] =\"Nikon\") AND ([ISO-Speed] "
            u"=\"ISO-400\")"_s);
  EXPECT_EQ(sql({}), QString());
  EXPECT_EQ(FilterClause(Column::City, {}), QString());
  EXPECT_EQ(FilterClause(Column::City, {u"12\" disc"_s}), u"([City] =\"12 disc\")"_s);
}

TEST_F(FilterLists, TheMenuNamesEachColumnOnceAndItsLists) {
  std::set<std::string> names;
  std::set<Column> columns;
  int entries = 0;
  for (const FilterGroup& group : FilterMenu()) {
    for (const FilterEntry& entry : group.entries) {
      ++entries;
      names.insert(entry.name);
      if (!entry.column) continue;
      columns.insert(*entry.column);
      EXPECT_TRUE(HasValueList(*entry.column));
      EXPECT_EQ(Populate(*catalogue, *entry.column), QStringList());
    }
  }
  EXPECT_EQ(names.size(), static_cast<size_t>(entries));
  EXPECT_EQ(columns.size(), static_cast<size_t>(entries - 1));
  EXPECT_EQ(entries, 68);
  for (const Column column : {Column::ID, Column::Date, Column::Thumbnail})
    EXPECT_FALSE(HasValueList(column));
}

}  // namespace
}  // namespace zqm
