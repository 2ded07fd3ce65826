// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/box_layout.h"
#include "printing/paper_measures.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr Unit kMm = Unit::Millimetres, kInches = Unit::Inches;

TEST(PaperMeasures, SwitchingUnitsNeverRoundsWhatWasTyped) {
  for (const char* name : {"en_US", "de_DE", "fr_FR"}) {
    const test::ScopedLocale locale(name);
    const QChar point = QLocale().decimalPoint().at(0);
    Measure measure;
    ASSERT_TRUE(measure.Type(u"123"_s + point + u"456"_s, kMm));
    QString shown = u"123"_s + point + u"456"_s;
    for (int i = 0; i < 500; ++i) {
      shown = SwitchedText(shown, measure, kInches);
      EXPECT_EQ(shown, u"4"_s + point + u"86"_s);
      shown = SwitchedText(shown, measure, kMm);
      EXPECT_EQ(shown, u"123"_s + point + u"46"_s);
    }
    EXPECT_EQ(measure.millimetres, 123.456);
    EXPECT_EQ(SwitchedText(u""_s, measure, kMm), u"");
    EXPECT_EQ(SwitchedText(u"abc"_s, measure, kMm), u"abc");
    // The other separator makes no number.
    const QString foreign = point == u',' ? u"1.5"_s : u"1,5"_s;
    for (const QString& text : {u""_s, u"0"_s, u"x"_s, foreign})
      EXPECT_FALSE(measure.Type(text, kMm)) << text.toStdString();
    EXPECT_EQ(measure.millimetres, 123.456);
  }
  Measure half;
  EXPECT_TRUE(half.Type(u"0.5"_s, kInches));
  EXPECT_DOUBLE_EQ(half.Pixels(), 50);
  EXPECT_TRUE(half.Type(u"25.4"_s, kMm));
  EXPECT_DOUBLE_EQ(half.Pixels(), 100);
}

TEST(PaperMeasures, PaperIsCheckedInOrder) {
  struct Case {
    QString width, height;
    Unit unit;
    const char16_t* message;  // none where it will do
    QSize sheet;
  };
  const Case cases[] = {
      {u"210"_s, u"297"_s, kMm, nullptr, {826, 1169}},
      {u"76.2"_s, u"127"_s, kMm, nullptr, {300, 500}},
      {u"3"_s, u"5"_s, kInches, nullptr, {300, 500}},
      {u"8.27"_s, u"11.69"_s, kInches, nullptr, {827, 1169}},
      {u"8.279"_s, u"11.699"_s, kInches, nullptr, {827, 1169}},
      {u""_s, u""_s, kMm, u"Invalid paper width.", {}},
      {u"0"_s, u"297"_s, kMm, u"Invalid paper width.", {}},
      {u"a4"_s, u"297"_s, kInches, u"Invalid paper width.", {}},
      {u"10"_s, u"x"_s, kMm, u"Invalid paper height.", {}},
      {u"210"_s, u"0"_s, kInches, u"Invalid paper height.", {}},
      {u"76.19"_s, u"1"_s, kMm, u"Paper width should be at least 76.2 mm.", {}},
      {u"-5"_s, u"297"_s, kMm, u"Paper width should be at least 76.2 mm.", {}},
      {u"76.2"_s, u"126.9"_s, kMm, u"Paper height should be at least 127 mm.", {}},
      {u"2.99"_s, u"1"_s, kInches, u"Paper width should be at least 3 inches.", {}},
      {u"3"_s, u"4.99"_s, kInches, u"Paper width should be at least 5 inches.", {}},
      {u"99999999999"_s, u"297"_s, kMm, u"Invalid paper width.", {}},
      {u"210"_s, u"328"_s, kInches, u"Invalid paper height.", {}},
  };
  for (const Case& c : cases) {
    const auto paper = SetPaper(c.width, c.height, c.unit);
    EXPECT_EQ(static_cast<bool>(paper), c.message == nullptr) << &c - cases;
    if (paper) {
      EXPECT_TRUE(paper->Sheet() == c.sheet) << &c - cases;
    } else {
      EXPECT_EQ(paper.Reason(), c.message) << &c - cases;
    }
  }
  const test::ScopedLocale comma("de_DE");
  EXPECT_EQ(SetPaper(u"70,5"_s, u"297"_s, kMm).Reason(),
            u"Paper width should be at least 76,2 mm.");
  EXPECT_EQ(LimitLabels(kMm)[0], u"Minimum Width  = 76,2 mm");
  EXPECT_EQ(LimitLabels(kInches)[1], u"Minimum Height = 5 inches");
  EXPECT_EQ(PaperLabel(*SetPaper(u"8,504"_s, u"11"_s, kInches), kInches),
            u"Current paper size : 8,5 x 11 in.");
  EXPECT_TRUE(Paper().Sheet() == QSize(826, 1169));
  EXPECT_TRUE(PaperNamed(u"210,82x280MM"_s) == QSizeF(210.82, 280));
  EXPECT_EQ(PaperLabel(Paper(), kMm), u"Current paper size : 210 x 297 mm");
}

