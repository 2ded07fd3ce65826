// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/metadata_export.h"

#include <optional>
#include <span>

#include "shell/dates.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// A value, and what the row's line has otherwise than the file's.
struct ExportLine {
  const char16_t* label;
  std::optional<Column> column = {};   ///< none: rows know nothing of it and have no such line
  const char16_t* rowUnit = u"";       ///< behind the row's value
  const char16_t* rowLabel = nullptr;  ///< another one than the file's
  const char16_t* caption = nullptr;   ///< the panel's, where no column holds the value
};

struct Section {
  const char16_t* heading;  ///< nullptr: none, and an empty line follows each value
  std::span<const ExportLine> lines;
};

constexpr char16_t kMetres[] = u" m";

constexpr ExportLine kImageInformation[] = {
    {u"Camera Make", Column::CameraMake},
    {u"Camera Model", Column::CameraModel},
    {u"Width", Column::ImageWidth, u" Pixels"},
    {u"Height", Column::ImageHeight, u" Pixels"},
    {u"Horizontal Resolution", Column::HorizontalResolution, u" dpi"},
    {u"Vertical Resolution", Column::VerticalResolution, u" dpi"},
    {u"Resolution Unit"},
    {u"Image Description", Column::ImageDescription},
    {u"User Comment", Column::Comments, u"", u"Comment"},
    {u"Author", Column::AuthorExif, u"", u"Artist"},
    {u"Copyright", Column::CopyrightExif},
    {u"Creation Software", Column::CreationSoftware},
    {u"Date/Time Original", Column::DateTimeOriginal},
    {u"Date/Time Digitized", Column::DateTimeDigitized},
    {u"Sub-Second Time", Column::SubSecondTime},
    {u"Compressed BPP", Column::CompressedBPP},
};
constexpr ExportLine kCameraSettings[] = {
    {u"Shutter Speed", Column::ShutterSpeed},
    {u"Exposure Time", Column::ExposureTime},
    {u"Lens Aperture", Column::LensAperture},
    {u"Max Aperture Value", Column::MaxApertureValue},
    {u"Focal Length", Column::FocalLength},
    {u"F-number", Column::FNumber},
    {u"Exposure Mode", Column::ExposureMode},
    {u"Exposure Compensation", Column::ExposureCompensation},
    {u"ISO-Speed", Column::ISOSpeed},
    {u"White Balance", Column::WhiteBalance},
    {u"Metering Mode", Column::MeteringMode},
    {u"Exposure Program", Column::ExposureProgram},
};
constexpr ExportLine kMiscellaneous[] = {
    {u"Scene Capture Type", Column::SceneCaptureType},
    {u"Orientation", Column::Orientation},
    {u"Focal Plane X Resolution", Column::FocalPlaneXResolution},
    {u"Focal Plane Y Resolution", Column::FocalPlaneYResolution},
    {u"Focal Plane Resolution Unit"},
    {u"Gain Control", Column::GainControl},
    {u"Colorspace", Column::Colorspace},
    {u"Light Source", Column::LightSource},
    {u"Flash Mode", Column::FlashMode},
    {u"Digital Zoom Ratio", Column::DigitalZoomRatio},
    {u"Contrast", Column::Contrast},
    {u"Saturation", Column::Saturation},
    {u"Sharpness", Column::Sharpness},
    {u"Brightness Value", Column::BrightnessValue},
    {u"Distance to Subject", Column::DistanceToSubject},
    {u"Distance to Focus Point", Column::DistanceToFocusPoint},
    {u"Sensing Method", Column::SensingMethod},
    {u"Focal Length Equivalent to 35mm Film Camera", Column::FocalLength35mm},
};
constexpr Section kExif[] = {{u"Image Information", kImageInformation},
                             {u"Camera Settings", kCameraSettings},
                             {u"Miscellaneous", kMiscellaneous}};

constexpr ExportLine kCaption[] = {
    {u"Caption", Column::Caption},
    {u"Writer", Column::Writer},
    {u"Headline", Column::Headline},
    {u"Special Instructions", Column::SpecialInstructions},
};
constexpr ExportLine kKeywords[] = {{u"Keywords", Column::KeywordsIptc}};
constexpr ExportLine kCategories[] = {
    {u"Urgency", Column::Urgency},
    {u"Category", Column::Category},
    {u"Other Categories", Column::OtherCategories},
};
constexpr ExportLine kCredit[] = {
    {u"Copyright", Column::CopyrightIptc},
    {u"Author", Column::AuthorIptc},
    {u"Author Title", Column::AuthorTitle},
    {u"Credit", Column::Credit},
    {u"Source", Column::Source},
};
constexpr ExportLine kOrigin[] = {
    {u"Object Name", Column::ObjectName},
    {u"Date Created", Column::DateCreatedIptc},
    {u"Released Date", Column::ReleasedDate},
    {u"City", Column::City},
    {u"State", Column::State},
    {u"Country Code", Column::CountryCode},
    {u"Country Name", Column::CountryName},
    {u"Job Identifier", Column::JobIdentifier},
};
constexpr Section kIptc[] = {{u"Caption", kCaption},
                             {u"Keywords", kKeywords},
                             {u"Categories", kCategories},
                             {u"Credit", kCredit},
                             {u"Origin", kOrigin}};

