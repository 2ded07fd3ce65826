// SPDX-License-Identifier: GPL-3.0-or-later
// From one picture to the next: 164 transitions, each a row of one table.
#pragma once

#include <QImage>
#include <QString>
#include <optional>
#include <span>
#include <variant>

#include "imaging/transitions/fade.h"
#include "imaging/transitions/moves.h"
#include "imaging/transitions/reveal.h"
#include "imaging/transitions/turning_shape.h"
#include "imaging/transitions/unroll.h"

namespace zqm {

/// No effect: the new picture stands at once.
struct Cut {};

using TransitionEffect = std::variant<Cut, Fade, Reveal, Move, Unroll, TurningShape>;

struct Transition {
  int number;
  QLatin1StringView entry;  ///< as the list shows it: the number, a colon, the name
  TransitionEffect effect;
};

/// All of them; each stands at its number.
std::span<const Transition> Transitions();

/// The first one, which has no effect, for a number that none has.
const Transition& TransitionAt(int number);

/// What a transition draws on a screen of one size; made once, for all pairs of pictures. Drawing
/// changes nothing in it.
class TransitionFrames {
 public:
  TransitionFrames(const Transition& transition, const QSize& screen);

  /// The picture at a progress from 0, pixel by pixel `from`, to 1, `to`. Both are RGB32 of the
  /// screen's size; if either isn't, `to` is the result at once. `out` is written over where it has
  /// room enough and shares its pixels with no other; null when there is no memory for it.
  void Draw(const QImage& from, const QImage& to, double progress, QImage& out) const;

 private:
  const Transition& transition_;
  QSize screen_;
  std::optional<RevealMap> map_;
};

/// A single frame.
void Blend(const Transition& transition, const QImage& from, const QImage& to, double progress,
           QImage& out);

}  // namespace zqm
