// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "tests/support/eventually.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"
#include "viewers/photos_ahead.h"
#include "viewers/upright.h"

using namespace Qt::StringLiterals;

namespace zqm::test {
namespace {

/// Upper left, upper right, lower left, lower right.
std::string Corners(const QImage& image) {
  const int right = image.width() - 1, bottom = image.height() - 1;
  std::string corners;
  for (const QPoint& at :
       {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)})
    corners += static_cast<char>(qGreen(image.pixel(at)));
  return corners;
}

TEST(Upright, EachTagPutsTheCornersWhereTheCameraSawThem) {
  constexpr const char* kSeen[] = {"ABCD", "BADC", "DCBA", "CDAB", "ACBD", "CADB", "DBCA", "BDAC"};
  for (const auto format : {QImage::Format_RGB32, QImage::Format_Grayscale8}) {
    QImage stored(5, 3, QImage::Format_RGB32);
    stored.fill(Qt::black);
    const auto put = [&stored](int x, int y, char c) { stored.setPixel(x, y, qRgb(c, c, c)); };
    put(0, 0, 'A');
    put(4, 0, 'B');
    put(0, 2, 'C');
    put(4, 2, 'D');
    stored = stored.convertToFormat(format);
    for (int tag = 1; tag <= 8; ++tag) {
      const QImage seen = Upright(stored, tag);
      EXPECT_EQ(Corners(seen), kSeen[tag - 1]) << tag;
      EXPECT_EQ(seen.size(), UprightSize(stored.size(), tag)) << tag;
      EXPECT_EQ(seen.format(), format) << tag;
    }
    for (const int unknown : {0, 9, -1})
      EXPECT_EQ(Upright(stored, unknown), stored);
  }
  EXPECT_TRUE(Upright(QImage(), 6).isNull());
}

TEST(Upright, PhotosAreReadAheadTheWayTheyAreWanted) {
  const Scratch scratch;
  const QString path =
      scratch.Write("tall.jpg", SampleJpeg(400, 200, {{u"EXIF_Orientation", u"6"}}));
  PhotosAhead ahead{ReadRequest{}};
  const auto read = [&](bool upright) {
    ahead.SetUpright(upright);
    ahead.Want({path});
    EXPECT_TRUE(Eventually([&] { return ahead.Get(path) != nullptr; }));
    return std::pair((*ahead.Get(path))->image.size(), (*ahead.Get(path))->fullSize);
  };
  ahead.SetBox({100, 100});
  EXPECT_EQ(read(false), std::pair(QSize(100, 50), QSize(400, 200)));
  EXPECT_EQ(read(true), std::pair(QSize(50, 100), QSize(200, 400)));
}

}  // namespace
}  // namespace zqm::test
