// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of houses, by day and by night.
#pragma once

#include <vector>

#include "app/demo/canvas.h"

namespace zqm::demo {

struct House {
  float left = 0, right = 0, eaves = 0, foot = 0;  ///< edges, shader units
  float gable = 0;                                 ///< the roof's height above the eaves
  bool ridgeAcross = false;                        ///< the ridge runs along the street
  Rgb wall, roof;
  std::uint32_t seed = 1;
};

/// What is seen of a house at a place inside its outline.
struct HousePart {
  enum class Kind { None, Roof, Wall, Window, Frame, Door } kind = Kind::None;
  int column = 0, floor = 0;  ///< of the window
  float x = 0, y = 0;         ///< within the window or the wall, 0 to 1
};
HousePart PartAt(const House& house, float u, float v);

}  // namespace zqm::demo
