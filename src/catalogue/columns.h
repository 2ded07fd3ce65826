// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>
#include <optional>
#include <span>

namespace zqm {

/// The columns of a photo's row, in their order. Their names live in one table (`Columns`).
enum class Column {
  ID,
  Notes,
  Author,
  Date,
  Rating,
  Categories,
  Tags,
  Photo,
  Filename,
  FileType,
  Size,
  ImageWidth,
  ImageHeight,
  HorizontalResolution,
  VerticalResolution,
  ParentFolder,
  Thumbnail,
  ImageDescription,
  Comments,
  CameraMake,
  CameraModel,
  AuthorExif,
  CopyrightExif,
  CreationSoftware,
  DateTimeOriginal,
  DateTimeDigitized,
  SubSecondTime,
  CompressedBPP,
  ShutterSpeed,
  ExposureTime,
  LensAperture,
  MaxApertureValue,
  FocalLength,
  FNumber,
  ExposureMode,
  ExposureCompensation,
  ISOSpeed,
  WhiteBalance,
  MeteringMode,
  ExposureProgram,
  SceneCaptureType,
  Orientation,
  FocalPlaneXResolution,
  FocalPlaneYResolution,
  GainControl,
  Colorspace,
  LightSource,
  FlashMode,
  DigitalZoomRatio,
  Contrast,
  Saturation,
  Sharpness,
  BrightnessValue,
  DistanceToSubject,
  DistanceToFocusPoint,
  SensingMethod,
  FocalLength35mm,
  Writer,
  Caption,
  Headline,
  SpecialInstructions,
  KeywordsIptc,
  Urgency,
  Category,
  OtherCategories,
  CopyrightIptc,
  AuthorIptc,
  AuthorTitle,
  Credit,
  Source,
  ObjectName,
  DateCreatedIptc,
  ReleasedDate,
  City,
  State,
  CountryCode,
  CountryName,
  JobIdentifier,
  LatitudeReference,
  LatitudeDegrees,
  LatitudeMinutes,
  LatitudeSeconds,
  LongitudeReference,
  LongitudeDegrees,
  LongitudeMinutes,
  LongitudeSeconds,
  AltitudeReference,
  Altitude,
  Flag,
};

inline constexpr int kColumnCount = 89;

enum class ColumnGroup { Program, User, File, Exif, Iptc, Gps };

struct ColumnInfo {
  Column column;
  const char16_t* name;  ///< as it stands in statements, filter lists and export files
  ColumnGroup group;
};

/// All columns, indexed by the value of `Column`.
std::span<const ColumnInfo, kColumnCount> Columns();

QString ColumnName(Column column);

/// The column of that name, letter case ignored.
std::optional<Column> ColumnByName(QStringView name);

}  // namespace zqm
