// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/scenes.h"
#include "app/demo/woods.h"

namespace zqm::demo {
namespace {

constexpr float kMoonU = 0.10F;
constexpr float kMoonV = 0.36F;
constexpr float kMoonRadius = 0.105F;

/// The moon's face: seas, bright ray craters, and the limb's slight darkening.
Rgb MoonFace(float x, float y) {
  const float seas = Smooth(-0.24F, 0.22F,
                            Fbm(x * 1.0F + 4.6F, y * 1.0F + 1.7F, 6, 33, 0.48F) -
                                0.22F * Smooth(0.55F, 0.95F, std::hypot(x, y)));
  float light = Lerp(0.95F, 0.46F, seas) * (1 + 0.10F * Fbm(x * 7, y * 7, 5, 35));
  Random random(61);
  for (int i = 0; i < 46; ++i) {
    const float cx = random.Between(-0.95F, 0.95F);
    const float cy = random.Between(-0.95F, 0.95F);
    const float size = 0.010F + 0.045F * std::pow(random.Next(), 3.0F);
    const float off = std::hypot(x - cx, y - cy) / size;
    light *= 1 + 0.07F * std::exp(-(off - 1) * (off - 1) * 9) - 0.05F * std::exp(-off * off * 2);
  }
  const float ray = std::hypot(x + 0.18F, y - 0.72F);
  const float angle = std::atan2(y - 0.72F, x + 0.18F);
  light += 0.16F * std::exp(-ray * 2.6F) * Smooth(-0.2F, 0.5F, Noise(angle * 4.5F, 1, 37)) +
           0.22F * std::exp(-ray * ray * 700);
  return Rgb{1.0F, 0.86F, 0.66F} * (light * (1 - 0.25F * std::pow(std::hypot(x, y), 4.0F)));
}

}  // namespace

QImage DrawMoonrise(const QSize& size) {
  Canvas canvas(size);
  const float aspect = canvas.Aspect();
  const Skyline far(aspect, canvas.Width() * 2, [](float u) {
    return 0.80F - 0.05F * Fbm(u * 2.4F, 4, 6, 21, 0.42F) - 0.002F * std::abs(Noise(u * 240, 2, 3));
  });
  const Skyline near =
      SpruceLine(aspect, canvas.Width() * 3,
                 {.tall = 0.105F, .spacing = 0.014F, .seed = 17, .base = [](float u) {
                    return 0.985F - 0.17F * Smooth(0.05F, -0.65F, u) - 0.03F * Fbm(u * 3, 1, 3, 23);
                  }});
  canvas.Shade([&](float u, float v) {
    const float edge = canvas.Pixel();
    const float up = Saturate(1 - v / 0.82F);
    Rgb light = Mix({0.62F, 0.26F, 0.20F}, {0.30F, 0.17F, 0.26F}, Smooth(0, 0.28F, up));
    light = Mix(light, {0.040F, 0.060F, 0.145F}, Smooth(0.15F, 1.0F, up));
    const float x = (u - kMoonU) / kMoonRadius;
    const float y = (v - kMoonV) / kMoonRadius;
    const float off = std::hypot(x, y);
    light =
        light + Rgb{0.30F, 0.20F, 0.14F} * std::exp(-(off - 1) * 1.4F) * (off > 1 ? 1.0F : 0.6F);
    if (off < 1.02F)
      light = Mix(light, light * 0.25F + MoonFace(x, y) * 0.62F,
                  Smooth(1 + edge / kMoonRadius, 1 - edge / kMoonRadius, off));
    const float bands =
        Smooth(0.02F, 0.55F, Fbm(u * 1.3F + v * 1.2F, v * 11, 6, 41) + 0.25F * (v - 0.35F));
    const Rgb cloud = Mix({0.15F, 0.105F, 0.16F}, {0.46F, 0.23F, 0.19F}, Smooth(0.2F, 0.75F, v)) +
                      Rgb{0.32F, 0.24F, 0.18F} * std::exp(-off * 1.1F);
    light = Mix(light, cloud, 0.72F * bands * Smooth(0.05F, 0.3F, v));
    if (v > far(u)) {
      const float down = v - far(u);
      light = Mix({0.085F, 0.060F, 0.090F}, {0.25F, 0.14F, 0.15F}, Smooth(0, 0.16F, down)) *
              (1 + 0.15F * Fbm(u * 40, v * 120, 4, 51));
    }
    const float tree = Smooth(-edge, edge, v - near(u));
    return Mix(light, Rgb{0.010F, 0.010F, 0.016F} * (1 + 0.8F * Noise(u * 230, v * 160, 53)), tree);
  });
  canvas.Soften();
  return canvas.Develop(
      {.exposure = 1.0F, .contrast = 1.08F, .vignette = 0.3F, .grain = 0.014F, .bloom = 0.07F}, 6);
}

}  // namespace zqm::demo
