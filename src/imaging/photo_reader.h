// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include "imaging/codec.h"
#include "imaging/file_parameters.h"
#include "shell/result.h"

namespace zqm {

struct ReadRequest {
  bool thumbnail = false;
  bool colourManagement = false;
  RawOptions raw;
};

/// What one read of a photo file gives.
struct PhotoFile {
  qint64 bytes = 0;  ///< the file's length
  FileParameters parameters;
  /// The 200 x 200 thumbnail as a JPEG; empty when it wasn't asked for, or when the facts of the
  /// file read but its pixels don't.
  QByteArray thumbnail;
};

/// Reads a file once: its parameters and, if asked for, its thumbnail from the same bytes. Pure and
/// thread-safe. Reasons: those of `OpenSourceFile`, or "Not enough memory".
Result<PhotoFile> ReadPhotoFile(const QString& path, const ReadRequest& request);

}  // namespace zqm
