// SPDX-License-Identifier: GPL-3.0-or-later
// What the browser does for the commands over files: choosing their photos, following what they
// did.
#include <QBuffer>
#include <new>

#include "batch/delete_photos.h"
#include "batch/external_editors.h"
#include "batch/photo_commands.h"
#include "batch/rename_photos.h"
#include "browser/browser.h"
#include "browser/thumbnail_marks.h"
#include "imaging/view_reader.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "viewers/slideshow.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr char16_t kOnePicture[] = u"Select only one picture to use as wallpaper.";
constexpr char16_t kNoWallpaper[] =
    u"The photo that you have selected is either offline or missing and thus cannot be use as a "
    u"wallpaper.";
constexpr char16_t kSettingWallpaper[] = u"Setting current photo as wallpaper. Please wait...";
constexpr char16_t kWallpaperSet[] = u"The selected photo has been set as your desktop wallpaper.";

/// The picture as a Windows bitmap at `path`, in full size.
Outcome WriteBitmap(const QString& photo, const QString& path, const ReadRequest& request) try {
  const auto shown = ReadViewPhoto(photo, QSize(), request);
  if (!shown) return Failure{shown.Reason()};
  if (shown->image.isNull()) return Failure{shown->reason};
  QBuffer bitmap;
  bitmap.open(QBuffer::WriteOnly);
  if (!shown->image.convertToFormat(QImage::Format_RGB32).save(&bitmap, "BMP"))
    return Failure{u"The picture is too large for a bitmap."_s};
  return WriteFileAtomically(path, bitmap.data());
} catch (const std::bad_alloc&) {
  return Failure{u"Not enough memory"_s};
}

}  // namespace

QStringList Browser::Prepare(const char16_t* busyText,
                             const std::function<Result<QStringList>(BusyRun& run)>& photos) {
  if (Refused() || !keywords_.CheckUpdate()) return {};
  const auto found = [&] {
    BusyRun run(busy_, QString::fromUtf16(busyText));
    YieldToInterface();
    return photos(run);
  }();
  if (found) return *found;
  if (!found.Reason().isEmpty()) MsgBox(found.Reason(), MessageKind::Information);
  return {};
}

QStringList Browser::mnufile2_Click(int index) {
  const PhotoCommand* command = FindPhotoCommand(index);
  if (command == nullptr) return {};
  return Prepare(command->prepare, [&](BusyRun& run) {
    return PreparePhotos(*command, selected_,
                         [&run](int done, int total) { run.Progress(done, total); });
  });
}

QStringList Browser::mnurename_Click() {
  return Prepare(kRenameCommand.prepare,
                 [&](BusyRun&) { return PreparePhotos(kRenameCommand, selected_, {}); });
}

QStringList Browser::mnuslide_Click() {
  return Prepare(kSlideshowCommand.prepare, [&](BusyRun& run) {
    return PreparePhotos(kSlideshowCommand, selected_,
                         [&run](int done, int total) { run.Progress(done, total); });
  });
}

QStringList Browser::mnudelete_Click() {
  return Prepare(delete_text::kPrepare, [&](BusyRun&) { return selected_; });
}

QStringList Browser::mnuremoverejected_Click() {
  return Prepare(delete_text::kPrepareRejected, [&](BusyRun& run) -> Result<QStringList> {
    QStringList rejected =
        RejectedPhotos(catalogue_, thumbnails_.FileNames(),
                       [&run](int done, int total) { run.Progress(done, total); });
    if (rejected.isEmpty()) return Failure{QString::fromUtf16(delete_text::kNoneRejected)};
    return rejected;
  });
}

QStringList Browser::mnuchoose_Click() {
  if (Refused() || !keywords_.CheckUpdate()) return {};
  const auto photos = PhotosForEditor(selected_, editor_text::kUnusableForChoice);
  if (photos) return *photos;
  MsgBox(photos.Reason(), MessageKind::Information);
  return {};
}

void Browser::mnuwallpaper_Click(WallpaperStyle style) {
  if (Refused() || !keywords_.CheckUpdate() || selected_.isEmpty()) return;
  const auto refuse = [](const QString& text) { MsgBox(text, MessageKind::Information); };
  if (selected_.size() > 1) return refuse(QString::fromUtf16(kOnePicture));
  const QString photo = selected_.first();
  if (!FileExists(photo)) return refuse(QString::fromUtf16(kNoWallpaper));
  const Outcome changed = [&] {
    const BusyRun run(busy_, QString::fromUtf16(kSettingWallpaper));
    YieldToInterface();
    const QString bitmap = session_.Folders().ScratchFolder() + u"/Wallpaper.bmp"_s;
    Outcome written = RunAside([photo, bitmap, request = session_.ReadSettings()] {
      return WriteBitmap(photo, bitmap, request);
    });
    return written ? ChangeWallPaper(bitmap, style) : written;
  }();
  if (changed)
    MsgBox(QString::fromUtf16(kWallpaperSet), MessageKind::Information);
  else
    MsgBox(changed.Reason(), MessageKind::Warning);
}

// What a run over files tells.

void Browser::MarkUncatalogued(const QString& path) {
  if (const int at = thumbnails_.IndexOf(path); at >= 0)
    thumbnails_.SetLook(at, UncataloguedLook());
}

void Browser::RemovePhoto(const QString& path) {
  gone_.insert(path);
}

void Browser::RenamePhoto(const QString& path, const QString& newPath) {
  if (thumbnails_.IndexOf(path) < 0) return;
  // The same photo may have been renamed in this run before.
  const auto former = [this](const QString& now) {
    return formerly_.contains(now) ? formerly_.take(now) : now;
  };
  // An entry of the new path was of a photo that is no longer there.
  if (thumbnails_.IndexOf(newPath) >= 0) {
    removing_ = true;
    thumbnails_.DeleteImages({newPath});
    removing_ = false;
    selected_.removeOne(former(newPath));
  }
  thumbnails_.SetImageFileName(thumbnails_.IndexOf(path), newPath);
  formerly_.insert(newPath, former(path));
}

void Browser::Live() {
  // Those that stay selected keep what was typed for them.
  live_ = true;
  RemoveFromList(QStringList(gone_.begin(), gone_.end()));
  gone_.clear();
  if (!formerly_.isEmpty()) {
    QHash<QString, QString> now;
    for (const auto& [newPath, former] : std::exchange(formerly_, {}).asKeyValueRange())
      now.insert(former, newPath);
    QStringList selected = selected_;
    for (QString& path : selected)
      path = now.value(path, path);
    SetSelection(selected);
    Q_EMIT SelectionKept();
  }
  RefreshLive();
}

}  // namespace zqm
