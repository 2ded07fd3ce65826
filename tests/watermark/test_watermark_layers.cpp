// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "tests/support/print_text.h"
#include "tests/support/scratch.h"
#include "watermark/watermark_layers.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

int AddImage(VectorObjects& objects, QSize size = {40, 30}) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(Qt::red);
  return ImportNewImage(objects, image, size);
}

TEST(WatermarkLayers, ANewTextStandsAsThePanelStartsAndIsFoundAgain) {
  VectorObjects objects;
  const int first = InsertNewText(objects, TextPanel()), second = InsertNewText(objects, {});
  const std::pair<const char16_t*, const char16_t*> keys[] = {
      {u"KIND", u"6"},           {u"TEXT", u"Your Text Here"}, {u"FONTHEIGHT", u"100"},
      {u"FONTANGLE", u"0"},      {u"TEXTALIGN", u"2"},         {u"PENCOLOR", u"255,255,255"},
      {u"TEXTEDITABLE", u"0"},   {u"PENSTYLE", u"5"},          {u"MOVEABLE", u"1"},
      {u"SIZEABLE", u"1"},       {u"TEXTAUTOSIZE", u"1"},      {u"FONTQUALITY", u"5"},
      {u"TRANSPARENCY", u"255"}, {u"FONTBOLD", u"0"}};
  for (const auto& [key, value] : keys)
    EXPECT_EQ(objects.GetObjectProperty(first, key), QString::fromUtf16(value))
        << QString::fromUtf16(key).toStdString();
  EXPECT_EQ(GtTxtProp(*objects.Find(first)), TextPanel());
  EXPECT_GT(objects.Find(first)->width, 100);
  EXPECT_NE(objects.Find(first)->left, objects.Find(second)->left) << "one hides the other";
}

TEST(WatermarkLayers, AWordAltersItsKeyOfTheTextsOnly) {
  TextPanel panel;
  panel.text = u"Ω مرحبا\nline"_s, panel.size = u"12.5"_s, panel.angle = u"-30"_s;
  panel.fontName = u"DejaVu Sans"_s, panel.colour = u"1,2,3"_s;
  panel.bold = panel.italic = panel.underline = panel.strikeout = true;
  panel.transparency = 99;
  const std::tuple<const char16_t*, const char16_t*, QString> cases[] = {
      {u"TEXT", u"TEXT", panel.text},           {u"SIZE", u"FONTHEIGHT", u"12.5"_s},
      {u"ANGLE", u"FONTANGLE", u"-30"_s},       {u"FONT", u"FONTNAME", u"DejaVu Sans"_s},
      {u"COLOR", u"PENCOLOR", u"1,2,3"_s},      {u"BOLD", u"FONTBOLD", u"1"_s},
      {u"ITALIC", u"FONTITALIC", u"1"_s},       {u"UNDERLINE", u"FONTUNDERLINE", u"1"_s},
      {u"STRIKEOUT", u"FONTSTRIKEOUT", u"1"_s}, {u"TRANSPARENCY", u"TRANSPARENCY", u"99"_s}};
  for (const auto& [word, key, value] : cases) {
    VectorObjects objects;
    const int a = InsertNewText(objects, {}), image = AddImage(objects),
              other = InsertNewText(objects, {});
    const VectorObject imageBefore = *objects.Find(image), otherBefore = *objects.Find(other);
    AlterText(objects, std::vector{a, image, 77}, panel, word);
    EXPECT_EQ(objects.GetObjectProperty(a, key), value) << QString::fromUtf16(word).toStdString();
    EXPECT_EQ(*objects.Find(image), imageBefore);
    EXPECT_EQ(*objects.Find(other), otherBefore);
    // Nothing but that key has changed.
    for (const auto& [otherWord, otherKey, otherValue] : cases) {
      if (QStringView(key) == QStringView(otherKey)) continue;
      EXPECT_NE(objects.GetObjectProperty(a, otherKey), otherValue);
    }
  }
  VectorObjects objects;
  const int id = InsertNewText(objects, {});
  AlterText(objects, std::vector{id}, panel, text_part::kAll);
  EXPECT_EQ(GtTxtProp(*objects.Find(id)), panel);
}