TEST(PaperMeasures, WhatIsShownRoundedIsTakenExactly) {
  const Paper saved = PaperOfSheet({826, 1169});
  EXPECT_TRUE(SetPaper(u"8.27"_s, u"11.69"_s, kInches, Paper())->Sheet() == QSize(826, 1169));
  EXPECT_TRUE(SetPaper(u"209.8"_s, u"296.93"_s, kMm, saved)->Sheet() == QSize(826, 1169));
  EXPECT_TRUE(SetPaper(u"209.8"_s, u"200"_s, kMm, saved)->Sheet() == QSize(826, 787));
  const Paper least = *SetPaper(u"3"_s, u"5"_s, kInches);
  EXPECT_TRUE(SetPaper(u"76.2"_s, u"127"_s, kMm, least)->Sheet() == QSize(300, 500));
  EXPECT_EQ(SetPaper(u"0"_s, u"5"_s, kInches).Reason(), u"Invalid paper width.");
}

TEST(PaperMeasures, PaperIsNamedOrMeasured) {
  EXPECT_TRUE(PaperNamed(u"letter"_s) == QSizeF(215.9, 279.4));
  EXPECT_TRUE(PaperNamed(u"210.82x280mm"_s) == QSizeF(210.82, 280));
  for (const QString& text : {u""_s, u"A9"_s, u"0x280mm"_s, u"210x280"_s, u"210,5x280mm"_s})
    EXPECT_FALSE(PaperNamed(text)) << text.toStdString();
}

/// A list of one box, in millimetres.
VectorObjects BoxAt(double left, double top, double width, double height) {
  VectorObjects objects;
  VectorObject box = *objects.Find(AddPictureBox(objects, QColor(kBoxColour)));
  box.left = left / 0.254, box.top = top / 0.254;
  box.width = width / 0.254, box.height = height / 0.254;
  objects.Replace(box);
  return objects;
}

TEST(BoxLayout, BoxesMayEndAtThePapersEdge) {
  struct Case {
    double left, top, width, height;
    bool outside;
  };
  const Case cases[] = {
      {0, 0, 210, 297, false},    {10.04, 0, 200, 100, false}, {10.06, 0, 200, 100, true},
      {-0.01, 0, 50, 50, true},   {0, -0.01, 50, 50, true},    {0, 197.04, 50, 100, false},
      {0, 197.06, 50, 100, true}, {0, 0, 300, 50, true},
  };
  for (const Case& c : cases) {
    const VectorObjects objects = BoxAt(c.left, c.top, c.width, c.height);
    EXPECT_EQ(IsOutsidePaper(objects, std::array{1}, Paper(), kMm), c.outside) << &c - cases;
  }
  // In inches the tenth is larger, on both sides.
  const Paper letter = *SetPaper(u"8.52"_s, u"11"_s, kInches);
  EXPECT_FALSE(IsOutsidePaper(BoxAt(0, 0, 8.549 * 25.4, 100), std::array{1}, letter, kInches));
  EXPECT_TRUE(IsOutsidePaper(BoxAt(0, 0, 8.56 * 25.4, 100), std::array{1}, letter, kInches));
}

TEST(BoxLayout, PresetsMoveTheSelectionAsABlock) {
  const QSize sheet(800, 1000);
  struct Case {
    const char16_t* caption;
    QPointF corner;  // of the block of 300 x 150
  };
  const Case cases[] = {
      {u"Center", {250, 425}},    {u"Top-right", {500, 0}},      {u"Top-left", {0, 0}},
      {u"Bottom-left", {0, 850}}, {u"Bottom-right", {500, 850}}, {u"Top-center", {250, 0}},
      {u"Middle-left", {0, 425}}, {u"Middle-right", {500, 425}}, {u"Bottom-center", {250, 850}},
  };
  ASSERT_EQ(BoxPresets().size(), std::size(cases));
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    VectorObjects objects;
    const std::array ids{AddPictureBox(objects, Qt::red), AddPictureBox(objects, Qt::red)};
    const int other = AddPictureBox(objects, Qt::red);
    objects.SetObjectProperty(ids[1], u"LEFT", u"210"_s);
    objects.SetObjectProperty(ids[1], u"TOP", u"60"_s);
    MoveToPreset(objects, ids, sheet, BoxPresets()[i]);
    EXPECT_EQ(QStringView(BoxPresets()[i].caption), cases[i].caption);
    EXPECT_TRUE(GetBoundingBox(objects, ids) == QRectF(cases[i].corner, QSizeF(300, 150))) << i;
    EXPECT_TRUE(objects.Find(ids[1])->Box().topLeft() - objects.Find(ids[0])->Box().topLeft() ==
                QPointF(200, 50));
    EXPECT_EQ(objects.Find(other)->left, 10);
    const VectorObjects before = objects;
    MoveToPreset(objects, {}, sheet, BoxPresets()[i]);
    EXPECT_TRUE(objects == before);
  }
}

TEST(BoxLayout, ColoursAreWrittenBlueFirst) {
  EXPECT_EQ(VBHexColor(QColor(255, 202, 16)), u"&H10CAFF");
  EXPECT_EQ(VBHexColor(QColor(1, 0, 0)), u"&H000001");
  EXPECT_EQ(DecimalColour(QColor(255, 202, 16)), u"255,202,16");
}

}  // namespace
}  // namespace zqm
