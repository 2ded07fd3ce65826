// SPDX-License-Identifier: GPL-3.0-or-later
// Pixels of 32 bits, mixed. Weights go from 0, all `from`, to 256, all `to`, exactly at both ends.
#pragma once

#include <QImage>

namespace zqm {

inline QRgb Mix(QRgb from, QRgb to, unsigned weight) {
  const unsigned rest = 256 - weight;
  const unsigned even = (((from & 0xff00ff) * rest + (to & 0xff00ff) * weight) >> 8) & 0xff00ff;
  const unsigned odd = ((from >> 8 & 0xff00ff) * rest + (to >> 8 & 0xff00ff) * weight) & 0xff00ff00;
  return even | odd;
}

/// `out` may be `from` or `to`.
void MixRow(const QRgb* from, const QRgb* to, int count, int weight, QRgb* out);

/// A whole picture; all three have one size and 32 bits a pixel.
void MixPictures(const QImage& from, const QImage& to, int weight, QImage& out);

/// The pixels of `picture` in those of `out`, without a new allocation.
void CopyPixels(const QImage& picture, QImage& out);

inline const QRgb* Row(const QImage& picture, int y) {
  return reinterpret_cast<const QRgb*>(picture.constScanLine(y));
}
inline QRgb* Row(QImage& picture, int y) {
  return reinterpret_cast<QRgb*>(picture.scanLine(y));
}

}  // namespace zqm
