// SPDX-License-Identifier: GPL-3.0-or-later
// Text files with a photo's metadata, one value a line. Labels, blanks and line order are the
// format: other programs read these files.
#pragma once

#include <QString>
#include <functional>

#include "catalogue/columns.h"

namespace zqm {

enum class MetadataKind { Exif, Iptc, Gps };

/// Where the values come from: a file that stands, or the row of one that doesn't. The two differ
/// in layout.
enum class ExportSource { File, Row };

/// What a photo says: the text of a column in the catalogue's form, or of a panel's line that no
/// column holds.
struct ExportValues {
  std::function<QString(Column column)> column;
  std::function<QString(QStringView caption)> extra;
};

/// The whole text, lines ended by "\n". `path` is the photo's.
QString ExportText(MetadataKind kind, ExportSource source, const QString& path,
                   const ExportValues& values);

/// "EXIF-IMG_0001.JPG.txt".
QString ExportFileName(MetadataKind kind, const QString& path);

/// A stored EXIF date in the user's form; what can't be read stands as it is.
QString HandleDateForExportEXIF(const QString& date);

}  // namespace zqm
