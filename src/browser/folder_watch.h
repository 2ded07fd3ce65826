// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

namespace zqm {

/// Tells when the shown folder or the selected photo changes under the program. Changes that come
/// in bursts are told once, when they have come to rest.
class FolderWatch : public QObject {
  Q_OBJECT
 public:
  FolderWatch();

  /// "" watches none.
  void WatchFolder(const QString& folder);
  void WatchPhoto(const QString& path);

 Q_SIGNALS:
  void FolderChanged();
  void PhotoChanged(const QString& path);

 private:
  QFileSystemWatcher watcher_;
  QString folder_;
  QString photo_;
  QTimer folderRest_;
  QTimer photoRest_;
};

}  // namespace zqm
