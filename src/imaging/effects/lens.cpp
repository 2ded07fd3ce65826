// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effects/lens.h"

#include <cmath>

#include "imaging/effects/moved_pixels.h"
#include "imaging/pixel_formats.h"

namespace zqm {
namespace {

/// -1 to 0.8, so that no pixel is seen twice.
double Bend(const LensSettings& settings) {
  constexpr double kStrongest = 0.8;
  const double strength = std::clamp(settings.strength, -100.0, 100.0) / 100;
  return strength > 0 ? strength * kStrongest : strength;
}

double Radius(const LensSettings& settings, const QSize& whole) {
  const double shorter = std::min(whole.width(), whole.height());
  return std::max(1.0, std::clamp(settings.size, 1.0, 300.0) / 200 * shorter);
}

}  // namespace

QImage Lens(const QImage& picture, const LensSettings& settings, const PartView& view) {
  const double bend = Bend(settings);
  const QSize whole = view.WholeOf(picture);
  const double radius = Radius(settings, whole);
  const bool numbers = std::isfinite(bend + radius + settings.centre.x() + settings.centre.y());
  if (picture.isNull() || bend == 0 || !numbers) return InWorkFormat(picture);
  // Of pixels, whose middles are what is counted.
  const double centreX = settings.centre.x() * whole.width() - 0.5 - view.offset.x();
  const double centreY = settings.centre.y() * whole.height() - 0.5 - view.offset.y();
  const QRectF under(centreX - radius, centreY - radius, 2 * radius, 2 * radius);
  const auto source = [&](int left, int top, int count, float* x, float* y) {
    const double dy = top - centreY;
    for (int i = 0; i < count; ++i) {
      const double dx = left + i - centreX;
      // 1 at the rim, and with the same slope as outside.
      const double inside = std::max(0.0, 1 - (dx * dx + dy * dy) / (radius * radius));
      const double factor = 1 - bend * inside * inside;
      x[i] = static_cast<float>(centreX + dx * factor);
      y[i] = static_cast<float>(centreY + dy * factor);
    }
  };
  return MovedPixels(picture, (under & QRectF(picture.rect())).toAlignedRect(), source);
}

int LensReach(const LensSettings& settings, const QSize& picture) {
  // The farthest way, at 1 / sqrt(5) of the radius, is 0.286 of it.
  return static_cast<int>(std::ceil(0.29 * std::abs(Bend(settings)) * Radius(settings, picture)));
}

}  // namespace zqm
