// SPDX-License-Identifier: GPL-3.0-or-later
// Bringing many files into the catalogue: the walk over folders, the run over files, what the user
// is told at the end.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <functional>

#include "catalogue/catalogue.h"
#include "cataloguing/browser_view.h"
#include "imaging/photo_reader.h"
#include "shell/failure_list.h"

namespace zqm {

/// The photos right inside a folder: files with a known extension, sorted by name, letter case
/// ignored. With `recursive` those of all folders below too, a folder's own before its subfolders';
/// links to folders are not followed. A folder that can't be read becomes a failure.
QStringList ScanFolder(const QString& folder, bool recursive, FailureList& failures);

/// What the user gives to all files of one import; empty or invalid leaves the column alone.
struct ImportTexts {
  QString notes;
  QString author;
  QDate date;
};

/// The date that a user typed for an import, day first ("dd/mm/yyyy"); invalid for any other text.
QDate ParseImportDate(const QString& text);

struct ImportProgress {
  int done = 0;  ///< files finished, 0 to total
  int total = 0;
  QString file;  ///< path under work
};

struct ImportResult {
  int added = 0;
  FailureList failures;
};

/// Adds the files to the catalogue one after the other. Each that can't be added becomes a failure
/// and the run goes on. `progress` is called before each file, about every 30 ms while one is read,
/// and once at the end; it is where a window yields to its user interface. `view` may be nullptr.
ImportResult CatalogueFiles(const QStringList& paths, const ImportTexts& texts, ReadRequest request,
                            Catalogue& catalogue, BrowserView* view,
                            const std::function<void(const ImportProgress&)>& progress);

/// Reads metadata and thumbnail of catalogued photos again. `Flag` and what the user gave stay; a
/// photo without a row is a failure. `added` is the number of rows that were written. Runs and
/// reports as `CatalogueFiles` does.
ImportResult RebuildPhotos(const QStringList& paths, ReadRequest request, Catalogue& catalogue,
                           const std::function<void(const ImportProgress&)>& progress);

namespace import_text {
inline constexpr char16_t kNoFolder[] = u"No folder has been selected.";
inline constexpr char16_t kInvalidDate[] = u"Invalid date format.";
inline constexpr char16_t kNoImages[] = u"No Images were found in the selected folders.";
inline constexpr char16_t kFailures[] =
    u"The following files could to be added to Zolmira QM Database:";
inline constexpr char16_t kDone[] =
    u"Images from the selected folder(s) have been added to Zolmira QM Database.";
inline constexpr char16_t kFilesFailures[] =
    u"The following files could not be added to the database:";
inline constexpr char16_t kFilesDone[] = u"The selected file(s) have been added to the database.";
inline constexpr char16_t kRebuilding[] = u"Rebuilding Thumbnails and Metadata. Please wait...";
inline constexpr char16_t kRebuildFailures[] =
    u"Thumbnails and Metadata information for the following file(s) could not be updated:";
inline constexpr char16_t kRebuildDone[] =
    u"Thumbnails and Metadata information for the selected photo(s) have been updated.";
inline constexpr char16_t kUnreadableName[] = u"File name cannot be read";
inline constexpr char16_t kExists[] = u"File already exists in database";
}  // namespace import_text

}  // namespace zqm
