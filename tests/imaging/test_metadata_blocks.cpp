// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <exiv2/exiv2.hpp>

#include "imaging/fraction.h"
#include "imaging/iptc_list.h"
#include "imaging/metadata_writer.h"
#include "imaging/photo_reader.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

TEST(SimplestFraction, IsWhatACameraWouldHaveWritten) {
  const struct {
    float value;
    std::uint32_t top, bottom;
  } cases[] = {{0.004F, 1, 250}, {1.0F / 3, 1, 3},      {2.8F, 14, 5}, {5.0F, 5, 1},
               {0.0F, 0, 1},     {-1.0F, 0, 1},         {0.3F, 3, 10}, {24.5F, 49, 2},
               {NAN, 0, 1},      {1.0F / 8000, 1, 8000}};
  for (const auto& c : cases) {
    const Fraction fraction = SimplestFraction(c.value);
    EXPECT_EQ(fraction.top, c.top) << c.value;
    EXPECT_EQ(fraction.bottom, c.bottom) << c.value;
  }
}

TEST(SimplestFraction, KeepsTheThirtyTwoBitValue) {
  for (const float value : {0.0166667F, 3.14159274F, 6543.21F, 1e-6F, 16777216.0F, 0.99999994F}) {
    const Fraction fraction = SimplestFraction(value);
    EXPECT_EQ(static_cast<float>(double(fraction.top) / fraction.bottom), value);
  }
}

QByteArray Dataset(int record, int dataset, const QByteArray& bytes) {
  QByteArray item("\x1C");
  item.append(char(record)).append(char(dataset));
  return item.append(char(bytes.size() >> 8)).append(char(bytes.size() & 0xFF)).append(bytes);
}

TEST(IptcList, RoundTripKeepsOrderRepeatsAndUnknownBytes) {
  QByteArray block = Dataset(1, 0, QByteArray("\0\4", 2)) + Dataset(2, 25, "one") +
                     Dataset(2, 25, "two") + Dataset(2, 200, QByteArray("\xFF\x00\x1C", 3)) +
                     Dataset(7, 1, "other record");
  EXPECT_EQ(IptcList::Parse(Bytes(block)).ToBlock(), block);
  const QByteArray large =
      QByteArray("\x1C\x02\x78\x80\x04\x00\x00\x90\x00", 9) + QByteArray(0x9000, 'x');
  EXPECT_EQ(IptcList::Parse(Bytes(large)).ToBlock(), large);
}

TEST(IptcList, ReadsByTheCodedCharacterSet) {
  const QByteArray umlautLatin("Gr\xFC\xDF"), umlautUtf8("Gr\xC3\xBC\xC3\x9F");
  const struct {
    QByteArray marker, bytes;
    QString expected;
  } cases[] = {{"", umlautLatin, u"Grüß"_s},
               {"", umlautUtf8, u"Grüß"_s},
               {"\x1B%G", umlautUtf8, u"Grüß"_s},
               {"\x1B%G", umlautLatin, u"Grüß"_s},
               {"\x1B.A", umlautUtf8, QString::fromLatin1(umlautUtf8)}};
  for (const auto& c : cases) {
    QByteArray block = c.marker.isEmpty() ? QByteArray() : Dataset(1, 90, c.marker);
    block += Dataset(2, 90, c.bytes);
    const IptcList list = IptcList::Parse(Bytes(block));
    EXPECT_EQ(list.Get(list.Find(2, 90)), c.expected) << c.marker.toHex().constData();
  }
}

