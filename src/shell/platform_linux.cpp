// SPDX-License-Identifier: GPL-3.0-or-later
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QFile>
#include <QRandomGenerator>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "shell/platform.h"

using namespace Qt::StringLiterals;

namespace zqm::platform {
namespace {

// The kernel's own limit on one path's chain of links.
constexpr int kLongestLinkChain = 40;

int ErrnoOf(int result) {
  return result == 0 ? 0 : errno;
}

/// Calls again while a signal cuts the call short.
template <class Call>
auto Retry(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR)
    result = call();
  return result;
}

/// A link's own text; empty when it can't be read.
QByteArray LinkText(const QByteArray& path) {
  QByteArray text(4096, Qt::Uninitialized);  // PATH_MAX
  const ssize_t length = readlink(path.constData(), text.data(), static_cast<size_t>(text.size()));
  text.truncate(std::max<qsizetype>(length, 0));
  return text;
}

void CopyExtendedAttributes(int from, int to) {
  constexpr ssize_t kLongestList = 1 << 16;  // the kernel's limits on list and value
  QByteArray names(kLongestList, Qt::Uninitialized);
  const ssize_t listed = flistxattr(from, names.data(), static_cast<size_t>(names.size()));
  if (listed <= 0) return;
  names.truncate(listed);
  QByteArray value(kLongestList, Qt::Uninitialized);
  for (const QByteArray& name : names.split('\0')) {
    if (!name.startsWith("user.") && name != "system.posix_acl_access") continue;
    const ssize_t size =
        fgetxattr(from, name.constData(), value.data(), static_cast<size_t>(value.size()));
    if (size >= 0) fsetxattr(to, name.constData(), value.constData(), static_cast<size_t>(size), 0);
  }
}

}  // namespace

EntryKind KindOf(const QString& path) {
  struct stat info {};
  if (lstat(QFile::encodeName(path).constData(), &info) != 0) return EntryKind::Missing;
  if (S_ISREG(info.st_mode)) return EntryKind::File;
  if (S_ISDIR(info.st_mode)) return EntryKind::Folder;
  return S_ISLNK(info.st_mode) ? EntryKind::Link : EntryKind::Other;
}

bool SameFile(const QString& a, const QString& b) {
  struct stat first {};
  struct stat second {};
  return stat(QFile::encodeName(a).constData(), &first) == 0 &&
         stat(QFile::encodeName(b).constData(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

QString FileStamp(const QString& path) {
  struct stat info {};
  if (stat(QFile::encodeName(path).constData(), &info) != 0) return QString();
  return QStringLiteral("%1 %2 %3 %4.%5")
      .arg(info.st_dev)
      .arg(info.st_ino)
      .arg(info.st_size)
      .arg(info.st_mtim.tv_sec)
      .arg(info.st_mtim.tv_nsec);
}

QString ResolveLinks(const QString& path) {
  QByteArray current = QFile::encodeName(path);
  for (int step = 0; step <= kLongestLinkChain; ++step) {
    const QByteArray text = LinkText(current);
    if (text.isEmpty()) return QFile::decodeName(current);
    // Not cleaned: ".." behind a linked folder means what the kernel makes of it.
    current = text.startsWith('/') ? text : current.first(current.lastIndexOf('/') + 1) + text;
  }
  return {};
}

int MakeFolder(const QString& path) {
  return ErrnoOf(mkdir(QFile::encodeName(path).constData(), 0777));
}

int MakeLinkLike(const QString& link, const QString& copy) {
  const QByteArray text = LinkText(QFile::encodeName(link));
  if (text.isEmpty()) return errno;
  return ErrnoOf(symlink(text.constData(), QFile::encodeName(copy).constData()));
}

int RemoveFile(const QString& path) {
  return ErrnoOf(unlink(QFile::encodeName(path).constData()));
}

int RenameReplacing(const QString& from, const QString& to) {
  return ErrnoOf(
      std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()));
}

int RenameExclusive(const QString& from, const QString& to) {
  const QByteArray source = QFile::encodeName(from);
  const QByteArray target = QFile::encodeName(to);
  const int error = ErrnoOf(
      renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE));
  // Older network and FAT file systems don't know the flag.
  if (error != EINVAL && error != ENOSYS && error != EOPNOTSUPP) return error;
  if (KindOf(to) != EntryKind::Missing) return EEXIST;
  return ErrnoOf(std::rename(source.constData(), target.constData()));
}

int SyncFolder(const QString& path) {
  const int descriptor =
      open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return errno;
  const int error = ErrnoOf(fsync(descriptor));
  close(descriptor);
  return error;
}

bool StandardErrorIsTerminal() {
  return isatty(STDERR_FILENO) == 1;
}

FileLock::~FileLock() {
  if (descriptor_ >= 0) close(descriptor_);
}

int FileLock::Take(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  int descriptor =
      Retry([&] { return open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666); });
  if (descriptor < 0) return errno;
  const int error = ErrnoOf(Retry([&] { return flock(descriptor, LOCK_EX | LOCK_NB); }));
  if (error == 0) std::swap(descriptor, descriptor_);
  if (descriptor >= 0) close(descriptor);
  return error;
}

