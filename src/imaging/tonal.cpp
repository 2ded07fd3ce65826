// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/tonal.h"

#include <cmath>
#include <opencv2/imgproc.hpp>

#include "imaging/effects/bands.h"
#include "imaging/effects/channel_curves.h"
#include "imaging/effects/colour_balance.h"
#include "imaging/map_pixels.h"
#include "imaging/pixel_formats.h"

namespace zqm {
namespace {

/// -100 to 100 as -1 to 1.
float Share(double percent) {
  return static_cast<float>(std::clamp(percent, -100.0, 100.0) / 100);
}

QImage InColour(const QImage& picture) {
  const QImage in = InWorkFormat(picture);
  if (!IsGray(in)) return in;
  return in.convertToFormat(IsDeep(in) ? QImage::Format_RGBX64 : QImage::Format_RGB32);
}

/// Does `work` on the picture in colour and gives gray back as gray: for work that leaves equal
/// samples equal.
template <class Change>
QImage MapTones(const QImage& picture, const Change& change) {
  const QImage in = InWorkFormat(picture);
  const QImage out = MapPixels(InColour(in), change);
  return IsGray(in) ? GrayOfEqualSamples(out) : out;
}

/// The colour of a hue at full saturation, its highest sample 1.
Rgb PureHue(double degrees) {
  const auto sample = [&](double at) {
    double distance = std::abs(std::fmod(degrees - at, 360));
    if (distance > 180) distance = 360 - distance;
    return static_cast<float>(std::clamp(2 - distance / 60, 0.0, 1.0));
  };
  return {sample(0), sample(120), sample(240)};
}

struct Hsl {
  float hue, saturation, lightness;  // hue from 0 to 6
};

/// A. Smith and others' double cone, as in "Computer Graphics: Principles and Practice" (1990).
Hsl ToHsl(const Rgb& c) {
  const float high = std::max({c.red, c.green, c.blue});
  const float low = std::min({c.red, c.green, c.blue});
  const float spread = high - low;
  Hsl out{0, 0, (high + low) / 2};
  if (spread <= 0) return out;
  out.saturation = spread / (1 - std::abs(high + low - 1));
  if (high == c.red)
    out.hue = (c.green - c.blue) / spread;
  else if (high == c.green)
    out.hue = 2 + (c.blue - c.red) / spread;
  else
    out.hue = 4 + (c.red - c.green) / spread;
  if (out.hue < 0) out.hue += 6;
  return out;
}

Rgb ToRgb(const Hsl& hsl) {
  const float reach = hsl.saturation * std::min(hsl.lightness, 1 - hsl.lightness);
  const auto sample = [&](float shift) {
    float k = hsl.hue * 2 + shift;  // twelfths of the circle
    if (k >= 12) k -= 12;
    return hsl.lightness - reach * std::max(-1.0F, std::min({k - 3, 9 - k, 1.0F}));
  };
  return {sample(0), sample(8), sample(4)};
}

void Saturate(Rgb& c, float factor) {
  const float luma = Luma(c);
  c.red = luma + (c.red - luma) * factor;
  c.green = luma + (c.green - luma) * factor;
  c.blue = luma + (c.blue - luma) * factor;
}

/// Steep enough at 1 that everything lands on black or white.
float ContrastFactor(float contrast) {
  constexpr float kSteepest = 1e6F;
  return contrast < 0 ? 1 + contrast : std::min(kSteepest, 1 / (1 - contrast));
}

struct Means {
  double red = 0, green = 0, blue = 0;
};

Means MeanColour(const QImage& in) {
  Means sums;
  double weight = 0;
  for (int y = 0; y < in.height(); ++y) {
    const uchar* row = in.constScanLine(y);
    Means line;  // a sum a line keeps the rounding small
    for (int x = 0; x < in.width(); ++x) {
      const QRgba64 pixel = IsDeep(in) ? reinterpret_cast<const QRgba64*>(row)[x]
                                       : QRgba64::fromArgb32(reinterpret_cast<const QRgb*>(row)[x]);
      const double alpha = pixel.alpha() / 65535.0;
      line.red += pixel.red() * alpha;
      line.green += pixel.green() * alpha;
      line.blue += pixel.blue() * alpha;
      weight += alpha;
    }
    sums.red += line.red, sums.green += line.green, sums.blue += line.blue;
  }
  if (weight > 0) {
    const double full = weight * 65535;
    sums.red /= full, sums.green /= full, sums.blue /= full;
  }
  return sums;
}

/// A row of a mean over `width` pixels, which needn't be a whole number: the outermost count in
/// part.
cv::Mat1f MeanRow(double width) {
  const int reach = static_cast<int>(std::ceil((width - 1) / 2));
  cv::Mat1f row(1, 2 * reach + 1, static_cast<float>(1 / width));
  row(0, 0) = row(0, 2 * reach) = static_cast<float>(((width + 1) / 2 - reach) / width);
  return row;
}

}  // namespace

QImage Sepia(const QImage& picture, double hue, double saturation, double gain) {
  const Rgb pure = PureHue(hue);
  const auto strength = static_cast<float>(std::clamp(saturation, 0.0, 100.0) / 100);
  const auto factor = [&](float sample) {
    return static_cast<float>(std::max(0.0, gain)) * (1 - strength * (1 - sample));
  };
  const Rgb tint{factor(pure.red), factor(pure.green), factor(pure.blue)};
  return MapPixels(InColour(picture), [&](Rgb& c) {
    const float luma = Luma(c);
    c = {luma * tint.red, luma * tint.green, luma * tint.blue};
  });
}

QImage AdjustBrightnessContrastSaturation(const QImage& picture, double brightness, double contrast,
                                          double saturation) {
  const float move = Share(brightness);
  const float spread = ContrastFactor(Share(contrast));
  const float colour = 1 + Share(saturation);
  if (move == 0 && spread == 1 && colour == 1) return InWorkFormat(picture);
  const auto tone = [&](float v) {
    return std::clamp((v - 0.5F) * spread + 0.5F + move, 0.0F, 1.0F);
  };
  if (colour == 1) return WithCurves(InWorkFormat(picture), tone, tone, tone);
  return MapTones(picture, [&](Rgb& c) {
    c = {tone(c.red), tone(c.green), tone(c.blue)};
    Saturate(c, colour);
  });
}

QImage AdjustHueSaturationLightness(const QImage& picture, double hue, double saturation,
                                    double lightness) {
  const auto turn = static_cast<float>(std::clamp(hue, -180.0, 180.0) / 60);
  const float colour = 1 + Share(saturation);
  const float light = Share(lightness);
  if (turn == 0 && colour == 1 && light == 0) return InWorkFormat(picture);
  return MapTones(picture, [&](Rgb& c) {
    Hsl hsl = ToHsl(c);
    hsl.hue += turn;
    if (hsl.hue < 0) hsl.hue += 6;
    if (hsl.hue >= 6) hsl.hue -= 6;
    hsl.saturation = std::min(1.0F, hsl.saturation * colour);
    hsl.lightness += light > 0 ? (1 - hsl.lightness) * light : hsl.lightness * light;
    c = ToRgb(hsl);
  });
}

QImage AdjustSaturation(const QImage& picture, double saturation) {
  return AdjustBrightnessContrastSaturation(picture, 0, 0, saturation);
}

QImage Sharpen(const QImage& picture, double intensity, int neighbourhood, double scale) {
  constexpr double kMost = 3;
  const double strength = std::clamp(intensity, 0.0, 100.0) / 100 * kMost;
  const int width = std::clamp(neighbourhood, 1, 99) | 1;
  if (!(strength > 0) || width == 1) return InWorkFormat(picture);
  const double shrunk = width * std::clamp(scale, 0.0, 1.0);
  if (shrunk <= 1) return InWorkFormat(picture);  // too fine to be seen at that size
  const bool whole = scale >= 1;
  const cv::Mat1f row = whole ? cv::Mat1f() : MeanRow(shrunk);
  const int reach = whole ? width / 2 : row.cols / 2;
  return FilterColours(picture, reach, [&](const cv::Mat& rows, cv::Mat& filtered) {
    cv::Mat mean;
    if (whole)
      cv::blur(rows, mean, {width, width}, {-1, -1}, cv::BORDER_REPLICATE);
    else
      cv::sepFilter2D(rows, mean, -1, row, row, {-1, -1}, 0, cv::BORDER_REPLICATE);
    cv::addWeighted(rows, 1 + strength, mean, -strength, 0, filtered);
  });
}

QImage WhiteBalance(const QImage& picture, const QColor& gray) {
  return BalanceColours(picture, {gray});
}

QImage WhiteBalance(const QImage& picture) {
  const Means mean = MeanColour(InColour(picture));
  const auto sample = [](double v) { return static_cast<float>(std::clamp(v, 0.0, 1.0)); };
  return WhiteBalance(picture,
                      QColor::fromRgbF(sample(mean.red), sample(mean.green), sample(mean.blue)));
}

}  // namespace zqm
