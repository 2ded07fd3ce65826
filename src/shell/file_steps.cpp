// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/file_steps.h"

#include <QDir>
#include <cerrno>
#include <cstring>

#include "shell/files.h"
#include "shell/platform.h"

using namespace Qt::StringLiterals;

namespace zqm::steps {
namespace {

using platform::EntryKind;
using platform::Handle;

constexpr qint64 kBlock = 1 << 18;

/// A new file that goes away unless it was renamed into its place.
class Temporary {
 public:
  Temporary() = default;
  Temporary(const Temporary&) = delete;
  Temporary& operator=(const Temporary&) = delete;
  ~Temporary() {
    if (!path_.isEmpty()) platform::RemoveFile(path_);
  }

  int Create(const QString& folder, bool secret) {
    QString path;
    const int error = handle_.CreateTemporary(folder, secret, path);
    if (error == 0) path_ = path;
    return error;
  }

  Handle& File() { return handle_; }

  int Flush() {
    const int error = handle_.Sync();
    return error != 0 ? error : handle_.Close();
  }

  int Rename(const QString& target, int (*rename)(const QString&, const QString&)) {
    const int error = rename(path_, target);
    if (error == 0) path_.clear();
    return error;
  }

 private:
  Handle handle_;
  QString path_;
};

QString FolderOf(const QString& path) {
  const QString folder = GetParentFolderName(path);
  return folder.isEmpty() ? u"."_s : folder;
}

int CopyContent(Handle& from, Handle& to) {
  QByteArray block(kBlock, Qt::Uninitialized);
  for (;;) {
    qint64 got = 0;
    if (const int error = from.Read(block.data(), block.size(), got)) return error;
    if (got == 0) return 0;
    if (const int error = to.Write(block.constData(), got)) return error;
  }
}

int CompareContent(Handle& first, Handle& second) {
  QByteArray one(kBlock, Qt::Uninitialized);
  QByteArray other(kBlock, Qt::Uninitialized);
  for (Handle* file : {&first, &second}) {
    if (const int error = file->Rewind()) return error;
  }
  for (;;) {
    qint64 gotOne = 0;
    qint64 gotOther = 0;
    if (const int error = first.Read(one.data(), kBlock, gotOne)) return error;
    if (const int error = second.Read(other.data(), kBlock, gotOther)) return error;
    const bool same = gotOne == gotOther && std::memcmp(one.constData(), other.constData(),
                                                        static_cast<size_t>(gotOne)) == 0;
    if (!same) return EIO;
    if (gotOne == 0) return 0;
  }
}

/// Where the new content goes: the end of the links; a reason when it may not be replaced.
Result<QString> ReplaceableTarget(const QString& path) {
  const QString target = platform::ResolveLinks(path);
  if (target.isEmpty()) return Failure{ReasonForErrno(ELOOP)};
  const EntryKind kind = platform::KindOf(target);
  if (kind == EntryKind::Folder) return Failure{ReasonForErrno(EISDIR)};
  if (kind == EntryKind::Other) return Failure{ReasonForErrno(ENODEV)};
  if (ReadOnlyFile(target)) return Failure{QString::fromUtf16(kReasonPermission)};
  return target;
}

/// A new file beside the target, filled, flushed to disk, then given the target's name.
Outcome PutInPlace(const QString& target, bool secret, const Fill& fill,
                   int (*rename)(const QString&, const QString&)) {
  const QString folder = FolderOf(target);
  Temporary fresh;
  if (const int error = fresh.Create(folder, secret)) return FromErrno(error);
  if (Outcome filled = fill(fresh.File()); !filled) return filled;
  int error = fresh.Flush();
  if (error == 0) error = fresh.Rename(target, rename);
  if (error == 0) platform::SyncFolder(folder);
  return FromErrno(error);
}

Outcome CopyInPlace(Handle& source, const QString& target, bool compare,
                    int (*rename)(const QString&, const QString&)) {
  const Fill fill = [&](Handle& copy) {
    int error = CopyContent(source, copy);
    if (error == 0 && compare) error = CompareContent(source, copy);
    copy.TakeAttributesOf(source);
    copy.TakeTimesOf(source);
    return FromErrno(error);
  };
  return PutInPlace(target, true, fill, rename);
}

/// On another file system. A link stays a link, as it does within one, also without a target.
Outcome CopyAcross(const QString& from, const QString& to,
                   int (*rename)(const QString&, const QString&)) {
  if (platform::KindOf(from) == EntryKind::Link) return FromErrno(platform::MakeLinkLike(from, to));
  Handle source;
  if (const int error = source.OpenToRead(from)) return Failure{ReasonForSource(error)};
  return CopyInPlace(source, to, true, rename);
}

Outcome MoveAcross(const QString& from, const QString& to) {
  if (Outcome copied = CopyAcross(from, to, platform::RenameExclusive); !copied) return copied;
  platform::SyncFolder(FolderOf(to));
  const int error = platform::RemoveFile(from);
  // A source that may not go means that nothing was moved.
  if (error != 0) platform::RemoveFile(to);
  return FromErrno(error);
}

/// Whether both paths name one entry of one folder, whatever links lead to it.
bool SameEntry(const QString& a, const QString& b) {
  return GetFileName(a) == GetFileName(b) &&
         QDir(FolderOf(a)).canonicalPath() == QDir(FolderOf(b)).canonicalPath();
}

void SyncBothFolders(const QString& from, const QString& to) {
  platform::SyncFolder(FolderOf(to));
  if (FolderOf(from) != FolderOf(to)) platform::SyncFolder(FolderOf(from));
}

/// A new spelling of the same entry, on a file system that ignores case. Where both spellings are
/// listed they are two entries, be they links to one file.
bool OnlyCaseDiffers(const QString& from, const QString& to) {
  if (from == to || from.compare(to, Qt::CaseInsensitive) != 0) return false;
  const QStringList names =
      QDir(FolderOf(to)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
  return platform::SameFile(from, to) && !names.contains(GetFileName(to));
}

}  // namespace

Outcome FromErrno(int number) {
  if (number == 0) return {};
  return Failure{ReasonForErrno(number)};
}

QString ReasonForSource(int number) {
  const bool noFile = number == ENOENT || number == ENOTDIR || number == EISDIR ||
                      number == ENODEV || number == ENXIO;
  return noFile ? QString::fromUtf16(kReasonMissing) : ReasonForErrno(number);
}

Outcome Replace(const QString& path, const Fill& fill) {
  const auto target = ReplaceableTarget(path);
  if (!target) return Failure{target.Reason()};
  const bool replaces = platform::KindOf(*target) == EntryKind::File;
  Handle old;
  // Write-only files exist; then the mode isn't known and the new file stays the owner's.
  const bool readable = replaces && old.OpenToRead(*target) == 0;
  const Fill fillLikeOld = [&](Handle& fresh) {
    Outcome filled = fill(fresh);
    if (filled && readable) fresh.TakeAttributesOf(old);
    return filled;
  };
  return PutInPlace(*target, replaces, fillLikeOld, platform::RenameReplacing);
}

Outcome CopyOne(const QString& from, const QString& to) {
  Handle source;
  if (const int error = source.OpenToRead(from)) return Failure{ReasonForSource(error)};
  if (platform::SameFile(from, to)) return {};
  const auto target = ReplaceableTarget(to);
  if (!target) return Failure{target.Reason()};
  return CopyInPlace(source, *target, false, platform::RenameReplacing);
}

Outcome ReplaceOne(const QString& from, const QString& to) {
  const auto target = ReplaceableTarget(to);
  if (!target) return Failure{target.Reason()};
  if (platform::SameFile(from, *target)) return {};
  Handle fresh, old;
  if (const int error = fresh.OpenToRead(from)) return Failure{ReasonForSource(error)};
  if (old.OpenToRead(*target) == 0) fresh.TakeAttributesOf(old);
  if (const int error = fresh.Sync()) return FromErrno(error);
  const int renamed = platform::RenameReplacing(from, *target);
  if (renamed == EXDEV) {
    if (Outcome copied = CopyOne(from, *target); !copied) return copied;
    return FromErrno(platform::RemoveFile(from));
  }
  if (renamed == 0) platform::SyncFolder(FolderOf(*target));
  return FromErrno(renamed);
}

Outcome MoveOne(const QString& from, const QString& to) {
  if (platform::KindOf(from) == EntryKind::Missing)
    return Failure{QString::fromUtf16(kReasonMissing)};
  const int error = platform::RenameExclusive(from, to);
  if (error == EXDEV) return MoveAcross(from, to);
  if (error == EEXIST && OnlyCaseDiffers(from, to)) {
    return FromErrno(platform::RenameReplacing(from, to));
  }
  if (error == 0) SyncBothFolders(from, to);
  return FromErrno(error);
}

namespace {

Outcome RemoveThenMove(const QString& from, const QString& to) {
  const int removed = platform::RemoveFile(to);
  return removed == 0 ? MoveOne(from, to) : FromErrno(removed);
}

}  // namespace

Outcome MoveOver(const QString& from, const QString& to) {
  const EntryKind source = platform::KindOf(from), target = platform::KindOf(to);
  if (source == EntryKind::Missing) return Failure{QString::fromUtf16(kReasonMissing)};
  if (target == EntryKind::Missing) return MoveOne(from, to);
  if (target == EntryKind::Folder) return FromErrno(EISDIR);
  if (target == EntryKind::Other) return FromErrno(ENODEV);
  if (SameEntry(from, to) || ReadOnlyFile(to))
    return Failure{QString::fromUtf16(kReasonPermission)};
  if (platform::SameFile(from, to)) {
    // A link may not take the place of what it leads to.
    if (source == EntryKind::Link) return Failure{QString::fromUtf16(kReasonPermission)};
    // Between two names of one file nothing would be renamed.
    if (target == EntryKind::File) return RemoveThenMove(from, to);
  }
  int error = platform::RenameReplacing(from, to);
  if (error == EXDEV) {
    // A link can't be made over a file.
    if (source == EntryKind::Link) return RemoveThenMove(from, to);
    if (Outcome copied = CopyAcross(from, to, platform::RenameReplacing); !copied) return copied;
    error = platform::RemoveFile(from);
  }
  if (error == 0) SyncBothFolders(from, to);
  return FromErrno(error);
}

Outcome DeleteOne(const QString& path) {
  const EntryKind kind = platform::KindOf(path);
  if (kind == EntryKind::Missing) return Failure{QString::fromUtf16(kReasonMissing)};
  return FromErrno(kind == EntryKind::Folder ? EISDIR : platform::RemoveFile(path));
}

Outcome CopyTree(const QString& from, const QString& to) {
  // A folder into itself would grow for ever.
  const QString source = QDir(from).canonicalPath() + u'/';
  const QString target = QDir(FolderOf(to)).canonicalPath() + u'/';
  if (target.startsWith(source)) return FromErrno(EINVAL);
  const int made = platform::MakeFolder(to);
  if (made != 0 && !FolderExists(to)) return FromErrno(made);
  const auto filter = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
  for (const QString& name : QDir(from).entryList(filter, QDir::Name)) {
    const QString entry = from + u'/' + name;
    const QString copy = to + u'/' + name;
    Outcome done;
    switch (platform::KindOf(entry)) {
      case EntryKind::Folder:
        done = CopyTree(entry, copy);
        break;
      case EntryKind::Link:
        done = FromErrno(platform::MakeLinkLike(entry, copy));
        break;
      default:
        done = CopyOne(entry, copy);
    }
    if (!done) return done;
  }
  platform::SyncFolder(to);
  return {};
}

}  // namespace zqm::steps
