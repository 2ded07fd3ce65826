// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/mount.h>

#include <QByteArray>
#include <QString>

namespace zqm::test {

/// A file system of one megabyte over a folder, where this user may mount one.
class SmallDisk {
 public:
  explicit SmallDisk(const QString& folder)
      : folder_(folder.toUtf8()),
        mounted_(mount("tmpfs", folder_.constData(), "tmpfs", 0, "size=1m") == 0) {}
  ~SmallDisk() {
    if (mounted_) umount2(folder_.constData(), MNT_DETACH);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  bool IsMounted() const { return mounted_; }

 private:
  QByteArray folder_;
  bool mounted_;
};

}  // namespace zqm::test
