// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/decoding.h"

#include <cmath>

#include "metadata/value_tables.h"
#include "shell/dates.h"
#include "shell/locale_info.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// What a rule has to work with: the key's text, who it is for, and the room for plain numbers.
struct Decoding {
  const FileParameters& parameters;
  DecodeFor target;
  DecodedExif& out;

  void SetPlain(Plain slot, const QString& text) {
    out.plain[static_cast<std::size_t>(slot)] = text;
  }
};

using Rule = QString (*)(Decoding&, const QString&);

QString ZeroIsEmpty(const QString& text) {
  return text == u"0" ? QString() : text;
}

float Single(const QString& text) {
  return static_cast<float>(Val(text));
}

QString PlainNumber(const QString& text) {
  return PlainText(Single(text));
}

QString WithoutTrailingSeparator(QString text) {
  if (text.endsWith(GetUserLocaleInfo(LocaleInfo::DecimalSeparator))) text.chop(1);
  return text;
}

/// A masked text read back as a number and shown plainly: "4." is "4".
QString Masked(float value, QStringView mask) {
  return PlainText(static_cast<float>(ToNumber(Format(value, mask)).value_or(0)));
}

/// At most two decimals of a plain number's text.
QString TwoDecimals(const QString& plain) {
  if (plain.isEmpty()) return plain;
  const float value = static_cast<float>(ToNumber(plain).value_or(0));
  return WithoutTrailingSeparator(value >= 1 ? Format(value, u"######.##")
                                             : PlainText(RoundText(value, 2)));
}

struct ShutterSpeed {
  QString display, denominator, seconds, computed;
};

ShutterSpeed AnalyseShutter(const QString& apexText) {
  // Below this no second is long enough; the bound is part of the rule.
  constexpr float kLowest = -328;
  const float apex = Single(apexText);
  const double power = std::pow(2.0, static_cast<double>(apex));
  const bool beyondFloat =
      !std::isfinite(static_cast<float>(power)) || !std::isfinite(static_cast<float>(1 / power));
  if (apex == 0 || apex <= kLowest || beyondFloat) return {u"1 sec"_s, {}, u"1"_s, {}};
  if (apex > 1) {
    const double denominator = Round(power, 0);
    if (denominator <= 1) return {};
    const QString text = PlainText(static_cast<float>(denominator));
    return {u"1/"_s + text + u" sec"_s, text, {}, text};
  }
  const auto seconds = static_cast<float>(1 / power);
  const QString rounded =
      seconds >= 1 ? Masked(seconds, u"######.##")
                   : PlainText(static_cast<float>(Round(static_cast<double>(seconds), 2)));
  return {rounded + u" sec"_s, {}, rounded, PlainText(seconds)};
}

struct Exposure {
  QString display, denominator, seconds;
};

Exposure AnalyseExposure(const QString& secondsText) {
  const float seconds = Single(secondsText);
  if (seconds == 0 || !std::isfinite(1 / seconds)) return {};
  if (seconds > 0 && seconds < 0.5F) {
    const QString denominator =
        PlainText(static_cast<float>(Round(1 / static_cast<double>(seconds), 0)));
    return {u"1/"_s + denominator + u" sec"_s, denominator, {}};
  }
  const QString rounded = PlainText(static_cast<float>(Round(static_cast<double>(seconds), 2)));
  return {rounded + u" sec"_s, {}, rounded};
}

QString ApertureNumber(const QString& apexText) {
  // The rule has always used this value for the square root of two.
  constexpr double kRootOfTwo = 1.4142;
  const float apex = Single(apexText);
  const auto number = static_cast<float>(std::pow(kRootOfTwo, static_cast<double>(apex)));
  if (apex == 0 || !std::isfinite(number)) return QString();
  return number >= 1 ? Masked(number, u"######.#")
                     : PlainText(static_cast<float>(Round(static_cast<double>(number), 1)));
}

// The rules of the EXIF page.

QString AsItStands(Decoding&, const QString& text) {
  return text;
}
QString EmptyForZero(Decoding&, const QString& text) {
  return ZeroIsEmpty(text);
}
QString Pixels(Decoding&, const QString& text) {
  return text + u" Pixels"_s;
}

template <const ValueTable* table>
QString Coded(Decoding&, const QString& text) {
  return table->Translate(text);
}

template <const ValueTable* table>
QString CodedZeroIsEmpty(Decoding&, const QString& text) {
  return table->Translate(ZeroIsEmpty(text));
}

