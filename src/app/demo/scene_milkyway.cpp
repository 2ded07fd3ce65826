// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/scenes.h"
#include "app/demo/sky.h"

namespace zqm::demo {
namespace {

constexpr float kHorizon = 0.84F;

struct Galaxy {
  float along = 0, off = 0;  ///< along the band from its core, and away from its middle line
  explicit Galaxy(float u, float v) {
    const float x = u - 0.12F;
    const float y = v - 0.60F;
    along = 0.40F * x - 0.9165F * y;
    off = 0.9165F * x + 0.40F * y + 0.05F * std::sin(along * 2.5F);
  }
  float Band() const {
    const float wide = Lerp(0.20F, 0.12F, Smooth(0, 0.9F, along));
    return std::exp(-off * off / (wide * wide)) * Lerp(1.0F, 0.40F, Smooth(0.05F, 0.9F, along));
  }
  float Dust() const {
    const float wander = off + 0.045F * Fbm(along * 5, 3, 4, 8);
    const float lane = std::exp(-wander * wander / 0.0028F);
    const float veil = Fbm(along * 9 + 2, off * 14, 8, 13, 0.62F);
    return Saturate(lane * (0.65F + 1.1F * veil) + 0.9F * Smooth(0.0F, 0.45F, veil) * Band());
  }
};

void DrawStars(Canvas& canvas) {
  Random random(99);
  const float half = 0.5F * canvas.Aspect();
  const float pixel = 1.0F / 2600;  // stars don't grow with the file
  for (int i = 0; i < 42000; ++i) {
    const float u = random.Between(-half, half);
    const float v = random.Between(0, kHorizon + 0.02F);
    const Galaxy galaxy(u, v);
    const float crowd = 0.18F + 0.9F * galaxy.Band() * (1 - 0.85F * galaxy.Dust());
    const float chance = random.Next();
    const float heat = random.Next();
    const float magnitude = random.Next();
    if (chance > crowd) continue;
    const float light =
        0.028F / std::pow(0.004F + magnitude, 0.82F) * Smooth(kHorizon, 0.5F, v + 0.02F);
    const Rgb colour =
        heat < 0.2F ? Rgb{1.1F, 0.82F, 0.6F} : Mix({1, 0.96F, 0.9F}, {0.72F, 0.84F, 1.15F}, heat);
    canvas.Glow(u, v, pixel * (0.55F + 0.25F * std::min(light, 2.0F)), colour * light);
    if (light > 1.3F) canvas.Glow(u, v, pixel * 3.4F, colour * (0.03F * light));
  }
}

/// A lit tent at the foot of the rocks.
void DrawTent(Canvas& canvas) {
  const float u0 = -0.36F;
  const float foot = 0.925F;
  canvas.Glow(u0, foot, 0.09F, {0.035F, 0.016F, 0.005F});
  for (int y = Floor(canvas.Y(foot - 0.05F)); y < static_cast<int>(canvas.Y(foot)); ++y)
    for (int x = Floor(canvas.X(u0 - 0.07F)); x < static_cast<int>(canvas.X(u0 + 0.07F)); ++x) {
      const float u = (canvas.U(static_cast<float>(x)) - u0) / 0.058F;
      const float up = (foot - canvas.V(static_cast<float>(y))) / 0.046F;
      const float dome = std::sqrt(std::max(0.0F, 1 - u * u)) * (1 - 0.14F * std::abs(u));
      if (up > dome) continue;
      const float lamp = std::exp(-((u - 0.1F) * (u - 0.1F) + (up - 0.35F) * (up - 0.35F)) * 2.6F);
      const float seam = 1 - 0.55F * std::exp(-std::pow((u - 0.55F * (1 - up)) * 30, 2.0F)) -
                         0.55F * std::exp(-std::pow((u + 0.5F * (1 - up)) * 30, 2.0F));
      canvas.At(x, y) = Rgb{0.50F, 0.18F, 0.035F} * ((0.16F + 1.1F * lamp) * seam);
    }
}

}  // namespace

QImage DrawMilkyWay(const QSize& size) {
  Canvas canvas(size);
  const Skyline mesas(canvas.Aspect(), canvas.Width() * 2, [](float u) {
    const float field = Fbm(u * 1.5F + 0.4F, 6, 5, 27);
    const float steps = 0.10F * Smooth(0.05F, 0.09F, field) + 0.06F * Smooth(0.20F, 0.225F, field) +
                        0.05F * Smooth(0.30F, 0.315F, field);
    return kHorizon + 0.015F - steps * 1.25F - 0.010F * Fbm(u * 16, 2, 5, 29);
  });
  const Skyline ground(canvas.Aspect(), canvas.Width(), [](float u) {
    return 0.90F - 0.018F * Fbm(u * 2.2F, 8, 6, 30) + 0.012F * std::cos(u * 3);
  });
  canvas.Shade([&](float u, float v) {
    const float low = Smooth(0.25F, kHorizon, v);
    Rgb light = Mix({0.0095F, 0.014F, 0.026F}, {0.028F, 0.048F, 0.050F}, low * low) +
                Rgb{0.10F, 0.052F, 0.018F} *
                    (std::exp(-(kHorizon - v) * 11) * std::exp(-(u + 0.75F) * (u + 0.75F) * 2.2F));
    const Galaxy galaxy(u, v);
    const float band = galaxy.Band();
    const float cloud = 0.70F + 0.85F * Fbm(galaxy.along * 4, galaxy.off * 7, 7, 3, 0.55F);
    const float core = std::exp(-(galaxy.along * galaxy.along * 9 + galaxy.off * galaxy.off * 34));
    const float clear = 1 - 0.88F * galaxy.Dust();
    light = light + (Rgb{0.045F, 0.046F, 0.062F} * (band * band * cloud) +
                     Rgb{0.115F, 0.075F, 0.042F} * (core * cloud)) *
                        clear;
    const float nebula =
        Smooth(0.25F, 0.6F, Noise(galaxy.along * 9 + 3, galaxy.off * 16, 4)) * band;
    return light + Rgb{0.024F, 0.006F, 0.013F} * nebula * clear;
  });
  DrawStars(canvas);
  canvas.Shade([&, sky = canvas](float u, float v) {
    const Rgb light = sky.Sample(u, v);
    const float soft = canvas.Pixel();
    if (v < mesas(u) - soft && v < ground(u) - soft) return light;
    const float strata = 0.7F + 0.4F * Noise(u * 2, v * 150 + 3 * Noise(u * 9, v * 9, 5), 6) +
                         0.35F * Fbm(u * 42, v * 26, 5, 7);
    const Rgb rock = Rgb{0.013F, 0.0125F, 0.0155F} * strata;
    const Rgb behind = Mix(light, rock, Smooth(-soft, soft, v - mesas(u)));
    const float lamp =
        std::exp(-std::pow((u + 0.36F) * 5.5F, 2.0F) - std::pow((v - 0.93F) * 22, 2.0F));
    const float scrub = 1 + 0.9F * Fbm(u * 60 / (v - 0.6F), 60 / (v - 0.6F), 5, 11);
    const Rgb sand = (Rgb{0.0155F, 0.0150F, 0.0175F} + Rgb{0.045F, 0.019F, 0.005F} * lamp) * scrub;
    return Mix(behind, sand, Smooth(-soft, soft, v - ground(u)));
  });
  DrawTent(canvas);
  canvas.Soften();
  return canvas.Develop({.exposure = 3.3F,
                         .contrast = 1.12F,
                         .saturation = 1.1F,
                         .vignette = 0.3F,
                         .grain = 0.020F,
                         .bloom = 0.05F},
                        7);
}

}  // namespace zqm::demo
