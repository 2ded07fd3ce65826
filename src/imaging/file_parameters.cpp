// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/file_parameters.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "imaging/tiff_editor.h"
#include "shell/files.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

enum class KeyKind { Text, Comment, Number, SignedNumber, Count, ByteCount, Version };

struct ExifKeyRow {
  const char16_t* key;
  ExifTag tag;
  KeyKind kind;
  int component = 0;
};

// Tag numbers: Exif 2.3, tables 4, 7 and 15.
using enum KeyKind;
constexpr ExifGroup kImage = ExifGroup::Image;
constexpr ExifGroup kPhoto = ExifGroup::Photo;
constexpr ExifGroup kGps = ExifGroup::Gps;
constexpr ExifKeyRow kExifKeys[] = {
    {u"EXIF_Make", {kImage, 0x010F}, Text},
    {u"EXIF_Model", {kImage, 0x0110}, Text},
    {u"EXIF_Xresolution", {kImage, 0x011A}, Number},
    {u"EXIF_Yresolution", {kImage, 0x011B}, Number},
    {u"EXIF_ResolutionUnit", {kImage, 0x0128}, Count},
    {u"EXIF_ImageDescription", {kImage, 0x010E}, Text},
    {u"TIFF_IMAGEDESCRIPTION", {kImage, 0x010E}, Text},
    {u"EXIF_UserComment", {kPhoto, 0x9286}, Comment},
    {u"EXIF_Artist", {kImage, 0x013B}, Text},
    {u"EXIF_Copyright", {kImage, 0x8298}, Text},
    {u"EXIF_Software", {kImage, 0x0131}, Text},
    {u"EXIF_DateTime", {kImage, 0x0132}, Text},
    {u"EXIF_Orientation", {kImage, 0x0112}, Count},
    {u"EXIF_DateTimeOriginal", {kPhoto, 0x9003}, Text},
    {u"EXIF_DateTimeDigitized", {kPhoto, 0x9004}, Text},
    {u"EXIF_SubsecTime", {kPhoto, 0x9290}, Text},
    {u"EXIF_CompressedBitsPerPixel", {kPhoto, 0x9102}, Number},
    {u"EXIF_ShutterSpeedValue", {kPhoto, 0x9201}, SignedNumber},
    {u"EXIF_ExposureTime", {kPhoto, 0x829A}, Number},
    {u"EXIF_ApertureValue", {kPhoto, 0x9202}, Number},
    {u"EXIF_MaxApertureValue", {kPhoto, 0x9205}, Number},
    {u"EXIF_FocalLength", {kPhoto, 0x920A}, Number},
    {u"EXIF_Fnumber", {kPhoto, 0x829D}, Number},
    {u"EXIF_ExposureMode", {kPhoto, 0xA402}, Count},
    {u"EXIF_ExposureBiasValue", {kPhoto, 0x9204}, SignedNumber},
    {u"EXIF_ISOSpeedRatings0", {kPhoto, 0x8827}, Count},
    {u"EXIF_WhiteBalance", {kPhoto, 0xA403}, Count},
    {u"EXIF_MeteringMode", {kPhoto, 0x9207}, Count},
    {u"EXIF_ExposureProgram", {kPhoto, 0x8822}, Count},
    {u"EXIF_SceneCaptureType", {kPhoto, 0xA406}, Count},
    {u"EXIF_FocalPlaneXResolution", {kPhoto, 0xA20E}, Number},
    {u"EXIF_FocalPlaneYResolution", {kPhoto, 0xA20F}, Number},
    {u"EXIF_FocalPlaneResolutionUnit", {kPhoto, 0xA210}, Count},
    {u"EXIF_GainControl", {kPhoto, 0xA407}, Count},
    {u"EXIF_ColorSpace", {kPhoto, 0xA001}, Count},
    {u"EXIF_LightSource", {kPhoto, 0x9208}, Count},
    {u"EXIF_Flash", {kPhoto, 0x9209}, Count},
    {u"EXIF_DigitalZoomRatio", {kPhoto, 0xA404}, Number},
    {u"EXIF_Contrast", {kPhoto, 0xA408}, Count},
    {u"EXIF_Saturation", {kPhoto, 0xA409}, Count},
    {u"EXIF_Sharpness", {kPhoto, 0xA40A}, Count},
    {u"EXIF_BrightnessValue", {kPhoto, 0x9203}, SignedNumber},
    {u"EXIF_SubjectDistanceRange", {kPhoto, 0xA40C}, Count},
    {u"EXIF_SubjectDistance", {kPhoto, 0x9206}, Number},
    {u"EXIF_SensingMethod", {kPhoto, 0xA217}, Count},
    {u"EXIF_FocalLengthIn35mmFilm", {kPhoto, 0xA405}, Count},
    {u"EXIF_GPSVersionID", {kGps, 0x00}, Version},
    {u"EXIF_GPSLatitudeRef", {kGps, 0x01}, Text},
    {u"EXIF_GPSLatitudeDegrees", {kGps, 0x02}, Number, 0},
    {u"EXIF_GPSLatitudeMinutes", {kGps, 0x02}, Number, 1},
    {u"EXIF_GPSLatitudeSeconds", {kGps, 0x02}, Number, 2},
    {u"EXIF_GPSLongitudeRef", {kGps, 0x03}, Text},
    {u"EXIF_GPSLongitudeDegrees", {kGps, 0x04}, Number, 0},
    {u"EXIF_GPSLongitudeMinutes", {kGps, 0x04}, Number, 1},
    {u"EXIF_GPSLongitudeSeconds", {kGps, 0x04}, Number, 2},
    {u"EXIF_GPSAltitudeRef", {kGps, 0x05}, ByteCount},
    {u"EXIF_GPSAltitude", {kGps, 0x06}, Number},
    {u"EXIF_GPSTimeStampHour", {kGps, 0x07}, Number, 0},
    {u"EXIF_GPSTimeStampMinute", {kGps, 0x07}, Number, 1},
    {u"EXIF_GPSTimeStampSecond", {kGps, 0x07}, Number, 2},
    {u"EXIF_GPSSatellites", {kGps, 0x08}, Text},
    {u"EXIF_GPSStatus", {kGps, 0x09}, Text},
    {u"EXIF_GPSMeasureMode", {kGps, 0x0A}, Text},
    {u"EXIF_GPSDOP", {kGps, 0x0B}, Number},
    {u"EXIF_GPSSpeedRef", {kGps, 0x0C}, Text},
    {u"EXIF_GPSSpeed", {kGps, 0x0D}, Number},
    {u"EXIF_GPSTrackRef", {kGps, 0x0E}, Text},
    {u"EXIF_GPSTrack", {kGps, 0x0F}, Number},
    {u"EXIF_GPSImgDirectionRef", {kGps, 0x10}, Text},
    {u"EXIF_GPSImgDirection", {kGps, 0x11}, Number},
    {u"EXIF_GPSMapDatum", {kGps, 0x12}, Text},
    {u"EXIF_GPSDestLatitudeRef", {kGps, 0x13}, Text},
    {u"EXIF_GPSDestLatitudeDegrees", {kGps, 0x14}, Number, 0},
    {u"EXIF_GPSDestLatitudeMinutes", {kGps, 0x14}, Number, 1},
    {u"EXIF_GPSDestLatitudeSeconds", {kGps, 0x14}, Number, 2},
    {u"EXIF_GPSDestLongitudeRef", {kGps, 0x15}, Text},
    {u"EXIF_GPSDestLongitudeDegrees", {kGps, 0x16}, Number, 0},
    {u"EXIF_GPSDestLongitudeMinutes", {kGps, 0x16}, Number, 1},
    {u"EXIF_GPSDestLongitudeSeconds", {kGps, 0x16}, Number, 2},
    {u"EXIF_GPSDestBearingRef", {kGps, 0x17}, Text},
    {u"EXIF_GPSDestBearing", {kGps, 0x18}, Number},
    {u"EXIF_GPSDestDistanceRef", {kGps, 0x19}, Text},
    {u"EXIF_GPSDestDistance", {kGps, 0x1A}, Number},
    {u"EXIF_GPSDateStamp", {kGps, 0x1D}, Text},
};