TEST(IptcList, AddingTextTranscodesTheOthersButNoBinary) {
  const QByteArray block =
      Dataset(2, 90, "Gr\xFC\xDF") + Dataset(2, 0, "\xFF\x02") + Dataset(2, 5, "a");
  IptcList list = IptcList::Parse(Bytes(block));
  list.Add(2, 105, u"Žižkov"_s);
  const IptcList again = IptcList::Parse(Bytes(list.ToBlock()));
  EXPECT_EQ(again.Items().front().bytes, "\x1B%G");
  EXPECT_EQ(again.Items()[static_cast<std::size_t>(again.Find(2, 90))].bytes, "Gr\xC3\xBC\xC3\x9F");
  EXPECT_EQ(again.Items()[static_cast<std::size_t>(again.Find(2, 0))].bytes, "\xFF\x02");
  EXPECT_EQ(again.Get(again.Find(2, 105)), u"Žižkov"_s);
  EXPECT_EQ(again.Get(again.Find(2, 106)), QString());
}

TEST(IptcList, BrokenBlocksGiveWhatIsWhole) {
  const QByteArray good = Dataset(2, 5, "whole");
  for (const QByteArray& tail :
       {QByteArray("\x1C"),
        QByteArray("\x1C\x02\x19\x00\xFF"
                   "cut",
                   8),
        QByteArray("\x1C\x02\x19\xFF\xFF\x01\x01\x01", 8), QByteArray("\0\0\0\0\0\0\0", 7)}) {
    const IptcList list = IptcList::Parse(Bytes(good + tail));
    ASSERT_EQ(list.Count(), 1) << tail.toHex().constData();
    EXPECT_EQ(list.Get(0), u"whole"_s);
  }
}

class PhotoFiles : public ::testing::Test {
 protected:
  FileParameters Read(const QByteArray& jpeg) {
    const QString path = scratch_.Write(u"photo.jpg"_s, jpeg);
    const Result<PhotoFile> photo = ReadPhotoFile(path, ReadRequest());
    EXPECT_TRUE(photo) << photo.Reason().toStdString();
    return photo ? photo->parameters : FileParameters();
  }
  test::Scratch scratch_;
};

TEST_F(PhotoFiles, PropertiesRoundTripThroughAFile) {
  const test::Properties written = {{u"EXIF_Make", u"Aurora"},
                                    {u"EXIF_UserComment", u"Größe λ 😀 ü"},
                                    {u"EXIF_ExposureTime", u"0.004"},
                                    {u"EXIF_ExposureBiasValue", u"-0.5"},
                                    {u"EXIF_ISOSpeedRatings0", u"102400"},
                                    {u"EXIF_GPSVersionID", u"2.3.0.0"},
                                    {u"EXIF_GPSLatitudeRef", u"N"},
                                    {u"EXIF_GPSLatitudeDegrees", u"47"},
                                    {u"EXIF_GPSLatitudeMinutes", u"4"},
                                    {u"EXIF_GPSLatitudeSeconds", u"15.5"},
                                    {u"EXIF_GPSAltitudeRef", u"1"}};
  const FileParameters read = Read(test::SampleJpeg(60, 40, written, {{25, u"Graz"}, {25, u"b"}}));
  for (const auto& [key, value] : written)
    EXPECT_EQ(read.GetIOProperty(key), QString::fromUtf16(value))
        << qUtf8Printable(QString::fromUtf16(key));
  EXPECT_EQ(read.GetIOProperty(u"exif_MAKE"), u"Aurora"_s);
  EXPECT_EQ(read.GetIOProperty(u"WIDTH"), u"60"_s);
  EXPECT_EQ(read.GetIOProperty(u"FILETYPE"), u"3"_s);
  EXPECT_EQ(read.GetIOProperty(u"EXIF_HASEXIF"), u"1"_s);
  EXPECT_EQ(read.Iptc().Get(read.Iptc().Find(2, 25)), u"Graz"_s);
}

TEST_F(PhotoFiles, AbsentNumbersAreZeroAndAbsentTextsEmpty) {
  const FileParameters read = Read(test::SampleJpeg(16, 16));
  EXPECT_EQ(read.GetIOProperty(u"EXIF_HASEXIF"), u"0"_s);
  EXPECT_EQ(read.GetIOProperty(u"EXIF_Make"), QString());
  for (const char16_t* number : {u"EXIF_ExposureTime", u"EXIF_Flash", u"EXIF_GPSAltitude",
                                 u"EXIF_GPSAltitudeRef", u"COLORMAPCOUNT"})
    EXPECT_EQ(read.GetIOProperty(number), u"0"_s) << qUtf8Printable(QString::fromUtf16(number));
  EXPECT_EQ(read.GetIOProperty(u"JPEG_QUALITY"), QString());
}

