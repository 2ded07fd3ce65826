// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effects/blur.h"

#include <cmath>
#include <opencv2/imgproc.hpp>

#include "imaging/cv_view.h"
#include "imaging/effects/bands.h"
#include "imaging/pixel_formats.h"

namespace zqm {
namespace {

constexpr int kPasses = 3;

/// The odd widths of boxes that, one after the other, come next to a bell curve: P. Kovesi, "Fast
/// Almost-Gaussian Filtering" (2010).
std::array<int, kPasses> BoxWidths(double deviation) {
  const double wanted = 12 * deviation * deviation;
  int narrow = static_cast<int>(std::sqrt(wanted / kPasses + 1));
  if (narrow % 2 == 0) --narrow;
  const double n = narrow;
  const auto narrowOnes =
      static_cast<int>(std::round((wanted - kPasses * (n * n + 4 * n + 3)) / (-4 * n - 4)));
  std::array<int, kPasses> widths;
  for (int pass = 0; pass < kPasses; ++pass)
    widths[static_cast<std::size_t>(pass)] = pass < narrowOnes ? narrow : narrow + 2;
  return widths;
}

/// By the bell curve itself, which the library spreads over the cores.
QImage BellBlur(const QImage& in, double deviation) {
  const int reach = static_cast<int>(std::ceil(3 * deviation));
  const auto blur = [&](const cv::Mat& from, cv::Mat& to) {
    cv::GaussianBlur(from, to, {2 * reach + 1, 2 * reach + 1}, deviation, deviation,
                     cv::BORDER_REPLICATE);
  };
  if (in.hasAlphaChannel()) return FilterColours(in, reach, blur);
  QImage out = BlankLike(in);
  if (out.isNull()) return {};
  try {
    cv::Mat to = CvView(out);
    blur(CvView(std::as_const(in)), to);
  } catch (const cv::Exception&) {
    return {};  // out of memory
  }
  return out;
}

}  // namespace

QImage Blur(const QImage& picture, double radius, double scale) {
  constexpr double kLeast = 0.05;   // standard deviation, below which no sample moves
  constexpr double kBoxesFrom = 4;  // from here three boxes look the same and cost less
  const double deviation = std::clamp(radius, 0.0, kMostBlur) * scale / 2;
  if (!(deviation > kLeast)) return InWorkFormat(picture);
  if (deviation < kBoxesFrom) return BellBlur(InWorkFormat(picture), deviation);
  const auto widths = BoxWidths(deviation);
  int reach = 0;
  for (const int width : widths)
    reach += width / 2;
  return FilterColours(picture, reach, [&](const cv::Mat& rows, cv::Mat& filtered) {
    cv::Mat from = rows;
    for (const int width : widths) {
      cv::Mat to;
      cv::blur(from, to, {width, width}, {-1, -1}, cv::BORDER_REPLICATE);
      from = to;
    }
    filtered = from;
  });
}

}  // namespace zqm
