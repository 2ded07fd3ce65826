// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/design_pictures.h"
#include "tests/support/scratch.h"

namespace zqm {
namespace {

TEST(DesignPictures, AreDrawnWhenMissingAndOtherwiseTheUsers) {
  const test::Scratch scratch;
  const QImage sheet = CanvasPicture(scratch.Path(), {300, 500});
  EXPECT_TRUE(sheet.size() == QSize(300, 500));
  EXPECT_EQ(ColourAt(sheet, {150, 250}), QColor(Qt::white));
  EXPECT_TRUE(QFile::exists(scratch.Path("Canvas.jpg")));
  // A poster doesn't cost a poster's pixels.
  EXPECT_TRUE(CanvasPicture(scratch.Path(), {32767, 16384}).size() == QSize(2000, 1000));

  QImage two(2, 1, QImage::Format_RGB32);
  two.setPixelColor(0, 0, QColor(1, 2, 3));
  two.setPixelColor(1, 0, QColor(4, 5, 6));
  ASSERT_TRUE(two.save(scratch.Path("Palette.png")));
  const QImage palette = PalettePicture(scratch.Path());
  EXPECT_EQ(ColourAt(palette, {-9, 7}), QColor(1, 2, 3));
  EXPECT_EQ(ColourAt(palette, {0.9, 0}), QColor(1, 2, 3));
  EXPECT_EQ(ColourAt(palette, {99, -7}), QColor(4, 5, 6));
  // What can't be read is left alone.
  scratch.Write("Palette.png", "no picture");
  EXPECT_FALSE(PalettePicture(scratch.Path()).isNull());
  EXPECT_EQ(test::Scratch::Read(scratch.Path("Palette.png")), "no picture");
  EXPECT_FALSE(PalettePicture(scratch.Path("nowhere")).isNull());
}

}  // namespace
}  // namespace zqm
