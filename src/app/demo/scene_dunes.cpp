// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/scenes.h"
#include "app/demo/sky.h"
#include "app/demo/terrain.h"

namespace zqm::demo {
namespace {

/// Metres. Long slopes to windward, short steep ones to leeward, under sharp crests.
float DuneHeight(float x, float z) {
  const float warp = 22 * Noise(x * 0.006F, z * 0.008F, 3) + 9 * Noise(x * 0.017F, z * 0.02F, 4);
  const auto dune = [&](float scale, std::uint32_t seed) {
    const float phase = (x * 0.75F + z * 0.55F + warp) * scale +
                        0.7F * Noise(x * scale * 0.6F, z * scale * 0.6F, seed);
    const float t = phase - static_cast<float>(Floor(phase));
    const float rise = 0.74F;
    const float wave =
        t < rise ? Smooth(-0.25F, rise, t) * 1.0F : 1 - Smooth(rise - 0.02F, 1.03F, t) * 0.985F;
    return wave * Smooth(-0.7F, 0.5F, Noise(x * scale * 0.5F + 5, z * scale * 0.5F, seed + 9));
  };
  return 26 * dune(0.0062F, 14) + 5 * dune(0.019F, 15) + 9 * Noise(x * 0.003F, z * 0.003F, 16) +
         0.05F * z * Smooth(250, 900, z);
}

}  // namespace

QImage DrawDunes(const QSize& size) {
  Canvas canvas(size);
  const Direction sun = Unit({0.86F, 0.24F, 0.30F});
  const float horizon = 0.40F;
  const ClearSky sky{{0.10F, 0.24F, 0.52F},
                     {0.30F, 0.42F, 0.60F},
                     {0.92F, 0.72F, 0.52F},
                     horizon,
                     0.5F,
                     1.1F,
                     0.30F,
                     {0.9F, 0.55F, 0.25F},
                     0.55F};
  canvas.Shade([&](float u, float v) { return sky(u, v); });
  Terrain terrain(1800, -520, -20, 1060, DuneHeight);
  terrain.CastShadows(sun, 0.5F);
  const View view{{0, terrain.Height(0, 0) + 9, 0}, horizon, 1.15F, 3, 1000, 0.0025F};
  DrawTerrain(canvas, terrain, view, [&](const GroundPoint& p) {
    const float wander = 2.2F * Noise(p.at.x * 0.11F, p.at.z * 0.11F, 41) +
                         0.7F * Noise(p.at.x * 0.5F, p.at.z * 0.5F, 42);
    const float phase = (p.at.x * 0.9F + p.at.z * 0.7F) * 9.0F + wander * 4;
    const float ripples =
        std::cos(phase) * 0.30F * Smooth(90, 12, p.distance) * Smooth(0.72F, 0.9F, p.normal.y);
    const float grains = 0.06F * Noise(p.at.x * 60, p.at.z * 60, 43);
    const Vec3 normal =
        Unit({p.normal.x + ripples * 0.8F + grains, p.normal.y, p.normal.z + ripples * 0.5F});
    const float sunlit = std::pow(Saturate(Dot(normal, sun) * 1.6F), 0.9F) * p.sunlight;
    const Rgb sand = Mix({0.74F, 0.42F, 0.20F}, {0.60F, 0.31F, 0.14F},
                         Smooth(-0.5F, 0.5F, Fbm(p.at.x * 0.05F, p.at.z * 0.05F, 4, 47))) *
                     (1 + grains);
    const Rgb light = Rgb{1.75F, 1.25F, 0.80F} * sunlit + Rgb{0.17F, 0.20F, 0.30F};
    const float haze = 1 - std::exp(-std::pow(p.distance / 900, 1.4F));
    return Mix(sand * light, {0.85F, 0.64F, 0.46F}, haze);
  });
  canvas.Soften();
  return canvas.Develop({.exposure = 1.05F,
                         .contrast = 1.08F,
                         .vignette = 0.25F,
                         .grain = 0.009F,
                         .bloom = 0.05F,
                         .shadows = {0.96F, 0.96F, 1.08F}},
                        3);
}

}  // namespace zqm::demo
