// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effects/colour_balance.h"

#include <cmath>

#include "imaging/effects/channel_curves.h"
#include "imaging/map_pixels.h"

namespace zqm {
namespace {

/// No channel is scaled by more than 4 or less than 1/4.
Rgb GainsOfNeutral(const QColor& neutral) {
  constexpr float kMost = 4, kBlack = 1e-6F;
  const Rgb gray{neutral.redF(), neutral.greenF(), neutral.blueF()};
  const float luma = Luma(gray);
  if (luma < kBlack) return {1, 1, 1};
  const auto gain = [&](float sample) {
    return std::clamp(luma / std::max(sample, kBlack), 1 / kMost, kMost);
  };
  return {gain(gray.red), gain(gray.green), gain(gray.blue)};
}

/// Powers of two that are each other's opposites, brought to the luma of a gray.
Rgb GainsOfTemperature(double temperature, double tint) {
  constexpr double kWarmest = 0.5, kMostTint = 0.3;
  const double warm = kWarmest * std::clamp(temperature, -100.0, 100.0) / 100;
  const double magenta = kMostTint * std::clamp(tint, -100.0, 100.0) / 100;
  const auto power = [](double exponent) { return static_cast<float>(std::exp2(exponent)); };
  Rgb gains{power(warm + magenta / 2), power(-magenta), power(-warm + magenta / 2)};
  const float luma = Luma(gains);
  gains.red /= luma, gains.green /= luma, gains.blue /= luma;
  return gains;
}

}  // namespace

QImage BalanceColours(const QImage& picture, const ColourBalance& balance) {
  QImage in = InWorkFormat(picture);
  if (in.isNull() || balance.IsNeutral()) return in;
  Rgb gains{1, 1, 1};
  if (balance.neutral) gains = GainsOfNeutral(*balance.neutral);
  if (balance.temperature != 0 || balance.tint != 0) {
    const Rgb more = GainsOfTemperature(balance.temperature, balance.tint);
    gains.red *= more.red, gains.green *= more.green, gains.blue *= more.blue;
  }
  constexpr float kRounding = 1e-4F;  // less than a step of 16 bits takes
  const auto isOne = [](float gain) { return std::abs(gain - 1) < kRounding; };
  if (isOne(gains.red) && isOne(gains.green) && isOne(gains.blue)) return in;
  if (IsGray(in))
    in = in.convertToFormat(IsDeep(in) ? QImage::Format_RGBX64 : QImage::Format_RGB32);
  const auto times = [](float gain) { return [gain](float sample) { return sample * gain; }; };
  return WithCurves(in, times(gains.red), times(gains.green), times(gains.blue));
}

QImage TemperatureTint(const QImage& picture, double temperature, double tint) {
  return BalanceColours(picture, {std::nullopt, temperature, tint});
}

std::optional<QColor> MeanAround(const QImage& picture, const QPoint& pixel, int radius) {
  const QRect about = QRect(pixel - QPoint(radius, radius), pixel + QPoint(radius, radius));
  const QRect area = about & picture.rect();
  if (!picture.rect().contains(pixel)) return std::nullopt;
  double red = 0, green = 0, blue = 0, weight = 0;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      const QColor colour = picture.pixelColor(x, y);
      const double alpha = colour.alphaF();
      red += colour.redF() * alpha;
      green += colour.greenF() * alpha;
      blue += colour.blueF() * alpha;
      weight += alpha;
    }
  }
  if (weight <= 0) return std::nullopt;
  const auto mean = [&](double sum) { return static_cast<float>(std::min(1.0, sum / weight)); };
  return QColor::fromRgbF(mean(red), mean(green), mean(blue));
}

}  // namespace zqm
