// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/transitions/unroll.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "imaging/transitions/pixel_mix.h"

namespace zqm {
namespace {

constexpr QRgb kPaper = 0xffe8e4dc;

/// A line across the way of the roll.
struct Line {
  enum class Kind { New, Old, Back } kind = Kind::Old;
  int behind = 0;  // Back: the line of the new picture that shines through
  int light = 256;
};

/// What is seen at a distance from the origin. A cylinder of `radius` lies on the line `contact`,
/// where the paper leaves it; above its axis the paper has gone half a turn.
Line LineAt(int place, double contact, double radius, int length) {
  const double off = place + 0.5 - contact;
  if (off < -radius) return {Line::Kind::New, 0, 256};
  if (off >= radius) {
    // The shadow ahead of the roll.
    const double shade = std::clamp(1 - (off - radius) / radius, 0.0, 1.0);
    return {Line::Kind::Old, 0, static_cast<int>(256 - 100 * shade * shade)};
  }
  const double angle = std::asin(off / radius);  // from the top, ahead is positive
  const int behind = static_cast<int>(contact + radius * (std::numbers::pi - angle));
  const double light = 0.45 + 0.55 * std::cos(angle + 0.4);  // which comes from behind
  return {Line::Kind::Back, behind < 0 || behind >= length ? -1 : behind,
          static_cast<int>(light * 256)};
}

/// One pixel of a line; `shining` is that of the new picture behind the paper.
QRgb Lit(const Line& line, QRgb old, QRgb shining) {
  constexpr unsigned kShining = 56;
  const QRgb colour = line.kind == Line::Kind::Old ? old
                      : line.behind < 0            ? kPaper
                                                   : Mix(kPaper, shining, kShining);
  return Mix(0xff000000, colour, static_cast<unsigned>(line.light));
}

/// All lines in the order of the screen's columns or rows.
std::vector<Line> LinesAt(double progress, int length, bool fromEnd) {
  const double radius = std::max(1.0, length * 0.05);
  // From all before the screen, with its shadow, to all behind it.
  const double contact = -2 * radius + progress * (length + 3 * radius);
  std::vector<Line> lines(static_cast<std::size_t>(length));
  for (int i = 0; i < length; ++i)
    lines[static_cast<std::size_t>(i)] = LineAt(i, contact, radius, length);
  if (!fromEnd) return lines;
  for (Line& line : lines) {
    if (line.behind >= 0) line.behind = length - 1 - line.behind;
  }
  std::ranges::reverse(lines);
  return lines;
}

bool IsChanged(const Line& line) {
  return line.kind == Line::Kind::Back || line.light != 256;
}

void DrawColumns(const std::vector<Line>& lines, const QImage& from, const QImage& to,
                 QImage& out) {
  // What is changed lies together: between a run of one picture and a run of the other.
  const auto begin = std::ranges::find_if(lines, IsChanged) - lines.begin();
  const auto end = std::find_if(lines.rbegin(), lines.rend(), IsChanged).base() - lines.begin();
  const auto isNew = [&](std::ptrdiff_t at) {
    return lines[static_cast<std::size_t>(at)].kind == Line::Kind::New;
  };
  const auto copy = [](const QRgb* row, std::ptrdiff_t first, std::ptrdiff_t last, QRgb* drawn) {
    std::copy(row + first, row + last, drawn + first);
  };
  for (int y = 0; y < out.height(); ++y) {
    const QRgb* old = Row(from, y);
    const QRgb* fresh = Row(to, y);
    QRgb* drawn = Row(out, y);
    if (begin > 0) copy(isNew(0) ? fresh : old, 0, begin, drawn);
    for (auto x = begin; x < end; ++x) {
      const Line& line = lines[static_cast<std::size_t>(x)];
      drawn[x] = Lit(line, old[x], fresh[std::max(0, line.behind)]);
    }
    if (end < out.width()) copy(isNew(end) ? fresh : old, end, out.width(), drawn);
  }
}

void DrawRows(const std::vector<Line>& lines, const QImage& from, const QImage& to, QImage& out) {
  for (int y = 0; y < out.height(); ++y) {
    const Line& line = lines[static_cast<std::size_t>(y)];
    const QRgb* old = Row(from, y);
    const QRgb* shining = Row(to, std::max(0, line.behind));
    QRgb* drawn = Row(out, y);
    if (!IsChanged(line)) {
      std::copy_n(line.kind == Line::Kind::New ? Row(to, y) : old, out.width(), drawn);
      continue;
    }
    for (int x = 0; x < out.width(); ++x)
      drawn[x] = Lit(line, old[x], shining[x]);
  }
}

}  // namespace

void DrawUnroll(const Unroll& unroll, const QImage& from, const QImage& to, double progress,
                QImage& out) {
  const bool across = SideAcross(unroll.origin) != 0;
  const bool fromEnd = unroll.origin == Origin::Right || unroll.origin == Origin::Bottom;
  const auto lines = LinesAt(progress, across ? out.width() : out.height(), fromEnd);
  (across ? DrawColumns : DrawRows)(lines, from, to, out);
}

}  // namespace zqm