TEST_F(PhotoFiles, OddTagsOfOtherWritersAreRead) {
  Exiv2::ExifData data;
  Exiv2::URationalValue overZero(Exiv2::URational(5, 0));
  data["Exif.Photo.FNumber"].setValue(&overZero);
  data["Exif.Image.Artist"] = "J\xF6rg";  // Latin-1
  Exiv2::URationalValue third(Exiv2::URational(1, 3));
  data["Exif.Photo.ExposureTime"].setValue(&third);
  Exiv2::URationalValue dots(Exiv2::URational(100, 1));
  data["Exif.Image.XResolution"].setValue(&dots);
  data["Exif.Image.ResolutionUnit"] = std::uint16_t{3};
  Exiv2::Blob blob;
  Exiv2::ExifParser::encode(blob, Exiv2::bigEndian, data);
  const QByteArray exif("Exif\0\0" + 0, 6);
  QByteArray segment("\xFF\xE1");
  const auto length = blob.size() + 8;
  segment.append(char(length >> 8)).append(char(length & 0xFF)).append(exif);
  segment.append(reinterpret_cast<const char*>(blob.data()), qsizetype(blob.size()));
  // No JFIF segment, so that the density comes from EXIF.
  QByteArray jpeg = test::SampleJpeg(16, 16);
  const int jfif = 2 + (uchar(jpeg[4]) << 8 | uchar(jpeg[5]));
  if (jpeg[3] == '\xE0') jpeg.remove(2, jfif);
  const FileParameters read = Read(jpeg.insert(2, segment));
  EXPECT_EQ(read.GetIOProperty(u"EXIF_Fnumber"), u"0"_s);
  EXPECT_EQ(read.GetIOProperty(u"EXIF_Artist"), u"Jörg"_s);
  EXPECT_TRUE(read.GetIOProperty(u"EXIF_ExposureTime").startsWith(u"0.333333333333"));
  EXPECT_EQ(read.GetIOProperty(u"DPIX"), u"254"_s);
  EXPECT_EQ(read.GetIOProperty(u"DPIY"), u"0"_s);
}

TEST_F(PhotoFiles, SplicingMetadataLeavesTheCompressedPictureAlone) {
  const QByteArray plain = test::SampleJpeg(40, 30);
  const QByteArray rich = test::SampleJpeg(40, 30, {{u"EXIF_Make", u"Aurora"}}, {{5, u"Name"}});
  const qsizetype scan = plain.indexOf("\xFF\xDB");
  EXPECT_TRUE(rich.endsWith(plain.sliced(scan)));
  EXPECT_FALSE(WithMetadata("GIF89a", FileParameters()));
  FileParameters huge;
  huge.SetIOProperty(u"EXIF_ImageDescription", QString(70000, u'x'));
  EXPECT_FALSE(WithMetadata(plain, huge));
}

TEST_F(PhotoFiles, WhatIsNoPhotoHasAReason) {
  const struct {
    QString path, reason;
  } cases[] = {
      {scratch_.Path(u"gone.jpg"_s), u"File is offline or missing"_s},
      {scratch_.Write(u"text.jpg"_s, "just words"), u"File could not be read as an image"_s},
      {scratch_.Write(u"empty.jpg"_s, ""), u"File could not be read as an image"_s}};
  for (const auto& c : cases) {
    const Result<PhotoFile> photo = ReadPhotoFile(c.path, ReadRequest());
    ASSERT_FALSE(photo);
    EXPECT_EQ(photo.Reason(), c.reason);
  }
}

}  // namespace
}  // namespace zqm
