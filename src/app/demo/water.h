// SPDX-License-Identifier: GPL-3.0-or-later
// Standing and moving water under a picture that is drawn already.
#pragma once

#include "app/demo/canvas.h"

namespace zqm::demo {

struct Water {
  float shore = 0.6F;       ///< v of the water's far edge; all below becomes water
  float roughness = 0.05F;  ///< how far the waves move a reflection, in picture heights
  float scale = 3;          ///< waves a unit of the plane
  float smear = 0.02F;      ///< how far the unseen small waves draw a reflection out
  int rays = 3;             ///< averaged a pixel; more for long smears
  Rgb deep = {0.01F, 0.02F, 0.03F};
  float nearShine = 0.45F, farShine = 0.92F;  ///< share reflected at the bottom and at the shore
  std::uint32_t seed = 1;
};

/// Mirrors what stands above the shore.
void DrawWater(Canvas& canvas, const Water& water);

}  // namespace zqm::demo
