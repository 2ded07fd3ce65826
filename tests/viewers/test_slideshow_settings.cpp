// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "tests/support/print_text.h"
#include "tests/support/scratch.h"
#include "viewers/slideshow_settings.h"

using namespace Qt::StringLiterals;

namespace zqm::test {
namespace {

TEST(SlideInterval, FiveToSixtySecondsInTheUsersNumbers) {
  using std::chrono::milliseconds;
  struct Case {
    const char* locale;
    const char16_t* typed;
    milliseconds interval;
    const char16_t* refusal;
  };
  using namespace slideshow_text;
  constexpr milliseconds kNone(0);
  const Case cases[] = {
      {"en_US", u"5", milliseconds(5000), u""},    {"en_US", u"60", milliseconds(60000), u""},
      {"en_US", u"7.25", milliseconds(7250), u""}, {"de_AT", u"7,25", milliseconds(7250), u""},
      {"en_US", u"", kNone, kNoDuration},          {"en_US", u"x", kNone, kInvalidDuration},
      {"en_US", u" ", kNone, kInvalidDuration},    {"en_US", u"6,5", kNone, kInvalidDuration},
      {"de_AT", u"6.5", kNone, kInvalidDuration},  {"en_US", u"4.9", kNone, kTooShort},
      {"de_AT", u"4,9", kNone, kTooShort},         {"en_US", u"-10", kNone, kTooShort},
      {"en_US", u"60.1", kNone, kTooLong},         {"de_AT", u"60,1", kNone, kTooLong},
  };
  for (const Case& one : cases) {
    const ScopedLocale locale(one.locale);
    const auto interval = SlideInterval(QString::fromUtf16(one.typed));
    EXPECT_EQ(interval.Reason(), QString::fromUtf16(one.refusal));
    EXPECT_EQ(interval ? *interval : kNone, one.interval)
        << QString::fromUtf16(one.typed).toStdString();
  }
}

TEST(TransitionRecord, SixBytesComeBackInTheUsersNumbers) {
  const Scratch folder;
  ASSERT_TRUE(SaveTransition(folder.Path(), 81, 7.5));
  EXPECT_EQ(Scratch::Read(folder.Path("STRN.dat")).toHex(), "51000000f040");
  EXPECT_EQ(LoadTransition(folder.Path()), (SlideshowSettings{81, u"7.5"_s}));
  const ScopedLocale locale("de_AT");
  EXPECT_EQ(LoadTransition(folder.Path()), (SlideshowSettings{81, u"7,5"_s}));
}

TEST(TransitionRecord, WhatCantBeMeantGivesTheDefaults) {
  const Scratch folder;
  const SlideshowSettings defaults{0, u"5"_s};
  EXPECT_EQ(LoadTransition(folder.Path()), defaults) << "no file";
  const std::pair<const char*, SlideshowSettings> records[] = {
      {"51000000f0", defaults},           // short
      {"51000000f04000", defaults},       // long
      {"a4000000f040", {0, u"7.5"_s}},    // one beyond the list
      {"a3000000f040", {163, u"7.5"_s}},  // its last
      {"ffff0000f040", {0, u"7.5"_s}},    // -1
      {"51000000c07f", {81, u"5"_s}},     // no number
      {"51000000807f", {81, u"5"_s}},     // infinite
      {"510000000000", {81, u"5"_s}},     // 0
      {"51000000f0c0", {81, u"5"_s}},     // -7.5
  };
  for (const auto& [record, expected] : records) {
    folder.Write("STRN.dat", QByteArray::fromHex(record));
    EXPECT_EQ(LoadTransition(folder.Path()), expected) << record;
  }
}

}  // namespace
}  // namespace zqm::test
