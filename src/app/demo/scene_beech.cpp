// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/scenes.h"
#include "app/demo/sky.h"

namespace zqm::demo {
namespace {

constexpr float kFloor = 0.70F;  // v of the wood's floor far away
constexpr Rgb kFog{1.05F, 0.86F, 0.58F};

Rgb Fog(float u, float v) {
  const float du = u - 0.10F;
  const float dv = v - 0.30F;
  return kFog * (0.42F + 1.0F * std::exp(-(du * du * 9 + dv * dv * 5)));
}

/// Litter of leaves and the path through it.
Rgb ForestFloor(float u, float v) {
  const float distance = 1 / (v - kFloor + 0.06F);
  const float x = u * distance;
  const float path = Smooth(0.55F, 0.25F, std::abs(x - 0.3F * std::sin(distance * 0.35F)));
  const float seen = Smooth(15, 5, distance);
  const float litter = Fbm(x * 26, distance * 14, 5, 21) * seen;
  const float blades = Noise(x * 90, distance * 50, 25) * Smooth(10, 3, distance);
  Rgb leaf = Mix({0.20F, 0.075F, 0.020F}, {0.62F, 0.30F, 0.07F},
                 Saturate(0.5F + 0.8F * litter + 0.35F * blades));
  leaf = Mix(leaf, Rgb{0.17F, 0.115F, 0.075F} * (1 + 0.6F * litter), 0.65F * path);
  const float sun = Smooth(-0.1F, 0.6F, Fbm(x * 1.2F, distance * 0.5F, 3, 28));
  return leaf * (0.42F + 0.75F * sun);
}

void DrawTrunk(Canvas& canvas, float u, float foot, float wide, float near, std::uint32_t seed) {
  const float lean = 0.05F * (Cell(1, 0, seed) - 0.5F);
  const float air = 0.86F * std::pow(1 - near, 0.9F);
  for (int y = 0; y < canvas.Height(); ++y) {
    const float v = canvas.V(static_cast<float>(y));
    if (v > foot + 0.02F) break;
    const float up = std::max(foot - v, 0.0F);
    const float flare = 1 + 1.1F * std::exp(-up / (wide * 1.3F)) - 0.22F * up;
    const float half = 0.5F * wide * flare * (1 + 0.06F * Noise(v * 9, 1, seed));
    const float centre = u + lean * up + 0.012F * Noise(v * 2.2F, 3, seed);
    const int left = std::max(0, Floor(canvas.X(centre - half)));
    const int right = std::min(canvas.Width() - 1, Floor(canvas.X(centre + half)) + 1);
    for (int x = left; x <= right; ++x) {
      const float pu = canvas.U(static_cast<float>(x));
      const float side = (pu - centre) / half;
      // Roots go down into the litter unevenly, rounded like the trunk.
      const float sunk =
          foot - 0.3F * wide * side * side + 0.16F * wide * Noise(side * 4, 5, seed + 7);
      const float cover =
          Smooth(1 + canvas.Pixel() / half, 1 - canvas.Pixel() / half, std::abs(side)) *
          Smooth(0.12F * wide, -0.12F * wide, v - sunk);
      const float bark = 1 + 0.35F * Fbm(side * 3, v * 40 * 0.06F / wide, 5, seed + 3) +
                         0.15F * Noise(side * 14, v * 220, seed + 9);
      const float round = 0.45F + 0.55F * std::sqrt(std::max(0.0F, 1 - side * side));
      const float rim = std::pow(Saturate((centre < 0.1F ? side : -side)), 3.0F) * 0.9F;
      const float moss =
          Smooth(0.1F, 0.6F, Noise(side * 2, v * 6, seed + 12) + 0.5F * Smooth(0.35F, 0, up));
      Rgb colour =
          Mix({0.058F, 0.050F, 0.042F}, {0.050F, 0.060F, 0.018F}, 0.7F * moss) * (bark * round) +
          Rgb{0.50F, 0.34F, 0.15F} * (rim * near * 0.5F);
      colour = Mix(colour, Fog(pu, v), air);
      canvas.At(x, y) = Mix(canvas.At(x, y), colour, cover);
    }
  }
}

void DrawLeaves(Canvas& canvas, float near, int count, std::uint32_t seed) {
  Random random(seed);
  const float half = 0.5F * canvas.Aspect();
  for (int i = 0; i < count; ++i) {
    const float u = random.Between(-half, half);
    const float v = random.Between(-0.02F, 0.64F);
    const float kind = random.Next();
    const float turn = random.Between(0, 3.14F);
    const float size = Lerp(0.0015F, 0.0042F, near) * random.Between(0.6F, 1.3F);
    const float boughs = Fbm(u * 3.4F + near * 5, v * 6.5F - std::abs(u) * 2, 4, seed + 1);
    if (boughs + 0.60F - 1.45F * v + 0.5F * std::abs(u) * near < random.Next() * 0.5F + 0.12F)
      continue;
    const Rgb leaf = kind < 0.35F  ? Rgb{0.95F, 0.50F, 0.055F}
                     : kind < 0.7F ? Rgb{0.75F, 0.29F, 0.035F}
                     : kind < 0.9F ? Rgb{0.70F, 0.58F, 0.09F}
                                   : Rgb{0.20F, 0.11F, 0.025F};
    const float shade = 0.40F + 0.85F * Saturate(0.5F + boughs) * Luminance(Fog(u, v));
    canvas.Dab({u, v, size, size * 0.6F, turn}, Mix(leaf * shade, Fog(u, v), 0.60F * (1 - near)),
               0.92F);
  }
}

}  // namespace

QImage DrawBeechWood(const QSize& size) {
  Canvas canvas(size);
  canvas.Shade([&](float u, float v) {
    const Rgb fog = Fog(u, v) * (0.95F + 0.12F * Fbm(u * 4, v * 4, 4, 7));
    if (v < kFloor) return fog;
    return Mix(ForestFloor(u, v), fog, std::exp(-(v - kFloor) * 13));
  });
  constexpr int kRows = 6;
  Random random(3);
  for (int row = 0; row < kRows; ++row) {
    const float near = static_cast<float>(row) / (kRows - 1);
    const int count = static_cast<int>(Lerp(22, 3.4F, std::sqrt(near)));
    for (int i = 0; i < count; ++i) {
      const float slot =
          (static_cast<float>(i) + random.Between(0.15F, 0.85F)) / static_cast<float>(count);
      float u = (slot - 0.5F) * canvas.Aspect() * 1.15F;
      const float clear = Lerp(0.02F, 0.17F, near);  // the path stays free
      if (std::abs(u - 0.02F) < clear) u += u < 0.02F ? -clear : clear;
      const float foot = kFloor + 0.012F + 0.24F * near * near + 0.02F * random.Next();
      DrawTrunk(canvas, u, foot, Lerp(0.010F, 0.075F, near * near) * random.Between(0.7F, 1.25F),
                near, static_cast<std::uint32_t>(100 * row + i));
    }
    DrawLeaves(canvas, near, static_cast<int>(Lerp(45000, 26000, near)),
               static_cast<std::uint32_t>(900 + 30 * row));
  }
  // Shafts of light through the crowns.
  canvas.Shade([&, wood = canvas](float u, float v) {
    const float angle = std::atan2(u - 0.16F, v + 0.25F);
    const float shaft = Smooth(0.0F, 0.5F, Fbm(angle * 11, 2, 3, 57)) * Smooth(0.02F, 0.25F, v) *
                        Smooth(0.98F, 0.45F, v);
    return wood.Sample(u, v) +
           Rgb{0.34F, 0.25F, 0.12F} * shaft * std::exp(-std::pow((u - 0.05F) * 2.4F, 2.0F));
  });
  canvas.Soften();
  return canvas.Develop({.exposure = 0.95F,
                         .contrast = 1.10F,
                         .saturation = 1.05F,
                         .vignette = 0.35F,
                         .grain = 0.010F,
                         .bloom = 0.14F},
                        9);
}

}  // namespace zqm::demo
