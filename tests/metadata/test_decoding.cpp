// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "metadata/decoding.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

FileParameters WithExif(const char16_t* key, const char16_t* value) {
  FileParameters parameters;
  parameters.SetIOProperty(u"EXIF_HASEXIF", u"1"_s);
  parameters.SetIOProperty(key, QString::fromUtf16(value));
  return parameters;
}

QString TextOf(const std::vector<DecodedField>& fields, QStringView caption) {
  for (const DecodedField& decoded : fields)
    if (QStringView(decoded.field->caption) == caption) return decoded.text;
  ADD_FAILURE() << "no field " << caption.toString().toStdString();
  return QString();
}

struct ExifCase {
  const char16_t* key;
  const char16_t* value;
  const char16_t* caption;
  const char16_t* expected;
};

void ExpectAll(std::span<const ExifCase> cases, DecodeFor target) {
  for (const ExifCase& c : cases) {
    const DecodedExif decoded = DecodeExif(WithExif(c.key, c.value), target);
    EXPECT_EQ(TextOf(decoded.fields, c.caption).toStdString(),
              QString::fromUtf16(c.expected).toStdString())
        << QString::fromUtf16(c.key).toStdString() << " = "
        << QString::fromUtf16(c.value).toStdString();
  }
}

constexpr ExifCase kNumbers[] = {
    {u"EXIF_ShutterSpeedValue", u"0", u"Shutter Speed", u"1 sec"},
    {u"EXIF_ShutterSpeedValue", u"1", u"Shutter Speed", u"0.5 sec"},
    {u"EXIF_ShutterSpeedValue", u"1.0001", u"Shutter Speed", u"1/2 sec"},
    {u"EXIF_ShutterSpeedValue", u"7.965784", u"Shutter Speed", u"1/250 sec"},
    {u"EXIF_ShutterSpeedValue", u"-1", u"Shutter Speed", u"2 sec"},
    {u"EXIF_ShutterSpeedValue", u"-1.5", u"Shutter Speed", u"2.83 sec"},
    {u"EXIF_ShutterSpeedValue", u"0.5", u"Shutter Speed", u"0.71 sec"},
    {u"EXIF_ShutterSpeedValue", u"-129", u"Shutter Speed", u"1 sec"},
    {u"EXIF_ShutterSpeedValue", u"-400", u"Shutter Speed", u"1 sec"},
    {u"EXIF_ShutterSpeedValue", u"200", u"Shutter Speed", u"1 sec"},
    {u"EXIF_ExposureTime", u"0", u"Exposure Time", u""},
    {u"EXIF_ExposureTime", u"0.5", u"Exposure Time", u"0.5 sec"},
    {u"EXIF_ExposureTime", u"0.49", u"Exposure Time", u"1/2 sec"},
    {u"EXIF_ExposureTime", u"0.4", u"Exposure Time", u"1/2 sec"},
    {u"EXIF_ExposureTime", u"0.3", u"Exposure Time", u"1/3 sec"},
    {u"EXIF_ExposureTime", u"1", u"Exposure Time", u"1 sec"},
    {u"EXIF_ExposureTime", u"2.345", u"Exposure Time", u"2.35 sec"},
    {u"EXIF_ApertureValue", u"4", u"Lens Aperture", u"F/4"},
    {u"EXIF_ApertureValue", u"3", u"Lens Aperture", u"F/2.8"},
    {u"EXIF_ApertureValue", u"0", u"Lens Aperture", u""},
    {u"EXIF_MaxApertureValue", u"1000000", u"Max Aperture Value", u""},
    {u"EXIF_FocalLength", u"24.5", u"Focal Length", u"24.5 mm"},
    {u"EXIF_FocalLength", u"0", u"Focal Length", u""},
    {u"EXIF_Fnumber", u"2.8", u"F-number", u"F/2.8"},
    {u"EXIF_Fnumber", u"0", u"F-number", u""},
    {u"EXIF_ExposureBiasValue", u"0", u"Exposure Compensation", u"0 Ev"},
    {u"EXIF_ExposureBiasValue", u"-0.333333", u"Exposure Compensation", u"-0.33 Ev"},
    {u"EXIF_ExposureBiasValue", u"1.666667", u"Exposure Compensation", u"1.67 Ev"},
    {u"EXIF_ExposureBiasValue", u"2", u"Exposure Compensation", u"2 Ev"},
    {u"EXIF_ISOSpeedRatings0", u"400", u"ISO-Speed", u"ISO-400"},
    {u"EXIF_ISOSpeedRatings0", u"0", u"ISO-Speed", u""},
    {u"EXIF_FocalPlaneXResolution", u"5715.5546", u"Focal Plane X Resolution", u"5715.56"},
    {u"EXIF_FocalPlaneXResolution", u"0", u"Focal Plane X Resolution", u""},
    {u"EXIF_SubjectDistance", u"0", u"Distance To Focus Point", u"Unknown"},
    {u"EXIF_SubjectDistance", u"1.78", u"Distance To Focus Point", u"1.78 m"},
    {u"EXIF_CompressedBitsPerPixel", u"0", u"Compressed BPP", u"0"},
    {u"EXIF_DigitalZoomRatio", u"0", u"Digital Zoom Ratio", u""},
    {u"EXIF_BrightnessValue", u"-1.25", u"Brightness Value", u"-1.25"},
};

