// SPDX-License-Identifier: GPL-3.0-or-later
// Writing the metadata of a file and nothing else.
#pragma once

#include <QByteArray>

#include "imaging/codec.h"
#include "imaging/file_parameters.h"
#include "shell/result.h"

namespace zqm {

/// Whether `RewriteMetadata` knows this format: JPEG, TIFF and PSD.
bool CanRewriteMetadata(const Codec& codec);

/// The file with the tags, IPTC items and XMP packet that were changed in `parameters` since they
/// were read from it. The compressed picture, further pages and layers, maker notes and everything
/// else stay byte for byte. Failures: "Metadata is too large", "Metadata cannot be written" for a
/// file whose structure is broken, `kReasonNotWritable` for another format.
Result<QByteArray> RewriteMetadata(const QByteArray& file, const Codec& codec,
                                   const FileParameters& parameters);

/// A JPEG without metadata with that of `parameters`, for pictures that come from no file. Failures
/// as above.
Result<QByteArray> WithMetadata(const QByteArray& jpeg, const FileParameters& parameters);

}  // namespace zqm
