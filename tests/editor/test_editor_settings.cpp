// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/editor_settings.h"
#include "editor/watermark_text.h"
#include "shell/error.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using test::ScopedLocale;
using test::Scratch;

QByteArray Field(const char* text, int size) {
  return QByteArray(text).leftJustified(size, ' ');
}

TEST(MagicWandSettings, TheRecordIsFourBytes) {
  const Scratch folder;
  const auto stored = [&folder] { return Scratch::Read(folder.Path("Magic.dat")); };
  ASSERT_TRUE(SaveMagicWandSettings(folder.Path(), u"42"_s));
  EXPECT_EQ(stored(), QByteArray("\x02\0"
                                 "42",
                                 4));
  ASSERT_TRUE(SaveMagicWandSettings(folder.Path(), u"7"_s));
  EXPECT_EQ(stored(), QByteArray("\x01\0"
                                 "7\0",
                                 4));
  EXPECT_EQ(LoadMagicWandSettings(folder.Path()).tolerance, 7);
  for (const QString& text : {QString(), u"ten"_s, u" "_s})
    EXPECT_EQ(SaveMagicWandSettings(folder.Path(), text).Reason(), u"Invalid Tolerance Value.");
  EXPECT_THROW((void)SaveMagicWandSettings(folder.Path(), u"100"_s), Error);
  EXPECT_EQ(stored(), QByteArray("\x01\0"
                                 "7\0",
                                 4))
      << "as it was";
  EXPECT_FALSE(SaveMagicWandSettings(folder.Path("gone"), u"7"_s));
}

TEST(MagicWandSettings, WhatIsNoRecordIsTheDefault) {
  struct Case {
    QByteArray record;
    int tolerance;
    std::optional<QString> typed;
  };
  const Case cases[] = {
      {QByteArray("\x02\0"
                  "42",
                  4),
       42, u"42"_s},
      {QByteArray("\x01\0"
                  "0",
                  3),
       0, u"0"_s},  // without what follows the text
      {QByteArray("\x02\0"
                  "x1",
                  4),
       10, std::nullopt},
      {QByteArray("\0\0\0\0", 4), 10, u"10"_s},
      {QByteArray("\x02\0"
                  "4",
                  3),
       10, u"10"_s},
      {QByteArray("\x02\x01"
                  "42",
                  4),
       10, u"10"_s},
      {QByteArray("\x02\0"
                  "42\n",
                  5),
       10, u"10"_s},
      {QByteArray("\x02"), 10, u"10"_s},
      {QByteArray(), 10, u"10"_s},
  };
  const Scratch folder;
  EXPECT_EQ(LoadMagicWandSettings(folder.Path()).typed, u"10"_s) << "missing";
  for (const Case& c : cases) {
    folder.Write("Magic.dat", c.record);
    const MagicWandSettings read = LoadMagicWandSettings(folder.Path());
    EXPECT_EQ(read.tolerance, c.tolerance) << c.record.toHex().constData();
    EXPECT_EQ(read.typed, c.typed) << c.record.toHex().constData();
  }
}

TEST(ResizeSettings, TheRecordIsThirtyBytes) {
  const Scratch folder;
  EXPECT_EQ(LoadResizeSettings(folder.Path()), ResizePanel());
  ASSERT_TRUE(SaveResizeSettings(folder.Path(), {u" 300 "_s, 2, true}));
  EXPECT_EQ(Scratch::Read(folder.Path("RSZ.dat")),
            Field("300", 10) + Field("2", 10) + Field("true", 10));
  EXPECT_EQ(LoadResizeSettings(folder.Path()), (ResizePanel{u"300"_s, 2, true}));
  ASSERT_TRUE(SaveResizeSettings(folder.Path(), {u"dots"_s, 0, false}));
  EXPECT_EQ(Scratch::Read(folder.Path("RSZ.dat")),
            Field("72", 10) + Field("0", 10) + Field("false", 10));

  const struct {
    QByteArray record;
    ResizePanel becomes;
  } cases[] = {
      {Field("", 10) + Field("1", 10) + Field("false", 10), {u"72"_s, 1, false}},
      {Field("x", 10) + Field("x", 10) + Field("yes", 10), {u"72"_s, 0, true}},
      {Field("96", 10) + Field("3", 10) + Field("false", 10), {u"96"_s, 0, false}},
      {Field("96", 10) + Field("1", 10), {}},
      {Field("96", 10) + Field("1", 10) + Field("true", 11), {}},
  };
  for (const auto& c : cases) {
    folder.Write("RSZ.dat", c.record);
    EXPECT_EQ(LoadResizeSettings(folder.Path()), c.becomes) << c.record.constData();
  }
}

