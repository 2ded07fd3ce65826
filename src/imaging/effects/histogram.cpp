// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effects/histogram.h"

#include "imaging/pixel_formats.h"

namespace zqm {

Histogram HistogramOf(const QImage& picture) {
  Histogram histogram;
  const QImage work = InWorkFormat(picture);
  const QImage in =
      work.convertToFormat(work.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
  for (int y = 0; y < in.height(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(in.constScanLine(y));
    for (int x = 0; x < in.width(); ++x) {
      const unsigned red = row[x] >> 16 & 255, green = row[x] >> 8 & 255, blue = row[x] & 255;
      if (row[x] >> 24 == 0) continue;
      ++histogram.red[red];
      ++histogram.green[green];
      ++histogram.blue[blue];
      ++histogram.luma[(299 * red + 587 * green + 114 * blue + 500) / 1000];
    }
  }
  return histogram;
}

}  // namespace zqm
