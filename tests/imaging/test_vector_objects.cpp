// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "imaging/vector_objects.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using test::ScopedLocale;

QString Take(VectorObjects& objects, int id, QStringView key, const QString& value) {
  return objects.SetObjectProperty(id, key, value) ? objects.GetObjectProperty(id, key)
                                                   : u"refused"_s;
}

TEST(VectorObjects, KeysTakeWhatTheyMeanAndNothingElse) {
  const ScopedLocale comma("de_DE");
  struct Case {
    const char16_t* key;
    const char16_t* value;
    const char16_t* becomes;
  };
  constexpr Case kCases[] = {
      {u"LEFT", u"12.5", u"12.5"},
      {u"left", u"-3", u"-3"},
      {u"LEFT", u"12,5", u"refused"},
      {u"LEFT", u"nan", u"refused"},
      {u"TOP", u"inf", u"refused"},
      {u"TOP", u"-0", u"0"},
      {u"TOP", u"0.0000001", u"0.0000001"},
      {u"TOP", u"1e300", u"refused"},
      {u"WIDTH", u"-1", u"refused"},
      {u"HEIGHT", u"", u"refused"},
      {u"PENCOLOR", u"255,202,16", u"255,202,16"},
      {u"PENCOLOR", u"256,0,0", u"refused"},
      {u"PENCOLOR", u"1,2", u"refused"},
      {u"BRUSHCOLOR", u"0,-1,0", u"refused"},
      {u"PENSTYLE", u"5", u"5"},
      {u"PENSTYLE", u"3", u"refused"},
      {u"TRANSPARENCY", u"0", u"0"},
      {u"TRANSPARENCY", u"256", u"refused"},
      {u"FONTHEIGHT", u"0", u"refused"},
      {u"FONTANGLE", u"-45.25", u"-45.25"},
      {u"FONTBOLD", u"1", u"1"},
      {u"VISIBLE", u"yes", u"refused"},
      {u"FONTQUALITY", u"5", u"5"},
      {u"TEXTALIGN", u"3", u"refused"},
      {u"FONTNAME", u"Größe d'Été", u"Größe d'Été"},
      {u"KIND", u"2", u"2"},
      {u"KIND", u"6", u"refused"},
      {u"COLOUR", u"1", u"refused"},
      {u"", u"1", u"refused"},
  };
  for (const Case& c : kCases) {
    VectorObjects objects;
    const int id = objects.Add(ObjectKind::Rectangle);
    EXPECT_EQ(Take(objects, id, c.key, QString::fromUtf16(c.value)), c.becomes)
        << QString::fromUtf16(c.key).toStdString() << "="
        << QString::fromUtf16(c.value).toStdString();
  }
  VectorObjects objects;
  const int line = objects.Add(ObjectKind::Line);
  EXPECT_EQ(Take(objects, line, u"WIDTH", u"-40"_s), u"-40") << "a line may run to the left";
  EXPECT_EQ(Take(objects, line, u"TEXT", QString(1, QChar(0xD800))), u"refused");
  EXPECT_EQ(Take(objects, line + 1, u"LEFT", u"1"_s), u"refused") << "no such object";
  EXPECT_EQ(objects.GetObjectProperty(line + 1, u"LEFT"), QString());
}

TEST(VectorObjects, EveryKeyComesBackAsItWasSet) {
  VectorObjects objects;
  const int id = objects.Add(ObjectKind::Rectangle);
  VectorObjects other;
  const int copy = other.Add(ObjectKind::Rectangle);
  VectorObject set = *objects.Find(id);
  set.text = u"Ein \"Text\"\nund nicht nur einer"_s;
  set.left = 0.1;
  set.penStyle = PenStyle::Dot;
  set.brushStyle = BrushStyle::Solid;
  set.textAlign = TextAlign::Centre;
  set.fontQuality = FontQuality::Smoothed;
  set.endShape = EndShape::Arrow;
  set.moveable = set.sizeable = set.selectable = set.visible = set.textEditable = false;
  ASSERT_TRUE(objects.Replace(set));
  for (const char16_t* key : ObjectKeys())
    EXPECT_TRUE(other.SetObjectProperty(copy, key, objects.GetObjectProperty(id, key)))
        << QString::fromUtf16(key).toStdString();
  EXPECT_EQ(other, objects);
}

TEST(VectorObjects, IdsAreNeverGivenAgain) {
  VectorObjects objects;
  const int first = objects.Add(ObjectKind::Rectangle);
  const int second = objects.AddLine({1, 2}, {3, 4});
  objects.Remove(second);
  objects.RemoveAllObjects();
  const VectorObjects emptied = objects;
  const int third = objects.Add(ObjectKind::Text);
  EXPECT_GT(third, std::max(first, second));
  EXPECT_GT(VectorObjects(emptied).Add(ObjectKind::Text), std::max(first, second));

  VectorObject stored;
  stored.id = 70;
  EXPECT_TRUE(objects.Insert(stored));
  EXPECT_FALSE(objects.Insert(stored)) << "taken";
  stored.id = 0;
  EXPECT_FALSE(objects.Insert(stored));
  EXPECT_EQ(objects.Add(ObjectKind::Picture), 71);
}

