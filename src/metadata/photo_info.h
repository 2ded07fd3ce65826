// SPDX-License-Identifier: GPL-3.0-or-later
// What the panels say of one photo: from its file, or from its row when the file is away.
#pragma once

#include <QString>
#include <array>
#include <vector>

#include "catalogue/photo_recordset.h"
#include "imaging/photo_reader.h"
#include "metadata/decoding.h"

namespace zqm {

/// The lines of the properties panel, in their order.
enum class Property {
  FileName,
  FileType,
  Location,
  Size,
  Width,
  Height,
  HorizontalResolution,
  VerticalResolution,
  Created,
  Modified,
  Accessed,
};
inline constexpr int kPropertyCount = 11;
const char16_t* PropertyCaption(Property property);
using PhotoProperties = std::array<QString, kPropertyCount>;

/// The metadata pages, in the order of their tabs.
enum class MetadataPage { Exif, Gps, Iptc };
inline constexpr int kMetadataPageCount = 3;

struct MetadataLine {
  const char16_t* caption;
  QString text;
};
/// Every line of a page stands in it, with an empty text where the photo says nothing.
using MetadataLines = std::vector<MetadataLine>;

struct PhotoInfo {
  PhotoProperties properties;
  std::array<MetadataLines, kMetadataPageCount> pages;
  /// Numbers without their units; empty where the row speaks for the file.
  std::array<QString, kPlainCount> plain;

  const QString& Text(Property property) const {
    return properties[static_cast<std::size_t>(property)];
  }
  const MetadataLines& Page(MetadataPage page) const {
    return pages[static_cast<std::size_t>(page)];
  }
  /// The text of a page's line; "" for a caption that it doesn't have.
  QString Line(MetadataPage page, QStringView caption) const;
};

/// All lines, all empty: no photo, or several.
PhotoInfo EmptyPhotoInfo();

/// From a file that has just been read. Without EXIF its page and the GPS page are empty.
PhotoInfo FilePhotoInfo(const QString& path, const PhotoFile& photo);

/// From the current row: the stored texts, with units where the file's would have them and dates in
/// the user's form.
PhotoInfo LoadInfoFromDatabase(const PhotoRecordset& photos);

}  // namespace zqm