constexpr ExportLine kGpsLines[] = {
    {u"GPS Version ID"},
    {u"Latitude Reference", Column::LatitudeReference},
    {u"Latitude Degrees", Column::LatitudeDegrees},
    {u"Latitude Minutes", Column::LatitudeMinutes},
    {u"Latitude Seconds", Column::LatitudeSeconds},
    {u"Longitude Reference", Column::LongitudeReference},
    {u"Longitude Degrees", Column::LongitudeDegrees},
    {u"Longitude Minutes", Column::LongitudeMinutes},
    {u"Longitude Seconds", Column::LongitudeSeconds},
    {u"Altitude Reference", Column::AltitudeReference, kMetres},
    {u"Altitude", Column::Altitude, kMetres},
    {u"Time Stamp Hour"},
    {u"Time Stamp Minute"},
    {.label = u"Time Stamp Second(UTC)", .caption = u"Time Stamp Second (UTC)"},
    {u"GPS Satellites"},
    {u"Status"},
    {u"Measure Mode"},
    {u"Degree of Precision"},
    {u"Speed Reference"},
    {u"Speed"},
    {u"Track Reference"},
    {u"Track"},
    {u"Image Direction Reference"},
    {u"Image Direction"},
    {u"Map Datum"},
    {u"Destination Latitude Reference"},
    {u"Destination Latitude Degrees"},
    {u"Destination Latitude Minutes"},
    {u"Destination Latitude Seconds"},
    {u"Destination Longitude Reference"},
    {u"Destination Longitude Degrees"},
    {u"Destination Longitude Minutes"},
    {u"Destination Longitude Seconds"},
    {u"Destination Bearing Reference"},
    {u"Destination Bearing"},
    {u"Destination Distance Reference"},
    {u"Destination Distance"},
    {u"GPS Date Stamp"},
};
constexpr Section kGps[] = {{nullptr, kGpsLines}};

/// Colons stand below each other, a row's a little further left.
struct KindInfo {
  const char16_t* name;
  std::span<const Section> sections;
  int fileColon, rowColon;
};
constexpr KindInfo kKinds[] = {
    {u"EXIF", kExif, 44, 44}, {u"IPTC", kIptc, 23, 22}, {u"GPS", kGps, 34, 23}};

const KindInfo& InfoOf(MetadataKind kind) {
  return kKinds[static_cast<std::size_t>(kind)];
}

QString ValueOf(const ExportLine& line, const ExportValues& values) {
  if (!line.column) return values.extra(line.caption != nullptr ? line.caption : line.label);
  const QString text = values.column(*line.column);
  const bool date =
      line.column == Column::DateTimeOriginal || line.column == Column::DateTimeDigitized;
  return date ? HandleDateForExportEXIF(text) : text;
}

QString FileLine(const ExportLine& line, int colon, const QString& value) {
  const QString unit =
      line.rowUnit == QStringView(kMetres) ? QString::fromUtf16(kMetres) : QString();
  return QString::fromUtf16(line.label).leftJustified(colon) + u": "_s + value + unit + u'\n';
}

QString RowLine(const ExportLine& line, int colon, const QString& value) {
  const bool unknownHeight = line.rowUnit == QStringView(kMetres) && value.isEmpty();
  const QString unit = unknownHeight ? QString() : QString::fromUtf16(line.rowUnit);
  const char16_t* label = line.rowLabel != nullptr ? line.rowLabel : line.label;
  return QString::fromUtf16(label).leftJustified(colon) + u": "_s + value + unit + u'\n';
}

}  // namespace

QString ExportText(MetadataKind kind, ExportSource source, const QString& path,
                   const ExportValues& values) {
  const QString gap = u"\n\n\n"_s;
  const KindInfo& info = InfoOf(kind);
  QString text = u"Filename : "_s + path + u'\n';
  for (const Section& section : info.sections) {
    const bool headed = section.heading != nullptr;
    text += gap;
    if (headed) text += QString::fromUtf16(section.heading) + u"\n\n"_s;
    for (const ExportLine& line : section.lines) {
      if (source == ExportSource::File)
        text += FileLine(line, info.fileColon, ValueOf(line, values));
      else if (line.column)
        text += RowLine(line, info.rowColon, ValueOf(line, values));
      else
        continue;
      if (!headed) text += u'\n';
    }
  }
  return text;
}

QString ExportFileName(MetadataKind kind, const QString& path) {
  return QString::fromUtf16(InfoOf(kind).name) + u'-' + GetFileName(path) + u".txt"_s;
}

QString HandleDateForExportEXIF(const QString& date) {
  const QString trimmed = date.trimmed();
  return trimmed.contains(u' ') ? AnalyseDate(trimmed) : date;
}

}  // namespace zqm