TEST(WatermarkSettings, TheRecordIs390Bytes) {
  const Scratch folder;
  EXPECT_EQ(LoadWatermarkSettings(folder.Path()), WatermarkPanel());
  const WatermarkPanel panel{u"© Jürgen 日"_s,
                             u"120"_s,
                             u"45"_s,
                             u"Größe"_s,
                             QColor(255, 2, 1),
                             true,
                             false,
                             true,
                             false,
                             7};
  ASSERT_TRUE(SaveWatermarkSettings(folder.Path(), panel));
  EXPECT_EQ(Scratch::Read(folder.Path("WTM.dat")),
            Field("\xA9 J\xFCrgen ?", 250) + Field("120", 5) + Field("45", 5) +
                Field("Gr\xF6\xDF"
                      "e",
                      100) +
                Field("66303", 15) + Field("1", 3) + Field("0", 3) + Field("1", 3) + Field("0", 3) +
                Field("7", 3));
  WatermarkPanel stored = panel;
  stored.text = u"© Jürgen ?"_s;
  EXPECT_EQ(LoadWatermarkSettings(folder.Path()), stored);

  WatermarkPanel longer = panel;
  longer.text = QString(300, u'x');
  longer.size.clear();
  longer.angle.clear();
  ASSERT_TRUE(SaveWatermarkSettings(folder.Path(), longer));
  EXPECT_EQ(Scratch::Read(folder.Path("WTM.dat")).size(), 390);
  EXPECT_EQ(LoadWatermarkSettings(folder.Path()).text, QString(250, u'x'));
  EXPECT_EQ(LoadWatermarkSettings(folder.Path()).size, u"80");
  EXPECT_EQ(LoadWatermarkSettings(folder.Path()).angle, u"0");

  folder.Write("WTM.dat", QByteArray(390, ' '));
  EXPECT_EQ(LoadWatermarkSettings(folder.Path()), WatermarkPanel()) << "blank";
  folder.Write("WTM.dat", QByteArray(390, 'z'));
  EXPECT_EQ(LoadWatermarkSettings(folder.Path()).colour, QColor(Qt::white)) << "no number";
  EXPECT_EQ(LoadWatermarkSettings(folder.Path()).transparency, 255);
  folder.Write("WTM.dat", QByteArray(389, '1'));
  EXPECT_EQ(LoadWatermarkSettings(folder.Path()), WatermarkPanel()) << "short";
}

TEST(PreviewWatermark, PutsOneTextInThePlaceOfAll) {
  const ScopedLocale comma("de_DE");
  VectorObjects objects;
  objects.AddLine({0, 0}, {5, 5});
  WatermarkPanel panel;
  panel.text = u"Graz"_s;
  panel.size = u"64"_s;
  panel.angle = u"12,5"_s;
  panel.colour = QColor(1, 2, 3);
  panel.bold = panel.strikeout = true;
  panel.transparency = 99;
  const int id = PreviewWatermark(objects, panel, {20.5, -3});
  ASSERT_EQ(objects.Ids(), std::vector{id});
  const VectorObject text = *objects.Find(id);
  for (const auto& [key, value] :
       {std::pair{u"KIND", u"6"}, std::pair{u"TEXT", u"Graz"}, std::pair{u"FONTHEIGHT", u"64"},
        std::pair{u"FONTANGLE", u"12.5"}, std::pair{u"TEXTALIGN", u"2"},
        std::pair{u"PENCOLOR", u"1,2,3"}, std::pair{u"FONTBOLD", u"1"},
        std::pair{u"FONTITALIC", u"0"}, std::pair{u"FONTSTRIKEOUT", u"1"},
        std::pair{u"TRANSPARENCY", u"99"}, std::pair{u"PENSTYLE", u"5"},
        std::pair{u"TEXTEDITABLE", u"0"}, std::pair{u"MOVEABLE", u"1"},
        std::pair{u"SIZEABLE", u"0"}, std::pair{u"TEXTAUTOSIZE", u"1"}, std::pair{u"LEFT", u"20.5"},
        std::pair{u"TOP", u"-3"}})
    EXPECT_EQ(ObjectProperty(text, key), value) << QString::fromUtf16(key).toStdString();
  const double width = text.width;
  panel.size = u"0"_s;  // while it is being typed
  panel.angle = u"-"_s;
  const VectorObject typing = *objects.Find(PreviewWatermark(objects, panel, {0, 0}));
  EXPECT_EQ(typing.fontHeight, 80);
  EXPECT_EQ(typing.fontAngle, 0);
  EXPECT_GT(typing.width, width);
}

}  // namespace
}  // namespace zqm