constexpr const char16_t* kNumberKeys[] = {
    u"FILETYPE",      u"WIDTH",         u"HEIGHT",          u"DPIX",        u"DPIY",
    u"BITSPERSAMPLE", u"COLORMAPCOUNT", u"SAMPLESPERPIXEL", u"EXIF_HASEXIF"};

const ExifKeyRow* FindExifKey(const QString& upperKey) {
  static const QHash<QString, const ExifKeyRow*> rows = [] {
    QHash<QString, const ExifKeyRow*> made;
    for (const ExifKeyRow& row : kExifKeys)
      made.insert(QString::fromUtf16(row.key).toUpper(), &row);
    return made;
  }();
  return rows.value(upperKey, nullptr);
}

QString ReadTag(const ExifStore& exif, const ExifKeyRow& row) {
  switch (row.kind) {
    case Text:
      return exif.Text(row.tag);
    case Comment:
      return exif.Comment(row.tag);
    case Version:
      return exif.Dotted(row.tag);
    case Number:
    case SignedNumber:
    case Count:
    case ByteCount:
      break;
  }
  return exif.Number(row.tag, row.component).value_or(u"0"_s);
}

ExifType TypeOf(const ExifKeyRow& row) {
  switch (row.kind) {
    case Text:
      return ExifType::Ascii;
    case Comment:
      return ExifType::Comment;
    case Version:
    case ByteCount:
      return ExifType::Byte;
    case Number:
      return ExifType::Rational;
    case SignedNumber:
      return ExifType::SignedRational;
    case Count:
      break;
  }
  return ExifType::Short;
}

constexpr int kTiffFileType = 1;

}  // namespace