int Handle::OpenToRead(const QString& path) {
  Close();
  // Opening a pipe would wait for its writer otherwise.
  const int flags = O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
  const QByteArray name = QFile::encodeName(path);
  descriptor_ = Retry([&] { return open(name.constData(), flags); });
  if (descriptor_ < 0) return errno;
  struct stat info {};
  if (fstat(descriptor_, &info) != 0) return errno;
  if (S_ISREG(info.st_mode)) return 0;
  Close();
  return S_ISDIR(info.st_mode) ? EISDIR : ENODEV;
}

int Handle::CreateTemporary(const QString& folder, bool secret, QString& path) {
  Close();
  constexpr int kAttempts = 100;
  const mode_t mode = secret ? 0600 : 0666;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    // Short, so that it fits where the target's name does, and without an extension, so that no
    // scan for pictures meets it.
    const quint64 number = QRandomGenerator::system()->generate64();
    path = folder + "/.zqm-"_L1 + QString::number(number, 36);
    descriptor_ =
        open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor_ >= 0) return 0;
    if (errno != EEXIST) return errno;
  }
  return EEXIST;
}

qint64 Handle::Size() const {
  struct stat info {};
  return fstat(descriptor_, &info) == 0 ? info.st_size : 0;
}

int Handle::Read(char* data, qint64 size, qint64& got) {
  got = 0;
  while (got < size) {
    const ssize_t part =
        Retry([&] { return read(descriptor_, data + got, static_cast<size_t>(size - got)); });
    if (part < 0) return errno;
    if (part == 0) break;
    got += part;
  }
  return 0;
}

int Handle::Write(const char* data, qint64 size) {
  while (size > 0) {
    const ssize_t part = Retry([&] { return write(descriptor_, data, static_cast<size_t>(size)); });
    if (part < 0) return errno;
    data += part;
    size -= part;
  }
  return 0;
}

int Handle::Rewind() {
  return lseek(descriptor_, 0, SEEK_SET) < 0 ? errno : 0;
}

int Handle::Sync() {
  return ErrnoOf(Retry([&] { return fsync(descriptor_); }));
}

int Handle::Close() {
  if (descriptor_ < 0) return 0;
  const int error = ErrnoOf(close(descriptor_));
  descriptor_ = -1;
  return error == EINTR ? 0 : error;  // it is closed all the same
}

void Handle::TakeAttributesOf(const Handle& other) {
  struct stat info {};
  if (fstat(other.descriptor_, &info) != 0) return;
  // The owner first: changing it drops some mode bits.
  [[maybe_unused]] const int owned = fchown(descriptor_, info.st_uid, info.st_gid);
  CopyExtendedAttributes(other.descriptor_, descriptor_);
  fchmod(descriptor_, info.st_mode & 07777);
}

void Handle::TakeTimesOf(const Handle& other) {
  struct stat info {};
  if (fstat(other.descriptor_, &info) != 0) return;
  const timespec times[] = {info.st_atim, info.st_mtim};
  futimens(descriptor_, times);
}

}  // namespace zqm::platform
