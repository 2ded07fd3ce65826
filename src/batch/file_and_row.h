// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>

#include "catalogue/catalogue.h"
#include "shell/result.h"

namespace zqm {

/// What a step does with the file itself. It runs beside the interface thread, which waits for it
/// and paints.
using FileChange = std::function<Outcome()>;

/// Changes a file and lets its row follow, behind an intent: whatever happens between, the next
/// opening of the catalogue brings both together. Without a row at either path only the file is
/// changed. When the row can't be written `undo` puts the file back; an empty one leaves it to the
/// next opening. Reasons: those of `change`, or why the catalogue can't be written.
Outcome ChangeFileAndRow(Catalogue& catalogue, const Intent& intent, const FileChange& change,
                         const FileChange& undo);

/// The row of a path goes; nothing happens without one.
Outcome CatalogueRemoval(Catalogue& catalogue, const QString& path);

/// A failed change of a file in the words that all runs over files use: it is missing, or
/// "Permission was denied" for whatever else the file system said.
Outcome AsDenied(const Outcome& changed);

}  // namespace zqm
