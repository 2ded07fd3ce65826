// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace zqm {

/// A picture as a relief whose heights are its brightness, with light from one side.
struct BumpMapSettings {
  double depth = 0;  ///< 0, which changes nothing, to 100
  double direction =
      135;                ///< where the light comes from: degrees, counter-clockwise from the right
  double elevation = 45;  ///< of the light: 5 degrees, all but along the ground, to 90, from above
  double softness = 1;    ///< pixels of the full picture (0 to 100) over which heights are evened
};

/// Each pixel as bright as its slope towards the light makes it; even ground stays as it is.
/// `scale` as in PartView.
QImage BumpMap(const QImage& picture, const BumpMapSettings& settings, double scale = 1);

}  // namespace zqm
