// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "imaging/photo_reader.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"
#include "viewers/compare.h"

using namespace Qt::StringLiterals;

namespace zqm::test {
namespace {

TEST(Compare, LinesThatDifferAndLinesThatDoNot) {
  const Scratch scratch;
  const auto info = [&](const char* name, const QByteArray& jpeg) {
    const QString path = scratch.Write(name, jpeg);
    return FilePhotoInfo(path, *ReadPhotoFile(path, {}));
  };
  const PhotoInfo left = info(
      "a.jpg", SampleJpeg(320, 200, {{u"EXIF_Make", u"Zorki"}, {u"EXIF_ExposureTime", u"0.004"}},
                          {{80, u"Mara"}}));
  const PhotoInfo right = info(
      "b.jpg", SampleJpeg(320, 100, {{u"EXIF_Make", u"Zorki"}, {u"EXIF_ExposureTime", u"0.5"}}));
  std::map<QString, ComparedLine> lines;
  for (const ComparedLine& line : CompareInfo(left, right)) {
    EXPECT_TRUE(lines.emplace(line.caption, line).second)
        << "twice: " << line.caption.toStdString();
    EXPECT_FALSE(line.left.isEmpty() && line.right.isEmpty());
  }
  EXPECT_FALSE(lines[u"Camera Make"_s].Differs());
  EXPECT_FALSE(lines[u"Width"_s].Differs());
  EXPECT_EQ(lines[u"Height"_s].right, u"100 Pixels"_s);
  EXPECT_EQ(lines[u"Exposure Time"_s].left, u"1/250 sec"_s);
  EXPECT_TRUE(lines[u"Exposure Time"_s].Differs());
  EXPECT_EQ(lines[u"IPTC Author"_s].left, u"Mara"_s);
  EXPECT_EQ(lines[u"IPTC Author"_s].right, QString());
  EXPECT_FALSE(lines.contains(u"Author"_s));
}

TEST(Compare, AStepLeavesOutThePhotoOfTheOtherSide) {
  const struct {
    int position, step, taken, count, next;
  } cases[] = {{0, 1, 1, 3, 2}, {2, -1, 1, 3, 0}, {0, 1, 1, 2, 0},  {2, 1, 0, 3, 2},
               {0, 1, 2, 3, 1}, {-1, 1, 0, 3, 1}, {3, -1, 2, 3, 1}, {1, -1, 0, 3, 1}};
  for (const auto& c : cases)
    EXPECT_EQ(StepAround(c.position, c.step, c.taken, c.count), c.next)
        << c.position << ' ' << c.step << ' ' << c.taken;
}

}  // namespace
}  // namespace zqm::test