QString Description(Decoding& decoding, const QString& text) {
  const bool tiff = decoding.parameters.GetIOProperty(u"FILETYPE") == u"1";
  return tiff ? decoding.parameters.GetIOProperty(u"TIFF_IMAGEDESCRIPTION") : text;
}

QString ExifDate(Decoding& decoding, const QString& text) {
  const bool readable = text.trimmed().contains(u' ');
  return decoding.target == DecodeFor::Panel && readable ? AnalyseDate(text.trimmed()) : text;
}

QString SubSeconds(Decoding& decoding, const QString& text) {
  if (decoding.target == DecodeFor::Record) return text;
  return QString(text).replace(u"."_s, GetUserLocaleInfo(LocaleInfo::DecimalSeparator));
}

QString Number(Decoding&, const QString& text) {
  return WithoutTrailingSeparator(PlainNumber(text));
}
QString NumberZeroIsEmpty(Decoding&, const QString& text) {
  return ZeroIsEmpty(PlainNumber(text));
}

QString Shutter(Decoding& decoding, const QString& text) {
  const ShutterSpeed speed = AnalyseShutter(text);
  decoding.SetPlain(Plain::ShutterDenominator, speed.denominator);
  decoding.SetPlain(Plain::ShutterSeconds, speed.seconds);
  decoding.out.shutterValue = speed.computed;
  return speed.display;
}

QString ExposureTime(Decoding& decoding, const QString& text) {
  const Exposure exposure = AnalyseExposure(text);
  decoding.SetPlain(Plain::ExposureDenominator, exposure.denominator);
  decoding.SetPlain(Plain::ExposureSeconds, exposure.seconds);
  return exposure.display;
}

template <Plain slot>
QString Aperture(Decoding& decoding, const QString& text) {
  const QString number = ApertureNumber(text);
  decoding.SetPlain(slot, number);
  return number.isEmpty() ? number : u"F/"_s + number;
}

QString FocalLength(Decoding& decoding, const QString& text) {
  const QString number = ZeroIsEmpty(PlainNumber(text));
  decoding.SetPlain(Plain::FocalLength, number);
  return number.isEmpty() ? number : number + u" mm"_s;
}

QString FNumber(Decoding& decoding, const QString& text) {
  const QString number = ZeroIsEmpty(PlainNumber(text));
  decoding.SetPlain(Plain::FNumber, number);
  return number.isEmpty() ? number : u"F/"_s + number;
}

QString Iso(Decoding& decoding, const QString& text) {
  const QString number = ZeroIsEmpty(PlainNumber(text));
  decoding.SetPlain(Plain::Iso, number);
  return number.isEmpty() ? number : u"ISO-"_s + number;
}

QString Compensation(Decoding& decoding, const QString& text) {
  const QString number = TwoDecimals(PlainNumber(text));
  decoding.SetPlain(Plain::ExposureCompensation, number);
  return number.isEmpty() ? number : number + u" Ev"_s;
}

QString FocusDistance(Decoding& decoding, const QString& text) {
  const QString number = PlainNumber(text);
  const bool unknown = number == u"0";
  decoding.SetPlain(Plain::FocusDistance, unknown ? u"Unknown"_s : number);
  return unknown ? u"Unknown"_s : number + u" m"_s;
}

QString TwoDecimalsZeroIsEmpty(Decoding&, const QString& text) {
  return TwoDecimals(ZeroIsEmpty(PlainNumber(text)));
}

struct ExifRow {
  MetadataField field;
  const char16_t* key;
  Rule rule;
};

