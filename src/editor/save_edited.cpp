// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/save_edited.h"

#include <algorithm>

#include "batch/carry_photos.h"
#include "batch/existing_names.h"
#include "batch/file_and_row.h"
#include "batch/resize_photos.h"
#include "catalogue/reasons.h"
#include "cataloguing/replaced_photos.h"
#include "editor/edit_text.h"
#include "imaging/file_filters.h"
#include "imaging/raster.h"
#include "shell/busy.h"
#include "shell/files.h"
#include "shell/platform.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr const char16_t* kNonAlpha[] = {u"jpg", u"gif", u"pcx", u"bmp", u"jp2", u"j2k", u"ps"};

Failure Refuse(const char16_t* reason) {
  return Failure{QString::fromUtf16(reason)};
}

/// What is done with the pixels before they are written; may be empty.
using Change = std::function<void(Picture& picture)>;

// Pixels that stood in the file once, before it was saved over, stand there no longer: in a copy
// they are others.
void MakeAnew(Picture& picture) {
  picture.SetImage(picture.Image().copy());
}

/// Beside the interface thread. `open` is told when it is the file that was written.
Outcome Write(Picture picture, const QString& path, const Change& change, EditedFile& open) {
  picture.SetIOProperty(u"EXIF_Software", u"Zolmira QM"_s);
  bool anew = false;
  Outcome saved = RunAside([&] {
    if (open.rewritten) MakeAnew(picture);
    if (change) change(picture);
    anew = !picture.PixelsUntouched();
    return picture.SaveToFile(path);
  });
  if (saved && platform::SameFile(path, open.path))
    open = {open.path, platform::FileStamp(open.path), anew};
  return saved;
}

void RemoveAlpha(Picture& picture) {
  if (HasAlphaChannel(picture.Image())) picture.SetImage(RemoveAlphaChannel(picture.Image()));
}

/// Writes a file whose row, if it has one, is to follow. Whatever happens between, the next opening
/// of the catalogue brings both together.
SaveResult WriteAndFollow(Catalogue& catalogue, const QString& path,
                          const std::function<Outcome()>& write,
                          const std::function<Outcome()>& follow) {
  if (catalogue.ReadOnly() && catalogue.Photos().IsCatalogued(path))
    return {Refuse(kReasonDatabaseReadOnly), {}};
  const auto intent = ReplaceIntent::Record(catalogue, path);
  if (!intent) return {Failure{intent.Reason()}, {}};
  if (Outcome saved = write(); !saved) {
    intent->Drop();
    return {saved, {}};
  }
  const Outcome followed = follow();
  return {{}, followed ? intent->Finish() : followed};
}

/// The browser after a picture was saved under another name: a list of hits loses it, since it
/// hasn't a row any more; in its folder it is shown anew, or joins the others.
void AdjustThumbnailsEdit(BrowserView* view, const QString& path) {
  if (view == nullptr) return;
  view->ShowWritten(path, false);
  view->Live();
}

}  // namespace

EditedFile EditedFile::Of(const QString& path) {
  return {path, platform::FileStamp(path)};
}

Outcome MayBeEdited(const QString& path) {
  return FileExists(path) ? Outcome() : Refuse(edit_text::kOffline);
}

QString SaveResult::Reason() const {
  if (!saved || followed) return saved.Reason();
  return u"The photo has been saved, but not its entry in the database: "_s + followed.Reason();
}

SaveResult SaveEdited(const SaveFollowers& followers, const Picture& picture, EditedFile& file) {
  const QString now = platform::FileStamp(file.path);
  if (!now.isEmpty() && now != file.stamp) return {Refuse(kReasonChangedByOther), {}};
  Picture best = picture;
  SetBestQuality(best);
  const auto write = [&] { return Write(best, file.path, {}, file); };
  const SaveResult result = WriteAndFollow(followers.catalogue, file.path, write, [&] {
    return FollowPicture(followers.catalogue, file.path, followers.read);
  });
  if (!result.saved) return result;
  if (followers.view != nullptr) {
    followers.view->ShowChanged(file.path);
    followers.view->Live();
  }
  return result;
}

SaveTarget FindSaveTarget(const QString& typed) {
  const QString path = WithSaveExtension(AbsolutePath(typed));
  const QString standing = ExistingNames().Find(path);
  return standing.isEmpty() ? SaveTarget{path, false} : SaveTarget{standing, true};
}

QString ReplaceQuestion(const QString& path) {
  return path + u" already exists.\nDo you want to replace it?"_s;
}

SaveResult SaveEditedAs(const SaveFollowers& followers, const Picture& picture,
                        const SaveTarget& target, EditedFile& open) {
  // What has come to stand there since the user was asked stays.
  if (!target.exists && FileExists(target.path)) return {Refuse(kReasonExists), {}};
  const auto fit = [&target](Picture& copy) {
    if (NonAlphaExtension(target.path)) RemoveAlpha(copy);
  };
  const auto write = [&] { return Write(picture, target.path, fit, open); };
  const SaveResult result = WriteAndFollow(followers.catalogue, target.path, write, [&] {
    return CatalogueRemoval(followers.catalogue, target.path);
  });
  if (!result.saved) return result;
  AdjustThumbnailsEdit(followers.view, target.path);
  return result;
}

bool NonAlphaExtension(const QString& path) {
  const QString extension = GetExtensionName(path).toLower();
  return std::ranges::any_of(
      kNonAlpha, [&](const char16_t* known) { return extension == QStringView(known); });
}

}  // namespace zqm
