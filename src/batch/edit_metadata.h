// SPDX-License-Identifier: GPL-3.0-or-later
// Metadata of many photos: written, exported, removed. The picture itself stays as it is in the
// file, byte for byte; a catalogued photo's row is read anew from what the file then holds.
#pragma once

#include <QStringList>

#include "batch/batch_run.h"
#include "catalogue/catalogue.h"
#include "cataloguing/browser_view.h"
#include "metadata/exif_editor.h"
#include "metadata/iptc_editor.h"
#include "metadata/metadata_export.h"

namespace zqm {

/// Writes the fields of the edit into each file and stamps the program as its last writer, also
/// when the edit is empty. An XMP packet goes, since it could contradict the new values. `view` may
/// be null. Reasons: "File is offline or missing", "File is Read-Only", "Not TIFF or JPEG format",
/// those of `Picture::SaveToFile`, or why the catalogue can't be written; a catalogue known to be
/// read-only is said before the file is touched.
BatchResult ApplyExif(Catalogue& catalogue, const QStringList& paths, const ExifEdit& edit,
                      BrowserView* view, const BatchObserver& observer);

/// Likewise; PSD files are taken too, and others refused with "Not TIFF , PSD or JPEG format". Of
/// the items of a field's dataset the first is replaced, later ones stay.
BatchResult ApplyIptc(Catalogue& catalogue, const QStringList& paths, const IptcEdit& edit,
                      BrowserView* view, const BatchObserver& observer);

enum class MetadataBlock { Exif, Iptc };

/// Takes the whole block out of each file, the XMP packet with it; of EXIF the positions go too.
/// Reasons as for `ApplyIptc`.
BatchResult RemoveMetadata(Catalogue& catalogue, const QStringList& paths, MetadataBlock block,
                           BrowserView* view, const BatchObserver& observer);

/// Writes a text file for each photo into the folder, over one of that name: from the photo's file,
/// or from its row when the file is away. Reasons: "File is offline or missing" for a photo without
/// either, why the photo can't be read, or why the text can't be written.
BatchResult ExportMetadata(Catalogue& catalogue, const QStringList& paths, MetadataKind kind,
                           const QString& folder, const BatchObserver& observer);

struct ExportTexts {
  BatchTexts run;
  const char16_t* pick;  ///< title of the question for a folder
};

struct RemovalTexts {
  BatchTexts run;
  const char16_t* question;
};

namespace metadata_text {
inline constexpr BatchTexts kExif = {u"Writing EXIF to the selected image(s). Please wait...",
                                     u"The EXIF data of the following files could not be edited:",
                                     u"Writing EXIF to file(s) completed."};
inline constexpr BatchTexts kIptc = {u"Writing IPTC to the selected file(s). Please wait...",
                                     u"The IPTC data of the following files could not be edited:",
                                     u"Writing IPTC to file(s) completed."};
inline constexpr char16_t kReadOnly[] = u"File is Read-Only";
inline constexpr char16_t kNotForExif[] = u"Not TIFF or JPEG format";
inline constexpr char16_t kNotForIptc[] = u"Not TIFF , PSD or JPEG format";

const ExportTexts& Of(MetadataKind kind);
const RemovalTexts& Of(MetadataBlock block);
}  // namespace metadata_text

}  // namespace zqm
