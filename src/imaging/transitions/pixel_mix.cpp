// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/transitions/pixel_mix.h"

#include <cstring>

namespace zqm {

void MixRow(const QRgb* from, const QRgb* to, int count, int weight, QRgb* out) {
  // By samples: the compiler makes sixteen of them at a time.
  const auto* a = reinterpret_cast<const uchar*>(from);
  const auto* b = reinterpret_cast<const uchar*>(to);
  auto* mixed = reinterpret_cast<uchar*>(out);
  const auto ofB = static_cast<quint16>(weight);
  const auto ofA = static_cast<quint16>(256 - weight);
  for (int i = 0; i < count * 4; ++i) {
    const auto sum =
        static_cast<quint16>(static_cast<quint16>(a[i] * ofA) + static_cast<quint16>(b[i] * ofB));
    mixed[i] = static_cast<uchar>(sum >> 8);
  }
}

void MixPictures(const QImage& from, const QImage& to, int weight, QImage& out) {
  for (int y = 0; y < out.height(); ++y)
    MixRow(Row(from, y), Row(to, y), out.width(), weight, Row(out, y));
}

void CopyPixels(const QImage& picture, QImage& out) {
  const auto bytes = static_cast<std::size_t>(out.width()) * sizeof(QRgb);
  for (int y = 0; y < out.height(); ++y)
    std::memcpy(Row(out, y), Row(picture, y), bytes);
}

}  // namespace zqm
