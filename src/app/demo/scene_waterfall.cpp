// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/scenes.h"
#include "app/demo/sky.h"

namespace zqm::demo {
namespace {

constexpr float kLip = 0.13F;   // where the water goes over the edge
constexpr float kPool = 0.77F;  // where it meets the pool

float RockRelief(float u, float v) {
  const float warp = 0.05F * Fbm(u * 4, v * 4, 3, 5);
  const float blocks = Ridged((u + warp) * 3.4F, (v + warp) * 2.2F, 8, 11, 0.52F);
  const float layers = Noise(u * 1.5F, v * 16 + 3 * warp * 16, 17);
  return blocks + 0.10F * layers + 0.10F * Fbm(u * 26, v * 26, 4, 19);
}

/// `relief` holds the rock's height at every pixel in its red.
Rgb Rock(const Canvas& relief, float u, float v) {
  const float step = 0.004F;
  const float here = relief.Sample(u, v).r;
  const float dx = (relief.Sample(u + step, v).r - here) / step;
  const float dy = (relief.Sample(u, v + step).r - here) / step;
  const float light = Saturate(0.42F + 0.050F * dx + 0.085F * dy);
  const float crack = Smooth(0.10F, 0.42F, here);
  const float upward = Saturate(0.10F + 0.11F * dy);
  const float moss = Smooth(
      0.30F, 0.75F, upward + 0.55F * Fbm(u * 3, v * 3, 4, 23) + 0.25F * Smooth(0.55F, 0.1F, v));
  const float tufts = 1 + 0.7F * Fbm(u * 95, v * 70, 3, 29);
  const Rgb stone = Mix({0.050F, 0.048F, 0.050F}, {0.20F, 0.175F, 0.15F}, light);
  const Rgb green = Mix({0.022F, 0.036F, 0.010F}, {0.115F, 0.140F, 0.036F}, light) * tufts;
  return Mix(stone, green, moss) * (0.18F + 0.95F * crack);
}

/// How much of the falling water covers a place, and how bright it is there.
struct Fall {
  float cover = 0, light = 0;
};
Fall FallAt(float u, float v) {
  if (v < kLip - 0.01F || v > kPool + 0.02F || std::abs(u) > 0.34F) return {};
  const float t = (v - kLip) / (kPool - kLip);
  // Two ledges spread the water and turn it.
  const float ledge = Smooth(0.30F, 0.36F, t) + Smooth(0.62F, 0.68F, t);
  const float middle = 0.035F * std::sin(t * 3) + 0.03F * ledge + 0.018F * Noise(t * 4, 1, 31);
  const float half = 0.060F + 0.034F * ledge + 0.025F * t + 0.016F * Noise(u * 6, t * 5, 33);
  const float off = (u - middle) / half;
  const float strand = Fbm(off * 5 + 0.4F * Noise(off * 2, t * 3, 35), t * 1.3F + ledge * 2, 4, 37);
  const float threads = Fbm(off * 26 + ledge * 3, t * 3.2F, 4, 41, 0.6F);
  const float edge = std::exp(-std::pow(std::abs(off), 3.2F));
  const float breakUp = Smooth(-0.55F, 0.15F, strand + 0.5F * threads + 1.1F * edge - 0.45F);
  const float lip = Smooth(-0.012F, 0.012F, v - kLip - 0.010F * Noise(u * 30, 2, 43));
  const float foam =
      std::exp(-std::pow((t - 0.345F) * 22, 2.0F)) + std::exp(-std::pow((t - 0.665F) * 22, 2.0F));
  return {Saturate(edge * breakUp * 1.4F) * lip,
          0.62F + 0.42F * strand + 0.34F * threads + 0.30F * foam};
}

/// Above the lip: the wood, with the sky between its leaves.
Rgb UnderWood(Rgb rock, float u, float v) {
  const float brow = kLip - 0.012F + 0.05F * Fbm(u * 5, 3, 5, 51) -
                     0.05F * Smooth(0.10F, 0.16F, std::abs(u - 0.02F));
  const float boughs = Fbm(u * 7, v * 9, 3, 53);
  const float leaves = 0.5F * boughs + 0.8F * Fbm(u * 46, v * 46, 4, 54, 0.7F);
  const Rgb wood =
      Mix({0.010F, 0.018F, 0.007F}, {0.17F, 0.21F, 0.055F}, Saturate(0.40F + 1.1F * leaves)) +
      Rgb{0.9F, 0.95F, 0.88F} * Smooth(0.28F, 0.44F, leaves + 0.5F * boughs - 1.2F * (v - 0.02F));
  return Mix(wood, rock, Smooth(-0.012F, 0.012F, v - brow));
}

Rgb Wall(const Canvas& relief, float u, float v) {
  Rgb light = Rock(relief, u, v);
  if (v < 0.25F) light = UnderWood(light, u, v);
  const Fall fall = FallAt(u, v);
  const Rgb white = Rgb{0.92F, 0.97F, 1.02F} * std::max(fall.light, 0.12F);
  light = Mix(light, white, fall.cover);
  const float mist = std::exp(-std::pow((u - 0.05F) * 4.2F, 2.0F)) *
                     std::exp(-std::pow((v - kPool + 0.01F) * 9, 2.0F));
  return Mix(light, {0.80F, 0.86F, 0.88F},
             Saturate(0.78F * mist * (0.8F + 0.4F * Fbm(u * 7, v * 7, 4, 57))));
}

/// Mirrors the rows of the canvas that are drawn already.
Rgb Pool(const Canvas& canvas, float u, float v) {
  const float depth = v - kPool;
  const float distance = 1 / (depth + 0.10F);
  const float waves = Fbm(u * distance * 1.6F, distance * 5, 4, 61);
  const Rgb mirrored = canvas.Sample(
      u + 0.012F * waves, std::min(kPool - depth * 1.25F - 0.03F * waves, kPool - 0.002F));
  const float shine = 0.42F - 0.12F * waves;
  const Rgb deep =
      Mix({0.030F, 0.085F, 0.075F}, {0.075F, 0.085F, 0.050F}, Smooth(0.02F, 0.2F, depth));
  const float foam =
      Smooth(0.15F, 0.6F,
             Fbm(u * distance * 2.6F + 0.3F * waves, distance * 2.4F, 5, 63) +
                 0.9F * std::exp(-depth * 20) * std::exp(-(u - 0.05F) * (u - 0.05F) * 26));
  return Mix(Mix(deep, mirrored, shine), {0.72F, 0.78F, 0.80F}, 0.75F * foam);
}

struct Boulder {
  float u, v, wide, tall;
};
constexpr Boulder kBoulders[] = {{-0.29F, 0.825F, 0.12F, 0.055F}, {0.30F, 0.815F, 0.10F, 0.050F},
                                 {0.20F, 0.875F, 0.085F, 0.042F}, {-0.12F, 0.905F, 0.075F, 0.036F},
                                 {0.36F, 0.955F, 0.17F, 0.085F},  {-0.35F, 0.985F, 0.20F, 0.10F},
                                 {0.06F, 1.005F, 0.13F, 0.055F}};

}  // namespace

QImage DrawWaterfall(const QSize& size) {
  Canvas canvas(size);
  Canvas relief(size);
  relief.Shade([](float u, float v) {
    return Rgb{v < kPool + 0.01F ? RockRelief(u, v) : 0, 0, 0};
  });
  canvas.Shade([&](float u, float v) {
    Rgb light = v < kPool ? Wall(relief, u, v) : Pool(canvas, u, v);
    for (const Boulder& stone : kBoulders) {
      const float x = (u - stone.u) / stone.wide;
      const float y = (v - stone.v) / stone.tall;
      if (x * x + y * y > 1.8F) continue;
      const float rough = 0.75F * Fbm(x * 1.3F + stone.u * 40, y * 1.1F, 6, 71, 0.55F);
      const float off = x * x + y * y + rough;
      if (off > 1) continue;
      const float round = std::sqrt(std::max(0.0F, 1 - off));
      const float grain = Fbm(u * 60, v * 60, 5, 73);
      const float lit = Saturate(0.20F - 0.75F * y + 0.25F * round + 0.35F * grain);
      const float moss = Smooth(0.25F, 0.75F, -0.8F * y + 0.9F * Fbm(u * 11, v * 14, 5, 75));
      const float wet = Smooth(0.35F, 0.75F, y + 0.1F * grain);
      Rgb rock = Mix({0.014F, 0.014F, 0.015F}, {0.20F, 0.19F, 0.175F}, lit);
      rock = Mix(rock,
                 Mix({0.020F, 0.034F, 0.010F}, {0.125F, 0.15F, 0.040F}, lit) *
                     (1 + 0.6F * Noise(u * 240, v * 240, 77)),
                 moss);
      light = Mix(light, rock * (1 - 0.6F * wet), Smooth(1, 0.96F, off));
    }
    return light;
  });
  canvas.Soften();
  return canvas.Develop({.exposure = 1.25F,
                         .contrast = 1.06F,
                         .saturation = 0.98F,
                         .vignette = 0.4F,
                         .grain = 0.008F,
                         .bloom = 0.12F,
                         .shadows = {0.95F, 1.0F, 1.04F}},
                        13);
}

}  // namespace zqm::demo
