// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/thumbnail_chunks.h"

namespace zqm {

QByteArray PadThumbnail(const QByteArray& jpeg) {
  static constexpr char kStart[] = "\xFF\xD8";
  // A comment segment counts its own two length bytes: this one holds nothing.
  static constexpr char kEmptyComment[] = "\xFF\xFE\x00\x02";
  if (!ThumbnailSizeRefused(jpeg.size()) || !jpeg.startsWith(kStart)) return jpeg;
  QByteArray padded = jpeg;
  return padded.insert(2, QByteArrayView(kEmptyComment, 4));
}

}  // namespace zqm
