// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

#include "imaging/effects/part_view.h"

namespace zqm {

enum class WaveDirection {
  Sideways,   // rows move to the left and the right
  UpAndDown,  // columns move up and down
  Both,
};

/// Lengths in pixels of the full picture.
struct WaveSettings {
  double amplitude = 0;  ///< how far pixels move, 0 to 1000; 0 changes nothing
  double length = 100;   ///< from crest to crest, 2 to 10,000
  double phase = 0;      ///< degrees that the wave is moved on by
  WaveDirection direction = WaveDirection::Sideways;
};

/// The picture bent in waves; what comes in from beyond its edges is its mirror image.
QImage Wave(const QImage& picture, const WaveSettings& settings, const PartView& view = {});

}  // namespace zqm
