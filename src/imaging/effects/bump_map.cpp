// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effects/bump_map.h"

#include <cmath>
#include <numbers>
#include <opencv2/imgproc.hpp>

#include "imaging/effects/bands.h"
#include "imaging/pixel_formats.h"

namespace zqm {
namespace {

struct Light {
  float x, y, z;  // from the ground towards it, y down
};

Light LightOf(const BumpMapSettings& settings) {
  constexpr double kRadian = std::numbers::pi / 180;
  const double up = std::clamp(settings.elevation, 5.0, 90.0) * kRadian;
  const double around = settings.direction * kRadian;
  return {static_cast<float>(std::cos(up) * std::cos(around)),
          static_cast<float>(-std::cos(up) * std::sin(around)), static_cast<float>(std::sin(up))};
}

/// Brightness from 0 to 1. The channels' order differs with the depth.
cv::Mat1f HeightsOf(const cv::Mat& rows) {
  cv::Mat gray = rows;
  const bool deep = rows.depth() == CV_16U;
  if (rows.channels() > 1)
    cv::cvtColor(rows, gray, deep ? cv::COLOR_RGBA2GRAY : cv::COLOR_BGRA2GRAY);
  cv::Mat1f heights;
  gray.convertTo(heights, CV_32F, 1.0 / (deep ? 65535 : 255));
  return heights;
}

/// Light on each pixel by that on even ground: the cosine law.
cv::Mat1f Shades(const cv::Mat1f& heights, const Light& light, float steepness) {
  constexpr float kMost = 3;
  cv::Mat1f padded;
  cv::copyMakeBorder(heights, padded, 1, 1, 1, 1, cv::BORDER_REPLICATE);
  cv::Mat1f shades(heights.size());
  for (int y = 0; y < shades.rows; ++y) {
    const float* above = padded[y] + 1;
    const float* here = padded[y + 1] + 1;
    const float* below = padded[y + 2] + 1;
    float* shade = shades[y];
    for (int x = 0; x < shades.cols; ++x) {
      const float slopeX = (here[x + 1] - here[x - 1]) * steepness;
      const float slopeY = (below[x] - above[x]) * steepness;
      const float lit = (light.z - slopeX * light.x - slopeY * light.y) /
                        (light.z * std::sqrt(slopeX * slopeX + slopeY * slopeY + 1));
      shade[x] = std::clamp(lit, 0.0F, kMost);
    }
  }
  return shades;
}

template <class Sample>
void Shade(const cv::Mat& rows, const cv::Mat1f& shades, cv::Mat& out) {
  constexpr float kMost = std::numeric_limits<Sample>::max();
  const int channels = rows.channels();
  for (int y = 0; y < rows.rows; ++y) {
    const auto* from = rows.ptr<Sample>(y);
    auto* to = out.ptr<Sample>(y);
    for (int x = 0; x < rows.cols; ++x) {
      const float shade = shades(y, x);
      for (int c = 0; c < channels; ++c, ++from, ++to)
        *to = static_cast<Sample>(std::min(kMost, static_cast<float>(*from) * shade + 0.5F));
    }
  }
}

}  // namespace

QImage BumpMap(const QImage& picture, const BumpMapSettings& settings, double scale) {
  constexpr double kSteepest = 24;  // at depth 100: heights of a full white in pixels
  const double depth = std::clamp(settings.depth, 0.0, 100.0) / 100;
  const bool numbers = std::isfinite(settings.direction) && std::isfinite(settings.elevation) &&
                       std::isfinite(settings.softness);
  if (!(depth > 0) || !numbers) return InWorkFormat(picture);
  const double softness = std::clamp(settings.softness, 0.0, 100.0) * scale / 2;
  const int reach = static_cast<int>(std::ceil(3 * softness));
  const Light light = LightOf(settings);
  // Softened slopes are flatter; half a step to each side is one pixel.
  const auto steepness = static_cast<float>(depth * kSteepest * (1 + softness / scale) * scale / 2);
  return FilterColours(picture, reach + 1, [&](const cv::Mat& rows, cv::Mat& filtered) {
    cv::Mat1f heights = HeightsOf(rows);
    if (reach > 0) {
      cv::GaussianBlur(heights, heights, {2 * reach + 1, 2 * reach + 1}, softness, softness,
                       cv::BORDER_REPLICATE);
    }
    const cv::Mat1f shades = Shades(heights, light, steepness);
    filtered.create(rows.size(), rows.type());
    if (rows.depth() == CV_16U)
      Shade<std::uint16_t>(rows, shades, filtered);
    else
      Shade<std::uint8_t>(rows, shades, filtered);
  });
}

}  // namespace zqm
