// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QRect>

namespace zqm {

/// Where on the screen a transition begins.
enum class Origin {
  Left,
  Right,
  Top,
  Bottom,
  TopLeft,
  TopRight,
  BottomLeft,
  BottomRight,
  Centre,
  Edges,           // all four at once, towards the centre
  Horizon,         // the middle line from left to right
  VerticalCentre,  // the middle line from top to bottom
  Sides,           // left and right at once
};

inline bool IsCorner(Origin o) {
  return o >= Origin::TopLeft && o <= Origin::BottomRight;
}

/// Which edges an origin touches: -1 left or top, 1 right or bottom, 0 neither.
inline int SideAcross(Origin o) {
  if (o == Origin::Left || o == Origin::TopLeft || o == Origin::BottomLeft) return -1;
  return o == Origin::Right || o == Origin::TopRight || o == Origin::BottomRight ? 1 : 0;
}
inline int SideDown(Origin o) {
  if (o == Origin::Top || o == Origin::TopLeft || o == Origin::TopRight) return -1;
  return o == Origin::Bottom || o == Origin::BottomLeft || o == Origin::BottomRight ? 1 : 0;
}

/// The way on which something of that size leaves its place towards an origin.
inline QPoint WayOut(Origin o, const QSize& size) {
  return {SideAcross(o) * size.width(), SideDown(o) * size.height()};
}

/// The part of `whole` that has grown out of an origin by a share of 0 to 1. Not for Edges and
/// Sides, which leave more than one part.
QRect Grown(const QRect& whole, Origin o, double share);

}  // namespace zqm
