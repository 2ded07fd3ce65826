// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/transitions/reveal.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "imaging/row_blocks.h"
#include "imaging/transitions/pixel_mix.h"
#include "imaging/transitions/wipe_order.h"

namespace zqm {
namespace {

constexpr int kBlock = 64;  // pixels whose moments are kept together
constexpr float kMost = 65535;

/// Points are as large as they are on a screen of 540 rows.
int PointSize(const QSize& screen) {
  return std::max(1, screen.height() / 540);
}

/// What pixels have in common that lie in one column, or in one row.
struct Coordinate {
  float share;    // of the screen, at the middle of the pixel, or of the cell if that turns as one
  quint32 grain;  // the number of the cell or of the point
};

/// All columns or all rows. `cell` is in pixels.
std::vector<Coordinate> Coordinates(int length, int cell, int grain, bool asOne) {
  std::vector<Coordinate> all(static_cast<std::size_t>(length));
  for (int i = 0; i < length; ++i) {
    const int begin = asOne ? i / cell * cell : i;
    const int end = asOne ? std::min(begin + cell, length) : i + 1;
    all[static_cast<std::size_t>(i)] = {
        static_cast<float>(begin + end) / static_cast<float>(2 * length),
        static_cast<quint32>(i / grain)};
  }
  return all;
}

/// The side of a cell in pixels.
int CellSide(double share, int height, int length) {
  return share > 0 ? std::clamp(static_cast<int>(std::lround(share * height)), 1, length) : length;
}

/// The moment of each pixel, 0 to 1.
class MomentOf {
 public:
  MomentOf(const Reveal& reveal, const QSize& screen, quint32 seed)
      : reveal_(reveal), screen_(screen), seed_(seed) {
    const QSizeF& cell = reveal.cell;
    const bool inCells = cell.width() > 0 || cell.height() > 0;
    const bool asOne = inCells && !reveal.crossing;
    const int width = CellSide(cell.width(), screen.height(), screen.width());
    const int height = CellSide(cell.height(), screen.height(), screen.height());
    const int point = PointSize(screen);
    columns_ = Coordinates(screen.width(), width, inCells ? width : point, asOne);
    rows_ = Coordinates(screen.height(), height, inCells ? height : point, asOne);
  }

  float operator()(int x, int y) const {
    const auto [u, column] = columns_[static_cast<std::size_t>(x)];
    const auto [v, row] = rows_[static_cast<std::size_t>(y)];
    const bool other = reveal_.crossing && (column + row) % 2 != 0;
    const Wipe& wipe = other ? *reveal_.crossing : reveal_.wipe;
    const float order = WipeOrder(wipe, u, v, screen_);
    if (reveal_.ragged == Ragged::Not) return order;
    const float off = reveal_.ragged == Ragged::ByChance ? Chance(column, row, seed_)
                                                         : TeethAt(wipe, reveal_.ragged, u, v);
    if (wipe.shape == WipeShape::Anywhere) return off;
    const auto depth = static_cast<float>(reveal_.depth);
    return (order + depth * off) / (1 + depth);
  }

 private:
  const Reveal& reveal_;
  const QSize screen_;
  const quint32 seed_;
  std::vector<Coordinate> columns_, rows_;
};

/// How far pixels have turned at a moment.
class Turning {
 public:
  Turning(double soft, double progress)
      : taking_(std::max(1, static_cast<int>(std::lround(soft * double{kMost})))),
        now_(static_cast<int>(std::lround(progress * (double{kMost} + taking_)))) {}

  bool HasEnded(quint16 moment) const { return now_ - moment >= taking_; }
  bool HasBegun(quint16 moment) const { return now_ > moment; }
  void MixPixels(const QRgb* from, const QRgb* to, const quint16* moments, int count,
                 QRgb* out) const {
    if (taking_ == 1) {
      for (int x = 0; x < count; ++x)
        out[x] = now_ > moments[x] ? to[x] : from[x];
      return;
    }
    const float perStep = 256 / static_cast<float>(taking_);
    for (int x = 0; x < count; ++x) {
      const float turned = static_cast<float>(now_ - moments[x]) * perStep;
      const float weight = std::min(std::max(turned, 0.0F), 256.0F);
      out[x] = Mix(from[x], to[x], static_cast<unsigned>(static_cast<int>(weight)));
    }
  }

 private:
  int taking_;
  int now_;
};

}  // namespace

RevealMap::RevealMap(const Reveal& reveal, const QSize& screen, quint32 seed)
    : soft_(reveal.soft),
      screen_(screen),
      blocks_((screen.width() + kBlock - 1) / kBlock),
      moments_(static_cast<std::size_t>(screen.width()) *
               static_cast<std::size_t>(screen.height())),
      ofBlocks_(static_cast<std::size_t>(blocks_) * static_cast<std::size_t>(screen.height())) {
  const MomentOf momentOf(reveal, screen, seed);
  ForRowBlocks(screen.height(), std::int64_t{screen.width()} * 16, [&](int begin, int end) {
    for (int y = begin; y < end; ++y) {
      quint16* row = moments_.data() + std::ptrdiff_t{y} * screen_.width();
      for (int x = 0; x < screen_.width(); ++x)
        row[x] = static_cast<quint16>(std::clamp(momentOf(x, y), 0.0F, 1.0F) * kMost + 0.5F);
      FindBlocks(y);
    }
  });
}

void RevealMap::FindBlocks(int y) {
  const quint16* row = moments_.data() + std::ptrdiff_t{y} * screen_.width();
  Moments* ofBlocks = ofBlocks_.data() + std::ptrdiff_t{y} * blocks_;
  for (int block = 0; block < blocks_; ++block) {
    const int begin = block * kBlock;
    const auto [first, last] =
        std::minmax_element(row + begin, row + std::min(begin + kBlock, screen_.width()));
    ofBlocks[block] = {*first, *last};
  }
}

void RevealMap::Draw(const QImage& from, const QImage& to, double progress, QImage& out) const {
  const Turning turning(soft_, progress);
  for (int y = 0; y < screen_.height(); ++y) {
    const QRgb* old = Row(from, y);
    const QRgb* fresh = Row(to, y);
    QRgb* drawn = Row(out, y);
    const quint16* moments = moments_.data() + std::ptrdiff_t{y} * screen_.width();
    const Moments* ofBlocks = ofBlocks_.data() + std::ptrdiff_t{y} * blocks_;
    for (int block = 0; block < blocks_; ++block) {
      const int x = block * kBlock;
      const int count = std::min(kBlock, screen_.width() - x);
      const bool allNew = turning.HasEnded(ofBlocks[block].last);
      if (allNew || !turning.HasBegun(ofBlocks[block].first))
        std::memcpy(drawn + x, (allNew ? fresh : old) + x,
                    static_cast<std::size_t>(count) * sizeof(QRgb));
      else
        turning.MixPixels(old + x, fresh + x, moments + x, count, drawn + x);
    }
  }
}

}  // namespace zqm
