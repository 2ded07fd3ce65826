// SPDX-License-Identifier: GPL-3.0-or-later
// After a folder was moved or renamed by another program: its rows follow. Files are not touched.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "catalogue/catalogue.h"
#include "shell/failure_list.h"

namespace zqm {

/// The different folders that photos of the catalogue are in, in row order.
QStringList CatalogueFolders(const Catalogue& catalogue);

/// The path with one separator at its end.
QString WithSeparator(const QString& folder);

/// Gives every row under `oldFolder`, folders below included, the path that it has under
/// `newFolder`. Every occurrence of the old folder's text in a path is replaced. A row stays as it
/// is, and becomes a failure, when no file stands at its new path, or when that path has a row.
/// All rows change in one transaction: when that fails, none has, and each is a failure.
/// `progress` is told how many rows of how many are done, and may yield to windows.
FailureList ReconnectFolder(Catalogue& catalogue, const QString& oldFolder,
                            const QString& newFolder,
                            const std::function<void(int done, int total)>& progress);

namespace reconnect_text {
inline constexpr char16_t kTitle[] = u"Reconnect Folder to Database";
inline constexpr char16_t kAnalyzing[] = u"Analyzing Folders in Database. Please Wait...";
inline constexpr char16_t kEmpty[] =
    u"Your database is currently empty and does not contain any folder.";
inline constexpr char16_t kNoOldFolder[] =
    u"Select the folder that was moved/renamed from the list of 'Folders Found in Database'.";
inline constexpr char16_t kNoNewFolder[] = u"Locate the folder that was moved/renamed.";
inline constexpr char16_t kReconnecting[] = u"Reconnecting folder to database. Please wait...";
inline constexpr char16_t kReconnectingTitle[] =
    u"Reconnecting folders to database. Please wait...";
inline constexpr char16_t kFailures[] = u"The path of the following files could not be updated.";
inline constexpr char16_t kDone[] = u"Selected folder has been reconnected to the database.";
inline constexpr char16_t kNotLocated[] = u"File could not be located in the specified folder";
inline constexpr char16_t kDuplicates[] =
    u"Changing the path of this file will create duplicates in the database";
}  // namespace reconnect_text

}  // namespace zqm
