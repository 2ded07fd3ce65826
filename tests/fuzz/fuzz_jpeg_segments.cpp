// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdlib>

#include "imaging/jpeg_segments.h"

/// Blocks put into a JPEG are the ones that it then has, and taking them out again leaves a JPEG.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
  using namespace zqm;
  const ByteView jpeg{data, size};
  (void)JpegExif(jpeg);
  (void)JpegResources(jpeg);
  const QByteArray exif("II*\0\x08\0\0\0\0\0\0\0\0\0", 14);
  const auto changed = WithBlocks(jpeg, {.exif = exif, .xmp = QByteArray("<x/>")});
  if (!changed) return 0;
  const auto view = Bytes(*changed);
  if (JpegExif(view) != exif || !HasWholeSegments(view)) std::abort();
  const auto without = WithBlocks(view, {.exif = QByteArray(), .resources = QByteArray()});
  if (!without || !JpegExif(Bytes(*without)).isEmpty() || !JpegResources(Bytes(*without)).isEmpty())
    std::abort();
  return 0;
}
