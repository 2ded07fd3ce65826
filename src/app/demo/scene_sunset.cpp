// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "app/demo/scenes.h"
#include "app/demo/sky.h"

namespace zqm::demo {
namespace {

constexpr int kLayers = 7;
constexpr float kHorizon = 0.60F;

struct Layer {
  Skyline ridge;
  Rgb colour;
  float mist;
};

std::vector<Layer> Hills(const Canvas& canvas) {
  std::vector<Layer> layers;
  for (int i = 0; i < kLayers; ++i) {
    const auto near = static_cast<float>(i) / (kLayers - 1);
    const float base = kHorizon - 0.015F + 0.33F * std::pow(near, 1.5F);
    const auto seed = static_cast<std::uint32_t>(40 + 11 * i);
    const float frequency = Lerp(3.4F, 1.0F, near);
    const float trees = 0.0012F + 0.016F * near * near;
    Skyline ridge(canvas.Aspect(), canvas.Width() * 2, [&](float u) {
      const float hill = Fbm(u * frequency + 3.7F, near * 9, 5, seed, 0.42F);
      const float crowns = std::abs(Noise(u * Lerp(420, 90, near), 3, seed + 50)) +
                           0.5F * std::abs(Noise(u * Lerp(900, 260, near), 5, seed + 51)) +
                           0.25F * Noise(u * 700, 9, seed + 52);
      const float wood = Smooth(-0.25F, 0.2F, Fbm(u * 5, near * 4, 3, seed + 53));
      return base - Lerp(0.055F, 0.11F, near) * hill - trees * crowns * wood;
    });
    layers.push_back({std::move(ridge),
                      Mix({0.62F, 0.33F, 0.24F}, {0.010F, 0.014F, 0.013F}, std::pow(near, 0.55F)),
                      Lerp(0.85F, 0.25F, near)});
  }
  return layers;
}

}  // namespace

QImage DrawSunsetHills(const QSize& size) {
  Canvas canvas(size);
  const float sunU = 0.24F;
  const float sunV = 0.535F;
  const ClearSky sky{{0.075F, 0.13F, 0.30F},
                     {0.42F, 0.33F, 0.36F},
                     {1.15F, 0.55F, 0.22F},
                     kHorizon,
                     0.62F,
                     sunU,
                     sunV,
                     {1.5F, 0.72F, 0.25F},
                     0.30F};
  const CloudDeck high{0.66F, 0.20F, 0.75F, -0.16F, 0.62F, 7, 11, 0.03F, 0.12F};
  const CloudDeck low{0.64F, 0.10F, 0.55F, -0.02F, 0.42F, 7, 23, 0.02F, 0.16F};
  const auto above = [&](float u, float v) {
    Rgb light = sky(u, v);
    const float du = u - sunU;
    const float dv = v - sunV;
    const float off = std::sqrt(du * du + dv * dv);
    const float warm = std::exp(-off * 1.7F);
    for (const auto& [deck, strength] : {std::pair(&high, 0.75F), std::pair(&low, 0.9F)}) {
      const CloudDeck::Cloud cloud = deck->At(u, v);
      const Rgb lit = Mix({0.50F, 0.26F, 0.27F}, {2.3F, 0.92F, 0.34F}, warm);
      const Rgb dark = Mix({0.10F, 0.10F, 0.16F}, {0.48F, 0.20F, 0.14F}, warm);
      const float fade = Smooth(0.0F, 0.10F, kHorizon - v);
      light = Mix(light, Mix(dark, lit, cloud.light), cloud.density * strength * fade);
    }
    return light + Rgb{9, 6.2F, 3.0F} * Smooth(0.0245F, 0.0225F, off);
  };
  const std::vector<Layer> layers = Hills(canvas);
  canvas.Shade([&](float u, float v) {
    std::size_t front = layers.size();
    while (front > 0 && v < layers[front - 1].ridge(u))
      --front;
    if (front == 0) return above(u, v);
    const Layer& layer = layers[front - 1];
    const float depth = v - layer.ridge(u);
    const float off = std::abs(u - sunU);
    const Rgb mist = Mix({0.40F, 0.26F, 0.25F}, {1.25F, 0.60F, 0.25F}, std::exp(-off * 2.4F));
    const float near = static_cast<float>(front - 1) / (kLayers - 1);
    const float texture =
        1 + Lerp(0.1F, 0.7F, near) * Fbm(u * Lerp(60, 26, near), v * Lerp(160, 70, near), 5,
                                         300 + static_cast<std::uint32_t>(front));
    const Rgb ground = layer.colour * texture + mist * (0.02F * (1 - near));
    const float fog = layer.mist * Smooth(0, Lerp(0.06F, 0.22F, near), depth) *
                      (0.75F + 0.35F * Fbm(u * 3, v * 9, 4, 77));
    const float air = 0.55F * std::pow(1 - near, 1.6F);
    return Mix(Mix(ground, mist * 0.8F, Saturate(fog * (1 - 0.75F * near))), mist, air);
  });
  canvas.Soften();
  return canvas.Develop({.exposure = 1.05F,
                         .contrast = 1.05F,
                         .vignette = 0.35F,
                         .grain = 0.010F,
                         .bloom = 0.10F,
                         .shadows = {0.95F, 0.97F, 1.08F}},
                        1);
}

}  // namespace zqm::demo
