// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/scenes.h"
#include "app/demo/sky.h"
#include "app/demo/terrain.h"

namespace zqm::demo {
namespace {

constexpr float kSpacing = 1.7F;
constexpr float kHorizon = 0.43F;

/// Metres: cushions in rows that run away from the camera.
float FieldHeight(float x, float z) {
  const float roll = 1.2F * Noise(x * 0.012F, z * 0.012F, 4) + 0.00012F * z * z;
  const float across = (x + 0.12F * Noise(0.3F, z * 0.15F, 6)) / kSpacing;
  const float off = std::abs(across - static_cast<float>(Floor(across)) - 0.5F) * 2;
  const int row = Floor(across);
  const float plants = 0.78F + 0.22F * Noise(static_cast<float>(row) * 5, z * 1.5F, 8) +
                       0.08F * Noise(x * 6, z * 6, 9);
  return roll + 0.62F * plants * std::sqrt(std::max(0.0F, 1 - std::pow(off * 1.28F, 2.0F)));
}

/// A round oak at the end of the field, lit from the left, made of dabs of leaf.
void DrawTree(Canvas& canvas, float u, float foot, float tall) {
  Random random(12);
  for (float v = foot; v > foot - tall * 0.5F; v -= canvas.Pixel())
    canvas.Dab({u, v, tall * 0.022F, tall * 0.022F}, {0.035F, 0.026F, 0.020F});
  for (int i = 0; i < 5200; ++i) {
    const float angle = random.Between(0, 6.2832F);
    const float radius = std::sqrt(random.Next());
    const float bumps = 0.80F + 0.28F * Noise(std::cos(angle) * 2.2F, std::sin(angle) * 2.2F, 5);
    const float x = std::cos(angle) * radius * bumps;
    const float y = std::sin(angle) * radius * bumps;
    const float clump = Fbm(x * 3, y * 3, 3, 15);
    const float lit = Saturate(0.42F - 0.45F * x - 0.40F * y + 0.9F * clump);
    const Rgb leaf =
        Mix({0.012F, 0.024F, 0.012F}, {0.30F, 0.27F, 0.075F}, lit) * random.Between(0.7F, 1.25F);
    canvas.Dab({u + x * tall * 0.43F, foot - tall * 0.58F + y * tall * 0.40F, tall * 0.017F,
                tall * 0.010F, random.Between(0, 3)},
               leaf, 0.9F);
  }
}

}  // namespace

QImage DrawLavender(const QSize& size) {
  Canvas canvas(size);
  const Direction sun = Unit({-0.75F, 0.42F, 0.35F});
  const ClearSky sky{{0.10F, 0.22F, 0.50F},
                     {0.30F, 0.44F, 0.66F},
                     {0.98F, 0.80F, 0.62F},
                     kHorizon,
                     0.50F,
                     -0.75F,
                     0.24F,
                     {1.0F, 0.62F, 0.30F},
                     0.40F};
  const CloudDeck cumulus{0.50F, 0.30F, 0.62F, 0.10F, 0.30F, 8, 37, -0.10F, 0.08F};
  const Skyline hills(canvas.Aspect(), canvas.Width() * 2, [](float u) {
    return kHorizon - 0.015F - 0.05F * (0.5F + Fbm(u * 1.6F + 1, 2, 6, 71, 0.42F));
  });
  const Skyline hedge(canvas.Aspect(), canvas.Width() * 2, [](float u) {
    return kHorizon + 0.004F - 0.012F * std::abs(Fbm(u * 22, 7, 5, 72)) -
           0.010F * Smooth(0, 0.5F, Fbm(u * 4, 1, 3, 73));
  });
  canvas.Shade([&](float u, float v) {
    Rgb light = sky(u, v);
    const CloudDeck::Cloud cloud = cumulus.At(u, v);
    light = Mix(light, Mix({0.36F, 0.36F, 0.46F}, {1.45F, 1.10F, 0.82F}, cloud.light),
                0.9F * cloud.density * Smooth(0.0F, 0.12F, kHorizon - v));
    if (v > hills(u))
      light = Mix({0.20F, 0.22F, 0.33F}, {0.62F, 0.50F, 0.46F},
                  Smooth(0, 0.06F, v - hills(u)) * 0.6F + 0.25F * Smooth(0.6F, -0.8F, u));
    if (v > hedge(u))
      light = Rgb{0.050F, 0.058F, 0.040F} * (1 + 0.8F * Noise(u * 240, v * 240, 74));
    return light;
  });
  DrawTree(canvas, 0.34F, kHorizon + 0.012F, 0.19F);
  Terrain terrain(2000, -70, 0, 140, FieldHeight);
  terrain.CastShadows(sun, 0.12F);
  const View view{{0.85F, terrain.Height(0.85F, 0) + 1.9F, 0}, kHorizon, 1.0F, 1.6F, 135, 0.0022F};
  DrawTerrain(canvas, terrain, view, [&](const GroundPoint& p) {
    const float across = (p.at.x + 0.12F * Noise(0.3F, p.at.z * 0.15F, 6)) / kSpacing;
    const float off = std::abs(across - static_cast<float>(Floor(across)) - 0.5F) * 2;
    const float cushion = Smooth(0.80F, 0.62F, off);
    const float detail = Smooth(60, 8, p.distance);
    // Spikes of flowers stand close: light heads before the dark between the stalks.
    const float heads = Fbm(p.at.x * 26, p.at.z * 26 + p.at.y * 34, 4, 81);
    const float spikes = Noise(p.at.x * 95, p.at.z * 60 + p.at.y * 40, 85);
    const float lightness = 1 + detail * (0.85F * heads + 0.55F * spikes);
    const float bloom = Smooth(0.50F, 0.95F, 1 - off * 0.75F + 0.25F * heads);
    const Rgb plant =
        Mix({0.075F, 0.085F, 0.060F},
            Mix({0.24F, 0.13F, 0.42F}, {0.40F, 0.24F, 0.56F}, Saturate(0.5F + heads)), bloom);
    const Rgb earth = Rgb{0.26F, 0.18F, 0.12F} * (1 + 0.5F * Fbm(p.at.x * 9, p.at.z * 9, 5, 83));
    const Rgb ground = Mix(earth, plant * std::max(lightness, 0.1F), cushion);
    const Vec3 normal =
        Unit({p.normal.x + 0.5F * detail * heads, p.normal.y, p.normal.z + 0.4F * detail * spikes});
    const float sunlit = Saturate(0.25F + 0.9F * Dot(normal, sun)) * p.sunlight;
    const float through = 0.5F * cushion * Saturate(normal.z + 0.6F);  // petals against the light
    const Rgb light = Rgb{1.75F, 1.25F, 0.82F} * (sunlit + through * p.sunlight * 0.4F) +
                      Rgb{0.36F, 0.40F, 0.56F} * (0.55F + 0.45F * cushion);
    const float haze = 1 - std::exp(-p.distance * 0.0045F);
    return Mix(ground * light, {0.80F, 0.62F, 0.56F}, haze);
  });
  canvas.Soften();
  return canvas.Develop({.exposure = 1.15F,
                         .contrast = 1.06F,
                         .saturation = 1.08F,
                         .vignette = 0.28F,
                         .grain = 0.008F,
                         .bloom = 0.08F},
                        8);
}

}  // namespace zqm::demo
