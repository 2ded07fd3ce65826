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

void MapRow(QRgb* row, int width, const Tables<std::uint8_t>& tables) {
  for (int x = 0; x < width; ++x) {
    const QRgb pixel = row[x];
    row[x] = (pixel & 0xff000000) | QRgb{tables.red[pixel >> 16 & 255]} << 16 |
             QRgb{tables.green[pixel >> 8 & 255]} << 8 | tables.blue[pixel & 255];
  }
}

void MapRow(QRgba64* row, int width, const Tables<std::uint16_t>& tables) {
  for (int x = 0; x < width; ++x) {
    row[x] = QRgba64::fromRgba64(tables.red[row[x].red()], tables.green[row[x].green()],
                                 tables.blue[row[x].blue()], row[x].alpha());
  }
}

template <class Sample>
void MapRow(Sample* row, int width, const Tables<Sample>& tables) {
  for (int x = 0; x < width; ++x)
    row[x] = tables.red[row[x]];
}

template <class Sample, class Pixel>
QImage Mapped(QImage picture, const Curve& red, const Curve& green, const Curve& blue) {
  uchar* bits = picture.bits();
  if (!bits) return {};
  const std::vector<Sample> reds = TableOf<Sample>(red);
  const bool gray = IsGray(picture);
  const std::vector<Sample> greens = gray ? std::vector<Sample>() : TableOf<Sample>(green);
  const std::vector<Sample> blues = gray ? std::vector<Sample>() : TableOf<Sample>(blue);
  const Tables<Sample> tables{reds, greens, blues};
  const qsizetype stride = picture.bytesPerLine();
  const int width = picture.width();
  ForRowBlocks(picture.height(), std::int64_t{width} * 4, [&](int begin, int end) {
    for (int y = begin; y < end; ++y)
      MapRow(reinterpret_cast<Pixel*>(bits + y * stride), width, tables);
  });
  return picture;
}

}  // namespace

QImage WithCurves(QImage picture, const Curve& red, const Curve& green, const Curve& blue) {
  if (picture.isNull()) return {};
  if (IsGray(picture)) {
    return IsDeep(picture)
               ? Mapped<std::uint16_t, std::uint16_t>(std::move(picture), red, green, blue)
               : Mapped<std::uint8_t, std::uint8_t>(std::move(picture), red, green, blue);
  }
  return IsDeep(picture) ? Mapped<std::uint16_t, QRgba64>(std::move(picture), red, green, blue)
                         : Mapped<std::uint8_t, QRgb>(std::move(picture), red, green, blue);
}

}  // namespace zqm
