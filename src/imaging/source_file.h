// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include "imaging/codec.h"
#include "shell/result.h"

namespace zqm {

/// A photo file in memory, its format known and its header read.
struct SourceFile {
  QByteArray content;
  const Codec* codec = nullptr;
  PictureFacts facts;

  ByteView View() const { return Bytes(content); }
};

/// Reads the file in one go and recognises it. `options.extension` is the file's. Reasons: those of
/// `ReadWholeFile`, and "File could not be read as an image" for unknown content or a header
/// without a width and a height.
Result<SourceFile> OpenSourceFile(const QString& path, const LoadOptions& options);

}  // namespace zqm
