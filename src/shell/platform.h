// SPDX-License-Identifier: GPL-3.0-or-later
// What the system's own interface must do because no portable one can: errors by number, flushing,
// exclusive renames. Functions return 0 or an `errno` value. Links are followed unless told.
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

namespace zqm::platform {

enum class EntryKind { Missing, File, Folder, Link, Other };

/// What stands under a path itself, a link not followed.
EntryKind KindOf(const QString& path);
/// Whether both paths lead to one file; false when either is missing.
bool SameFile(const QString& a, const QString& b);
/// Tells the file that stands under a path from one that takes its place later; "" for none.
QString FileStamp(const QString& path);
/// Where a chain of links ends, also when nothing stands there; "" when the chain has no end.
QString ResolveLinks(const QString& path);

int MakeFolder(const QString& path);
int MakeLinkLike(const QString& link, const QString& copy);
/// Removes a file or a link itself, never a folder.
int RemoveFile(const QString& path);
int RenameReplacing(const QString& from, const QString& to);
/// EEXIST when something stands under `to`. A link is moved itself.
int RenameExclusive(const QString& from, const QString& to);
int SyncFolder(const QString& path);

/// Whether somebody may be reading along, rather than a file or another program.
bool StandardErrorIsTerminal();

/// A lock on a file that only one process can hold. The kernel lets go of it when the process ends,
/// in whatever way; the file stays.
class FileLock {
 public:
  FileLock() = default;
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  /// Makes the file if it is missing. EWOULDBLOCK when it is held, also by this process or object.
  /// A lock held before is let go only for the new one.
  int Take(const QString& path);

 private:
  int descriptor_ = -1;
};

/// An open file, closed at the end of its life.
class Handle {
 public:
  Handle() = default;
  ~Handle() { Close(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  /// Regular files only, without waiting for anything: EISDIR for a folder, ENODEV for the rest.
  int OpenToRead(const QString& path);
  /// Makes a new hidden file in the folder; `path` takes its path. Only the owner can read it when
  /// it is `secret`, as for a replacement whose mode comes later; else the usual mode.
  int CreateTemporary(const QString& folder, bool secret, QString& path);

  qint64 Size() const;
  /// Up to `size` bytes; fewer only at the end of the file.
  int Read(char* data, qint64 size, qint64& got);
  int Write(const char* data, qint64 size);
  int Rewind();
  int Sync();
  int Close();

  /// Owner, mode and the user's extended attributes; what may not be set stays as it is.
  void TakeAttributesOf(const Handle& other);
  void TakeTimesOf(const Handle& other);

 private:
  int descriptor_ = -1;
};

}  // namespace zqm::platform