// Width, height and resolutions have columns of their own, filled from the file's facts.
constexpr ExifRow kExifRows[] = {
    {{u"Camera Make", Column::CameraMake}, u"EXIF_Make", EmptyForZero},
    {{u"Camera Model", Column::CameraModel}, u"EXIF_Model", EmptyForZero},
    {{u"Width", {}}, u"WIDTH", Pixels},
    {{u"Height", {}}, u"HEIGHT", Pixels},
    {{u"Horizontal Resolution", {}}, u"EXIF_Xresolution", EmptyForZero},
    {{u"Vertical Resolution", {}}, u"EXIF_Yresolution", EmptyForZero},
    {{u"Resolution Unit", {}}, u"EXIF_ResolutionUnit", CodedZeroIsEmpty<&tables::kUnit>},
    {{u"Image Description", Column::ImageDescription}, u"EXIF_ImageDescription", Description},
    {{u"User Comment", Column::Comments}, u"EXIF_UserComment", AsItStands},
    {{u"Author", Column::AuthorExif}, u"EXIF_Artist", AsItStands},
    {{u"Copyright", Column::CopyrightExif}, u"EXIF_Copyright", AsItStands},
    {{u"Creation Software", Column::CreationSoftware}, u"EXIF_Software", AsItStands},
    {{u"Date/Time Original", Column::DateTimeOriginal}, u"EXIF_DateTimeOriginal", ExifDate},
    {{u"Date/Time Digitized", Column::DateTimeDigitized}, u"EXIF_DateTimeDigitized", ExifDate},
    {{u"Sub-Second Time", Column::SubSecondTime}, u"EXIF_SubsecTime", SubSeconds},
    {{u"Compressed BPP", Column::CompressedBPP}, u"EXIF_CompressedBitsPerPixel", Number},
    {{u"Shutter Speed", Column::ShutterSpeed}, u"EXIF_ShutterSpeedValue", Shutter},
    {{u"Exposure Time", Column::ExposureTime}, u"EXIF_ExposureTime", ExposureTime},
    {{u"Lens Aperture", Column::LensAperture},
     u"EXIF_ApertureValue",
     Aperture<Plain::LensAperture>},
    {{u"Max Aperture Value", Column::MaxApertureValue},
     u"EXIF_MaxApertureValue",
     Aperture<Plain::MaxAperture>},
    {{u"Focal Length", Column::FocalLength}, u"EXIF_FocalLength", FocalLength},
    {{u"F-number", Column::FNumber}, u"EXIF_Fnumber", FNumber},
    {{u"Exposure Mode", Column::ExposureMode}, u"EXIF_ExposureMode", Coded<&tables::kExposureMode>},
    {{u"Exposure Compensation", Column::ExposureCompensation},
     u"EXIF_ExposureBiasValue",
     Compensation},
    {{u"ISO-Speed", Column::ISOSpeed}, u"EXIF_ISOSpeedRatings0", Iso},
    {{u"White Balance", Column::WhiteBalance}, u"EXIF_WhiteBalance", Coded<&tables::kWhiteBalance>},
    {{u"Metering Mode", Column::MeteringMode}, u"EXIF_MeteringMode", Coded<&tables::kMeteringMode>},
    {{u"Exposure Program", Column::ExposureProgram},
     u"EXIF_ExposureProgram",
     Coded<&tables::kExposureProgram>},
    {{u"Scene Capture Type", Column::SceneCaptureType},
     u"EXIF_SceneCaptureType",
     Coded<&tables::kSceneCapture>},
    {{u"Orientation", Column::Orientation},
     u"EXIF_Orientation",
     CodedZeroIsEmpty<&tables::kOrientation>},
    {{u"Focal Plane X Resolution", Column::FocalPlaneXResolution},
     u"EXIF_FocalPlaneXResolution",
     TwoDecimalsZeroIsEmpty},
    {{u"Focal Plane Y Resolution", Column::FocalPlaneYResolution},
     u"EXIF_FocalPlaneYResolution",
     TwoDecimalsZeroIsEmpty},
    {{u"Focal Plane Resolution Unit", {}},
     u"EXIF_FocalPlaneResolutionUnit",
     CodedZeroIsEmpty<&tables::kUnit>},
    {{u"Gain Control", Column::GainControl}, u"EXIF_GainControl", Coded<&tables::kGainControl>},
    {{u"Colorspace", Column::Colorspace},
     u"EXIF_ColorSpace",
     CodedZeroIsEmpty<&tables::kColorspace>},
    {{u"Light Source", Column::LightSource}, u"EXIF_LightSource", Coded<&tables::kLightSource>},
    {{u"Flash Mode", Column::FlashMode}, u"EXIF_Flash", Coded<&tables::kFlash>},
    {{u"Digital Zoom Ratio", Column::DigitalZoomRatio},
     u"EXIF_DigitalZoomRatio",
     NumberZeroIsEmpty},
    {{u"Contrast", Column::Contrast}, u"EXIF_Contrast", Coded<&tables::kContrastOrSharpness>},
    {{u"Saturation", Column::Saturation}, u"EXIF_Saturation", Coded<&tables::kSaturation>},
    {{u"Sharpness", Column::Sharpness}, u"EXIF_Sharpness", Coded<&tables::kContrastOrSharpness>},
    {{u"Brightness Value", Column::BrightnessValue}, u"EXIF_BrightnessValue", NumberZeroIsEmpty},
    {{u"Distance to Subject", Column::DistanceToSubject},
     u"EXIF_SubjectDistanceRange",
     Coded<&tables::kSubjectRange>},
    {{u"Distance To Focus Point", Column::DistanceToFocusPoint},
     u"EXIF_SubjectDistance",
     FocusDistance},
    {{u"Sensing Method", Column::SensingMethod},
     u"EXIF_SensingMethod",
     CodedZeroIsEmpty<&tables::kSensingMethod>},
    {{u"Focal Length Equivalent to 35mm Film Camera", Column::FocalLength35mm},
     u"EXIF_FocalLengthIn35mmFilm",
     NumberZeroIsEmpty},
};