TEST(VectorObjects, OrderDecidesWhatIsHit) {
  VectorObjects objects;
  std::vector<int> ids;
  for (int i = 0; i < 3; ++i)
    ids.push_back(objects.Add(ObjectKind::Rectangle));  // one over the other
  EXPECT_EQ(objects.HitTest({50, 50}, 0), ids[2]);
  objects.SendToBack(ids[2]);
  EXPECT_EQ(objects.Ids(), (std::vector{ids[2], ids[0], ids[1]}));
  EXPECT_EQ(objects.HitTest({50, 50}, 0), ids[1]);
  objects.BringToFront(ids[0]);
  EXPECT_EQ(objects.Ids(), (std::vector{ids[2], ids[1], ids[0]}));
  objects.BringToFront(99);
  objects.SendToBack(99);
  EXPECT_EQ(objects.Ids(), (std::vector{ids[2], ids[1], ids[0]}));

  objects.SetObjectProperty(ids[0], u"VISIBLE", u"0"_s);
  objects.SetObjectProperty(ids[1], u"SELECTABLE", u"0"_s);
  EXPECT_EQ(objects.HitTest({50, 50}, 0), ids[2]);
  EXPECT_EQ(objects.HitTest({103, 50}, 2), -1);
  EXPECT_EQ(objects.HitTest({103, 50}, 4), ids[2]);
}

TEST(VectorObjects, LinesAreHitAlongTheirLength) {
  VectorObjects objects;
  const int id = objects.AddLine({100, 100}, {20, 40});  // up and to the left
  EXPECT_EQ(objects.HitTest({60, 70}, 1), id);
  EXPECT_EQ(objects.HitTest({60, 60}, 1), -1) << "inside the box around it, beside the line";
  EXPECT_EQ(objects.HitTest({110, 107.5}, 5), -1) << "beyond its end";
  EXPECT_TRUE(objects.BoundsOf(id).contains(QRectF(20, 40, 80, 60)));
  EXPECT_EQ(objects.HitHandle(id, {21, 41}, 3), Handle::BottomRight) << "the end";
  EXPECT_EQ(objects.HitHandle(id, {20, 100}, 3), Handle::None) << "a line has two handles";
  const VectorObject longer = Sized(*objects.Find(id), Handle::TopLeft, {200, 100}, true);
  EXPECT_EQ(longer.Outline(), QPolygonF({{200, 100}, {20, 40}}));
}

TEST(VectorObjects, HandlesStandOnTheBox) {
  VectorObjects objects;
  const int id = objects.Add(ObjectKind::Rectangle);
  struct Case {
    QPointF at;
    Handle handle;
  };
  const Case cases[] = {
      {{0, 0}, Handle::TopLeft},         {{50, 2}, Handle::Top},
      {{101, -1}, Handle::TopRight},     {{98, 50}, Handle::Right},
      {{100, 100}, Handle::BottomRight}, {{50, 100}, Handle::Bottom},
      {{1, 99}, Handle::BottomLeft},     {{0, 50}, Handle::Left},
      {{50, 50}, Handle::None},          {{25, 0}, Handle::None},
  };
  for (const Case& c : cases)
    EXPECT_EQ(objects.HitHandle(id, c.at, 4), c.handle) << c.at.x() << ", " << c.at.y();
  objects.SetObjectProperty(id, u"SIZEABLE", u"0"_s);
  EXPECT_EQ(objects.HitHandle(id, {0, 0}, 4), Handle::None);
  EXPECT_EQ(objects.HitHandle(7, {0, 0}, 4), Handle::None);
}

TEST(VectorObjects, DraggedHandlesLeaveTheOppositeSide) {
  VectorObject box;
  box.left = 10;
  box.top = 20;
  box.width = 100;
  box.height = 50;
  struct Case {
    const char* what;
    Handle handle;
    QPointF to;
    bool keepAspect;
    QRectF becomes;
  };
  const Case cases[] = {
      {"a corner", Handle::BottomRight, {60, 100}, false, {10, 20, 50, 80}},
      {"the other corner", Handle::TopLeft, {0, 0}, false, {0, 0, 110, 70}},
      {"a side takes one measure", Handle::Left, {60, 500}, false, {60, 20, 50, 50}},
      {"over the other side", Handle::Right, {-900, 0}, false, {10, 20, 1, 50}},
      {"over both sides", Handle::TopLeft, {900, 900}, false, {109, 69, 1, 1}},
      {"corner, aspect kept", Handle::BottomRight, {210, 30}, true, {10, 20, 200, 100}},
      {"corner of the start, aspect kept", Handle::TopLeft, {60, 0}, true, {-30, 0, 140, 70}},
      {"side, aspect kept", Handle::Right, {60, 0}, true, {10, 32.5, 50, 25}},
      {"lower side, aspect kept", Handle::Bottom, {0, 120}, true, {-40, 20, 200, 100}},
      {"aspect kept down to a pixel", Handle::TopLeft, {900, 900}, true, {108, 69, 2, 1}},
      {"no handle", Handle::None, {0, 0}, false, {10, 20, 100, 50}},
  };
  for (const Case& c : cases) {
    const QRectF made = Sized(box, c.handle, c.to, c.keepAspect).Box();
    EXPECT_EQ(made, c.becomes) << c.what << ": " << made.x() << ", " << made.y() << ", "
                               << made.width() << ", " << made.height();
  }
  EXPECT_EQ(Moved(box, {-20, 5.5}).Box(), QRectF(-10, 25.5, 100, 50));
}

