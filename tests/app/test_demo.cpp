// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <cmath>

#include "app/demo/draw_samples.h"
#include "imaging/picture.h"
#include "shell/files.h"
#include "tests/support/scratch.h"

namespace zqm::demo {
namespace {

using namespace Qt::StringLiterals;
using test::Scratch;

QImage Grey(const QSize& size) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(Qt::gray);
  return image;
}

Sample SmallSample(const char16_t* name) {
  return {name,
          {32, 24},
          Grey,
          {{u"EXIF_Make", u"Aurora"}, {u"EXIF_DateTimeOriginal", u"2020:10:03 00:12:33"}},
          Position{-33.5, 18.25, 12.5, 90},
          {{90, u"Gm\u00FCnd"}, {25, u"one"}, {25, u"two"}}};
}

// Sums of light in a grid of 8 x 8 fields: enough to see whether a picture has something in it.
double Spread(const QImage& image) {
  const QImage small = image.scaled(8, 8, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  double sum = 0, squares = 0;
  for (int i = 0; i < 64; ++i) {
    const int grey = qGray(small.pixel(i % 8, i / 8));
    sum += grey;
    squares += grey * grey;
  }
  return std::sqrt(squares / 64 - sum / 64 * sum / 64);
}

TEST(DemoSamples, EveryMotifIsAPictureOfItsSizeAndRepeatable) {
  for (const Sample& sample : Samples()) {
    SCOPED_TRACE(QString::fromUtf16(sample.name).toStdString());
    const QSize size = sample.size / 40;
    const QImage once = sample.draw(size);
    EXPECT_EQ(once.size(), size);
    EXPECT_GT(Spread(once), 5);
    EXPECT_EQ(once, sample.draw(size));
  }
}

TEST(DemoSamples, NamesAreSafeAndDistinctAndTheSetIsVaried) {
  QStringList names;
  qsizetype withoutPosition = 0, portraits = 0;
  for (const Sample& sample : Samples()) {
    names.append(QString::fromUtf16(sample.name));
    EXPECT_TRUE(CheckIfValidFN(names.last()) && names.last().endsWith(u".jpg"_s));
    const int pixels = sample.size.width() * sample.size.height();
    EXPECT_TRUE(pixels >= 3'000'000 && pixels <= 12'000'000) << names.last().toStdString();
    withoutPosition += sample.position ? 0 : 1;
    portraits += sample.size.height() > sample.size.width() ? 1 : 0;
  }
  names.removeDuplicates();
  EXPECT_EQ(names.size(), qsizetype(Samples().size()));
  EXPECT_GT(withoutPosition, 1);
  EXPECT_GT(portraits, 1);
}

TEST(DemoFiles, CarryTheirMetadataAndLeaveOtherFilesAlone) {
  const Scratch scratch;
  const QString own = scratch.Path("new/deep/a.jpg");
  const QString foreign = scratch.Write("new/deep/b.jpg", "the user's");
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_EQ(DrawSamples({SmallSample(u"a.jpg"), SmallSample(u"b.jpg")}, scratch.Path("new/deep"),
                        Console(true)),
            1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            foreign.toStdString() + ": File already exists\n");
  const auto told = QByteArray::fromStdString(testing::internal::GetCapturedStdout());
  EXPECT_EQ(QJsonDocument::fromJson(told).array(), QJsonArray{own});
  EXPECT_EQ(Scratch::Read(foreign), "the user's");

  Picture picture;
  ASSERT_TRUE(picture.LoadFromFile(own));
  const FileParameters& read = picture.Parameters();
  const std::pair<const char16_t*, const char16_t*> expected[] = {
      {u"WIDTH", u"32"},
      {u"EXIF_Make", u"Aurora"},
      {u"EXIF_GPSLatitudeRef", u"S"},
      {u"EXIF_GPSLatitudeDegrees", u"33"},
      {u"EXIF_GPSLatitudeMinutes", u"30"},
      {u"EXIF_GPSLongitudeRef", u"E"},
      {u"EXIF_GPSLongitudeMinutes", u"15"},
      {u"EXIF_GPSAltitude", u"12.5"},
      {u"EXIF_GPSTimeStampHour", u"23"},
      // The hour before midnight belongs to the day before.
      {u"EXIF_GPSDateStamp", u"2020:10:02"},
  };
  for (const auto& [key, value] : expected)
    EXPECT_EQ(read.GetIOProperty(key), QString::fromUtf16(value))
        << QString::fromUtf16(key).toStdString();
  EXPECT_EQ(read.Iptc().Get(read.Iptc().Find(2, 90)), u"Gm\u00FCnd"_s);
}

TEST(DemoFiles, OneThatCannotBeWrittenIsNamedAndTheRestIsDrawn) {
  const Scratch scratch;
  scratch.Write("blocked.jpg/inside", "");
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_EQ(DrawSamples({SmallSample(u"blocked.jpg"), SmallSample(u"fine.jpg")}, scratch.Path(),
                        Console(false)),
            1);
  const std::string told = testing::internal::GetCapturedStdout();
  EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("blocked.jpg: "));
  EXPECT_THAT(told, testing::HasSubstr("1 photo drawn"));
  EXPECT_TRUE(FileExists(scratch.Path("fine.jpg")));

  testing::internal::CaptureStderr();
  const QString file = scratch.Write("file", "");
  EXPECT_EQ(DrawSamples({SmallSample(u"c.jpg")}, file, Console(false)), 1);
  EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("file: "));
}

}  // namespace
}  // namespace zqm::demo
