// SPDX-License-Identifier: GPL-3.0-or-later
#include <QPainter>
#include <QPainterPath>

#include "app/demo/scenes.h"
#include "app/demo/sky.h"
#include "app/demo/water.h"
#include "app/demo/woods.h"

namespace zqm::demo {
namespace {

constexpr float kShore = 0.56F;

/// Reeds in front, and the old posts of a landing stage with their reflections.
void DrawForeground(Canvas& canvas) {
  const auto height = static_cast<float>(canvas.Height());
  Random random(5);
  for (int i = 0; i < 7; ++i) {
    const float far = static_cast<float>(i) / 6;
    const float u = Lerp(-0.30F, -0.02F, far);
    const float foot = Lerp(0.86F, 0.655F, std::sqrt(far));
    const float tall = Lerp(0.135F, 0.045F, std::sqrt(far)) * random.Between(0.85F, 1.1F);
    const float wide = Lerp(0.0105F, 0.0035F, std::sqrt(far));
    for (float v = foot + tall * 0.95F; v > foot - tall; v -= canvas.Pixel()) {
      const bool mirrored = v > foot;
      const float wave = mirrored ? 0.35F * wide * Noise(u * 9, v * 160, 8) : 0;
      for (float x = -wide; x < wide; x += canvas.Pixel()) {
        const float side = x / wide;
        const float wood = 0.75F + 0.35F * Noise((u + x) * 700, v * 60, 6);
        const Rgb post = Rgb{0.085F, 0.078F, 0.072F} * (wood * (1.35F + 0.9F * side));
        const int px = static_cast<int>(canvas.X(u + x + wave));
        const int py = static_cast<int>(canvas.Y(v));
        if (px < 0 || py < 0 || px >= canvas.Width() || py >= canvas.Height()) continue;
        Rgb& pixel = canvas.At(px, py);
        const float fade = mirrored ? 0.85F * (1 - Smooth(0, 1, (v - foot) / tall) * 0.8F) : 1.0F;
        pixel = Mix(pixel, post + Rgb{0.30F, 0.29F, 0.28F} * (0.25F * far), fade);
      }
    }
  }
  QImage mask = canvas.Mask();
  QPainter painter(&mask);
  painter.setRenderHint(QPainter::Antialiasing);
  for (int i = 0; i < 190; ++i) {
    const float u = 0.5F * canvas.Aspect() - std::abs(random.Normal()) * 0.17F;
    const float tall = random.Between(0.10F, 0.36F) * (0.5F + 0.5F * Smooth(0.2F, 0.75F, u));
    const float lean = random.Normal() * 0.035F - 0.015F;
    const auto point = [&](float du, float v) {
      return QPointF(static_cast<double>(canvas.X(u + du)), static_cast<double>(v * height));
    };
    QPainterPath path(point(0, 1.02F));
    path.quadTo(point(lean * 0.2F, 1 - tall * 0.6F), point(lean, 1 - tall));
    painter.strokePath(path, QPen(QColor(255, 255, 255, 235),
                                  static_cast<double>(height * random.Between(0.0008F, 0.0026F)),
                                  Qt::SolidLine, Qt::RoundCap));
    if (i % 6 == 0)
      painter.strokePath(
          [&] {
            QPainterPath head(point(lean, 1 - tall));
            head.lineTo(point(lean * 1.08F, 1 - tall - 0.035F));
            return head;
          }(),
          QPen(Qt::white, static_cast<double>(height) * 0.006, Qt::SolidLine, Qt::RoundCap));
  }
  painter.end();
  canvas.Overlay(mask, [](float u, float v) {
    return Rgb{0.060F, 0.054F, 0.040F} * (1 + 0.4F * Noise(u * 90, v * 20, 3));
  });
}

}  // namespace

QImage DrawFogLake(const QSize& size) {
  Canvas canvas(size);
  const float aspect = canvas.Aspect();
  const float sunU = 0.20F;
  const float sunV = 0.30F;
  std::vector<Skyline> woods;
  for (int i = 0; i < 4; ++i) {
    const auto near = static_cast<float>(i) / 3;
    const auto seed = static_cast<std::uint32_t>(60 + i);
    woods.push_back(SpruceLine(aspect, canvas.Width() * 2,
                               {.tall = Lerp(0.035F, 0.10F, near),
                                .spacing = Lerp(0.006F, 0.013F, near),
                                .seed = seed,
                                .base = [=](float u) {
                                  const float bay = Smooth(
                                      -0.15F, 0.75F, (i % 2 ? u : -u) + 0.35F * (1.3F - near));
                                  return kShore + 0.025F - bay * Lerp(0.12F, 0.10F, near) -
                                         0.02F * Fbm(u * 2 + near * 7, 3, 3, seed + 20);
                                }}));
  }
  canvas.Shade([&](float u, float v) {
    const float du = u - sunU;
    const float dv = v - sunV;
    const float off = std::sqrt(du * du + dv * dv);
    const float bank = Fbm(u * 1.6F, v * 7, 5, 31);
    Rgb fog =
        Mix({0.40F, 0.47F, 0.54F}, {0.78F, 0.70F, 0.60F}, Smooth(0.0F, kShore, v + 0.05F * bank));
    fog = fog + Rgb{0.95F, 0.62F, 0.32F} * std::exp(-off * 4.2F);
    Rgb light = fog + Rgb{2.6F, 2.0F, 1.4F} * Smooth(0.0345F, 0.0315F, off);
    for (std::size_t i = 0; i < woods.size(); ++i) {
      const float ridge = woods[i](u);
      const float inside = Smooth(-canvas.Pixel(), canvas.Pixel(), v - ridge);
      if (inside <= 0) continue;
      const auto near = static_cast<float>(i) / 3;
      const Rgb wood = Rgb{0.030F, 0.042F, 0.044F} *
                       (1 + 0.7F * Noise(u * 260, v * 130, 12 + static_cast<std::uint32_t>(i)));
      const float air = Lerp(0.82F, 0.12F, near);
      const float rising = Smooth(-0.13F, 0.02F, v - kShore + 0.05F * bank + 0.04F * near) *
                           Lerp(0.92F, 0.70F, near);
      light = Mix(light, Mix(wood, fog, Saturate(air + (1 - air) * rising)), inside);
    }
    const float veil = std::exp(-std::abs(v - kShore) * 26) * (0.80F + 0.35F * bank);
    return Mix(light, fog, Saturate(veil));
  });
  DrawWater(canvas, {.shore = kShore,
                     .roughness = 0.020F,
                     .scale = 2.4F,
                     .smear = 0.02F,
                     .rays = 3,
                     .deep = {0.055F, 0.075F, 0.085F},
                     .nearShine = 0.62F,
                     .farShine = 0.97F,
                     .seed = 77});
  DrawForeground(canvas);
  canvas.Soften();
  return canvas.Develop({.exposure = 1.12F,
                         .contrast = 1.06F,
                         .saturation = 0.95F,
                         .vignette = 0.28F,
                         .grain = 0.010F,
                         .bloom = 0.12F,
                         .shadows = {0.95F, 1.0F, 1.06F}},
                        5);
}

}  // namespace zqm::demo
