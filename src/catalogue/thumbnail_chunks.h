// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace zqm {

/// Pieces in which a stored thumbnail is written and read.
inline constexpr int kThumbnailChunk = 1000;

/// Whether a stored thumbnail of this many bytes counts as corrupted: nothing, or an exact multiple
/// of the chunk.
constexpr bool ThumbnailSizeRefused(qint64 bytes) {
  return bytes % kThumbnailChunk == 0;
}

/// The same JPEG at a length that isn't refused: where it would be, a comment segment is put in
/// behind its start marker.
QByteArray PadThumbnail(const QByteArray& jpeg);

}  // namespace zqm
