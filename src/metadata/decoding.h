// SPDX-License-Identifier: GPL-3.0-or-later
// From the keys of a file's parameters to the texts that panels show and catalogues store.
#pragma once

#include <QString>
#include <array>
#include <optional>
#include <span>
#include <vector>

#include "catalogue/columns.h"
#include "imaging/file_parameters.h"

namespace zqm {

/// For whom a value is decoded. The panel shows dates in the user's form; the catalogue's record
/// keeps dates and sub-seconds as the file has them.
enum class DecodeFor { Panel, Record };

/// A line of the EXIF, GPS or IPTC page. `column` is where the catalogue keeps it, if it does.
struct MetadataField {
  const char16_t* caption;
  std::optional<Column> column;
};

/// A line of the IPTC page and its dataset of `kIptcRecord`.
struct IptcField {
  MetadataField field;
  int dataset;
};
inline constexpr int kIptcRecord = 2;  ///< the application record
inline constexpr int kUrgencyDataset = 10;

struct DecodedField {
  const MetadataField* field;
  QString text;
  QString raw;  ///< as the file has it, so that no edit of the text shown loses it
};

/// Numbers without unit or prefix, for editors that don't parse the display text back.
enum class Plain {
  ShutterDenominator,  ///< of "1/n sec"
  ShutterSeconds,      ///< of "t sec"
  LensAperture,        ///< F-number
  MaxAperture,         ///< F-number
  FocalLength,         ///< mm
  FNumber,
  Iso,
  ExposureCompensation,
  FocusDistance,        ///< metres, or "Unknown"
  ExposureDenominator,  ///< of "1/n sec"
  ExposureSeconds,      ///< of "t sec"
};
inline constexpr int kPlainCount = 11;

struct DecodedExif {
  std::vector<DecodedField> fields;  ///< in the panel's order
  std::array<QString, kPlainCount> plain;
  /// The computed shutter value: seconds before rounding, or the rounded denominator.
  QString shutterValue;
};

/// All lines of the three pages in their order, whatever a file has.
std::vector<const MetadataField*> ExifFields();
std::vector<const MetadataField*> GpsFields();
std::vector<const MetadataField*> IptcFields();
std::span<const IptcField> IptcDatasets();

/// The EXIF page. Empty for a file without EXIF (`EXIF_HASEXIF` 0).
DecodedExif DecodeExif(const FileParameters& parameters, DecodeFor target);

/// The GPS page; empty for a file without EXIF. Degrees, minutes and seconds stay apart.
std::vector<DecodedField> DecodeGps(const FileParameters& parameters);

/// The IPTC page: the first item of each dataset, for any file.
std::vector<DecodedField> DecodeIptc(const FileParameters& parameters);

}  // namespace zqm
