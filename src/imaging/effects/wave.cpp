// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effects/wave.h"

#include <cmath>
#include <numbers>

#include "imaging/effects/moved_pixels.h"
#include "imaging/pixel_formats.h"

namespace zqm {
namespace {

/// Where the mirror image of [0, count) beyond its ends takes a place from.
double Mirrored(double at, int count) {
  const double last = count - 1;
  if (at >= 0 && at <= last) return at;
  if (last <= 0) return 0;
  const double turned = std::fmod(std::abs(at), 2 * last);
  return turned > last ? 2 * last - turned : turned;
}

}  // namespace

QImage Wave(const QImage& picture, const WaveSettings& settings, const PartView& view) {
  const double amplitude = std::clamp(settings.amplitude, 0.0, 1000.0) * view.scale;
  const bool numbers = std::isfinite(settings.length) && std::isfinite(settings.phase);
  if (picture.isNull() || !(amplitude > 0) || !numbers) return InWorkFormat(picture);
  const double length = std::clamp(settings.length, 2.0, 10'000.0) * view.scale;
  const double phase = settings.phase * std::numbers::pi / 180;
  const QSize whole = view.WholeOf(picture);
  const auto moved = [&](double at) {
    return amplitude * std::sin(2 * std::numbers::pi * at / length + phase);
  };
  const bool sideways = settings.direction != WaveDirection::UpAndDown;
  const bool upAndDown = settings.direction != WaveDirection::Sideways;
  std::vector<double> columns(static_cast<std::size_t>(upAndDown ? picture.width() : 0));
  for (std::size_t x = 0; x < columns.size(); ++x)
    columns[x] = moved(static_cast<double>(x) + view.offset.x());
  const auto source = [&](int left, int top, int count, float* x, float* y) {
    const double row = top + view.offset.y();
    const double aside = sideways ? moved(row) : 0;
    for (int i = 0; i < count; ++i) {
      const double fromX = left + i + view.offset.x() + aside;
      const double fromY = row + (upAndDown ? columns[static_cast<std::size_t>(left + i)] : 0);
      x[i] = static_cast<float>(Mirrored(fromX, whole.width()) - view.offset.x());
      y[i] = static_cast<float>(Mirrored(fromY, whole.height()) - view.offset.y());
    }
  };
  return MovedPixels(picture, picture.rect(), source);
}

}  // namespace zqm