bool HasExif(const FileParameters& parameters) {
  return Val(parameters.GetIOProperty(u"EXIF_HASEXIF")) != 0;
}

// The GPS and IPTC pages.

QString TextAsRead(const QString& text) {
  return text;
}
QString GpsNumber(const QString& text) {
  return WithoutTrailingSeparator(PlainText(Val(text)));
}

template <const LetterTable* table>
QString Lettered(const QString& text) {
  return table->Translate(text);
}

struct GpsRow {
  MetadataField field;
  const char16_t* key;
  QString (*rule)(const QString&);
};

constexpr auto kDirection = Lettered<&tables::kDirection>;
constexpr GpsRow kGpsRows[] = {
    {{u"GPS Version ID", {}}, u"EXIF_GPSVersionID", TextAsRead},
    {{u"Latitude Reference", Column::LatitudeReference},
     u"EXIF_GPSLatitudeRef",
     Lettered<&tables::kLatitude>},
    {{u"Latitude Degrees", Column::LatitudeDegrees}, u"EXIF_GPSLatitudeDegrees", GpsNumber},
    {{u"Latitude Minutes", Column::LatitudeMinutes}, u"EXIF_GPSLatitudeMinutes", GpsNumber},
    {{u"Latitude Seconds", Column::LatitudeSeconds}, u"EXIF_GPSLatitudeSeconds", GpsNumber},
    {{u"Longitude Reference", Column::LongitudeReference},
     u"EXIF_GPSLongitudeRef",
     Lettered<&tables::kLongitude>},
    {{u"Longitude Degrees", Column::LongitudeDegrees}, u"EXIF_GPSLongitudeDegrees", GpsNumber},
    {{u"Longitude Minutes", Column::LongitudeMinutes}, u"EXIF_GPSLongitudeMinutes", GpsNumber},
    {{u"Longitude Seconds", Column::LongitudeSeconds}, u"EXIF_GPSLongitudeSeconds", GpsNumber},
    {{u"Altitude Reference", Column::AltitudeReference}, u"EXIF_GPSAltitudeRef", GpsNumber},
    {{u"Altitude (m)", Column::Altitude}, u"EXIF_GPSAltitude", GpsNumber},
    {{u"Time Stamp Hour", {}}, u"EXIF_GPSTimeStampHour", TextAsRead},
    {{u"Time Stamp Minute", {}}, u"EXIF_GPSTimeStampMinute", TextAsRead},
    {{u"Time Stamp Second (UTC)", {}}, u"EXIF_GPSTimeStampSecond", TextAsRead},
    {{u"GPS Satellites", {}}, u"EXIF_GPSSatellites", TextAsRead},
    {{u"Status", {}}, u"EXIF_GPSStatus", Lettered<&tables::kGpsStatus>},
    {{u"Measure Mode", {}}, u"EXIF_GPSMeasureMode", Lettered<&tables::kMeasureMode>},
    {{u"Degree of Precision", {}}, u"EXIF_GPSDOP", TextAsRead},
    {{u"Speed Reference", {}}, u"EXIF_GPSSpeedRef", Lettered<&tables::kSpeed>},
    {{u"Speed", {}}, u"EXIF_GPSSpeed", TextAsRead},
    {{u"Track Reference", {}}, u"EXIF_GPSTrackRef", kDirection},
    {{u"Track", {}}, u"EXIF_GPSTrack", GpsNumber},
    {{u"Image Direction Reference", {}}, u"EXIF_GPSImgDirectionRef", kDirection},
    {{u"Image Direction", {}}, u"EXIF_GPSImgDirection", GpsNumber},
    {{u"Map Datum", {}}, u"EXIF_GPSMapDatum", TextAsRead},
    {{u"Destination Latitude Reference", {}},
     u"EXIF_GPSDestLatitudeRef",
     Lettered<&tables::kDestinationLatitude>},
    {{u"Destination Latitude Degrees", {}}, u"EXIF_GPSDestLatitudeDegrees", GpsNumber},
    {{u"Destination Latitude Minutes", {}}, u"EXIF_GPSDestLatitudeMinutes", GpsNumber},
    {{u"Destination Latitude Seconds", {}}, u"EXIF_GPSDestLatitudeSeconds", GpsNumber},
    {{u"Destination Longitude Reference", {}},
     u"EXIF_GPSDestLongitudeRef",
     Lettered<&tables::kDestinationLongitude>},
    {{u"Destination Longitude Degrees", {}}, u"EXIF_GPSDestLongitudeDegrees", GpsNumber},
    {{u"Destination Longitude Minutes", {}}, u"EXIF_GPSDestLongitudeMinutes", GpsNumber},
    {{u"Destination Longitude Seconds", {}}, u"EXIF_GPSDestLongitudeSeconds", GpsNumber},
    {{u"Destination Bearing Reference", {}}, u"EXIF_GPSDestBearingRef", kDirection},
    {{u"Destination Bearing", {}}, u"EXIF_GPSDestBearing", GpsNumber},
    {{u"Destination Distance Reference", {}},
     u"EXIF_GPSDestDistanceRef",
     Lettered<&tables::kDistance>},
    {{u"Destination Distance", {}}, u"EXIF_GPSDestDistance", TextAsRead},
    {{u"GPS Date Stamp", {}}, u"EXIF_GPSDateStamp", TextAsRead},
};

