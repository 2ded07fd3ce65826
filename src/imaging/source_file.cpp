// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/source_file.h"

#include <QFile>
#include <QFileInfo>

#include "shell/files.h"

namespace zqm {
namespace {

/// Before gigabytes are read for nothing: whether a large file's beginning and end are of no known
/// format.
bool IsLargeAndForeign(const QString& path, const LoadOptions& options) {
  constexpr qint64 kLarge = 64 << 20;
  constexpr qint64 kHead = 1 << 20;
  constexpr qint64 kTail = 4096;
  QFile file(path);
  if (QFileInfo(path).size() <= kLarge || !FileExists(path) || !file.open(QFile::ReadOnly))
    return false;
  QByteArray ends = file.read(kHead);
  // A mark may stand at the very end as well.
  if (file.seek(file.size() - kTail)) ends += file.read(kTail);
  return SniffCodec(Bytes(ends), options.extension) == nullptr;
}

}  // namespace

Result<SourceFile> OpenSourceFile(const QString& path, const LoadOptions& options) {
  if (FolderExists(path) || IsLargeAndForeign(path, options))
    return Failure{QString::fromUtf16(kReasonNoImage)};
  Result<QByteArray> content = ReadWholeFile(path);
  if (!content) return Failure{content.Reason()};
  SourceFile source;
  source.content = *content;
  source.codec = SniffCodec(source.View(), options.extension);
  if (source.codec == nullptr) return Failure{QString::fromUtf16(kReasonNoImage)};
  const Result<PictureFacts> facts = source.codec->readFacts(source.View(), options);
  if (!facts || facts->width <= 0 || facts->height <= 0)
    return Failure{QString::fromUtf16(kReasonNoImage)};
  source.facts = *facts;
  return source;
}

}  // namespace zqm
