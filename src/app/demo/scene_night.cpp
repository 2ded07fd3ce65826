// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "app/demo/scenes.h"
#include "app/demo/sky.h"
#include "app/demo/town.h"
#include "app/demo/water.h"

namespace zqm::demo {
namespace {

constexpr float kShore = 0.64F;
constexpr float kQuay = 0.615F;

float HillTop(float u) {
  return 0.56F - 0.21F * std::exp(-std::pow((u - 0.12F) * 2.1F, 2.0F)) -
         0.05F * std::exp(-std::pow((u + 0.6F) * 4, 2.0F));
}

/// Houses up the hill, the highest and farthest first.
std::vector<House> Town(float aspect) {
  std::vector<House> houses;
  Random random(31);
  constexpr int kRows = 7;
  for (int row = 0; row < kRows; ++row) {
    const float down = static_cast<float>(row) / (kRows - 1);
    float left = -0.5F * aspect - 0.05F * random.Next();
    while (left < 0.5F * aspect) {
      const float wide = random.Between(0.045F, 0.10F);
      const float foot = Lerp(HillTop(left + wide / 2) + 0.125F, kQuay, down);
      const float tone = random.Between(0.5F, 1.1F);
      houses.push_back({left, left + wide, foot - random.Between(0.06F, 0.12F), foot + 0.06F,
                        random.Between(0.020F, 0.034F), random.Next() < 0.55F,
                        Rgb{0.050F, 0.036F, 0.029F} * tone, Rgb{0.030F, 0.018F, 0.018F} * tone,
                        static_cast<std::uint32_t>(houses.size() * 3 + 7)});
      left += wide * random.Between(0.82F, 1.02F);
    }
  }
  return houses;
}

Rgb NightColour(const House& house, const HousePart& part, float u, float v) {
  const float lamps = Smooth(kQuay - 0.13F, kQuay, v) * (0.6F + 0.5F * std::cos(u * 42));
  const Rgb street = Rgb{0.30F, 0.16F, 0.060F} * (0.10F + 0.9F * lamps);
  switch (part.kind) {
    case HousePart::Kind::Roof:
      return house.roof * (0.8F + 0.4F * Noise(u * 200, v * 260, 3));
    case HousePart::Kind::Window: {
      const float who = Cell(part.column, part.floor, house.seed);
      if (who > 0.40F) return Rgb{0.012F, 0.014F, 0.022F};
      const float kind = Cell(part.column, part.floor + 40, house.seed);
      const Rgb lamp = kind < 0.72F  ? Rgb{1.7F, 0.92F, 0.34F}
                       : kind < 0.9F ? Rgb{1.5F, 1.25F, 0.85F}
                                     : Rgb{0.55F, 0.75F, 1.1F};
      const float curtain = 0.65F + 0.5F * part.y;
      const bool bar = std::abs(part.x - 0.5F) < 0.05F || std::abs(part.y - 0.4F) < 0.04F;
      return lamp * (bar ? 0.25F : curtain * (0.35F + 2.0F * who));
    }
    case HousePart::Kind::Frame:
      return house.wall * 1.5F + house.wall * street * 9;
    default:
      break;
  }
  return house.wall + house.wall * street * 8;
}

/// The fortress on the hill, lit from below.
bool Fortress(float u, float v, Rgb* light) {
  const float x = u - 0.12F;
  const float foot = HillTop(u) + 0.015F;
  float top = 0.345F;
  if (std::abs(x) < 0.03F)
    top = 0.268F;
  else if (std::abs(std::abs(x) - 0.135F) < 0.021F)
    top = 0.302F;
  const float notch = x * 190 - static_cast<float>(Floor(x * 190));
  if (notch > 0.55F) top += 0.006F;
  if (std::abs(x) > 0.156F || v < top || v > foot) return false;
  const float slit = std::abs(x * 36 - static_cast<float>(Floor(x * 36 + 0.5F))) < 0.055F &&
                             std::abs(v - top - 0.035F) < 0.009F
                         ? 0.15F
                         : 1.0F;
  const float stone = 0.85F + 0.3F * Noise(u * 240, v * 320, 4) + 0.2F * Noise(u * 60, v * 60, 5);
  const float beam = 0.55F + 0.6F * std::pow(std::abs(std::cos(x * 21)), 1.5F);
  *light = Rgb{0.95F, 0.52F, 0.17F} *
           (stone * slit * beam * Lerp(0.30F, 1.0F, Saturate((v - 0.26F) / 0.14F)));
  return true;
}

}  // namespace

QImage DrawNightTown(const QSize& size) {
  Canvas canvas(size);
  const std::vector<House> houses = Town(canvas.Aspect());
  const CloudDeck clouds{0.66F, 0.40F, 0.70F, 0.02F, 0.55F, 7, 43, 0.0F, -0.1F};
  canvas.Shade([&](float u, float v) {
    if (v > kShore) return Rgb{};
    Rgb light = Mix({0.010F, 0.022F, 0.075F}, {0.085F, 0.105F, 0.20F}, Smooth(0, 0.58F, v));
    light = light + Rgb{0.16F, 0.070F, 0.050F} * std::exp(-(0.58F - v) * 7);
    light = Mix(light, Mix({0.022F, 0.030F, 0.070F}, {0.17F, 0.12F, 0.15F}, Smooth(0.1F, 0.55F, v)),
                0.75F * clouds.At(u, v).density);
    if (v > HillTop(u) - 0.006F * std::abs(Noise(u * 90, 2, 3)))
      light = Rgb{0.014F, 0.016F, 0.018F} * (1 + 0.7F * Fbm(u * 50, v * 50, 4, 4));
    Fortress(u, v, &light);
    for (auto house = houses.rbegin(); house != houses.rend(); ++house) {
      const HousePart part = PartAt(*house, u, v);
      if (part.kind == HousePart::Kind::None) continue;
      light = NightColour(*house, part, u, v);
      break;
    }
    if (v > kQuay) {
      const float near = 0.55F + 0.45F * std::cos(u * 42);
      light = Rgb{0.30F, 0.17F, 0.070F} * ((0.25F + near) * (1 - 0.75F * Smooth(kQuay, kShore, v)) *
                                           (0.7F + 0.3F * Noise(u * 110, v * 200, 6)));
    }
    return light;
  });
  constexpr float kPitch = 6.2831853F / 42;
  for (int i = -7; i <= 7; ++i) {
    const float u = static_cast<float>(i) * kPitch;
    const float v = kQuay - 0.030F;
    for (float y = v; y < kQuay; y += canvas.Pixel())
      canvas.Dab({u, y, 0.0008F, 0.0008F}, {0.02F, 0.016F, 0.012F});
    canvas.Glow(u, v, 0.0028F, {26, 14.5F, 5.2F});
    canvas.Glow(u, v, 0.018F, {0.55F, 0.28F, 0.09F});
  }
  Random random(4);
  for (int i = 0; i < 90; ++i) {  // small lamps in the lanes
    const float u = random.Between(-0.5F, 0.5F) * canvas.Aspect();
    const float v = Lerp(HillTop(u) + 0.03F, kQuay - 0.02F, random.Next());
    canvas.Glow(u, v, 0.0011F, Rgb{7, 4.2F, 1.8F} * random.Between(0.4F, 1.2F));
  }
  DrawWater(canvas, {.shore = kShore,
                     .roughness = 0.085F,
                     .scale = 3.6F,
                     .smear = 0.22F,
                     .rays = 10,
                     .deep = {0.004F, 0.007F, 0.014F},
                     .nearShine = 0.62F,
                     .farShine = 0.85F,
                     .seed = 15});
  canvas.Soften();
  return canvas.Develop({.exposure = 1.35F,
                         .contrast = 1.04F,
                         .saturation = 1.02F,
                         .vignette = 0.3F,
                         .grain = 0.013F,
                         .bloom = 0.09F},
                        11);
}

}  // namespace zqm::demo