constexpr ExifCase kWords[] = {
    {u"EXIF_Make", u"Aurora", u"Exposure Mode", u"Auto exposure"},
    {u"EXIF_MeteringMode", u"255", u"Metering Mode", u"Other"},
    {u"EXIF_MeteringMode", u"7", u"Metering Mode", u"7"},
    {u"EXIF_SceneCaptureType", u"7", u"Scene Capture Type", u"Unknown"},
    {u"EXIF_Orientation", u"0", u"Orientation", u""},
    {u"EXIF_Orientation", u"6", u"Orientation", u"Right side top"},
    {u"EXIF_ColorSpace", u"65535", u"Colorspace", u"Uncalibrated"},
    {u"EXIF_SensingMethod", u"6", u"Sensing Method", u"6"},
    {u"EXIF_ResolutionUnit", u"2", u"Resolution Unit", u"Inch"},
    {u"EXIF_LightSource", u"12", u"Light Source", u"Daylight fluorescent (D 5700 - 7100K)"},
    {u"EXIF_Flash", u"5", u"Flash Mode", u"Flash fired but strobe return light not detected "},
    {u"EXIF_Flash", u"71", u"Flash Mode",
     u"Flash firedwith Red-eye reduction and strobe return light detected"},
    {u"EXIF_Make", u"0", u"Camera Make", u""},
};

TEST(DecodeExif, NumbersFollowTheirRules) {
  ExpectAll(kNumbers, DecodeFor::Record);
}
TEST(DecodeExif, CodesBecomeWords) {
  ExpectAll(kWords, DecodeFor::Panel);
}

TEST(DecodeExif, DatesAreTheUsersOnThePanelAndTheFilesInTheRecord) {
  constexpr ExifCase kPanel[] = {
      {u"EXIF_DateTimeOriginal", u"2007:12:31 23:59:59", u"Date/Time Original",
       u"12/31/2007 11:59:59 PM"},
      {u"EXIF_DateTimeOriginal", u"0000:00:00 00:00:00", u"Date/Time Original",
       u"0000/00/00 00:00:00"},
      {u"EXIF_DateTimeDigitized", u"yesterday", u"Date/Time Digitized", u"yesterday"}};
  constexpr ExifCase kRecord[] = {{u"EXIF_DateTimeOriginal", u"2007:12:31 23:59:59",
                                   u"Date/Time Original", u"2007:12:31 23:59:59"},
                                  {u"EXIF_SubsecTime", u"0.5", u"Sub-Second Time", u"0.5"}};
  ExpectAll(kPanel, DecodeFor::Panel);
  ExpectAll(kRecord, DecodeFor::Record);
}

TEST(DecodeExif, ADecimalCommaLocaleShowsCommas) {
  const test::ScopedLocale austria(QLocale(QLocale::German, QLocale::Austria));
  constexpr ExifCase kCases[] = {
      {u"EXIF_ExposureTime", u"2.345", u"Exposure Time", u"2,35 sec"},
      {u"EXIF_ApertureValue", u"3", u"Lens Aperture", u"F/2,8"},
      {u"EXIF_ApertureValue", u"4", u"Lens Aperture", u"F/4"},
      {u"EXIF_ExposureBiasValue", u"5", u"Exposure Compensation", u"5 Ev"},
      {u"EXIF_ExposureBiasValue", u"-0.333333", u"Exposure Compensation", u"-0,33 Ev"},
      {u"EXIF_SubsecTime", u"0.5", u"Sub-Second Time", u"0,5"}};
  ExpectAll(kCases, DecodeFor::Panel);
  FileParameters gps = WithExif(u"EXIF_GPSLatitudeSeconds", u"15.5");
  EXPECT_EQ(TextOf(DecodeGps(gps), u"Latitude Seconds"), u"15,5"_s);
  EXPECT_EQ(TextOf(DecodeGps(gps), u"Degree of Precision"), u"0"_s);
}

