// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/files.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <new>

#include "shell/dates.h"
#include "shell/file_operation.h"
#include "shell/file_steps.h"
#include "shell/platform.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QStringView kRefusedInNames = u"\\/:*?\"<>|";

Outcome RunSilently(CSHFileOp::Operation operation, const QString& from, const QString& to) {
  CSHFileOp shell;
  shell.SilentMode = true;
  shell.ConfirmOperation = false;
  shell.AddSource(from);
  shell.SetDestination(to);
  return shell.Run(operation);
}

}  // namespace

bool FileExists(const QString& path) {
  return QFileInfo(path).isFile();
}
bool FolderExists(const QString& path) {
  return QFileInfo(path).isDir();
}

QString GetFileName(const QString& path) {
  return path.sliced(path.lastIndexOf(u'/') + 1);
}

QString GetParentFolderName(const QString& path) {
  return StripSlash(path.first(path.lastIndexOf(u'/') + 1));
}

QString GetExtensionName(const QString& path) {
  const QString name = GetFileName(path);
  const qsizetype point = name.lastIndexOf(u'.');
  return point < 0 ? QString() : name.sliced(point + 1);
}

QString GetBaseName(const QString& path) {
  const QString name = GetFileName(path);
  const qsizetype point = name.lastIndexOf(u'.');
  return point < 0 ? name : name.first(point);
}

QString StripSlash(const QString& path) {
  qsizetype length = path.size();
  while (length > 1 && path[length - 1] == u'/')
    --length;
  return path.first(length);
}

QString PathIn(const QString& folder, const QString& name) {
  return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

QString AbsolutePath(const QString& path) {
  if (path.isEmpty()) return path;
  // Joined by hand: a relative name that begins with ":" would be taken for a built-in resource.
  QString clean = QDir::cleanPath(path.startsWith(u'/') ? path : QDir::currentPath() + u'/' + path);
  while (clean.startsWith("/../"_L1))
    clean.remove(0, 3);
  return clean == "/.."_L1 ? u"/"_s : clean;
}

bool ReadOnlyFile(const QString& path) {
  const QFileInfo info(path);
  // The owner's bit counts by itself, since root may write regardless of it.
  return info.exists() && (!info.permission(QFile::WriteOwner) || !info.isWritable());
}

bool CheckIfValidFN(const QString& name) {
  return std::ranges::none_of(name, [](QChar c) { return kRefusedInNames.contains(c); });
}

FileTimes GetFileTimes(const QString& path) {
  const QFileInfo info(path);
  if (!info.exists()) return {};
  return {info.birthTime().toLocalTime(), info.lastModified().toLocalTime(),
          info.lastRead().toLocalTime()};
}

QString FileTimeToDate(const QDateTime& time) {
  return time.isValid() ? ShortDateTime(time.toLocalTime()) : u"1/1/1601 0:00 AM"_s;
}

Outcome CreateFolder(const QString& path) {
  return steps::FromErrno(platform::MakeFolder(path));
}

Outcome CopyFile(const QString& from, const QString& to) {
  return RunSilently(CSHFileOp::Operation::Copy, from, to);
}

Outcome MoveFile(const QString& from, const QString& to) {
  return RunSilently(CSHFileOp::Operation::Move, from, to);
}

Outcome MoveFileOver(const QString& from, const QString& to) {
  return steps::MoveOver(from, to);
}

Outcome ReplaceFile(const QString& from, const QString& to) {
  return steps::ReplaceOne(from, to);
}

Outcome DeleteFile(const QString& path) {
  return RunSilently(CSHFileOp::Operation::Delete, path, QString());
}

Outcome CopyFolder(const QString& from, const QString& to) {
  if (!FolderExists(from)) return Failure{QString::fromUtf16(kReasonMissing)};
  return RunSilently(CSHFileOp::Operation::Copy, from, to);
}

Result<QByteArray> ReadWholeFile(const QString& path, qint64 limit) {
  platform::Handle file;
  if (const int error = file.OpenToRead(path)) return Failure{steps::ReasonForSource(error)};
  const qint64 size = file.Size();
  if (size > limit) return Failure{QString::fromUtf16(kReasonFileTooLarge)};
  QByteArray content;
  try {
    content = QByteArray(size, Qt::Uninitialized);
  } catch (const std::bad_alloc&) {
    return Failure{ReasonForErrno(ENOMEM)};
  }
  qint64 got = 0;
  if (const int error = file.Read(content.data(), size, got)) return Failure{ReasonForErrno(error)};
  content.truncate(got);
  return content;
}

Outcome WriteFileAtomically(const QString& path, const QByteArray& content) {
  return steps::Replace(path, [&](platform::Handle& file) {
    return steps::FromErrno(file.Write(content.constData(), content.size()));
  });
}

void SyncFolder(const QString& folder) {
  platform::SyncFolder(folder);
}

QString ReasonForErrno(int number) {
  const bool denied = number == EACCES || number == EPERM || number == EROFS;
  return denied ? QString::fromUtf16(kReasonPermission) : qt_error_string(number);
}

}  // namespace zqm
