// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/file_and_row.h"

#include "shell/busy.h"
#include "shell/files.h"

namespace zqm {

Outcome ChangeFileAndRow(Catalogue& catalogue, const Intent& intent, const FileChange& change,
                         const FileChange& undo) {
  const PhotoRecordset& photos = catalogue.Photos();
  if (!photos.IsCatalogued(intent.from) && !photos.IsCatalogued(intent.to)) return RunAside(change);
  const auto recorded = catalogue.RecordIntent(intent);
  if (!recorded) return Failure{recorded.Reason()};
  if (Outcome changed = RunAside(change); !changed) {
    // Left behind it would be dropped by the next opening, since nothing has happened.
    (void)catalogue.FinishIntent(*recorded);
    return changed;
  }
  Outcome followed = catalogue.FollowIntent(*recorded, intent);
  if (!followed && undo && RunAside(undo)) (void)catalogue.FinishIntent(*recorded);
  return followed;
}

Outcome CatalogueRemoval(Catalogue& catalogue, const QString& path) {
  PhotoRecordset& photos = catalogue.Photos();
  if (!photos.IsCatalogued(path)) return {};
  if (!photos.LocateRow(path)) return photos.MoveFirst();
  Outcome deleted = photos.DeleteCurrentRow();
  return deleted ? photos.MoveFirst() : deleted;
}

Outcome AsDenied(const Outcome& changed) {
  if (changed || changed.Reason() == QStringView(kReasonMissing)) return changed;
  return Failure{QString::fromUtf16(kReasonPermission)};
}

}  // namespace zqm
