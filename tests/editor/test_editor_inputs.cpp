// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "editor/crop_resize.h"
#include "editor/level_line.h"
#include "imaging/file_filters.h"
#include "imaging/rotate.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using test::ScopedLocale;

TEST(LevelLine, TellsAngleAndDirection) {
  constexpr auto kClockwise = TurnDirection::Clockwise, kCounter = TurnDirection::CounterClockwise;
  struct Case {
    QPointF to;  // from 100, 100; y downwards
    const char16_t* angle;
    std::optional<TurnDirection> direction;
  };
  const Case cases[] = {
      {{200, 90}, u"5.71", kClockwise},  // rises to the right
      {{200, 110}, u"5.71", kCounter},   // falls
      {{0, 110}, u"5.71", kClockwise},   // the same, drawn the other way
      {{110, 0}, u"5.71", kCounter},     // leans to the right
      {{90, 0}, u"5.71", kClockwise},    // leans to the left
      {{200, 0}, u"45", kCounter},       // upright from 45 on
      {{200, 200}, u"45", kClockwise},   // and at -45, which isn't corrected
      {{200, 0.5}, u"44.86", kClockwise},
      {{99, 98}, u"26.57", kClockwise},
      {{1000100, 99.99}, u"0", kClockwise},  // hardly a slope: 0.00 ends on the later test
      {{1000100, 100.01}, u"0", kClockwise},
      {{200, 100}, u"0", std::nullopt},  // level
      {{100, 300}, u"0", std::nullopt},  // upright
      {{100, 100}, u"0", std::nullopt},
      {{100.000001, 300}, u"0", std::nullopt},  // no difference that 32 bits could tell
  };
  for (const Case& c : cases) {
    const LevelTurn turn = LevelAngle({100, 100}, c.to);
    EXPECT_EQ(turn.angle, c.angle) << c.to.x() << ", " << c.to.y();
    EXPECT_EQ(turn.direction, c.direction) << c.to.x() << ", " << c.to.y();
  }
  const ScopedLocale comma("de_DE");
  EXPECT_EQ(LevelAngle({0, 0}, {100, -10}).angle, u"5,71");
}

/// The angle of the dark stripe in a picture, degrees from the horizontal.
double StripeAngle(const QImage& picture) {
  double n = 0, sx = 0, sy = 0, sxx = 0, sxy = 0, syy = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x) {
      if (qGray(picture.pixel(x, y)) > 100) continue;
      ++n;
      sx += x;
      sy += y;
      sxx += x * x;
      sxy += x * y;
      syy += y * y;
    }
  const double xx = sxx - sx * sx / n, xy = sxy - sx * sy / n, yy = syy - sy * sy / n;
  return std::atan2(2 * xy, xx - yy) / 2 * 180 / 3.14159265;
}

TEST(LevelLine, LeavesTheDrawnLineLevelOrUpright) {
  for (const double drawn : {10.0, -10.0, 40.0, -40.0, 50.0, -50.0, 80.0, -80.0}) {
    const double radians = drawn / 180 * 3.14159265;
    const QPointF along(std::cos(radians), std::sin(radians));
    QImage picture(201, 201, QImage::Format_RGB32);
    for (int y = 0; y < 201; ++y)
      for (int x = 0; x < 201; ++x) {
        const QPointF at(x - 100, y - 100);
        const bool stripe = std::abs(at.x() * along.y() - at.y() * along.x()) < 2 &&
                            QPointF::dotProduct(at, at) < 80 * 80;
        picture.setPixel(x, y, stripe ? 0xFF000000 : 0xFFFFFFFF);
      }
    const LevelTurn turn =
        LevelAngle(QPointF(100, 100) - 50 * along, QPointF(100, 100) + 50 * along);
    ASSERT_TRUE(turn.direction) << drawn;
    const auto degrees = TurnDegrees(turn.angle, *turn.direction);
    ASSERT_TRUE(degrees);
    const double left = std::abs(StripeAngle(Rotated(picture, *degrees, true)));
    EXPECT_NEAR(std::abs(drawn) < 45 ? left : 90 - left, 0, 0.3) << drawn;
  }
}

TEST(LevelLine, TypedAnglesAreNumbersOfTheLocale) {
  const ScopedLocale comma("de_DE");
  EXPECT_EQ(*TurnDegrees(u"12,5"_s, TurnDirection::Clockwise), -12.5);
  EXPECT_EQ(*TurnDegrees(u" 3 "_s, TurnDirection::CounterClockwise), 3);
  for (const QString& text : {QString(), u"  "_s, u"12.5"_s, u"1e3"_s, u"right"_s, u"1,2,3"_s})
    EXPECT_EQ(TurnDegrees(text, TurnDirection::Clockwise).Reason(), u"Invalid rotation angle.")
        << text.toStdString();
}