TEST(WatermarkLayers, WhatIsNoValueLeavesTheObjectAndAnEmptyTextIsOne) {
  VectorObjects objects;
  const int id = InsertNewText(objects, {});
  TextPanel panel;
  panel.text.clear();
  for (const QString& senseless : {u""_s, u"abc"_s, u"-5"_s, u"0"_s, u"1e300"_s, u"nan"_s}) {
    panel.size = panel.colour = senseless;
    AlterText(objects, std::vector{id}, panel, text_part::kAll);
    EXPECT_EQ(objects.GetObjectProperty(id, u"FONTHEIGHT"), u"100"_s) << senseless.toStdString();
    EXPECT_EQ(objects.GetObjectProperty(id, u"PENCOLOR"), u"255,255,255"_s);
    EXPECT_EQ(objects.GetObjectProperty(id, u"TEXT"), QString());
  }
  panel.text = u"x"_s + u"🦊"_s.repeated(kMostObjectText);
  AlterText(objects, std::vector{id}, panel, text_part::kText);
  const QString cut = objects.GetObjectProperty(id, u"TEXT");
  EXPECT_EQ(cut.size(), kMostObjectText - 1);
  EXPECT_TRUE(cut.isValidUtf16());

  const test::ScopedLocale german("de_DE");
  panel.size = u"37,5"_s;
  AlterText(objects, std::vector{id}, panel, text_part::kSize);
  EXPECT_EQ(objects.GetObjectProperty(id, u"FONTHEIGHT"), u"37.5"_s);
  EXPECT_EQ(GtTxtProp(*objects.Find(id)).size, u"37,5"_s);
}

TEST(WatermarkLayers, ASelectionOfBothKindsIsTransparentAsAWhole) {
  VectorObjects objects;
  const int text = InsertNewText(objects, {}), image = AddImage(objects);
  SetTransparency(objects, std::vector{text, image}, 40);
  EXPECT_EQ(objects.Find(text)->transparency, 40);
  EXPECT_EQ(objects.Find(image)->transparency, 40);

  EXPECT_FALSE(StateOf(objects, {}).any);
  const SelectionState both = StateOf(objects, std::vector{text, image});
  EXPECT_TRUE(both.any && !both.text && !both.transparency);
  const SelectionState picture = StateOf(objects, std::vector{image});
  EXPECT_TRUE(picture.any && !picture.text);
  EXPECT_EQ(picture.transparency, 40);
  EXPECT_EQ(StateOf(objects, std::vector{text}).text->text, u"Your Text Here"_s);
}

TEST(WatermarkLayers, SeveralKeepTheirOrderOnTheWayBackAndToFront) {
  VectorObjects objects;
  for (int i = 0; i < 5; ++i)
    InsertNewText(objects, {});
  const std::vector<int> ids = objects.Ids();
  const std::vector<int> some{ids[1], ids[3]};
  SendToBack(objects, some);
  EXPECT_EQ(objects.Ids(), (std::vector{ids[1], ids[3], ids[0], ids[2], ids[4]}));
  BringToFront(objects, some);
  EXPECT_EQ(objects.Ids(), (std::vector{ids[0], ids[2], ids[4], ids[1], ids[3]}));
  RemoveLayers(objects, some);
  EXPECT_EQ(objects.Ids(), (std::vector{ids[0], ids[2], ids[4]}));
}

TEST(WatermarkLayers, ADragSnapsToEdgesAndMiddleEachWayByItself) {
  VectorObject box;
  box.kind = ObjectKind::Picture;
  box.width = 100, box.height = 50;
  struct Case {
    double left, top, snappedLeft, snappedTop;
  };
  const Case cases[] = {{6, -7, 0, 0},        {8.5, 9, 8.5, 9},     {895, 545, 900, 550},
                        {446, 100, 450, 100}, {200, 280, 200, 275}, {-100, -50, -100, -50},
                        {905, 560, 900, 560}};
  for (const Case& each : cases) {
    box.left = each.left, box.top = each.top;
    const SnappedObject snapped = SnapToSurface(box, {1000, 600}, 8);
    EXPECT_EQ(snapped.object.left, each.snappedLeft) << each.left << ' ' << each.top;
    EXPECT_EQ(snapped.object.top, each.snappedTop) << each.left << ' ' << each.top;
    EXPECT_EQ(snapped.object.width, 100);
    EXPECT_EQ(bool(snapped.x), each.left != each.snappedLeft);
    EXPECT_EQ(bool(snapped.y), each.top != each.snappedTop);
  }
  // A turned text by what one sees of it: 100 by 50 upright is 50 by 100.
  box.kind = ObjectKind::Text, box.fontAngle = 90;
  box.left = 400, box.top = 30;  // its outline begins at 425, 5
  const SnappedObject snapped = SnapToSurface(box, {1000, 600}, 8);
  EXPECT_FALSE(snapped.x);
  EXPECT_NEAR(snapped.object.Outline().boundingRect().top(), 0, 1e-9);
}

}  // namespace
}  // namespace zqm
