// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include "batch/batch_run.h"
#include "batch/photo_commands.h"
#include "catalogue/catalogue.h"
#include "cataloguing/browser_view.h"
#include "shell/result.h"

namespace zqm {

enum class RenameMode { Sequential, SearchAndReplace, SingleFile };

/// What the user asks for; each mode reads its own fields.
struct RenameOptions {
  RenameMode mode = RenameMode::Sequential;
  QString customText;
  QString startNumber = QStringLiteral("1");
  QString searchFor, replaceBy;
  QString newName;  ///< without extension
};

/// "2026-11-23".
QString DefaultCustomText(QDate today);

/// The new file name of each photo, extension kept. Sequential: the first has the start number as
/// it was typed ("007"), each later one the number before it plus one ("8"). Search and replace:
/// all occurrences in the base name, exact case.
QStringList RenamePreview(const QStringList& paths, const RenameOptions& options);

/// Why the run can't start, in words for the user.
Outcome CheckRename(const RenameOptions& options);

/// Gives each photo the name of the same place in `newNames`, its row with it. `view` may be null;
/// it is told what was renamed, and not that the run is through. Reasons: "File is offline or
/// missing", "Renaming this file would create duplicates in the destination folder", "The new name
/// is identical to the current name", "Permission was denied", "New name contain invalid
/// characters", or why the catalogue can't be written; the file has its old name then.
BatchResult RenamePhotos(Catalogue& catalogue, const QStringList& paths,
                         const QStringList& newNames, BrowserView* view,
                         const BatchObserver& observer);

namespace rename_text {
inline constexpr BatchTexts kRename = {u"Renaming selected file(s). Please wait...",
                                       u"The following file(s) could not be renamed:",
                                       u"Renaming Images Completed."};
inline constexpr char16_t kPrepare[] = u"Preparing to rename selected file(s). Please wait...";
inline constexpr char16_t kUnusable[] =
    u"Cannot rename the selected file(s) because they are offline or missing.";
inline constexpr char16_t kRunning[] = u"Renaming selected files. Please wait...";
}  // namespace rename_text

/// Takes all photos as soon as one stands. Not of the numbered section of the menu.
inline constexpr PhotoCommand kRenameCommand = {0, u"", rename_text::kPrepare,
                                                rename_text::kUnusable, false};

}  // namespace zqm
