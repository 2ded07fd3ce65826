// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/folder_watch.h"

#include "shell/files.h"

namespace zqm {
namespace {

constexpr int kRestMilliseconds = 300;

void Exchange(QFileSystemWatcher& watcher, QString& watched, const QString& path) {
  if (!watched.isEmpty()) watcher.removePath(watched);
  watched = path;
  if (!path.isEmpty()) watcher.addPath(path);
}

}  // namespace

FolderWatch::FolderWatch() {
  for (QTimer* timer : {&folderRest_, &photoRest_}) {
    timer->setSingleShot(true);
    timer->setInterval(kRestMilliseconds);
  }
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] { folderRest_.start(); });
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, [this] { photoRest_.start(); });
  connect(&folderRest_, &QTimer::timeout, this, &FolderWatch::FolderChanged);
  connect(&photoRest_, &QTimer::timeout, this, [this] {
    const QString photo = photo_;
    // A file that was replaced is another one to the watcher.
    WatchPhoto(FileExists(photo) ? photo : QString());
    Q_EMIT PhotoChanged(photo);
  });
}

void FolderWatch::WatchFolder(const QString& folder) {
  folderRest_.stop();
  Exchange(watcher_, folder_, folder);
}

void FolderWatch::WatchPhoto(const QString& path) {
  photoRest_.stop();
  Exchange(watcher_, photo_, path);
}

}  // namespace zqm
