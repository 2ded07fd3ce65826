// SPDX-License-Identifier: GPL-3.0-or-later
// Metadata of a JPEG: its segments before the compressed picture.
#pragma once

#include <QByteArray>
#include <optional>

#include "imaging/codec.h"
#include "shell/result.h"

namespace zqm {

/// Whether the bytes begin as a JPEG does, with whole segments up to the first scan.
bool HasWholeSegments(ByteView jpeg);

/// The EXIF block of the first such segment, without "Exif\0\0"; empty without one.
QByteArray JpegExif(ByteView jpeg);
/// The image resources of all their segments, joined; empty without any.
QByteArray JpegResources(ByteView jpeg);

/// Blocks to put in the place of those that are there; what isn't set stays byte for byte, an empty
/// one goes away. An XMP packet takes its extension along.
struct JpegChange {
  std::optional<QByteArray> exif, resources, xmp, profile;
};

/// The same JPEG with other blocks; everything else stays byte for byte. A block stands where the
/// first of its kind stood, a new one behind the start and JFIF segments. Fails on bytes that
/// aren't a JPEG ("Not a JPEG file") and when EXIF or XMP are larger than a segment, 65,533 bytes
/// with their marks ("Metadata is too large").
Result<QByteArray> WithBlocks(ByteView jpeg, const JpegChange& change);

}  // namespace zqm
