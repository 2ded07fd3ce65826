// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <limits>

#include "shell/locale_info.h"
#include "shell/text.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;
using zqm::test::ScopedLocale;

namespace zqm {
namespace {

constexpr float kFloatMax = std::numeric_limits<float>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(Text, ValReadsTheLongestPrefixInEveryLocale) {
  struct Case {
    QString text;
    double value;
  };
  // clang-format off
  const Case cases[] = {
      {u"1.6982312"_s, 1.6982312}, {u"1,6982312"_s, 1}, {u"  -2.5 mm"_s, -2.5}, {u".5"_s, 0.5},
      {u"5."_s, 5}, {u"1.2.3"_s, 1.2}, {u"1e3"_s, 1000}, {u"1e"_s, 1}, {u"2E-2x"_s, 0.02}};
  const QString zeros[] = {
      u""_s, u"abc"_s, u"-"_s, u"."_s, u"e5"_s, u"inf"_s, u"nan"_s, u"0x10"_s, u"--1"_s,
      u"1e999"_s, u"\u0661"_s, u"\u00e91"_s, QString(100'000, u'9'), u"0."_s + QString(1000,
      u'0') + u'1'};
  // clang-format on
  for (const char* locale : {"en_US", "de_DE", "ar_EG"}) {
    const ScopedLocale scoped(locale);
    for (const Case& c : cases)
      EXPECT_EQ(Val(c.text), c.value) << c.text.left(40).toStdString();
    for (const QString& text : zeros)
      EXPECT_EQ(Val(text), 0) << text.left(40).toStdString();
  }
}

TEST(Text, PlainTextOfSingles) {
  struct Case {
    float value;
    const char* english;
  };
  // clang-format off
  const Case cases[] = {
      {0.1F, "0.1"}, {2.0F / 3, "0.6666667"}, {4294967296.0F, "4294967000"},
      {1e-10F, "0.0000000001"}, {-0.0F, "0"}, {-1.5F, "-1.5"}, {9999999.5F, "10000000"},
      {1234.5677F, "1234.568"}, {std::numeric_limits<float>::quiet_NaN(), "0"},
      {std::numeric_limits<float>::infinity(), "0"},
      {kFloatMax, "340282300000000000000000000000000000000"}};
  // clang-format on
  for (const Case& c : cases) {
    QString text = QString::fromUtf8(c.english);
    EXPECT_EQ(PlainText(c.value), text);
    const ScopedLocale german("de_DE");
    EXPECT_EQ(PlainText(c.value), text.replace(u'.', u','));
  }
}

TEST(Text, PlainTextOfDoubles) {
  EXPECT_EQ(PlainText(0.1 + 0.2), u"0.3");
  EXPECT_EQ(PlainText(47.070714285714288), u"47.0707142857143");
  EXPECT_EQ(PlainText(123456789012345678.0), u"123456789012346000");
  EXPECT_EQ(PlainText(1e308).size(), 309);
  EXPECT_EQ(PlainText(5e-324).size(), 2 + 338);
}

TEST(Text, FormatRoundsAwayFromZeroOnTheDecimalText) {
  struct Case {
    double value;
    QString mask, text;
  };
  // clang-format off
  const Case cases[] = {
      {5, u"######.##"_s, u"5."_s}, {0.5, u"####.#"_s, u".5"_s},
      {2.345, u"######.##"_s, u"2.35"_s}, {-2.345, u"####.##"_s, u"-2.35"_s},
      {1.005, u"#.##"_s, u"1.01"_s}, {9.999, u"#.##"_s, u"10."_s},
      {3.9999, u"######.#"_s, u"4."_s}, {0.004, u"#.##"_s, u"."_s}, {-0.004, u"0.00"_s, u"0.00"_s},
      {2.5, u"0.00"_s, u"2.50"_s}, {0.25, u"0.0#"_s, u"0.25"_s}, {7, u"000"_s, u"007"_s},
      {0.5, u"#"_s, u"1"_s}, {kNan, u"0.0"_s, u"0.0"_s}};
  // clang-format on
  for (const Case& c : cases)
    EXPECT_EQ(Format(c.value, c.mask), c.text) << c.value;
  EXPECT_EQ(Format(2.345F, u".##"), u"2.35");
  EXPECT_EQ(Format(1.005F, u".##"), u"1.01");  // 1.00499999523 in binary
  const ScopedLocale german("de_DE");
  EXPECT_EQ(Format(5.0F, u"######.##"), u"5,");
  EXPECT_EQ(Format(0.5, u"####.#"), u",5");
}

TEST(Text, RoundsHalfToEven) {
  struct Case {
    double value;
    int decimals;
    double rounded;
  };
  // clang-format off
  const Case cases[] = {
      {0.5, 0, 0}, {2.5, 0, 2}, {-2.5, 0, -2}, {2.675, 2, 2.67}, {0.125, 2, 0.12}, {-0.4, 0, 0},
      {1e300, 2, 1e300}, {1.0 / 3, 15, 0.333333333333333}, {double{2.345F}, 2, 2.35},
      {kInfinity, 2, kInfinity}};
  // clang-format on
  for (const Case& c : cases)
    EXPECT_EQ(Round(c.value, c.decimals), c.rounded) << c.value;
  EXPECT_FALSE(std::signbit(Round(-0.4, 0)));
}

TEST(Text, RoundTextSeesTiesOfTheDecimalText) {
  struct Case {
    float value, rounded;
  };
  const Case cases[] = {{2.345F, 2.34F},   {0.335F, 0.34F}, {0.345F, 0.34F},
                        {-0.335F, -0.34F}, {0.995F, 1},     {0.005F, 0},
                        {0.0051F, 0.01F},  {1e-20F, 0},     {kFloatMax, 3.402823e38F}};
  for (const Case& c : cases)
    EXPECT_EQ(RoundText(c.value, 2), c.rounded) << c.value;
  const ScopedLocale german("de_DE");
  EXPECT_EQ(RoundText(2.345F, 2), 2.34F);
}

TEST(Text, NumbersOfTheUser) {
  struct Case {
    QString text;
    std::optional<double> english, german;
  };
  const std::optional<double> no;
  const Case cases[] = {{u"1.5"_s, 1.5, no}, {u"1,5"_s, no, 1.5}, {u" -3 "_s, -3, -3},
                        {u"+3"_s, 3, 3},     {u"5."_s, 5, no},    {u",5"_s, no, 0.5}};
  const QString refused[] = {u"1e3"_s, u"&H10"_s, u"$5"_s,  u"1.000,5"_s, u""_s,
                             u"-"_s,   u"."_s,    u"1 2"_s, u"inf"_s,     QString(400, u'9')};
  for (const QString& text : refused)
    EXPECT_FALSE(IsNumeric(text)) << text.left(40).toStdString();
  for (const Case& c : cases) {
    EXPECT_EQ(ToNumber(c.text), c.english) << c.text.toStdString();
    const ScopedLocale german("de_AT");
    EXPECT_EQ(ToNumber(c.text), c.german) << c.text.toStdString();
  }
}

TEST(Text, WhatIsShownReadsBackInEveryLocale) {
  for (const QLocale& locale :
       QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory)) {
    const ScopedLocale scoped(locale);
    EXPECT_EQ(ToNumber(PlainText(-1234.5)), -1234.5) << locale.name().toStdString();
    EXPECT_EQ(ToNumber(Format(5.0, u"####.##")), 5) << locale.name().toStdString();
  }
}

TEST(Text, Characters) {
  EXPECT_EQ(CharCount(u"a.b.c", u'.'), 2);
  EXPECT_EQ(ToLatin1(u"Jänner € 😀."), QByteArray("J\xe4nner ? ?."));
  EXPECT_EQ(FromUtf8OrLatin1("J\xc3\xa4nner"), u"Jänner");
  EXPECT_EQ(FromUtf8OrLatin1("J\xe4nner"), u"Jänner");
  EXPECT_EQ(FromUtf8OrLatin1("cut \xc3"), u"cut Ã");
  EXPECT_EQ(FromUtf8OrLatin1(QByteArrayView("a\0b\0\0", 5)), QString::fromLatin1("a\0b", 3));
  EXPECT_EQ(FromUtf8OrLatin1({}), QString());
}

TEST(Locale, CountsPosixAsAmerican) {
  const ScopedLocale posix(QLocale::c());
  EXPECT_EQ(UserLocale(), QLocale(QLocale::English, QLocale::UnitedStates));
  EXPECT_EQ(GetUserLocaleInfo(LocaleInfo::CountryCode), u"1");
}

TEST(Locale, AnswersTheQuery) {
  struct Case {
    const char* locale;
    QString separator, code;
  };
  const Case cases[] = {{"el_GR", u","_s, u"30"_s},
                        {"de_AT", u","_s, u"43"_s},
                        {"de_CH", u"."_s, u"41"_s},
                        {"en_GB", u"."_s, u"44"_s},
                        {"fa_IR", u"."_s, u""_s}};
  for (const Case& c : cases) {
    const ScopedLocale scoped(c.locale);
    EXPECT_EQ(GetUserLocaleInfo(LocaleInfo::DecimalSeparator), c.separator) << c.locale;
    EXPECT_EQ(GetUserLocaleInfo(LocaleInfo::CountryCode), c.code) << c.locale;
  }
}

}  // namespace
}  // namespace zqm
