// SPDX-License-Identifier: GPL-3.0-or-later
// Transitions in which whole pictures, or strips and quarters of them, move or change their size.
#pragma once

#include <QImage>
#include <QRect>
#include <vector>

#include "imaging/transitions/origin.h"

namespace zqm {

enum class MoveKind {
  SlideIn,         // the new picture over the old one
  SlideOut,        // the old picture goes away from the origin
  Push,            // the new one pushes the old one
  PushOver,        // the old one slides out at half the speed, under the new one
  Squeeze,         // the new one presses the old one together
  Expand,          // the new one grows
  ExpandFading,    // and comes through meanwhile
  ExpandInward,    // the new one comes from beyond the edges, about a shrinking part of the old one
  Shrink,          // the old one, towards the origin
  QuartersIn,      // the new one's come from the corners
  QuartersOut,     // the old one's go there
  QuartersExpand,  // the new one's grow, each out of its middle
  BuildUp,         // strips of the new one pile up at the origin
  Bars,            // bars of the new one slide in, one after the other
  CrossingBars,    // every other one from across
  Shreds,          // strips of the old one fall away from the origin, each at its time
};

struct Move {
  MoveKind kind = MoveKind::SlideIn;
  Origin origin = Origin::Left;
};

/// A part of a picture and where on the screen it lies. It is stretched if the sizes differ.
struct Piece {
  bool ofNew = false;
  QRect source;
  QRect target;
  int weight = 256;  ///< over what lies there, 256 for all of it
};

/// What is seen at a progress of 0 to 1, the lowest piece first. Together they cover the screen.
std::vector<Piece> PiecesAt(const Move& move, const QSize& screen, double progress, quint32 seed);

/// All pictures are RGB32 of one size.
void DrawPieces(const std::vector<Piece>& pieces, const QImage& from, const QImage& to,
                QImage& out);

}  // namespace zqm