FileParameters FileParameters::Read(ByteView file, const Codec& codec, const PictureFacts& facts,
                                    const QString& path) {
  FileParameters parameters;
  parameters.exif_ = ExifStore::Read(file);
  parameters.iptc_ =
      IptcList::Parse(Bytes(facts.iptc.isEmpty() ? parameters.exif_.IptcBlock() : facts.iptc));
  parameters.readIptc_ = parameters.iptc_;
  parameters.ReadFacts(codec, facts, path);
  return parameters;
}

void FileParameters::ReadFacts(const Codec& codec, const PictureFacts& facts, const QString& path) {
  QString typeText = QString::fromLatin1(codec.typeText);
  const QString extension = GetExtensionName(path).toUpper();
  if (codec.typeTextTakesExtension && !extension.isEmpty()) typeText += u" (%1)"_s.arg(extension);
  const bool hasExif = codec.fileType == kTiffFileType ? exif_.HasDescriptiveTag() : !exif_.Empty();
  const std::initializer_list<std::pair<QString, QString>> values = {
      {u"FILETYPE"_s, QString::number(codec.fileType)},
      {u"FILETYPESTR"_s, typeText},
      {u"FILENAME"_s, path},
      {u"WIDTH"_s, QString::number(facts.width)},
      {u"HEIGHT"_s, QString::number(facts.height)},
      {u"DPIX"_s, Density(facts.dpiX, u"EXIF_Xresolution")},
      {u"DPIY"_s, Density(facts.dpiY, u"EXIF_Yresolution")},
      {u"BITSPERSAMPLE"_s, QString::number(facts.bitsPerSample)},
      {u"SAMPLESPERPIXEL"_s, QString::number(facts.samplesPerPixel)},
      {u"COLORMAPCOUNT"_s, QString::number(facts.colorMapCount)},
      {u"EXIF_HASEXIF"_s, hasExif ? u"1"_s : u"0"_s},
      {u"XMP_INFO"_s, FromUtf8OrLatin1(exif_.XmpPacket())},
  };
  for (const auto& [key, value] : values)
    facts_.insert(key, value);
}

QString FileParameters::Density(double container, QStringView exifKey) const {
  double dotsPerInch = container;
  if (dotsPerInch <= 0) {
    constexpr int kAbsent = 0, kInch = 2, kCentimetre = 3;
    const int unit = static_cast<int>(Val(GetIOProperty(u"EXIF_ResolutionUnit")));
    const double perInch = unit == kCentimetre ? 2.54 : unit == kInch || unit == kAbsent ? 1 : 0;
    dotsPerInch = Val(GetIOProperty(exifKey)) * perInch;
  }
  if (!(dotsPerInch > 0) || dotsPerInch > 1e6) return u"0"_s;
  return QString::number(std::lround(dotsPerInch));
}

void FileParameters::ReplaceFile(const FileParameters& file) {
  facts_ = file.facts_;
  exif_ = file.exif_;
  iptc_ = file.iptc_;
  readIptc_ = file.readIptc_;
  xmpChanged_ = file.xmpChanged_;
}

void FileParameters::RemoveExif() {
  exif_.ClearExif();
  facts_.insert(u"EXIF_HASEXIF"_s, u"0"_s);
}

QByteArray FileParameters::EditedExif(const QByteArray& original) const {
  auto editor =
      exif_.ExifCleared() || original.isEmpty() ? TiffEditor::Empty() : TiffEditor::Open(original);
  if (!editor) return exif_.EncodeExif();
  editor->Apply(exif_);
  const bool empty =
      std::ranges::all_of(std::array{ExifGroup::Image, ExifGroup::Photo, ExifGroup::Gps},
                          [&](ExifGroup group) { return editor->Tags(group).empty(); });
  return empty ? QByteArray() : editor->Take();
}

QString FileParameters::GetIOProperty(QStringView key) const {
  const QString upper = key.toString().toUpper();
  if (const ExifKeyRow* row = FindExifKey(upper)) return ReadTag(exif_, *row);
  if (const auto fact = facts_.constFind(upper); fact != facts_.cend()) return *fact;
  if (const auto option = options_.constFind(upper); option != options_.cend()) return *option;
  const bool isNumber = std::ranges::any_of(
      kNumberKeys, [&](const char16_t* number) { return QStringView(number) == upper; });
  return isNumber ? u"0"_s : QString();
}

void FileParameters::SetIOProperty(QStringView key, const QString& value) {
  const QString upper = key.toString().toUpper();
  if (const ExifKeyRow* row = FindExifKey(upper)) {
    exif_.Set(row->tag, TypeOf(*row), row->component, value);
    facts_.insert(u"EXIF_HASEXIF"_s, u"1"_s);
  } else if (upper == "XMP_INFO"_L1) {
    exif_.SetXmpPacket(value.toUtf8());
    facts_.insert(upper, value);
    xmpChanged_ = true;
  } else if (facts_.contains(upper)) {
    facts_.insert(upper, value);
  } else {
    options_.insert(upper, value);
  }
}

}  // namespace zqm
