// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "catalogue/like_pattern.h"
#include "catalogue/statements.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

struct LikeCase {
  const char16_t* text;
  const char16_t* pattern;
  bool matches;
};

TEST(Like, Table) {
  const LikeCase cases[] = {
      {u"", u"", true},
      {u"", u"%", true},
      {u"", u"_", false},
      {u"a", u"", false},
      {u"Sunset Beach", u"%SET b%", true},
      {u"Sunset Beach", u"set", false},
      {u"Sunset Beach", u"sun%ch", true},
      {u"Sunset Beach", u"sun%c", false},
      {u"aab", u"%ab", true},
      {u"abcabd", u"%abd%", true},
      {u"x", u"%xx%", false},
      // letter case in other scripts, and letters that fold into ASCII
      {u"GRÜSSE AUS ÖSTERREICH", u"%österreich%", true},
      {u"ΣΊΣΥΦΟΣ", u"σίσυφος", true},
      {u"МОСКВА", u"%моск%", true},
      {u"273 \u212A", u"%k%", true},
      {u"\u017Fun", u"SUN", true},
      {u"sun", u"%\u017Fun%", true},
      {u"plain", u"%\u00E9%", false},
      // one character, also beyond 16 bits
      {u"a\U0001F600b", u"a_b", true},
      {u"\U00010400", u"\U00010428", true},
      {u"Ü", u"_", true},
      // classes
      {u"IMG_7", u"img[_][0-9]", true},
      {u"IMGx7", u"img[_][0-9]", false},
      {u"100%", u"%[%]", true},
      {u"100", u"%[%]", false},
      {u"a[b", u"a[[]b", true},
      {u"Q", u"[a-z]", true},
      {u"ß", u"[a-z]", false},
      {u"7", u"[!a-z]", true},
      {u"q", u"[!A-Z]", false},
      {u"", u"[!a]", false},
      {u"-", u"[a-]", true},
      {u"-", u"[-a]", true},
      {u"!", u"[!]", true},
      {u"b", u"[z-a]", false},
      {u"ab", u"a[]b", true},
      {u"a[b", u"a[b", true},
      {u"a[", u"%[", true},
      {u"a]", u"a]", true},
  };
  for (const LikeCase& c : cases) {
    const QString text = QString::fromUtf16(c.text), pattern = QString::fromUtf16(c.pattern);
    EXPECT_EQ(LikeMatches(text, pattern), c.matches)
        << text.toStdString() << " LIKE " << pattern.toStdString();
    EXPECT_EQ(LikePattern(pattern).MatchesUtf8(text.toStdString()), c.matches)
        << "UTF-8: " << text.toStdString() << " LIKE " << pattern.toStdString();
  }
}

TEST(Like, ManyRunsStayCheap) {
  const QString text(20000, u'a');
  EXPECT_FALSE(LikeMatches(text, u"%a"_s.repeated(200) + u"b"_s));
}

TEST(Like, BytesThatAreNoTextMatchOnlyWildcards) {
  const std::string broken = "a\xC3(\xFF\xF5\xE2\x82";
  EXPECT_TRUE(LikePattern(u"a_(____"_s).MatchesUtf8(broken));
  EXPECT_FALSE(LikePattern(u"%\u00FF%"_s).MatchesUtf8(broken));
  EXPECT_NE(CompareFolded(broken, "a"), 0);
}

TEST(CompareFolded, IsAnOrderWithoutLetterCase) {
  const std::vector<std::string> sorted{"", "A", "ab", "B", "z", "Äb", "äC", "Ω"};
  for (size_t i = 0; i < sorted.size(); ++i)
    for (size_t k = 0; k < sorted.size(); ++k)
      EXPECT_EQ(CompareFolded(sorted[i], sorted[k]) < 0, i < k) << sorted[i] << " " << sorted[k];
  EXPECT_EQ(CompareFolded("ÉTÉ k", "été \u212A"), 0);
}

TEST(DateLiteral, Table) {
  const struct {
    const char16_t* text;
    const char* iso;  // nullptr: no date
  } cases[] = {
      {u"1/2/2007", "2007-01-02"},
      {u"12/31/2007", "2007-12-31"},
      {u"31/12/2007", "2007-12-31"},
      {u"2007-12-31", "2007-12-31"},
      {u"1.2.2007", "2007-01-02"},
      {u"3/4/29", "2029-03-04"},
      {u"3/4/30", "1930-03-04"},
      {u"2/29/2008", "2008-02-29"},
      {u"2/29/2007", nullptr},
      {u"31/31/2007", nullptr},
      {u"", nullptr},
      {u"soon", nullptr},
      {u"1/2/2007 23:59:59", "2007-01-02"},
  };
  for (const QLocale::Country country : {QLocale::UnitedStates, QLocale::UnitedKingdom}) {
    QLocale::setDefault(QLocale(QLocale::English, country));
    for (const auto& c : cases) {
      const auto iso = DateLiteralToIso(QString::fromUtf16(c.text));
      EXPECT_EQ(iso.value_or(u"none"_s).toStdString(), c.iso ? c.iso : "none")
          << QString::fromUtf16(c.text).toStdString();
    }
  }
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}

}  // namespace
}  // namespace zqm
