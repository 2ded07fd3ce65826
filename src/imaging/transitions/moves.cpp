// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/transitions/moves.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "imaging/transitions/wipe_order.h"

namespace zqm {
namespace {

using Pieces = std::vector<Piece>;

/// A share of the way on which a picture of that size leaves its place altogether.
QPoint WayOf(const QSize& size, Origin o, double share) {
  const QPoint way = WayOut(o, size);
  return {static_cast<int>(std::lround(way.x() * share)),
          static_cast<int>(std::lround(way.y() * share))};
}

/// The scene that a kind of move draws into.
struct Scene {
  Origin origin;
  QSize screen;
  double progress;
  quint32 seed;

  QRect Whole() const { return {QPoint(), screen}; }
  QPoint Out(double share) const { return Way(origin, share); }
  QPoint Way(Origin o, double share) const { return WayOf(screen, o, share); }
};

Piece At(bool ofNew, const QRect& source, const QPoint& moved = {}) {
  return {ofNew, source, source.translated(moved)};
}
Piece Old(const QRect& source, const QPoint& moved = {}) {
  return At(false, source, moved);
}
Piece New(const QRect& source, const QPoint& moved = {}) {
  return At(true, source, moved);
}

/// Strip `i` of `count` of a rectangle: rows lie over one another, columns side by side.
QRect Strip(const QRect& whole, bool rows, int i, int count) {
  const int length = rows ? whole.height() : whole.width();
  const int begin = length * i / count;
  const int size = length * (i + 1) / count - begin;
  return rows ? QRect(whole.x(), whole.y() + begin, whole.width(), size)
              : QRect(whole.x() + begin, whole.y(), size, whole.height());
}

/// How far the `i`th of `count` is that go one after the other, each for `taking` of the time.
double InTurn(double progress, double turn, double taking) {
  return std::clamp((progress - turn * (1 - taking)) / taking, 0.0, 1.0);
}

bool GoesAcross(Origin o) {
  return SideAcross(o) != 0;
}

Origin Opposite(Origin o) {
  switch (o) {
    case Origin::Left:
      return Origin::Right;
    case Origin::Right:
      return Origin::Left;
    case Origin::Top:
      return Origin::Bottom;
    default:
      return Origin::Top;
  }
}

Pieces SlideIn(const Scene& s) {
  const QRect whole = s.Whole();
  if (s.origin != Origin::Sides) return {Old(whole), New(whole, s.Out(1 - s.progress))};
  const QRect left = Strip(whole, false, 0, 2);
  const QRect right = Strip(whole, false, 1, 2);
  return {Old(whole), New(left, WayOf(left.size(), Origin::Left, 1 - s.progress)),
          New(right, WayOf(right.size(), Origin::Right, 1 - s.progress))};
}

Pieces SlideOut(const Scene& s) {
  return {New(s.Whole()), Old(s.Whole(), -s.Out(s.progress))};
}

Pieces Push(const Scene& s) {
  // What is left of the way in is what the old picture has gone: no gap opens between them.
  const QPoint in = s.Out(1 - s.progress);
  return {Old(s.Whole(), in - s.Out(1)), New(s.Whole(), in)};
}

Pieces PushOver(const Scene& s) {
  return {Old(s.Whole(), -s.Out(s.progress / 2)), New(s.Whole(), s.Out(1 - s.progress))};
}

Pieces Squeeze(const Scene& s) {
  const QPoint in = s.Out(1 - s.progress);
  QRect left = s.Whole();
  const QPoint taken = in - s.Out(1);  // of the screen, from the origin on
  left = left.intersected(left.translated(taken));
  return {{false, s.Whole(), left}, New(s.Whole(), in)};
}

Pieces Expand(const Scene& s) {
  return {Old(s.Whole()), {true, s.Whole(), Grown(s.Whole(), s.origin, s.progress)}};
}

Pieces ExpandFading(const Scene& s) {
  Pieces pieces = Expand(s);
  pieces.back().weight = static_cast<int>(std::lround(s.progress * 256));
  return pieces;
}

Pieces ExpandInward(const Scene& s) {
  const QRect seen = Grown(s.Whole(), Origin::Centre, (1 + s.progress) / 2);
  return {{true, seen, s.Whole()}, Old(Grown(s.Whole(), Origin::Centre, 1 - s.progress))};
}

Pieces Shrink(const Scene& s) {
  return {New(s.Whole()), {false, s.Whole(), Grown(s.Whole(), s.origin, 1 - s.progress)}};
}

struct Quarter {
  QRect part;
  Origin corner;
};

std::array<Quarter, 4> Quarters(const QRect& whole) {
  const QRect top = Strip(whole, true, 0, 2);
  const QRect bottom = Strip(whole, true, 1, 2);
  return {{{Strip(top, false, 0, 2), Origin::TopLeft},
           {Strip(top, false, 1, 2), Origin::TopRight},
           {Strip(bottom, false, 0, 2), Origin::BottomLeft},
           {Strip(bottom, false, 1, 2), Origin::BottomRight}}};
}

Pieces QuartersMoved(const Scene& s, bool in) {
  Pieces pieces = {in ? Old(s.Whole()) : New(s.Whole())};
  for (const Quarter& q : Quarters(s.Whole())) {
    const double away = in ? 1 - s.progress : s.progress;
    pieces.push_back(At(in, q.part, WayOf(q.part.size(), q.corner, away)));
  }
  return pieces;
}

Pieces QuartersIn(const Scene& s) {
  return QuartersMoved(s, true);
}

Pieces QuartersOut(const Scene& s) {
  return QuartersMoved(s, false);
}

Pieces QuartersExpand(const Scene& s) {
  Pieces pieces = {Old(s.Whole())};
  for (const Quarter& q : Quarters(s.Whole()))
    pieces.push_back({true, q.part, Grown(q.part, Origin::Centre, s.progress)});
  return pieces;
}

Pieces BuildUp(const Scene& s) {
  constexpr int kStrips = 12;
  constexpr double kFlight = 0.25;
  const bool fromFirst = s.origin == Origin::Left || s.origin == Origin::Top;
  Pieces pieces = {Old(s.Whole())};
  for (int i = 0; i < kStrips; ++i) {
    const double flown = InTurn(s.progress, double(i) / (kStrips - 1), kFlight);
    if (flown == 0) continue;
    const QRect strip =
        Strip(s.Whole(), !GoesAcross(s.origin), fromFirst ? i : kStrips - 1 - i, kStrips);
    pieces.push_back(New(strip, -s.Out(1 - flown)));
  }
  return pieces;
}

Pieces BarsMoved(const Scene& s, bool crossing) {
  constexpr int kBars = 12;
  const double taking = crossing ? 1 : 0.4;
  Pieces pieces = {Old(s.Whole())};
  for (int i = 0; i < kBars; ++i) {
    const Origin origin = crossing && i % 2 != 0 ? Opposite(s.origin) : s.origin;
    const double gone = InTurn(s.progress, double(i) / (kBars - 1), taking);
    if (gone == 0) continue;
    const QRect bar = Strip(s.Whole(), GoesAcross(s.origin), i, kBars);
    pieces.push_back(New(bar, s.Way(origin, 1 - gone)));
  }
  return pieces;
}

Pieces Bars(const Scene& s) {
  return BarsMoved(s, false);
}

Pieces CrossingBars(const Scene& s) {
  return BarsMoved(s, true);
}

Pieces Shreds(const Scene& s) {
  constexpr int kShreds = 40;
  constexpr double kFall = 0.6;
  Pieces pieces = {New(s.Whole())};
  for (int i = 0; i < kShreds; ++i) {
    const double turn = double{Chance(static_cast<quint32>(i), 0, s.seed)};
    const double fallen = InTurn(s.progress, turn, kFall);
    if (fallen == 1) continue;
    const QRect shred = Strip(s.Whole(), GoesAcross(s.origin), i, kShreds);
    pieces.push_back(Old(shred, -s.Out(fallen * fallen)));
  }
  return pieces;
}

using Arrange = Pieces (*)(const Scene&);
// As MoveKind has them.
constexpr Arrange kArrangements[] = {
    SlideIn, SlideOut,   Push,        PushOver,       Squeeze, Expand, ExpandFading, ExpandInward,
    Shrink,  QuartersIn, QuartersOut, QuartersExpand, BuildUp, Bars,   CrossingBars, Shreds};

}  // namespace

std::vector<Piece> PiecesAt(const Move& move, const QSize& screen, double progress, quint32 seed) {
  return kArrangements[static_cast<int>(move.kind)]({move.origin, screen, progress, seed});
}

}  // namespace zqm
