// SPDX-License-Identifier: GPL-3.0-or-later
// Transitions in which nothing moves: each pixel turns from the old picture to the new one at a
// moment of its own, once.
#pragma once

#include <QImage>
#include <optional>
#include <vector>

#include "imaging/transitions/origin.h"

namespace zqm {

/// The order in which pixels turn.
enum class WipeShape {
  Anywhere,          // all at once: only what is ragged tells them apart
  Straight,          // along the way from the origin; from a corner as a diagonal line
  Rectangle,         // corners, Centre, Edges
  Round,             // corners, Centre, Edges
  Curved,            // from a side, the middle ahead
  Clockwise,         // a hand about the centre
  CounterClockwise,  //
  Fan,               // a hand about the middle of a side
  Starburst,         // rays out of the centre
  Blinds,            // slats of one width, each from the origin's side
  UnevenBlinds,
};

struct Wipe {
  WipeShape shape = WipeShape::Anywhere;
  Origin origin = Origin::Left;
};

/// How the moments of pixels or cells differ from the wipe's order.
enum class Ragged { Not, ByChance, RectangularTeeth, TriangularTeeth };

struct Reveal {
  Wipe wipe;
  Ragged ragged = Ragged::Not;
  double depth = 0;  ///< of what is ragged, as a share of the way
  double soft = 0;   ///< how long a pixel takes, as a share of all the time
  /// A cell turns as one. In shares of the screen's height; 0 is all of that side.
  QSizeF cell{0, 0};
  /// Every other cell goes by this one instead, each pixel by itself.
  std::optional<Wipe> crossing;
};

/// The moments of all pixels of a screen. Depends on nothing else, is made on the free threads.
class RevealMap {
 public:
  /// Chance comes from `seed` alone.
  RevealMap(const Reveal& reveal, const QSize& screen, quint32 seed);

  /// All pictures are RGB32 of the screen's size; `progress` is above 0 and below 1.
  void Draw(const QImage& from, const QImage& to, double progress, QImage& out) const;

 private:
  struct Moments {
    quint16 first, last;
  };
  void FindBlocks(int y);

  double soft_;
  QSize screen_;
  int blocks_;                    // in a row
  std::vector<quint16> moments_;  // when a pixel begins to turn, 0 to 65535
  std::vector<Moments> ofBlocks_;
};

}  // namespace zqm
