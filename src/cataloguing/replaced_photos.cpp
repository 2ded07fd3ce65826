// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/replaced_photos.h"

#include "cataloguing/catalogue_photo.h"
#include "cataloguing/virtual_exif.h"
#include "shell/busy.h"
#include "shell/files.h"
#include "shell/platform.h"

namespace zqm {

Outcome FollowPicture(Catalogue& catalogue, const QString& path, const ReadRequest& read) {
  PhotoRecordset& photos = catalogue.Photos();
  if (!photos.IsCatalogued(path)) return {};
  ReadRequest request = read;
  request.thumbnail = true;
  const auto photo = RunAside([&] { return ReadPhotoFile(path, request); });
  if (!photo) return Failure{photo.Reason()};
  if (!photos.LocateRow(path)) return photos.MoveFirst();
  UpdatefromForm3(ReadMetadataRecord(*photo, path), photo->thumbnail, photos);
  const Outcome updated = photos.CommitRow();
  return updated ? photos.MoveFirst() : updated;
}

void FollowReplaced(Catalogue& catalogue, const ReadRequest& read) {
  if (catalogue.ReadOnly()) return;
  for (const ReplacedFile& replaced : catalogue.Replaced()) {
    (void)FollowPicture(catalogue, replaced.path, read);
    // One that can't be written now waits for the next opening.
    if (!catalogue.FinishIntent(replaced.intent)) break;
  }
}

Result<ReplaceIntent> ReplaceIntent::Record(Catalogue& catalogue, const QString& path) {
  if (!catalogue.Photos().IsCatalogued(path)) return ReplaceIntent(catalogue, 0, {}, {});
  const QString stamp = platform::FileStamp(path);
  const auto recorded =
      catalogue.RecordIntent({QString::fromUtf16(kReplaceOperation), path, stamp});
  if (!recorded) return Failure{recorded.Reason()};
  return ReplaceIntent(catalogue, *recorded, path, stamp);
}

void ReplaceIntent::Drop() const {
  // What can't be dropped now does no harm at the next opening.
  if (platform::FileStamp(path_) == stamp_) (void)Finish();
}

}  // namespace zqm
