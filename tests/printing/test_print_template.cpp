// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/box_layout.h"
#include "printing/print_text.h"
#include "printing/standard_templates.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Boxes one beside the other, one pixel apart.
PrintTemplate Boxes(int count) {
  PrintTemplate layout{{826, 1169}, {}, {}};
  for (int i = 0; i < count; ++i) {
    const int id = AddPictureBox(layout.objects, QColor(kBoxColour));
    layout.objects.SetObjectProperty(id, u"LEFT", QString::number(i));
    layout.ids.push_back(id);
  }
  return layout;
}

TEST(PrintTemplates, TheRecordIsWhatOthersRead) {
  PrintTemplate layout = Boxes(3);
  layout.ids = {3, 5, 8};
  const QByteArray record = EncodeTemplateRecord(layout);
  EXPECT_EQ(record.size(), 1008);
  EXPECT_EQ(record.left(8), QByteArray("\x3A\x03\0\0\x91\x04\0\0", 8));
  EXPECT_EQ(record.mid(8), QByteArray(",3,,5,,8,").leftJustified(1000, ' '));
}

TEST(PrintTemplates, ComeBackWithTheirBoxesInOrder) {
  const test::Scratch scratch;
  const QString folder = scratch.Path(), name = u"Fotos d'été 1.2 ä"_s;
  PrintTemplate layout = Boxes(3);
  layout.objects.SendToBack(3);
  ASSERT_TRUE(SaveTemplate(folder, name, layout));
  const auto loaded = LoadTemplate(folder, name);
  ASSERT_TRUE(loaded) << loaded.Reason().toStdString();
  EXPECT_TRUE(*loaded == layout);
  // As they were made, whatever lies in front.
  const auto boxes = BoxesOf(*loaded);
  ASSERT_EQ(boxes.size(), 3u);
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(boxes[static_cast<std::size_t>(i)].left(), i);
  scratch.Write("half.iev", "x");
  scratch.Write(".txt", "no name");
  ASSERT_TRUE(SaveTemplate(folder, u".4x6"_s, layout));
  scratch.Write("photo.txt", test::SampleJpeg(8, 8));
  EXPECT_EQ(PrintTemplatesName(folder), (QStringList{u".4x6"_s, name, u"half"_s}));
  ASSERT_TRUE(RemoveTemplate(folder, name) && RemoveTemplate(folder, u".4x6"_s));
  EXPECT_EQ(scratch.Names(), (QStringList{u".txt"_s, u"half.iev"_s, u"photo.txt"_s}));
}

TEST(PrintTemplates, MoreBoxesThanTheRecordHoldsAreAllThere) {
  const test::Scratch scratch;
  PrintTemplate layout = Boxes(300);
  layout.objects.SendToBack(300);  // what lies in front is another matter
  ASSERT_TRUE(SaveTemplate(scratch.Path(), u"many"_s, layout));
  EXPECT_EQ(QFileInfo(scratch.Path("many.txt")).size(), 1008);
  const auto loaded = LoadTemplate(scratch.Path(), u"many"_s);
  ASSERT_TRUE(loaded);
  const auto boxes = BoxesOf(*loaded);
  ASSERT_EQ(boxes.size(), 300u);
  for (std::size_t i = 0; i < boxes.size(); ++i)
    EXPECT_EQ(boxes[i].left(), static_cast<double>(i));
}

TEST(PrintTemplates, WhatIsMissingOrCorruptedIsRefused) {
  const test::Scratch good;
  ASSERT_TRUE(SaveTemplate(good.Path(), u"t"_s, Boxes(2)));
  const QByteArray objects = test::Scratch::Read(good.Path("t.iev"));
  const QByteArray record = test::Scratch::Read(good.Path("t.txt"));
  QByteArray noWidth = record, huge = record;
  noWidth.replace(0, 4, QByteArray(4, '\0'));
  huge.replace(4, 4, "\xFF\xFF\xFF\x7F");
  struct Case {
    std::optional<QByteArray> objects, record;
    const char16_t* message;
  };
  const Case cases[] = {
      {std::nullopt, record, print_text::kNotLocated},
      {objects, std::nullopt, print_text::kNotLocated},
      {objects, QByteArray(), print_text::kNotLoaded},
      {objects, record.chopped(1), print_text::kNotLoaded},
      {objects, record + ' ', print_text::kNotLoaded},
      {objects, noWidth, print_text::kNotLoaded},
      {objects, huge, print_text::kNotLoaded},
      {objects.left(objects.size() / 2), record, print_text::kNotLoaded},
      {QByteArray(), record, print_text::kNotLoaded},
  };
  for (const Case& c : cases) {
    const test::Scratch scratch;
    if (c.objects) scratch.Write("t.iev", *c.objects);
    if (c.record) scratch.Write("t.txt", *c.record);
    const auto loaded = LoadTemplate(scratch.Path(), u"t"_s);
    EXPECT_FALSE(loaded);
    EXPECT_EQ(loaded.Reason(), c.message) << &c - cases;
  }
}

TEST(PrintTemplates, AHalfWrittenPairLeavesTheOldOne) {
  const test::Scratch scratch;
  const QString folder = scratch.Path();
  EXPECT_EQ(SaveTemplate(folder, u"t"_s, Boxes(0)).Reason(), print_text::kNoBoxes);
  ASSERT_TRUE(SaveTemplate(folder, u"t"_s, Boxes(1)));
  const QByteArray before = test::Scratch::Read(scratch.Path("t.iev"));
  // No record can be written where a folder stands.
  ASSERT_TRUE(QFile::remove(scratch.Path("t.txt")));
  ASSERT_TRUE(QDir().mkpath(scratch.Path("t.txt")));
  ASSERT_TRUE(QDir().mkpath(scratch.Path("new.txt")));
  EXPECT_FALSE(SaveTemplate(folder, u"t"_s, Boxes(2)));
  EXPECT_EQ(test::Scratch::Read(scratch.Path("t.iev")), before);
  EXPECT_FALSE(SaveTemplate(folder, u"new"_s, Boxes(2)));
  EXPECT_FALSE(QFile::exists(scratch.Path("new.iev")));
}

TEST(StandardTemplates, FillTheirPaperWithoutTouching) {
  QStringList names;
  for (const StandardTemplate& standard : StandardTemplates()) {
    EXPECT_FALSE(names.contains(standard.name));
    names.append(standard.name);
    const auto boxes = BoxesOf(standard.layout);
    EXPECT_FALSE(IsOutsidePaper(standard.layout.objects, standard.layout.ids,
                                PaperOfSheet(standard.layout.sheet), Unit::Millimetres))
        << standard.name.toStdString();
    for (std::size_t i = 0; i < boxes.size(); ++i)
      for (std::size_t k = 0; k < i; ++k)
        EXPECT_FALSE(boxes[i].intersects(boxes[k])) << standard.name.toStdString();
    double covered = 0;
    for (const QRectF& box : boxes)
      covered += box.width() * box.height();
    const QSize sheet = standard.layout.sheet;
    const double least = standard.name.startsWith(u"Full page"_s)  ? 0.8
                         : standard.name.startsWith(u"Passport"_s) ? 0.2
                                                                   : 0.5;
    EXPECT_GT(covered, least * sheet.width() * sheet.height()) << standard.name.toStdString();
  }
  EXPECT_EQ(names.size(), 14);
}

}  // namespace
}  // namespace zqm
