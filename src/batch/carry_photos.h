// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include "batch/batch_run.h"
#include "catalogue/catalogue.h"
#include "cataloguing/browser_view.h"
#include "shell/result.h"

namespace zqm {

enum class ExistingFiles { Skip, Overwrite };

/// Where photos are moved or copied to.
struct CarryOptions {
  QString folder;  ///< without a closing separator
  ExistingFiles existing = ExistingFiles::Skip;
};

/// "Select destination folder." when none was given.
Outcome CheckDestination(const QString& folder);

/// Whether a new folder may have that name, or why not.
Outcome CheckFolderName(const QString& name);

/// Makes a folder of that name in `parent`, or says why not.
Outcome CreateFolderIn(const QString& parent, const QString& name);

/// Each photo to the folder, its row with it: path and parent folder change, all else stays. A row
/// that the target's path had goes. `view` may be null. Reasons: "File is offline or missing",
/// "File already exists in destination folder", "Permission was denied", or why the catalogue can't
/// be written; the file is back where it was then, unless it has replaced another.
BatchResult MovePhotos(Catalogue& catalogue, const QStringList& paths, const CarryOptions& options,
                       BrowserView* view, const BatchObserver& observer);

/// Copies have no row; one that an overwritten file had goes. The sources' rows stay. Reasons as
/// above.
BatchResult CopyPhotos(Catalogue& catalogue, const QStringList& paths, const CarryOptions& options,
                       BrowserView* view, const BatchObserver& observer);

inline constexpr char16_t kReasonExists[] = u"File already exists in destination folder";

namespace carry_text {
inline constexpr BatchTexts kMove = {u"Moving selected file(s). Please wait...",
                                     u"The following photos could not be moved:",
                                     u"Selected photos have been moved to the specified folder."};
inline constexpr BatchTexts kCopy = {u"Copying selected files. Please wait...",
                                     u"The following photos could not be copied:",
                                     u"Selected photos have been copied to the specified folder."};
inline constexpr char16_t kNoDestination[] = u"Select destination folder.";
inline constexpr char16_t kNoFolderName[] = u"Enter the name of the new folder.";
inline constexpr char16_t kInvalidFolderName[] =
    u"Invalid folder name. Folder name cannot contain the following characters: "
    u"\\ / : * ?\" < > |";
inline constexpr char16_t kFolderExists[] =
    u"A folder with the name you specified already exists. Specify a different name.";
inline constexpr char16_t kNotReady[] = u"The device is not ready.";
}  // namespace carry_text

}  // namespace zqm
