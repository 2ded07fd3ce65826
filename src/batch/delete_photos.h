// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include "batch/batch_run.h"
#include "catalogue/catalogue.h"
#include "cataloguing/browser_view.h"

namespace zqm {

/// Deletes the files for good, and their rows with them. A missing file is a failure, and its row
/// stays. Reasons: "File is offline or missing", "Permission was denied", or why the catalogue
/// can't be written, in which case nothing is deleted.
BatchResult DeletePhotos(Catalogue& catalogue, const QStringList& paths, BrowserView* view,
                         const BatchObserver& observer);

/// Takes the rows out and leaves the files alone, whether they stand or not. Fails only where the
/// catalogue can't be written.
BatchResult RemovePhotos(Catalogue& catalogue, const QStringList& paths, BrowserView* view,
                         const BatchObserver& observer);

/// Those of the photos whose row is marked as rejected, in their order.
QStringList RejectedPhotos(const Catalogue& catalogue, const QStringList& paths,
                           const std::function<void(int done, int total)>& progress = {});

namespace delete_text {
inline constexpr BatchTexts kDelete = {
    u"Deleting selected photos. Please wait...",
    u"The following photos could not be deleted from disk and database:",
    u"Selected photo(s) have been removed from disk and from database."};
inline constexpr BatchTexts kRemove = {u"Deleting selected photos. Please wait...",
                                       u"The following photos could not be removed from the "
                                       u"database:",
                                       u"Selected photo(s) have been removed from the database."};
inline constexpr char16_t kAskSelected[] =
    u"Delete the selected photo(s) from disk or just remove them from the database?";
inline constexpr char16_t kAskRejected[] =
    u"Delete the rejected photo(s) from disk or just remove them from the database?";
inline constexpr char16_t kForGood[] =
    u"Delete will remove the files from disk PERMANENTLY and from the database.";
inline constexpr char16_t kPrepare[] = u"Preparing to delete selected file(s). Please wait...";
inline constexpr char16_t kPrepareRejected[] =
    u"Preparing to delete rejected photo(s). Please wait...";
inline constexpr char16_t kNoneRejected[] = u"There are no photos that are marked as rejected.";
}  // namespace delete_text

}  // namespace zqm