constexpr IptcField kIptcRows[] = {
    {{u"Caption", Column::Caption}, 120},
    {{u"Writer", Column::Writer}, 122},
    {{u"Headline", Column::Headline}, 105},
    {{u"Special Instructions", Column::SpecialInstructions}, 40},
    {{u"Keywords", Column::KeywordsIptc}, 25},
    {{u"Urgency", Column::Urgency}, kUrgencyDataset},
    {{u"Category", Column::Category}, 15},
    {{u"Other Categories", Column::OtherCategories}, 20},
    {{u"Copyright", Column::CopyrightIptc}, 116},
    {{u"Author", Column::AuthorIptc}, 80},
    {{u"Author Title", Column::AuthorTitle}, 85},
    {{u"Credit", Column::Credit}, 110},
    {{u"Source", Column::Source}, 115},
    {{u"Object Name", Column::ObjectName}, 5},
    {{u"Date Created", Column::DateCreatedIptc}, 55},
    {{u"Released Date", Column::ReleasedDate}, 30},
    {{u"City", Column::City}, 90},
    {{u"State", Column::State}, 95},
    {{u"Country Code", Column::CountryCode}, 100},
    {{u"Country Name", Column::CountryName}, 101},
    {{u"Job Identifier", Column::JobIdentifier}, 103},
};

template <class Rows>
std::vector<const MetadataField*> FieldsOf(const Rows& rows) {
  std::vector<const MetadataField*> fields;
  for (const auto& row : rows)
    fields.push_back(&row.field);
  return fields;
}

template <class Decode>
void AddField(std::vector<DecodedField>& fields, const MetadataField& field, const QString& raw,
              const Decode& decode) {
  fields.push_back({&field, decode(raw), raw});
}

}  // namespace

std::vector<const MetadataField*> ExifFields() {
  return FieldsOf(kExifRows);
}
std::vector<const MetadataField*> GpsFields() {
  return FieldsOf(kGpsRows);
}
std::vector<const MetadataField*> IptcFields() {
  return FieldsOf(kIptcRows);
}
std::span<const IptcField> IptcDatasets() {
  return kIptcRows;
}

DecodedExif DecodeExif(const FileParameters& parameters, DecodeFor target) {
  DecodedExif decoded;
  if (!HasExif(parameters)) return decoded;
  Decoding decoding{parameters, target, decoded};
  for (const ExifRow& row : kExifRows)
    AddField(decoded.fields, row.field, parameters.GetIOProperty(row.key),
             [&](const QString& raw) { return row.rule(decoding, raw); });
  return decoded;
}

std::vector<DecodedField> DecodeGps(const FileParameters& parameters) {
  std::vector<DecodedField> fields;
  if (!HasExif(parameters)) return fields;
  for (const GpsRow& row : kGpsRows)
    AddField(fields, row.field, parameters.GetIOProperty(row.key), row.rule);
  return fields;
}

std::vector<DecodedField> DecodeIptc(const FileParameters& parameters) {
  const IptcList& iptc = parameters.Iptc();
  std::vector<DecodedField> fields;
  for (const IptcField& row : kIptcRows)
    AddField(fields, row.field, iptc.Get(iptc.Find(kIptcRecord, row.dataset)),
             row.dataset == kUrgencyDataset ? Lettered<&tables::kUrgency> : TextAsRead);
  return fields;
}

}  // namespace zqm
