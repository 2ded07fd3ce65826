// SPDX-License-Identifier: GPL-3.0-or-later
// What the browser does for runs that write pictures, and what it shows of them.
#include "batch/rotate_photos.h"
#include "browser/browser.h"
#include "browser/thumbnail_marks.h"
#include "shell/files.h"
#include "shell/platform.h"

using namespace Qt::StringLiterals;

namespace zqm {

void Browser::mnurotate_Click(const Turn& turn) {
  if (Refused() || !keywords_.CheckUpdate() || selected_.isEmpty()) return;
  PictureResult result;
  {
    BusyRun busy(busy_, QString::fromUtf16(turn.waitText));
    YieldToInterface();
    const BatchObserver observer = [&busy](const BatchProgress& at) {
      busy.Progress(at.done, at.total);
    };
    result =
        RotatePhotos({catalogue_, this, observer, {}}, selected_, turn, session_.WorkSettings());
  }
  if (!result.failures.Empty()) Q_EMIT FailuresFound(result.failures);
}

void Browser::ShowChanged(const QString& path) {
  if (const int at = thumbnails_.IndexOf(path); at >= 0) thumbnails_.UpdateImage(at);
}

// In a folder the photo joins the others; a list of hits doesn't say any more what the search would
// find.
void Browser::ShowWritten(const QString& path, bool catalogued) {
  if (source_ == Source::Catalogue) return RemovePhoto(path);
  // Under another spelling it is the same folder only where the file system says so.
  const QString folder = GetParentFolderName(path);
  if (source_ != Source::Folder || (folder != folder_ && !platform::SameFile(folder, folder_)))
    return;
  int at = thumbnails_.IndexOf(path);
  if (at >= 0)
    thumbnails_.UpdateImage(at);
  else
    at = thumbnails_.AppendImage(path);
  thumbnails_.SetLook(at, catalogued ? CataloguedLook(QString()) : UncataloguedLook());
}

void Browser::Say(const QString& line) {
  Q_EMIT Said(line);
}

}  // namespace zqm