TEST(CropLimits, HoldOnlyWhereBothBoxesDo) {
  const CropLimits limits = ReadCropLimits(u"300"_s, u"200"_s);
  EXPECT_EQ(limits.aspect, 1.5);
  EXPECT_EQ(limits.maxWidth, 300);
  EXPECT_EQ(limits.maxHeight, 200);
  for (const auto& [width, height] : {std::pair{u"300"_s, QString()}, std::pair{u"0"_s, u"200"_s},
                                      std::pair{u"a"_s, u"200"_s}, std::pair{u"-3"_s, u"2"_s}}) {
    const CropLimits free = ReadCropLimits(width, height);
    EXPECT_EQ(free.aspect, -1) << width.toStdString();
    EXPECT_EQ(free.maxWidth + free.maxHeight, 0) << width.toStdString();
  }
}

TEST(EditorResize, TheOtherSideFollows) {
  struct Case {
    const char16_t* typed;
    int side, other;
    const char16_t* becomes;
  };
  constexpr Case kCases[] = {
      {u"800", 4000, 3000, u"600"},
      {u"801", 4000, 3000, u"601"},  // 600.75
      {u"5", 2, 1, u"2"},            // 2.5, half to even
      {u"7", 2, 1, u"4"},            // 3.5
      {u"1", 4000, 3, u"0"},
      {u"", 4000, 3000, u""},
      {u"x", 4000, 3000, u""},
      {u"800", 0, 0, u""},
      {u"99999999999999", 1, 3, u"299999999999997"},
  };
  for (const Case& c : kCases)
    EXPECT_EQ(TwinSide(QString::fromUtf16(c.typed), c.side, c.other), c.becomes)
        << QString::fromUtf16(c.typed).toStdString();
}

TEST(EditorResize, ChecksInOrder) {
  struct Case {
    const char16_t *width, *height, *dpi, *reason;
  };
  constexpr Case kCases[] = {
      {u"", u"", u"", u"Invalid Width."},
      {u"0", u"2", u"72", u"Invalid Width."},
      {u"2", u"x", u"", u"Invalid Height."},
      {u"2", u"-1", u"72", u"Invalid Height."},
      {u"2", u"2", u"", u"Invalid DPI Value."},
      {u"2", u"2", u"0", u"Invalid DPI Value."},
      {u"640", u"480", u"300", u""},
  };
  for (const Case& c : kCases) {
    const auto read = ReadResize(QString::fromUtf16(c.width), QString::fromUtf16(c.height),
                                 QString::fromUtf16(c.dpi));
    EXPECT_EQ(read.Reason(), c.reason) << QString::fromUtf16(c.width).toStdString();
  }
  const auto read = ReadResize(u"640"_s, u"99999999999"_s, u"300"_s);
  EXPECT_EQ(read->size.width(), 640);
  EXPECT_GT(read->size.height(), 1 << 20) << "too much, and no overflow";
  EXPECT_EQ(read->dpi, u"300");
}

TEST(TypedNumbers, TakeTheSeparatorOfTheLocaleOnly) {
  for (const auto& [locale, takes, refuses] :
       {std::tuple{"de_DE", u',', u'.'}, std::tuple{"en_US", u'.', u','}}) {
    const ScopedLocale scope(locale);
    EXPECT_TRUE(TakesKey(TypedNumber::Decimal, takes)) << locale;
    EXPECT_FALSE(TakesKey(TypedNumber::Decimal, refuses)) << locale;
    EXPECT_FALSE(TakesKey(TypedNumber::Digits, takes)) << locale;
  }
  EXPECT_TRUE(TakesKey(TypedNumber::Digits, u'7'));
  EXPECT_FALSE(TakesKey(TypedNumber::Decimal, u'٣'));
  EXPECT_FALSE(TakesKey(TypedNumber::Decimal, u'-'));
}

TEST(FileFilters, NameEveryFormatOnce) {
  const QStringList open = OpenPictureFilters(), save = SavePictureFilters();
  EXPECT_TRUE(open.first().startsWith(u"All Supported Formats (*.jpg *.gif *.tiff *.pcx "_s));
  EXPECT_TRUE(open.first().endsWith(u"*.dcr *.sr2)"_s));
  EXPECT_EQ(open.size(), 1 + open.first().count(u"*."_s));
  EXPECT_TRUE(open.contains(u"TIFF Bitmap (TIF) (*.tif)"_s));
  EXPECT_EQ(save.first(), u"JPEG Bitmap (JPG) (*.jpg)");
  EXPECT_FALSE(save.join(u' ').contains(u"RAW"_s));
  EXPECT_EQ(WithSaveExtension(u"/a.b/holiday"_s), u"/a.b/holiday.jpg");
  EXPECT_EQ(WithSaveExtension(u"/a/holiday."_s), u"/a/holiday.jpg");
  EXPECT_EQ(WithSaveExtension(u"/a/holiday.xyz"_s), u"/a/holiday.xyz");
}

}  // namespace
}  // namespace zqm
