// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/scenes.h"
#include "app/demo/sky.h"
#include "app/demo/terrain.h"

namespace zqm::demo {
namespace {

/// Kilometres. A valley in front, a chain of peaks behind it.
float PeakHeight(float x, float z) {
  const float warpX = 0.35F * Fbm(x * 0.5F, z * 0.5F, 3, 61);
  const float warpZ = 0.35F * Fbm(x * 0.5F + 9, z * 0.5F, 3, 67);
  const float chain = Smooth(3.2F, 8.5F, z + 0.5F * Noise(x * 0.4F, 2, 5)) * Smooth(19, 12, z);
  const float ridges = Ridged((x + warpX) * 0.23F + 0.6F, (z + warpZ) * 0.23F, 11, 31, 0.43F);
  const float foothills = 0.12F * Fbm(x * 0.9F, z * 0.9F, 8, 91, 0.45F);
  return 0.10F + foothills + chain * (2.5F * ridges * ridges + 0.5F * ridges);
}

}  // namespace

QImage DrawWinterPeaks(const QSize& size) {
  Canvas canvas(size);
  const Direction sun = Unit({-0.80F, 0.36F, -0.25F});
  const float horizon = 0.70F;
  const ClearSky sky{{0.045F, 0.13F, 0.36F},
                     {0.13F, 0.28F, 0.58F},
                     {0.52F, 0.66F, 0.82F},
                     horizon,
                     0.75F,
                     -1.2F,
                     0.3F,
                     {0.35F, 0.30F, 0.22F},
                     0.8F};
  const CloudDeck cirrus{0.72F, 0.16F, 0.95F, 0.06F, 0.75F, 7, 5, -0.10F, 0.02F};
  canvas.Shade([&](float u, float v) {
    const CloudDeck::Cloud cloud = cirrus.At(u + 0.5F * v, v);
    return Mix(sky(u, v), {0.95F, 0.96F, 1.0F}, 0.5F * cloud.density);
  });
  Terrain terrain(1800, -11, 0, 22, PeakHeight);
  terrain.CastShadows(sun, 0.02F);
  const View view{{0, 0.62F, 0.2F}, horizon, 2.25F, 0.35F, 19, 0.0030F};
  const float shadowSky = 0.34F;
  DrawTerrain(canvas, terrain, view, [&](const GroundPoint& p) {
    const float fine = Fbm(p.at.x * 14, p.at.z * 14, 5, 12);
    const float finer = Fbm(p.at.x * 50 + p.at.y * 30, p.at.z * 50, 4, 18);
    const Vec3 normal = Unit({p.normal.x + 0.25F * fine + 0.12F * finer, p.normal.y,
                              p.normal.z + 0.25F * finer - 0.1F * fine});
    const float sunlit = Saturate(Dot(normal, sun)) * p.sunlight;
    const float steep = 1 - p.normal.y;
    const float snow = Smooth(0.60F, 0.38F, steep + 0.16F * finer + 0.10F * fine);
    const Rgb rock = Rgb{0.16F, 0.14F, 0.13F} * (1 + 0.5F * finer);
    Rgb ground = Mix(rock, {0.92F, 0.93F, 0.95F}, snow);
    // Spruce woods below the tree line, on what isn't too steep.
    const float line = 0.62F + 0.14F * fine;
    const float wood = Smooth(line, line - 0.10F, p.at.y) *
                       Smooth(-0.20F, 0.10F, Fbm(p.at.x * 2.2F, p.at.z * 2.2F, 5, 44) + 0.1F);
    const float crowns = Fbm(p.at.x * 150, p.at.z * 150, 3, 55);
    ground = Mix(ground,
                 Mix({0.020F, 0.032F, 0.028F}, {0.45F, 0.48F, 0.52F}, Smooth(0.15F, 0.9F, crowns)),
                 wood);
    const Rgb light = Rgb{1.55F, 1.30F, 1.02F} * sunlit +
                      Rgb{0.40F, 0.60F, 1.0F} * (shadowSky * (0.6F + 0.4F * normal.y));
    const Rgb air{0.36F, 0.50F, 0.74F};
    const float haze =
        1 - std::exp(-p.distance * 0.028F - 0.10F * Smooth(0.9F, 0.1F, p.at.y) * p.distance * 0.6F);
    return Mix(ground * light, air, haze);
  });
  canvas.Soften();
  return canvas.Develop({.exposure = 1.0F,
                         .contrast = 1.10F,
                         .saturation = 1.05F,
                         .vignette = 0.22F,
                         .grain = 0.007F,
                         .bloom = 0.04F},
                        2);
}

}  // namespace zqm::demo
