// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/water.h"

namespace zqm::demo {

void DrawWater(Canvas& canvas, const Water& water) {
  const int first = std::max(1, Floor(canvas.Y(water.shore)) + 1);
  for (int y = first; y < canvas.Height(); ++y) {
    const float v = canvas.V(static_cast<float>(y));
    const float depth = v - water.shore;
    const float distance = 1 / (depth + 0.035F);
    // Waves finer than a row would only flicker: they fade into the smear.
    const float footprint = distance * distance * water.scale * canvas.Pixel();
    const float seen = Smooth(1.4F, 0.25F, footprint);
    const float z = distance * water.scale;
    for (int x = 0; x < canvas.Width(); ++x) {
      const float u = canvas.U(static_cast<float>(x));
      const float across = u * distance * water.scale;
      const float swell = Fbm(across * 0.5F, z, 4, water.seed);
      const float ripple = seen > 0 ? seen * Fbm(across * 2.1F, z * 2.6F, 4, water.seed + 10) : 0;
      const float tilt = 0.55F * swell + 0.8F * ripple;
      const float reach = 0.12F + 1.4F * depth;
      Rgb mirrored;
      for (int ray = 0; ray < water.rays; ++ray) {
        const float jitter = (static_cast<float>(ray) + Cell(x, y * 8 + ray, water.seed + 20)) /
                                 static_cast<float>(water.rays) -
                             0.5F;
        const float up = std::min(2 * water.shore - v + water.roughness * reach * tilt * 2 +
                                      water.smear * (0.3F + depth) * jitter * 2,
                                  water.shore - canvas.Pixel());
        const float aside = u + water.roughness * reach * 0.35F * (ripple - 0.5F * swell);
        mirrored = mirrored + canvas.Sample(aside, std::max(up, 0.0F));
      }
      const float shine = Saturate(
          Lerp(water.farShine, water.nearShine, Smooth(0, 1 - water.shore, depth)) - 0.35F * tilt);
      canvas.At(x, y) = Mix(water.deep, mirrored * (1 / static_cast<float>(water.rays)), shine);
    }
  }
}

}  // namespace zqm::demo
