// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/source_file.h"

#include "shell/files.h"

namespace zqm {

Result<SourceFile> OpenSourceFile(const QString& path, const LoadOptions& options) {
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
