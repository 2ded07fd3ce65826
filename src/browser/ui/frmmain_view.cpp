// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's ways to look at photos.
#include <algorithm>

#include "browser/ui/frmmain.h"
#include "browser/ui/thumbnail_panel.h"
#include "imaging/ui/image_multi_x.h"
#include "shell/messages.h"
#include "viewers/ui/frmcompare.h"
#include "viewers/ui/frmfull.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr char16_t kNoPhotos[] = u"There are no photos to show.";
constexpr char16_t kTooFew[] = u"Please select two or more photos to compare them.";

}  // namespace

void frmmain::ViewFullScreen(const QString& from) {
  if (!NothingWaits()) return;
  const QStringList& selected = browser_.Selected();
  const QStringList photos = selected.size() > 1 ? selected : browser_.Thumbnails().FileNames();
  if (photos.isEmpty()) {
    MsgBox(QString::fromUtf16(kNoPhotos), MessageKind::Information);
    return;
  }
  const QString start = from.isEmpty() ? selected.value(0) : from;
  frmfull window(session_, photos, static_cast<int>(std::max<qsizetype>(0, photos.indexOf(start))),
                 this);
  window.exec();
  const QString last = window.LastShown();
  if (browser_.Selected().contains(last) || browser_.Thumbnails().IndexOf(last) < 0) {
    browser_.RefreshLive();
    return thumbnails_->View().MakeCurrent(last);
  }
  browser_.RefreshMarks();
  thumbnails_->View().SelectPaths({last});
}

void frmmain::ComparePhotos() {
  if (!NothingWaits()) return;
  const QStringList photos = browser_.Selected();
  if (photos.size() < 2) {
    MsgBox(QString::fromUtf16(kTooFew), MessageKind::Information);
    return;
  }
  frmcompare window(session_, photos, this);
  window.exec();
  browser_.RefreshLive();
}

}  // namespace zqm
