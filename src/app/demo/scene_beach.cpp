// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "app/demo/scenes.h"
#include "app/demo/sky.h"

namespace zqm::demo {
namespace {

/// Seen from straight above. Out to sea is positive; 0 is where the last wave turned.
float OutToSea(float u, float v) {
  return 0.93F * (u + 0.10F) - 0.37F * (v - 0.5F) + 0.07F * Noise(v * 1.6F + 2, u * 0.6F, 3) +
         0.018F * Noise(v * 6, u * 3, 5);
}

float Lace(float u, float v, float scale, std::uint32_t seed) {
  const float wx = u + 0.012F * Fbm(u * 14, v * 14, 3, seed + 30);
  const float wy = v + 0.012F * Fbm(u * 14 + 9, v * 14, 3, seed + 31);
  return Ridged(wx * scale, wy * scale, 5, seed, 0.6F);
}

struct Wave {
  float at, thick, trail;
};
constexpr Wave kWaves[] = {{0.010F, 0.012F, 0.060F},
                           {0.150F, 0.020F, 0.105F},
                           {0.330F, 0.022F, 0.13F},
                           {0.52F, 0.012F, 0.06F}};

/// How much foam lies on the water: a crest at each wave's front, lace behind it.
float FoamAt(float u, float v) {
  const float sea = OutToSea(u, v);
  if (sea < -0.06F) return 0;
  const float ragged = 0.8F * Fbm(u * 42, v * 42, 4, 44);
  const float lace = Lace(u, v, 17, 46);
  float foam = 0;
  int index = 0;
  for (const Wave& wave : kWaves) {
    ++index;
    const auto seed = static_cast<std::uint32_t>(40 * index);
    const float rough = sea - wave.at;
    if (rough < -0.06F || rough > 6 * wave.trail) continue;
    const float front = rough - 0.030F * Noise(v * 3.4F, static_cast<float>(index) * 3, seed) -
                        0.010F * Fbm(v * 13, u * 5, 4, seed + 1);
    const float gaps = Noise(v * 2.6F, static_cast<float>(index) * 7, seed + 2);
    const float present = index == 1 ? 1.0F : Smooth(-0.30F, 0.20F, gaps + 0.12F);
    const float crest = front > 0 ? std::exp(-front / (wave.thick * (1 + 0.7F * ragged)))
                                  : Smooth(-0.004F, 0, front);
    const float behind = front > 0 ? std::exp(-front / wave.trail) : 0;
    foam = std::max(foam, present * Saturate(crest * (0.95F + 0.5F * ragged) +
                                             behind * Smooth(0.52F, 0.84F, lace + 0.22F * behind)));
  }
  return foam;
}

/// Dry, and dark where the last waves reached.
Rgb Sand(float u, float v, float sea) {
  const float grain = Fbm(u * 130, v * 130, 4, 9);
  const float dunes = Fbm(u * 9, v * 9, 5, 11);
  const float steps =
      Smooth(0.25F, 0.62F, Fbm(u * 85, v * 85, 3, 13)) * Smooth(-0.14F, -0.22F, sea);
  Rgb sand = Rgb{0.86F, 0.69F, 0.47F} * (1 + 0.13F * dunes + 0.16F * grain - 0.20F * steps);
  const float wetEdge = sea + 0.055F + 0.022F * Noise(v * 5, 1, 15) + 0.006F * Noise(v * 22, 2, 16);
  sand = Mix(sand, Rgb{0.47F, 0.355F, 0.235F} * (1 + 0.05F * grain + 0.05F * dunes),
             Smooth(-0.006F, 0.010F, wetEdge));
  sand = sand * (1 - 0.12F * std::exp(-std::pow(wetEdge * 180, 2.0F)));
  return sand;
}

Rgb Sea(float u, float v, float sea) {
  const float deep = sea + 0.035F * Fbm(u * 4, v * 4, 4, 21);
  Rgb water = Mix({0.36F, 0.62F, 0.52F}, {0.050F, 0.42F, 0.44F}, Smooth(0.02F, 0.32F, deep));
  water = Mix(water, {0.010F, 0.135F, 0.22F}, Smooth(0.25F, 1.0F, deep));
  const float caustic = std::pow(Lace(u + 3, v, 11, 23), 3.0F);
  const float swell =
      std::cos((sea + 0.03F * Noise(u * 3, v * 3, 25)) * 52) * 0.06F * Smooth(0.1F, 0.5F, sea);
  const float chop = 0.10F * Fbm(u * 30, v * 30, 5, 27);
  const float reef =
      Smooth(0.15F, 0.45F, Fbm(u * 3.2F + 4, v * 3.2F, 6, 28)) * Smooth(0.35F, 0.65F, sea);
  water = Mix(water, {0.016F, 0.10F, 0.12F}, 0.65F * reef);
  water =
      water * (1 + swell + chop) + Rgb{0.16F, 0.24F, 0.20F} * (caustic * Smooth(0.5F, 0.05F, sea));
  return water;
}

Rgb Ground(float u, float v) {
  const float sea = OutToSea(u, v);
  const float swash = Smooth(0.0F, 0.10F, sea + 0.03F * Noise(v * 3.4F, 3, 40));
  if (swash <= 0) return Sand(u, v, sea);
  if (swash >= 1) return Sea(u, v, sea);
  return Mix(Sand(u, v, sea), Sea(u, v, sea), swash);
}

void DrawPeople(Canvas& canvas) {
  static constexpr std::array<std::pair<Rgb, Rgb>, 5> kCloths = {
      {{{0.75F, 0.06F, 0.05F}, {0.92F, 0.90F, 0.85F}},
       {{0.05F, 0.24F, 0.52F}, {0.92F, 0.90F, 0.85F}},
       {{0.90F, 0.58F, 0.06F}, {0.92F, 0.72F, 0.16F}},
       {{0.90F, 0.88F, 0.82F}, {0.84F, 0.82F, 0.76F}},
       {{0.06F, 0.42F, 0.38F}, {0.90F, 0.88F, 0.80F}}}};
  Random random(6);
  for (int i = 0; i < 30; ++i) {
    const float v = random.Between(0.03F, 0.97F);
    const float u = random.Between(-0.5F * canvas.Aspect() + 0.02F, 0.0F);
    const float sea = OutToSea(u, v);
    if (sea > -0.13F || Noise(u * 5, v * 5, 8) < -0.25F) continue;
    const auto& [first, second] = kCloths[static_cast<std::size_t>(random.Next() * 4.99F)];
    const float turn = random.Between(0, 3.14F);
    const float radius = random.Between(0.0150F, 0.0175F);
    canvas.Dab({u + 0.013F, v + 0.017F, radius, radius * 0.95F, 0, 0.08F}, {0.20F, 0.17F, 0.17F},
               0.72F);
    for (int towel = 0; towel < 2; ++towel) {
      const float tu = u + (towel ? -0.022F : 0.008F);
      const float tv = v + (towel ? 0.012F : -0.026F);
      for (float along = -0.010F; along < 0.010F; along += canvas.Pixel())
        canvas.Dab({tu, tv + along, 0.0048F, 0.0008F},
                   kCloths[static_cast<std::size_t>(i + towel) % 5].first * 0.9F, 0.95F);
      canvas.Dab({tu, tv + 0.001F, 0.0016F, 0.0062F}, {0.50F, 0.29F, 0.18F});
      canvas.Dab({tu, tv - 0.0068F, 0.0016F, 0.0017F}, {0.08F, 0.05F, 0.03F});
    }
    for (int y = Floor(canvas.Y(v - radius)); y <= Floor(canvas.Y(v + radius)) + 1; ++y)
      for (int x = Floor(canvas.X(u - radius)); x <= Floor(canvas.X(u + radius)) + 1; ++x) {
        if (x < 0 || y < 0 || x >= canvas.Width() || y >= canvas.Height()) continue;
        const float du = canvas.U(static_cast<float>(x)) - u;
        const float dv = canvas.V(static_cast<float>(y)) - v;
        const float angle = std::atan2(dv, du) + turn;
        const float gore = angle * 8 / 6.2831853F;
        const float outline = radius * (0.965F + 0.035F * std::abs(std::cos(gore * 3.1416F)));
        const bool even = (Floor(gore) & 1) == 0;
        const float light = 1.0F - 0.22F * (du + dv) / radius;
        canvas.At(x, y) =
            Mix(canvas.At(x, y), (even ? first : second) * light,
                Smooth(outline + canvas.Pixel(), outline - canvas.Pixel(), std::hypot(du, dv)));
      }
  }
  for (int i = 0; i < 16; ++i) {  // bathers, with the wake of their arms
    const float v = random.Between(0.05F, 0.95F);
    const float u = random.Between(-0.15F, 0.35F);
    const float sea = OutToSea(u, v);
    if (sea < 0.05F || sea > 0.36F) continue;
    canvas.Dab({u, v, 0.0040F, 0.0026F, random.Between(0, 3), 0.4F}, {0.80F, 0.86F, 0.84F}, 0.5F);
    canvas.Dab({u, v, 0.0022F, 0.0030F}, {0.46F, 0.27F, 0.17F});
    canvas.Dab({u, v - 0.0010F, 0.0014F, 0.0014F}, {0.07F, 0.04F, 0.03F});
  }
}

}  // namespace

QImage DrawBeach(const QSize& size) {
  Canvas canvas(size);
  Canvas foam(size);
  foam.Shade([](float u, float v) { return Rgb{FoamAt(u, v), 0, 0}; });
  canvas.Shade([&](float u, float v) {
    // Foam throws a thin shadow on what lies under it.
    const float shadow = foam.Sample(u - 0.003F, v - 0.004F).r;
    const float bubbles = 0.92F + 0.10F * Noise(u * 320, v * 320, 31);
    return Mix(Ground(u, v) * (1 - 0.28F * shadow), Rgb{0.97F, 0.98F, 0.97F} * bubbles,
               Saturate(foam.Sample(u, v).r));
  });
  DrawPeople(canvas);
  canvas.Soften();
  return canvas.Develop({.exposure = 0.95F,
                         .contrast = 1.05F,
                         .saturation = 1.04F,
                         .vignette = 0.2F,
                         .grain = 0.008F,
                         .bloom = 0.04F},
                        14);
}

}  // namespace zqm::demo
