// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRgba64>

namespace zqm::test {

/// A picture without two areas alike, the same each time.
inline QImage Noise(const QSize& size, QImage::Format format) {
  QImage picture(size, QImage::Format_RGBA64);
  quint32 state = 7;
  const auto next = [&] {
    return static_cast<quint16>((state = state * 1664525 + 1013904223) >> 16);
  };
  for (int y = 0; y < size.height(); ++y) {
    auto* row = reinterpret_cast<QRgba64*>(picture.scanLine(y));
    for (int x = 0; x < size.width(); ++x)
      row[x] = QRgba64::fromRgba64(next(), next(), next(), next());
  }
  return picture.convertToFormat(format);
}

}  // namespace zqm::test
