// SPDX-License-Identifier: GPL-3.0-or-later
// What keeps the catalogues of a home in shape.
#pragma once

#include <QString>
#include <functional>

#include "session/session.h"
#include "shell/result.h"

namespace zqm {

/// The sizes of a catalogue file before and after, in bytes.
struct OptimizeReport {
  qint64 before = 0;
  qint64 after = 0;

  /// The report's lines: both sizes and the saving, each closed by a line break.
  QString Text() const;
};

/// Writes the active catalogue without its gaps to a new file and puts that in its place when it is
/// complete and sound. The catalogue is closed in between, and stays closed; `closing` is told
/// before, and is the last chance to let go of it. Until then `progress` hears how many rows of how
/// many are through, and may yield to windows. Whatever fails, the catalogue's file is the old one
/// or the new one, whole. Reasons are whole messages to the user.
Result<OptimizeReport> Optimize(Session& session,
                                const std::function<void(int done, int total)>& progress,
                                const std::function<void()>& closing = {});

/// Makes an empty catalogue of that name in the working folder, as a copy of the master. Reasons
/// are whole messages to the user.
Outcome CreateCatalogue(const SessionFolders& folders, const QString& name);

namespace maintenance_text {
inline constexpr char16_t kNotLocated[] = u"Cannot locate Zolmira QM database.";
inline constexpr char16_t kOptimizing[] = u"Optimizing Database. Please wait...";
inline constexpr char16_t kWillRestart[] = u"Zolmira QM will now restart.";
inline constexpr char16_t kNoName[] = u"Enter the name of the new database.";
inline constexpr char16_t kInvalidName[] =
    u" File name cannot contain the following characters: \\ / : * ? \" < > |";
inline constexpr char16_t kNameExists[] =
    u"A database with the name you specified already exists. Specify a different name.";
inline constexpr char16_t kCreating[] = u"Creating new database. Please wait...";
inline constexpr char16_t kCreated[] =
    u"The new database was successfully created.\nPlease restart Zolmira QM to load your new "
    u"database.";
}  // namespace maintenance_text

}  // namespace zqm
