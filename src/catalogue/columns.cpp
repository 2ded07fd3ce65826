// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/columns.h"

#include <algorithm>
#include <array>

namespace zqm {
namespace {

constexpr std::array<ColumnInfo, kColumnCount> kColumns{{
    {Column::ID, u"ID", ColumnGroup::Program},
    {Column::Notes, u"Notes", ColumnGroup::User},
    {Column::Author, u"Author", ColumnGroup::User},
    {Column::Date, u"Date", ColumnGroup::User},
    {Column::Rating, u"Rating", ColumnGroup::User},
    {Column::Categories, u"Categories", ColumnGroup::User},
    {Column::Tags, u"Tags", ColumnGroup::User},
    {Column::Photo, u"Photo", ColumnGroup::Program},
    {Column::Filename, u"Filename", ColumnGroup::File},
    {Column::FileType, u"File Type", ColumnGroup::File},
    {Column::Size, u"Size", ColumnGroup::File},
    {Column::ImageWidth, u"Image Width", ColumnGroup::File},
    {Column::ImageHeight, u"Image Height", ColumnGroup::File},
    {Column::HorizontalResolution, u"Horizontal Resolution", ColumnGroup::File},
    {Column::VerticalResolution, u"Vertical Resolution", ColumnGroup::File},
    {Column::ParentFolder, u"Parent Folder", ColumnGroup::File},
    {Column::Thumbnail, u"Thumbnail", ColumnGroup::Program},
    {Column::ImageDescription, u"Image Description", ColumnGroup::Exif},
    {Column::Comments, u"Comments", ColumnGroup::Exif},
    {Column::CameraMake, u"Camera Make", ColumnGroup::Exif},
    {Column::CameraModel, u"Camera Model", ColumnGroup::Exif},
    {Column::AuthorExif, u"Author(EXIF)", ColumnGroup::Exif},
    {Column::CopyrightExif, u"Copyright(EXIF)", ColumnGroup::Exif},
    {Column::CreationSoftware, u"Creation Software", ColumnGroup::Exif},
    {Column::DateTimeOriginal, u"Date/Time Original", ColumnGroup::Exif},
    {Column::DateTimeDigitized, u"Date/Time Digitized", ColumnGroup::Exif},
    {Column::SubSecondTime, u"Sub Second Time", ColumnGroup::Exif},
    {Column::CompressedBPP, u"Compressed BPP", ColumnGroup::Exif},
    {Column::ShutterSpeed, u"Shutter Speed", ColumnGroup::Exif},
    {Column::ExposureTime, u"Exposure Time", ColumnGroup::Exif},
    {Column::LensAperture, u"Lens Aperture", ColumnGroup::Exif},
    {Column::MaxApertureValue, u"Max Aperture Value", ColumnGroup::Exif},
    {Column::FocalLength, u"Focal Length", ColumnGroup::Exif},
    {Column::FNumber, u"F-number", ColumnGroup::Exif},
    {Column::ExposureMode, u"Exposure Mode", ColumnGroup::Exif},
    {Column::ExposureCompensation, u"Exposure Compensation", ColumnGroup::Exif},
    {Column::ISOSpeed, u"ISO-Speed", ColumnGroup::Exif},
    {Column::WhiteBalance, u"White Balance", ColumnGroup::Exif},
    {Column::MeteringMode, u"Metering Mode", ColumnGroup::Exif},
    {Column::ExposureProgram, u"Exposure Program", ColumnGroup::Exif},
    {Column::SceneCaptureType, u"Scene Capture Type", ColumnGroup::Exif},
    {Column::Orientation, u"Orientation", ColumnGroup::Exif},
    {Column::FocalPlaneXResolution, u"Focal Plane X Resolution", ColumnGroup::Exif},
    {Column::FocalPlaneYResolution, u"Focal Plane Y Resolution", ColumnGroup::Exif},
    {Column::GainControl, u"Gain Control", ColumnGroup::Exif},
    {Column::Colorspace, u"Colorspace", ColumnGroup::Exif},
    {Column::LightSource, u"Light Source", ColumnGroup::Exif},
    {Column::FlashMode, u"Flash Mode", ColumnGroup::Exif},
    {Column::DigitalZoomRatio, u"Digital Zoom Ratio", ColumnGroup::Exif},
    {Column::Contrast, u"Contrast", ColumnGroup::Exif},
    {Column::Saturation, u"Saturation", ColumnGroup::Exif},
    {Column::Sharpness, u"Sharpness", ColumnGroup::Exif},
    {Column::BrightnessValue, u"Brightness Value", ColumnGroup::Exif},
    {Column::DistanceToSubject, u"Distance to Subject", ColumnGroup::Exif},
    {Column::DistanceToFocusPoint, u"Distance to Focus Point", ColumnGroup::Exif},
    {Column::SensingMethod, u"Sensing Method", ColumnGroup::Exif},
    {Column::FocalLength35mm, u"35mm Equivalent Focal Length", ColumnGroup::Exif},
    {Column::Writer, u"Writer", ColumnGroup::Iptc},
    {Column::Caption, u"Caption", ColumnGroup::Iptc},
    {Column::Headline, u"Headline", ColumnGroup::Iptc},
    {Column::SpecialInstructions, u"Special Instructions", ColumnGroup::Iptc},
    {Column::KeywordsIptc, u"Keywords(IPTC)", ColumnGroup::Iptc},
    {Column::Urgency, u"Urgency", ColumnGroup::Iptc},
    {Column::Category, u"Category", ColumnGroup::Iptc},
    {Column::OtherCategories, u"Other Categories", ColumnGroup::Iptc},
    {Column::CopyrightIptc, u"Copyright(IPTC)", ColumnGroup::Iptc},
    {Column::AuthorIptc, u"Author(IPTC)", ColumnGroup::Iptc},
    {Column::AuthorTitle, u"Author Title", ColumnGroup::Iptc},
    {Column::Credit, u"Credit", ColumnGroup::Iptc},
    {Column::Source, u"Source", ColumnGroup::Iptc},
    {Column::ObjectName, u"Object Name", ColumnGroup::Iptc},
    {Column::DateCreatedIptc, u"Date Created(IPTC)", ColumnGroup::Iptc},
    {Column::ReleasedDate, u"Released Date", ColumnGroup::Iptc},
    {Column::City, u"City", ColumnGroup::Iptc},
    {Column::State, u"State", ColumnGroup::Iptc},
    {Column::CountryCode, u"Country Code", ColumnGroup::Iptc},
    {Column::CountryName, u"Country Name", ColumnGroup::Iptc},
    {Column::JobIdentifier, u"Job Identifier", ColumnGroup::Iptc},
    {Column::LatitudeReference, u"Latitude Reference", ColumnGroup::Gps},
    {Column::LatitudeDegrees, u"Latitude Degrees", ColumnGroup::Gps},
    {Column::LatitudeMinutes, u"Latitude Minutes", ColumnGroup::Gps},
    {Column::LatitudeSeconds, u"Latitude Seconds", ColumnGroup::Gps},
    {Column::LongitudeReference, u"Longitude Reference", ColumnGroup::Gps},
    {Column::LongitudeDegrees, u"Longitude Degrees", ColumnGroup::Gps},
    {Column::LongitudeMinutes, u"Longitude Minutes", ColumnGroup::Gps},
    {Column::LongitudeSeconds, u"Longitude Seconds", ColumnGroup::Gps},
    {Column::AltitudeReference, u"Altitude Reference", ColumnGroup::Gps},
    {Column::Altitude, u"Altitude", ColumnGroup::Gps},
    {Column::Flag, u"Flag", ColumnGroup::User},
}};

constexpr bool TableIsInOrder() {
  for (int i = 0; i < kColumnCount; ++i)
    if (static_cast<int>(kColumns[static_cast<size_t>(i)].column) != i) return false;
  return true;
}
static_assert(TableIsInOrder());

}  // namespace

std::span<const ColumnInfo, kColumnCount> Columns() {
  return kColumns;
}

QString ColumnName(Column column) {
  return QString::fromUtf16(kColumns[static_cast<size_t>(column)].name);
}

std::optional<Column> ColumnByName(QStringView name) {
  const auto found = std::ranges::find_if(kColumns, [name](const ColumnInfo& info) {
    return name.compare(QStringView(info.name), Qt::CaseInsensitive) == 0;
  });
  if (found == kColumns.end()) return std::nullopt;
  return found->column;
}

}  // namespace zqm
