// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPointF>

#include "imaging/effects/part_view.h"

namespace zqm {

/// A round glass over a picture.
struct LensSettings {
  QPointF centre{0.5, 0.5};  ///< 0 to 1 of width and height
  double size = 100;         ///< its diameter in percent of the picture's shorter side, 1 to 300
  /// -100 to 100: positive magnifies, in the middle up to five times; negative makes smaller, down
  /// to half; 0 changes nothing.
  double strength = 0;
};

/// What lies under the lens bulges or shrinks, its rim meets the rest without a step.
QImage Lens(const QImage& picture, const LensSettings& settings, const PartView& view = {});

/// How far pixels move, in pixels of a picture of that size.
int LensReach(const LensSettings& settings, const QSize& picture);

}  // namespace zqm
