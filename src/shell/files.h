// SPDX-License-Identifier: GPL-3.0-or-later
// Paths and files. The separator is the platform's, "/" here. Names as they have always been.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include "shell/result.h"

namespace zqm {

/// A file (also through a link) stands under the path; a folder or a dangling link is none.
bool FileExists(const QString& path);
bool FolderExists(const QString& path);

/// The text behind the last separator; a path without one comes back unchanged.
QString GetFileName(const QString& path);
/// "/a/b.jpg" gives "/a", "/b.jpg" gives "/". Without a separator: "".
QString GetParentFolderName(const QString& path);
/// Behind the last "." of the file name, without it; "" where the name has none.
QString GetExtensionName(const QString& path);
/// `GetFileName` less the extension and its ".".
QString GetBaseName(const QString& path);
/// The path without a closing separator; "/" stays.
QString StripSlash(const QString& path);
/// What has that name in the folder. Any name, unlike the toolkit's own, which takes ":a" for a
/// built-in resource.
QString PathIn(const QString& folder, const QString& name);
/// Absolute and cleaned ("." and ".." resolved by text), links kept. Every path that enters the
/// program goes through here.
QString AbsolutePath(const QString& path);

/// No owner write permission, or not writable for this user.
bool ReadOnlyFile(const QString& path);
/// False when a file name holds one of \ / : * ? " < > |.
bool CheckIfValidFN(const QString& name);

struct FileTimes {
  QDateTime created, modified, accessed;  ///< local time; invalid where the file system has none
};
FileTimes GetFileTimes(const QString& path);
/// Local date and time as text; "1/1/1601 0:00 AM" for an invalid time.
QString FileTimeToDate(const QDateTime& time);

/// Makes one folder (its parent must stand).
Outcome CreateFolder(const QString& path);
/// Replaces the target, by a temporary file and a rename. Modes and times go along.
Outcome CopyFile(const QString& from, const QString& to);
/// Never replaces. Across file systems: copied, compared, then removed at the source.
Outcome MoveFile(const QString& from, const QString& to);
/// As `MoveFile`, onto a file or link that may stand: it goes when the new one is in its place.
/// Refused ("Permission was denied") when it is read-only, or the same entry or file as `from`.
Outcome MoveFileOver(const QString& from, const QString& to);
/// Puts a file in the place of another, whose owner and mode it takes: by a rename, across file
/// systems by a copy that is complete before it is renamed. `from` is gone afterwards. On failure
/// both are as they were.
Outcome ReplaceFile(const QString& from, const QString& to);
/// Not to any recycle bin. A missing file is a failure.
Outcome DeleteFile(const QString& path);
/// The folder with all that is in it, into `to`, which is made.
Outcome CopyFolder(const QString& from, const QString& to);

/// The whole file in one read; a file over `limit` bytes is refused before anything is allocated,
/// never cut. Reasons: `kReasonMissing`, `kReasonPermission`, `kReasonFileTooLarge`, or the
/// system's own words, also for memory that isn't to be had.
Result<QByteArray> ReadWholeFile(const QString& path, qint64 limit = qint64{1} << 30);

/// Replaces the file's content so that a reader or a crash finds either the old or the new whole:
/// links are resolved, a read-only target is refused, a temporary in the target's folder is
/// written, flushed to disk and renamed over it; the target's mode is kept. On failure nothing is
/// left behind.
Outcome WriteFileAtomically(const QString& path, const QByteArray& content);

/// Flushes a folder's entries to disk, so that a rename in it outlives a power cut.
void SyncFolder(const QString& folder);

inline constexpr char16_t kReasonMissing[] = u"File is offline or missing";
inline constexpr char16_t kReasonPermission[] = u"Permission was denied";
inline constexpr char16_t kReasonFileTooLarge[] = u"File is too large";

/// The words for an `errno` value: "Permission was denied" for EACCES, EPERM and EROFS, else the
/// system's text.
QString ReasonForErrno(int number);

}  // namespace zqm
