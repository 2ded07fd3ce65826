// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "shell/dates.h"
#include "shell/error.h"
#include "shell/files.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;
using zqm::test::ScopedLocale;

namespace zqm {
namespace {

/// "2007-12-31T23:59:59", or "" for no date.
QString Iso(const QString& text, DateOrder first = DateOrder::Locale) {
  const auto date = ParseDate(text, first);
  return date ? date->date().toString(Qt::ISODate) + u'T' + date->time().toString(Qt::ISODate)
              : QString();
}

TEST(Dates, ReadsTheLocalesOrderFirst) {
  struct Case {
    QString text, american, austrian, japanese;  // the day, or "" for no date
  };
  // clang-format off
  const Case cases[] = {
      {u"02/03/2007"_s, u"2007-02-03"_s, u"2007-03-02"_s, u"2007-03-02"_s},
      {u"07/08/09"_s, u"2009-07-08"_s, u"2009-08-07"_s, u"2007-08-09"_s},
      {u"2007/02/03"_s, u"2007-02-03"_s, u"2007-02-03"_s, u"2007-02-03"_s},
      {u"31.12.29"_s, u"2029-12-31"_s, u"2029-12-31"_s, u"1931-12-29"_s},
      {u"31.12.30"_s, u"1930-12-31"_s, u"1930-12-31"_s, u"1931-12-30"_s},
      {u"99-12-31"_s, u"1999-12-31"_s, u"1999-12-31"_s, u"1999-12-31"_s},
      {u"29.2.2008"_s, u"2008-02-29"_s, u"2008-02-29"_s, u"2008-02-29"_s},
      {u"31. Jänner 2007"_s, u""_s, u"2007-01-31"_s, u""_s},
      {u"31-dez.-07"_s, u""_s, u"2007-12-31"_s, u""_s},
      {u"December 31, 2007"_s, u"2007-12-31"_s, u""_s, u""_s},
      {u"2007 Dec 31"_s, u"2007-12-31"_s, u""_s, u""_s}};
  // clang-format on
  for (const Case& c : cases) {
    const std::pair<const char*, QString> locales[] = {
        {"en_US", c.american}, {"de_AT", c.austrian}, {"ja_JP", c.japanese}};
    for (const auto& [locale, day] : locales) {
      const ScopedLocale scoped(locale);
      EXPECT_EQ(Iso(c.text), day.isEmpty() ? day : day + u"T00:00:00"_s)
          << locale << ' ' << c.text.toStdString();
    }
  }
  for (const char* locale : {"en_US", "de_AT", "ja_JP"}) {
    const ScopedLocale scoped(locale);
    for (const QString& text :
         {u"12/31/2007"_s, u"31/12/2007"_s, u"2007-12-31"_s, u" 31. 12. 2007. "_s})
      EXPECT_EQ(Iso(text), u"2007-12-31T00:00:00") << locale;
  }
}

TEST(Dates, ReadsTheCallersOrderFirst) {
  const ScopedLocale american("en_US");
  EXPECT_EQ(Iso(u"02/03/2007"_s, DateOrder::DayFirst), u"2007-03-02T00:00:00");
  EXPECT_EQ(Iso(u"12/31/2007"_s, DateOrder::DayFirst), u"2007-12-31T00:00:00");
  const ScopedLocale british("en_GB");
  EXPECT_EQ(Iso(u"02/03/2007"_s, DateOrder::MonthFirst), u"2007-02-03T00:00:00");
}

TEST(Dates, ReadsTimes) {
  struct Case {
    QString text, time;
  };
  const Case cases[] = {{u"31.12.2007 23:59:59"_s, u"23:59:59"_s},
                        {u"31.12.2007 9:05"_s, u"09:05:00"_s},
                        {u"12/31/2007, 12:01 AM"_s, u"00:01:00"_s},
                        {u"12/31/2007 12:01:02pm"_s, u"12:01:02"_s},
                        {u"12/31/2007\u00a011:00\u202fPM"_s, u"23:00:00"_s},
                        {u"31.12.2007 23.59.59"_s, u"23:59:59"_s},
                        {u"Dec 31 2007 10.30"_s, u"10:30:00"_s}};
  for (const Case& c : cases)
    EXPECT_EQ(Iso(c.text), u"2007-12-31T"_s + c.time) << c.time.toStdString();
}

TEST(Dates, RefusesWhatNoCalendarHas) {
  // clang-format off
  const QString cases[] = {
      u""_s, u" "_s, u"31/02/2007"_s, u"2007-02-29"_s, u"0000/00/00"_s, u"0000-01-01"_s,
      u"2007/31/12"_s, u"1/2/3/4"_s, u"12/2007"_s, u"12/31"_s, u"1/2/345"_s, u"31-12/2007"_s,
      u"2007:12:31"_s, u"20071231"_s, u"10:30"_s, u"31.12.2007 24:00"_s, u"31.12.2007 23:60"_s,
      u"31.12.2007 13:00 PM"_s, u"31.12.2007 0:10 AM"_s, u"31.12.2007 10:00 xm"_s,
      u"31 Foo 2007"_s, u"31.12.2007 x"_s, u"-1/2/2007"_s, u"99999/1/1"_s, u"1/1/99999999999"_s,
      u"Dec 99999999999 1"_s, QString(1'000'000, u'1'), u"1/1/2007"_s + QString(1'000'000, u' ')};
  // clang-format on
  for (const QString& text : cases)
    EXPECT_FALSE(IsDate(text)) << text.left(30).toStdString();
}

TEST(Dates, WhatIsShownReadsBackInEveryLocale) {
  const QDateTime shown(QDate(2003, 2, 1), QTime(16, 5, 9));
  const QDateTime old(QDate(1888, 12, 31), QTime(0, 0, 0));
  for (const QLocale& locale :
       QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory)) {
    const ScopedLocale scoped(locale);
    for (const QDateTime& time : {shown, old}) {
      EXPECT_EQ(Iso(ShortDateTime(time)), time.toString(Qt::ISODate))
          << locale.name().toStdString() << ' ' << ShortDateTime(time).toStdString();
      EXPECT_EQ(Iso(ShortDate(time.date())), time.date().toString(Qt::ISODate) + u"T00:00:00"_s)
          << locale.name().toStdString() << ' ' << ShortDate(time.date()).toStdString();
    }
  }
}

TEST(Dates, AnalyseDateShowsTheUsersForm) {
  struct Case {
    QString text, american, austrian;
  };
  // clang-format off
  const Case cases[] = {
      {u"2007:12:31 23:59:59"_s, u"12/31/2007 11:59:59 PM"_s, u"31.12.2007 23:59:59"_s},
      {u"2007:02:03 00:00:00"_s, u"2/3/2007 12:00:00 AM"_s, u"03.02.2007 00:00:00"_s},
      {u"0000:00:00 00:00:00"_s, u"0000/00/00 00:00:00"_s, u"0000/00/00 00:00:00"_s},
      {u"2007:02:31 10:00:00"_s, u"0000/00/00 10:00:00"_s, u"0000/00/00 10:00:00"_s},
      {u"    :  :     :  :  "_s, u"0000/00/00 "_s, u"0000/00/00 "_s},
      {u"2007:12:31 25:00:00"_s, u"12/31/2007 25:00:00"_s, u"31.12.2007 25:00:00"_s},
      {u"2007:12:31 "_s, u"12/31/2007"_s, u"31.12.2007"_s}};
  // clang-format on
  for (const Case& c : cases) {
    EXPECT_EQ(AnalyseDate(c.text), c.american);
    const ScopedLocale austrian("de_AT");
    EXPECT_EQ(AnalyseDate(c.text), c.austrian);
  }
  for (const QString& text : {u""_s, u"2007:12:31"_s}) {
    try {
      AnalyseDate(text);
      ADD_FAILURE() << "raised nothing";
    } catch (const Error& error) {
      EXPECT_EQ(error.Number(), error_number::kSubscript);
    }
  }
}

TEST(Dates, FileTimes) {
  const test::Scratch scratch;
  const QString path = scratch.Write("a", "a");
  const FileTimes times = GetFileTimes(path);
  EXPECT_EQ(times.modified, QFileInfo(path).lastModified());
  EXPECT_EQ(FileTimeToDate(times.modified.toUTC()), ShortDateTime(times.modified));
  EXPECT_EQ(FileTimeToDate({}), u"1/1/1601 0:00 AM");
  EXPECT_FALSE(GetFileTimes(scratch.Path("none")).modified.isValid());
}

}  // namespace
}  // namespace zqm
