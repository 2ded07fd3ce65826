// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/scenes.h"
#include "app/demo/sky.h"
#include "app/demo/water.h"

namespace zqm::demo {

QImage DrawStormLake(const QSize& size) {
  Canvas canvas(size);
  const float shore = 0.68F;
  const CloudDeck deck{0.76F, 0.42F, 0.62F, -0.35F, 0.75F, 8, 71, 0.08F, -0.16F};
  const CloudDeck shreds{0.73F, 0.9F, 0.8F, 0.12F, 0.4F, 7, 83, 0.06F, -0.10F};
  const auto ridge = [&](float base, float tall, float frequency, std::uint32_t seed) {
    return Skyline(canvas.Aspect(), canvas.Width() * 2, [=](float u) {
      return base - tall * (Ridged(u * frequency + 2, 0.3F, 8, seed, 0.44F) - 0.25F);
    });
  };
  const Skyline far = ridge(shore - 0.02F, 0.20F, 1.0F, 7);
  const Skyline middle = ridge(shore - 0.005F, 0.17F, 1.4F, 19);
  const Skyline wood(canvas.Aspect(), canvas.Width() * 2, [&](float u) {
    const float crowns = std::abs(Noise(u * 130, 1, 3)) + 0.5F * std::abs(Noise(u * 300, 2, 4));
    return shore - 0.012F - 0.03F * Smooth(-0.1F, 0.9F, std::abs(u + 0.15F)) - 0.011F * crowns;
  });
  canvas.Shade([&](float u, float v) {
    if (v > shore) return Rgb{};
    const float gap = std::exp(-std::pow((u - 0.32F) * 1.9F, 2.0F)) * Smooth(0.28F, 0.60F, v);
    Rgb light = Mix({0.30F, 0.34F, 0.38F}, {2.1F, 1.50F, 0.78F}, gap);
    const CloudDeck::Cloud cloud = deck.At(u, v);
    const float lift = 0.5F + 0.9F * Smooth(0.0F, 0.55F, v);
    const Rgb dark = Rgb{0.055F, 0.068F, 0.085F} * lift;
    const Rgb pale = Mix({0.30F, 0.34F, 0.38F}, {1.35F, 0.92F, 0.50F}, gap) * lift;
    light = Mix(light, Mix(dark, pale, std::pow(cloud.light, 0.8F)),
                cloud.density * (1 - 0.75F * gap * Smooth(0.45F, 0.62F, v)));
    const CloudDeck::Cloud shred = shreds.At(u, v);
    light = Mix(light, Mix(dark, pale, 0.25F * shred.light), 0.7F * shred.density * (1 - gap));
    // Rain hangs from the base in slanted curtains.
    const float slant = u + 0.28F * (v - 0.3F);
    const float curtain = Smooth(-0.12F, 0.35F, Fbm(slant * 2.6F, 1.5F, 3, 55)) *
                          (0.75F + 0.5F * Fbm(slant * 38, v * 1.2F, 3, 57)) *
                          Smooth(0.25F, 0.44F, v + 0.06F * Fbm(u * 6, 0, 3, 58));
    const auto behindRain = [&](Rgb scene, float share) {
      return Mix(scene, Mix({0.20F, 0.225F, 0.25F}, {0.95F, 0.76F, 0.52F}, gap * 0.6F),
                 Saturate(curtain * share * 1.35F));
    };
    if (v > far(u)) light = Mix({0.10F, 0.13F, 0.16F}, {0.55F, 0.46F, 0.35F}, 0.8F * gap);
    light = behindRain(light, 0.85F);
    if (v > middle(u)) {
      const float slope = Fbm(u * 14 + v * 8, v * 30, 5, 61);
      light = behindRain(Rgb{0.040F, 0.052F, 0.055F} * (1 + 0.5F * slope), 0.45F);
    }
    if (v > wood(u)) light = Rgb{0.014F, 0.020F, 0.018F} * (1 + 0.6F * Noise(u * 240, v * 300, 5));
    return light;
  });
  DrawWater(canvas, {.shore = shore,
                     .roughness = 0.16F,
                     .scale = 1.5F,
                     .smear = 0.16F,
                     .rays = 5,
                     .deep = {0.016F, 0.070F, 0.075F},
                     .nearShine = 0.34F,
                     .farShine = 0.72F,
                     .seed = 9});
  for (int y = 0; y < canvas.Height(); ++y) {
    const float v = canvas.V(static_cast<float>(y));
    if (v <= shore) continue;
    const float distance = 1 / (v - shore + 0.03F);
    const float seen = Smooth(3, 0.6F, distance * distance * 1.5F * canvas.Pixel());
    for (int x = 0; x < canvas.Width(); ++x) {
      const float u = canvas.U(static_cast<float>(x));
      const float crest = Fbm(u * distance * 0.9F, distance * 2.4F, 4, 91);
      const float lace = Fbm(u * distance * 9, distance * 16, 4, 95);
      const float foam = Smooth(0.30F, 0.52F, crest + 0.22F * lace) * seen;
      canvas.At(x, y) = Mix(canvas.At(x, y), {0.55F, 0.60F, 0.62F}, 0.8F * foam);
    }
  }
  canvas.Soften();
  return canvas.Develop({.exposure = 1.15F,
                         .contrast = 1.18F,
                         .saturation = 1.22F,
                         .vignette = 0.35F,
                         .grain = 0.012F,
                         .bloom = 0.07F},
                        4);
}

}  // namespace zqm::demo
