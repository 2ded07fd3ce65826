// SPDX-License-Identifier: GPL-3.0-or-later
// Tree lines against the sky.
#pragma once

#include <functional>

#include "app/demo/sky.h"

namespace zqm::demo {

/// A line of spruces that stand on `base(u)`: pointed crowns of stepped branches.
struct Spruces {
  float tall = 0.08F, spacing = 0.012F;  ///< of a tree, in picture heights
  std::uint32_t seed = 1;
  std::function<float(float u)> base;
};

inline Skyline SpruceLine(float aspect, int samples, const Spruces& spruces) {
  return Skyline(aspect, samples, [&](float u) {
    const float ground = spruces.base(u);
    float top = ground;
    const int here = Floor(u / spruces.spacing);
    for (int i = here - 3; i <= here + 3; ++i) {
      const float tall = spruces.tall * (0.45F + 0.75F * Cell(i, 0, spruces.seed));
      const float middle = (static_cast<float>(i) + Cell(i, 1, spruces.seed)) * spruces.spacing;
      const float off = std::abs(u - middle) / (0.20F * tall);
      // Branches reach out in steps: the outline goes in and out on its way down.
      const float steps = 0.16F * std::sin(off * 34 + Cell(i, 2, spruces.seed) * 6) +
                          0.18F * Noise(u * 900, static_cast<float>(i), spruces.seed + 3);
      const float rise = tall * (1 - std::pow(Saturate(off * (1 + 0.5F * steps)), 0.85F));
      top = std::min(top, ground - rise);
    }
    return top;
  });
}

}  // namespace zqm::demo
