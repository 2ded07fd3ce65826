// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effects/channel_curves.h"

#include <limits>

#include "imaging/pixel_formats.h"
#include "imaging/row_blocks.h"

namespace zqm {
namespace {

template <class Sample>
std::vector<Sample> TableOf(const Curve& curve) {
  constexpr std::size_t kLevels = std::size_t{std::numeric_limits<Sample>::max()} + 1;
  constexpr float kMost = std::numeric_limits<Sample>::max();
  std::vector<Sample> table(kLevels);
  for (std::size_t level = 0; level < kLevels; ++level) {
    const float value = curve(static_cast<float>(level) / kMost);
    table[level] = static_cast<Sample>((value > 0 ? value < 1 ? value : 1 : 0) * kMost + 0.5F);
  }
  return table;
}

template <class Sample>
struct Tables {
  const std::vector<Sample>& red;
  const std::vector<Sample>& green;
  const std::vector<Sample>& blue;
};

void MapRow(const QRgb* from, QRgb* to, int width, const Tables<std::uint8_t>& tables) {
  const std::uint8_t* red = tables.red.data();
  const std::uint8_t* green = tables.green.data();
  const std::uint8_t* blue = tables.blue.data();
  for (int x = 0; x < width; ++x) {
    const QRgb pixel = from[x];
    to[x] = (pixel & 0xff000000) | QRgb{red[pixel >> 16 & 255]} << 16 |
            QRgb{green[pixel >> 8 & 255]} << 8 | blue[pixel & 255];
  }
}

void MapRow(const QRgba64* from, QRgba64* to, int width, const Tables<std::uint16_t>& tables) {
  for (int x = 0; x < width; ++x) {
    to[x] = QRgba64::fromRgba64(tables.red[from[x].red()], tables.green[from[x].green()],
                                tables.blue[from[x].blue()], from[x].alpha());
  }
}

template <class Sample>
void MapRow(const Sample* from, Sample* to, int width, const Tables<Sample>& tables) {
  for (int x = 0; x < width; ++x)
    to[x] = tables.red[from[x]];
}

template <class Sample, class Pixel>
QImage Mapped(const QImage& picture, const Curve& red, const Curve& green, const Curve& blue) {
  QImage out = BlankLike(picture);
  if (out.isNull()) return {};
  const std::vector<Sample> reds = TableOf<Sample>(red);
  const bool gray = IsGray(picture);
  const std::vector<Sample> greens = gray ? std::vector<Sample>() : TableOf<Sample>(green);
  const std::vector<Sample> blues = gray ? std::vector<Sample>() : TableOf<Sample>(blue);
  const Tables<Sample> tables{reds, greens, blues};
  uchar* bits = out.bits();
  const qsizetype stride = out.bytesPerLine();
  ForRowBlocks(picture.height(), std::int64_t{picture.width()} * 4, [&](int begin, int end) {
    for (int y = begin; y < end; ++y) {
      MapRow(reinterpret_cast<const Pixel*>(picture.constScanLine(y)),
             reinterpret_cast<Pixel*>(bits + y * stride), picture.width(), tables);
    }
  });
  return out;
}

}  // namespace

QImage WithCurves(const QImage& picture, const Curve& red, const Curve& green, const Curve& blue) {
  if (picture.isNull()) return {};
  if (IsGray(picture)) {
    return IsDeep(picture) ? Mapped<std::uint16_t, std::uint16_t>(picture, red, green, blue)
                           : Mapped<std::uint8_t, std::uint8_t>(picture, red, green, blue);
  }
  return IsDeep(picture) ? Mapped<std::uint16_t, QRgba64>(picture, red, green, blue)
                         : Mapped<std::uint8_t, QRgb>(picture, red, green, blue);
}

}  // namespace zqm