TEST(DecodeExif, PlainNumbersStandBesideTheDisplay) {
  const struct {
    const char16_t *key, *value;
    Plain slot;
    const char16_t* expected;
  } cases[] = {{u"EXIF_ShutterSpeedValue", u"7.965784", Plain::ShutterDenominator, u"250"},
               {u"EXIF_ShutterSpeedValue", u"7.965784", Plain::ShutterSeconds, u""},
               {u"EXIF_ShutterSpeedValue", u"0", Plain::ShutterSeconds, u"1"},
               {u"EXIF_ApertureValue", u"4", Plain::LensAperture, u"4"},
               {u"EXIF_FocalLength", u"0", Plain::FocalLength, u""},
               {u"EXIF_SubjectDistance", u"0", Plain::FocusDistance, u"Unknown"},
               {u"EXIF_ExposureTime", u"0.004", Plain::ExposureDenominator, u"250"},
               {u"EXIF_ExposureTime", u"2", Plain::ExposureSeconds, u"2"},
               {u"EXIF_ExposureBiasValue", u"-0.333333", Plain::ExposureCompensation, u"-0.33"}};
  for (const auto& c : cases) {
    const DecodedExif decoded = DecodeExif(WithExif(c.key, c.value), DecodeFor::Panel);
    EXPECT_EQ(decoded.plain[static_cast<std::size_t>(c.slot)], QString::fromUtf16(c.expected))
        << QString::fromUtf16(c.key).toStdString() << " "
        << QString::fromUtf16(c.value).toStdString();
  }
}

TEST(DecodeExif, AFileWithoutExifHasNoExifAndNoGpsButIptc) {
  FileParameters parameters;
  parameters.Iptc().Add(2, 10, u"8"_s);
  parameters.Iptc().Add(2, 90, u"Graz"_s);
  parameters.Iptc().Add(2, 90, u"Wien"_s);
  EXPECT_TRUE(DecodeExif(parameters, DecodeFor::Record).fields.empty());
  EXPECT_TRUE(DecodeGps(parameters).empty());
  const auto iptc = DecodeIptc(parameters);
  EXPECT_EQ(TextOf(iptc, u"Urgency"), u"8 (least urgent)"_s);
  EXPECT_EQ(TextOf(iptc, u"City"), u"Graz"_s);
  EXPECT_EQ(TextOf(iptc, u"Headline"), QString());
}

TEST(DecodeIptc, EachDatasetHasItsColumn) {
  constexpr std::pair<int, Column> kDatasets[] = {{120, Column::Caption},
                                                  {122, Column::Writer},
                                                  {105, Column::Headline},
                                                  {40, Column::SpecialInstructions},
                                                  {25, Column::KeywordsIptc},
                                                  {10, Column::Urgency},
                                                  {15, Column::Category},
                                                  {20, Column::OtherCategories},
                                                  {116, Column::CopyrightIptc},
                                                  {80, Column::AuthorIptc},
                                                  {85, Column::AuthorTitle},
                                                  {110, Column::Credit},
                                                  {115, Column::Source},
                                                  {5, Column::ObjectName},
                                                  {55, Column::DateCreatedIptc},
                                                  {30, Column::ReleasedDate},
                                                  {90, Column::City},
                                                  {95, Column::State},
                                                  {100, Column::CountryCode},
                                                  {101, Column::CountryName},
                                                  {103, Column::JobIdentifier}};
  FileParameters parameters;
  for (const auto& [dataset, column] : kDatasets)
    parameters.Iptc().Add(2, dataset, QString::number(dataset * 7));
  std::map<Column, QString> decoded;
  for (const DecodedField& field : DecodeIptc(parameters))
    decoded[field.field->column.value()] = field.text;
  EXPECT_EQ(decoded.size(), std::size(kDatasets));
  for (const auto& [dataset, column] : kDatasets)
    EXPECT_EQ(decoded[column], QString::number(dataset * 7)) << dataset;
}

TEST(DecodeGps, LettersBecomeWordsOnlyInCapitals) {
  const struct {
    const char16_t *key, *value, *caption, *expected;
  } cases[] = {
      {u"EXIF_GPSLatitudeRef", u"N", u"Latitude Reference", u"North Latitude"},
      {u"EXIF_GPSLatitudeRef", u"n", u"Latitude Reference", u"n"},
      {u"EXIF_GPSDestLatitudeRef", u"S", u"Destination Latitude Reference", u"South latitude"},
      {u"EXIF_GPSMeasureMode", u"3", u"Measure Mode", u"Three-dimensional"},
      {u"EXIF_GPSTrackRef", u"M", u"Track Reference", u"Magnetic direction"},
      {u"EXIF_GPSDestDistanceRef", u"N", u"Destination Distance Reference", u"Knots"},
      {u"EXIF_GPSAltitude", u"353.25", u"Altitude (m)", u"353.25"}};
  for (const auto& c : cases)
    EXPECT_EQ(TextOf(DecodeGps(WithExif(c.key, c.value)), c.caption),
              QString::fromUtf16(c.expected));
}

}  // namespace
}  // namespace zqm
