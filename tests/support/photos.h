// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDir>
#include <QFileInfo>
#include <QString>

namespace zqm::test {

/// The folder of real photos beside the checkout, or "" where there is none.
inline QString PhotosFolder() {
  const QString here = QFileInfo(QString::fromUtf8(__FILE__)).absolutePath();
  const QString folder = QDir::cleanPath(here + QStringLiteral("/../../../shared/photos"));
  return QFileInfo(folder).isDir() ? folder : QString();
}

/// A folder or file of it, or "" where it is absent: `Photos("camera")`. Skip the test then.
inline QString Photos(const QString& sub) {
  const QString folder = PhotosFolder();
  if (folder.isEmpty()) return {};
  const QString path = folder + u'/' + sub;
  return QFileInfo::exists(path) ? path : QString();
}
inline QString Photos(const char* sub) {
  return Photos(QString::fromUtf8(sub));
}

}  // namespace zqm::test