class ObjectTexts : public ::testing::Test {
 protected:
  ObjectTexts() : id_(objects_.Add(ObjectKind::Text)) {
    Set(u"TEXT", u"Hallo"_s);
    Set(u"FONTHEIGHT", u"40"_s);
    Set(u"LEFT", u"100"_s);
    Set(u"TOP", u"80"_s);
  }
  void Set(QStringView key, const QString& value) {
    EXPECT_TRUE(objects_.SetObjectProperty(id_, key, value));
  }
  QRectF Box() const { return objects_.Find(id_)->Box(); }

  VectorObjects objects_;
  int id_;
};

TEST_F(ObjectTexts, TakeTheirBoxFromTheirFont) {
  const QRectF one = Box();
  EXPECT_EQ(one.topLeft(), QPointF(100, 80));
  EXPECT_NEAR(one.height(), 47, 8);
  Set(u"FONTHEIGHT", u"80"_s);
  EXPECT_NEAR(Box().width(), 2 * one.width(), 0.01) << "a font keeps its proportions";
  EXPECT_NEAR(Box().height(), 2 * one.height(), 0.01);
  Set(u"FONTHEIGHT", u"40"_s);
  Set(u"TEXT", u"Hallo\nHallo\r\nHallo"_s);
  EXPECT_NEAR(Box().height(), 3 * one.height(), one.height() / 4);
  EXPECT_NEAR(Box().width(), one.width(), 1);
  Set(u"FONTBOLD", u"1"_s);
  EXPECT_GT(Box().width(), one.width());

  Set(u"WIDTH", u"5"_s);
  EXPECT_GT(Box().width(), one.width()) << "it follows the text, whatever is set";
  Set(u"TEXTAUTOSIZE", u"0"_s);
  Set(u"WIDTH", u"5"_s);
  EXPECT_EQ(Box().width(), 5);

  Set(u"TEXTAUTOSIZE", u"1"_s);
  for (const QString& text :
       {QString(), u" "_s, u"\n\n"_s, u"مرحبا"_s, u"日本語"_s, u"👩‍👧"_s}) {
    Set(u"TEXT", text);
    EXPECT_GE(Box().width(), 1) << text.toStdString();
    EXPECT_GE(Box().height(), 40) << text.toStdString();
  }
}

TEST_F(ObjectTexts, TurnAboutTheirCentre) {
  const QRectF flat = Box();
  Set(u"FONTANGLE", u"90"_s);
  EXPECT_EQ(Box(), flat);
  const QRectF turned = objects_.BoundsOf(id_);
  EXPECT_NEAR(turned.width(), flat.height(), 1e-6);
  EXPECT_NEAR(turned.height(), flat.width(), 1e-6);
  EXPECT_NEAR(turned.center().x(), flat.center().x(), 1e-6);
  const QPointF inside(flat.center().x(), turned.top() + 2),
      beside(flat.left() + 2, flat.center().y());
  EXPECT_EQ(objects_.HitTest(inside, 0), id_);
  EXPECT_EQ(objects_.HitTest(beside, 0), -1);
  // Counter-clockwise: what was the left end is below now.
  EXPECT_EQ(objects_.HitHandle(id_, {turned.center().x(), turned.bottom()}, 3), Handle::Left);
}

TEST_F(ObjectTexts, AreSizedByTheirFont) {
  Set(u"FONTANGLE", u"30"_s);
  const VectorObject start = *objects_.Find(id_);
  for (const Handle handle :
       {Handle::BottomRight, Handle::TopLeft, Handle::Right, Handle::Bottom}) {
    const QPointF centre = start.Box().center();
    const QPointF from = HandlePoint(start, handle);
    const VectorObject made = Sized(start, handle, centre + 3 * (from - centre), false);
    EXPECT_EQ(made.fontHeight, 80) << static_cast<int>(handle);
    const QPointF opposite = centre - (from - centre);
    const QPointF mirrored =
        made.Box().center() - (HandlePoint(made, handle) - made.Box().center());
    EXPECT_LT(std::hypot((opposite - mirrored).x(), (opposite - mirrored).y()), 1e-6)
        << static_cast<int>(handle) << ": the opposite point stays";
  }
  const VectorObject least = Sized(start, Handle::BottomRight, {-9999, -9999}, false);
  EXPECT_GE(least.fontHeight, 1);
  EXPECT_LE(least.fontHeight, 2);
}

}  // namespace
}  // namespace zqm
