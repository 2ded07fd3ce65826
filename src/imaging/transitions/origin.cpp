// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/transitions/origin.h"

#include <cmath>

namespace zqm {
namespace {

/// The begin and length of what has grown on one axis.
struct Span {
  int begin, length;
};

Span Grown(int begin, int length, int side, bool grows, double share) {
  if (!grows) return {begin, length};
  const int grown = static_cast<int>(std::lround(length * share));
  return {begin + (length - grown) * (side + 1) / 2, grown};
}

}  // namespace

QRect Grown(const QRect& whole, Origin o, double share) {
  const int across = SideAcross(o);
  const int down = SideDown(o);
  const Span x = Grown(whole.x(), whole.width(), across,
                       across != 0 || o == Origin::Centre || o == Origin::VerticalCentre, share);
  const Span y = Grown(whole.y(), whole.height(), down,
                       down != 0 || o == Origin::Centre || o == Origin::Horizon, share);
  return {x.begin, y.begin, x.length, y.length};
}

}  // namespace zqm
