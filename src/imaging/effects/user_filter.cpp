// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effects/user_filter.h"

#include <cmath>
#include <numeric>
#include <opencv2/imgproc.hpp>

#include "imaging/effects/bands.h"
#include "imaging/pixel_formats.h"

namespace zqm {
namespace {

constexpr int kSide = FilterMatrix::kSide, kReach = kSide / 2;

/// Three by three in the middle of five by five.
constexpr FilterMatrix Small(const std::array<int, 9>& inner, int divisor = 1, int bias = 0) {
  FilterMatrix matrix{FilterMatrix::Only(0), divisor, bias};
  for (std::size_t y = 0; y < 3; ++y) {
    for (std::size_t x = 0; x < 3; ++x)
      matrix.weights[(y + 1) * kSide + x + 1] = inner[y * 3 + x];
  }
  return matrix;
}

constexpr FilterPreset kPresets[] = {
    {u"None", {}},
    {u"Soften", Small({1, 2, 1, 2, 4, 2, 1, 2, 1}, 16)},
    {u"Blur",
     {{1, 4, 6, 4, 1, 4, 16, 24, 16, 4, 6, 24, 36, 24, 6, 4, 16, 24, 16, 4, 1, 4, 6, 4, 1}, 256}},
    {u"Motion blur",
     {{1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1}, 5}},
    {u"Sharpen", Small({0, -1, 0, -1, 8, -1, 0, -1, 0}, 4)},
    {u"Sharpen more", Small({-1, -1, -1, -1, 12, -1, -1, -1, -1}, 4)},
    {u"Edges", Small({-1, -1, -1, -1, 8, -1, -1, -1, -1})},
    {u"Edges on gray", Small({0, -2, 0, -2, 8, -2, 0, -2, 0}, 1, 128)},
    {u"Horizontal edges", Small({-1, -2, -1, 0, 0, 0, 1, 2, 1}, 1, 128)},
    {u"Vertical edges", Small({-1, 0, 1, -2, 0, 2, -1, 0, 1}, 1, 128)},
    {u"Emboss", Small({-2, -1, 0, -1, 1, 1, 0, 1, 2})},
    {u"Relief on gray", Small({-1, -1, 0, -1, 0, 1, 0, 1, 1}, 1, 128)},
    {u"Negative", {FilterMatrix::Only(-1), 1, 255}},
};

/// Weights over the divisor. On a smaller picture neighbours are less than a pixel away: their
/// weight is shared out among the pixels about that place.
cv::Mat1f KernelOf(const FilterMatrix& matrix, double scale) {
  cv::Mat1f kernel = cv::Mat1f::zeros(kSide, kSide);
  const float share = 1.0F / static_cast<float>(matrix.divisor == 0 ? 1 : matrix.divisor);
  const auto place = static_cast<float>(std::clamp(scale, 0.0, 1.0));
  for (int i = 0; i < kSide * kSide; ++i) {
    const float weight = static_cast<float>(matrix.weights[static_cast<std::size_t>(i)]) * share;
    const float y = kReach + static_cast<float>(i / kSide - kReach) * place;
    const float x = kReach + static_cast<float>(i % kSide - kReach) * place;
    const int top = std::min(static_cast<int>(y), kSide - 2);
    const int left = std::min(static_cast<int>(x), kSide - 2);
    const float down = y - static_cast<float>(top), right = x - static_cast<float>(left);
    kernel(top, left) += weight * (1 - down) * (1 - right);
    kernel(top, left + 1) += weight * (1 - down) * right;
    kernel(top + 1, left) += weight * down * (1 - right);
    kernel(top + 1, left + 1) += weight * down * right;
  }
  return kernel;
}

/// Sums of weighed colours, over the pixel's own alpha, with the bias in proportion to it: so that
/// an even alpha changes nothing and unseen colours don't count.
void FilterWeighed(const cv::Mat& rows, cv::Mat& filtered, const cv::Mat& kernel, double bias) {
  cv::Mat sums;
  cv::filter2D(rows, sums, CV_32F, kernel, {-1, -1}, 0, cv::BORDER_REPLICATE);
  cv::Mat alpha, shares;
  cv::extractChannel(rows, alpha, 3);
  alpha.convertTo(alpha, CV_32F, bias);
  cv::merge(std::vector<cv::Mat>(4, alpha), shares);
  cv::add(sums, shares, sums);
  sums.convertTo(filtered, rows.depth());
}

}  // namespace

bool FilterMatrix::IsNeutral() const {
  const int whole = divisor == 0 ? 1 : divisor;
  return bias == 0 && weights == Only(whole);
}

int FilterMatrix::KeepingDivisor() const {
  return std::max(1, std::accumulate(weights.begin(), weights.end(), 0));
}

std::span<const FilterPreset> FilterPresets() {
  return kPresets;
}

QImage UserFilter(const QImage& picture, const FilterMatrix& matrix, double scale) {
  const QImage in = InWorkFormat(picture);
  if (in.isNull() || matrix.IsNeutral()) return in;
  const cv::Mat1f kernel = KernelOf(matrix, scale);
  if (in.hasAlphaChannel()) {
    return FilterColours(in, kReach, [&](const cv::Mat& rows, cv::Mat& filtered) {
      FilterWeighed(rows, filtered, kernel, matrix.bias / 255.0);
    });
  }
  const double bias = IsDeep(in) ? matrix.bias * 257.0 : matrix.bias;
  return FilterColours(in, kReach, [&](const cv::Mat& rows, cv::Mat& filtered) {
    cv::filter2D(rows, filtered, -1, kernel, {-1, -1}, bias, cv::BORDER_REPLICATE);
  });
}

}  // namespace zqm
