// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "app/demo/scenes.h"

namespace zqm::demo {
namespace {

/// The lights of the street, far out of focus: each an image of the lens's opening.
void DrawStreet(Canvas& canvas) {
  canvas.Shade([](float u, float v) {
    const float road = Smooth(0.45F, 0.95F, v);
    return Mix({0.012F, 0.016F, 0.034F}, {0.050F, 0.026F, 0.022F}, road) +
           Rgb{0.055F, 0.030F, 0.018F} * std::exp(-std::pow((v - 0.52F) * 4, 2.0F)) *
               (1 + 0.5F * Noise(u * 2.5F, v * 3, 3));
  });
  static constexpr std::array<Rgb, 7> kLamps = {{{1.0F, 0.50F, 0.13F},
                                                 {1.0F, 0.62F, 0.26F},
                                                 {1.0F, 0.10F, 0.045F},
                                                 {0.20F, 0.85F, 0.42F},
                                                 {0.95F, 0.85F, 0.66F},
                                                 {0.26F, 0.45F, 1.0F},
                                                 {1.0F, 0.22F, 0.35F}}};
  Random random(77);
  for (int i = 0; i < 120; ++i) {
    const float v = 0.50F + 0.24F * random.Normal();
    const float u = random.Between(-0.55F, 0.55F) * canvas.Aspect();
    const float radius = random.Between(0.018F, 0.052F) * (0.8F + 0.5F * std::abs(v - 0.5F));
    const Rgb lamp = kLamps[static_cast<std::size_t>(std::pow(random.Next(), 1.5F) * 6.99F)];
    const float light = 0.05F + 0.55F * std::pow(random.Next(), 2.2F);
    // Cat's eyes towards the edge, where the lens's barrel cuts the cone.
    const float off = std::hypot(u, v - 0.5F);
    const float squeeze = 1 - 0.35F * Smooth(0.35F, 0.9F, off);
    const float angle = std::atan2(v - 0.5F, u);
    for (const auto& [scale, share] : {std::pair(1.0F, 0.62F), std::pair(0.90F, -0.14F)}) {
      const int reach = Floor(radius / canvas.Pixel()) + 2;
      const int cx = Floor(canvas.X(u));
      const int cy = Floor(canvas.Y(v));
      for (int y = std::max(0, cy - reach); y <= std::min(canvas.Height() - 1, cy + reach); ++y)
        for (int x = std::max(0, cx - reach); x <= std::min(canvas.Width() - 1, cx + reach); ++x) {
          const float du = canvas.U(static_cast<float>(x)) - u;
          const float dv = canvas.V(static_cast<float>(y)) - v;
          const float a = (du * std::cos(angle) + dv * std::sin(angle)) / squeeze;
          const float b = dv * std::cos(angle) - du * std::sin(angle);
          const float inside = Smooth(1.04F, 0.96F, std::hypot(a, b) / (radius * scale));
          const float mottle = 1 + 0.12F * Noise(du * 260, dv * 260, static_cast<std::uint32_t>(i));
          canvas.At(x, y) = canvas.At(x, y) + lamp * (light * share * inside * mottle);
        }
    }
  }
}

/// A drop on the pane is a lens: it shows the street upside down and small.
void DrawDrop(Canvas& canvas, const Canvas& street, float u, float v, float radius,
              std::uint32_t seed) {
  const int reach = Floor(radius * 1.5F / canvas.Pixel()) + 2;
  const int cx = Floor(canvas.X(u));
  const int cy = Floor(canvas.Y(v));
  for (int y = std::max(0, cy - reach); y <= std::min(canvas.Height() - 1, cy + reach); ++y)
    for (int x = std::max(0, cx - reach); x <= std::min(canvas.Width() - 1, cx + reach); ++x) {
      const float du = (canvas.U(static_cast<float>(x)) - u) / radius;
      const float dv = (canvas.V(static_cast<float>(y)) - v) / radius;
      const float angle = std::atan2(dv, du);
      // In small pictures the nearest pixel may lie many radii off: the outline stays one.
      const float outline = std::max(
          0.5F,
          1 + 0.13F * Noise(std::cos(angle) * 1.3F + 5, std::sin(angle) * 1.3F, seed) + 0.10F * dv);
      const float off = std::hypot(du, dv * 0.92F) / outline;
      const float inside =
          Smooth(1 + canvas.Pixel() / radius, 1 - 1.5F * canvas.Pixel() / radius, off);
      if (inside <= 0) continue;
      const float bulge = 0.25F + 0.75F * off * off;
      const Rgb seen = street.Sample(u * 0.6F - du * 0.62F * bulge, 0.52F - dv * 0.50F * bulge);
      const float rim = 1 - 0.82F * std::pow(std::min(off, 1.0F), 5.0F);
      const float glint =
          std::exp(-((du + 0.36F) * (du + 0.36F) + (dv + 0.45F) * (dv + 0.45F)) * 60);
      const float glow =
          0.30F * std::pow(Saturate(dv), 2.0F) * std::exp(-std::pow((off - 0.80F) * 7, 2.0F));
      canvas.At(x, y) = Mix(canvas.At(x, y),
                            seen * (1.25F * rim) + Rgb{0.75F, 0.70F, 0.66F} * (0.8F * glint) +
                                Rgb{0.5F, 0.33F, 0.18F} * glow,
                            inside);
    }
}

}  // namespace

// The camera was held upright: the picture is stored as the sensor lies, a quarter turn to the
// left, and its orientation tag says so.
QImage DrawRainyWindow(const QSize& size) {
  Canvas canvas(size.transposed());
  DrawStreet(canvas);
  const Canvas street = canvas;
  Random random(15);
  for (int i = 0; i < 2600; ++i) {
    const float chance = random.Next();
    const float radius =
        i < 2300 ? 0.0009F + 0.0026F * chance * chance : 0.003F + 0.0165F * std::pow(chance, 3.0F);
    DrawDrop(canvas, street, random.Between(-0.52F, 0.52F) * canvas.Aspect(),
             random.Between(-0.02F, 1.02F), radius, static_cast<std::uint32_t>(i));
  }
  for (int i = 0; i < 7; ++i) {  // what has run down leaves a trail of small drops
    float u = random.Between(-0.48F, 0.48F) * canvas.Aspect();
    const float end = random.Between(0.35F, 0.95F);
    for (float v = end - random.Between(0.2F, 0.5F); v < end; v += random.Between(0.006F, 0.016F)) {
      u += 0.0015F * random.Normal();
      DrawDrop(canvas, street, u, v, random.Between(0.0016F, 0.0036F),
               static_cast<std::uint32_t>(v * 9999));
    }
    DrawDrop(canvas, street, u, end + 0.004F, random.Between(0.011F, 0.017F),
             static_cast<std::uint32_t>(i + 70));
  }
  canvas.Soften();
  const QImage upright = canvas.Develop({.exposure = 1.35F,
                                         .contrast = 1.02F,
                                         .saturation = 1.05F,
                                         .vignette = 0.35F,
                                         .grain = 0.014F,
                                         .bloom = 0.07F},
                                        12);
  return upright.transformed(QTransform().rotate(-90));
}

}  // namespace zqm::demo
