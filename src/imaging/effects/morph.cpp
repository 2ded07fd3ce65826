// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effects/morph.h"

#include <cmath>
#include <opencv2/imgproc.hpp>

#include "imaging/effects/bands.h"
#include "imaging/pixel_formats.h"

namespace zqm {
namespace {

constexpr MorphOperationName kNames[] = {
    {u"Erode", MorphOperation::Erode},        {u"Dilate", MorphOperation::Dilate},
    {u"Open", MorphOperation::Open},          {u"Close", MorphOperation::Close},
    {u"Gradient", MorphOperation::Gradient},  {u"Top hat", MorphOperation::TopHat},
    {u"Black hat", MorphOperation::BlackHat},
};

/// A picture's rows in work, with what of them is not seen.
struct Rows {
  cv::Mat unseen;  // empty, or 255 where alpha is 0
  bool round;
};

/// The darkest or lightest within `radius`. Squares and crosses in turn make an octagon, at the
/// price of their few pixels each time.
cv::Mat Extreme(const cv::Mat& from, const Rows& rows, cv::MorphTypes which, int radius) {
  if (radius == 0) return from;
  cv::Mat to = from;
  if (!rows.unseen.empty()) {
    const double loser = which == cv::MORPH_DILATE ? 0 : from.depth() == CV_16U ? 65535 : 255;
    to = from.clone();
    to.setTo(cv::Scalar::all(loser), rows.unseen);
  }
  const auto apply = [&](int shape, int reach) {
    const cv::Mat element = cv::getStructuringElement(shape, {2 * reach + 1, 2 * reach + 1});
    cv::Mat next;
    cv::morphologyEx(to, next, which, element, {-1, -1}, 1, cv::BORDER_REPLICATE);
    to = next;
  };
  if (!rows.round) {
    apply(cv::MORPH_RECT, radius);
    return to;
  }
  // Order doesn't matter to a maximum, so all squares are one.
  const int crosses = (radius + 1) / 2;
  for (int i = 0; i < crosses; ++i)
    apply(cv::MORPH_CROSS, 1);
  if (radius > crosses) apply(cv::MORPH_RECT, radius - crosses);
  return to;
}

cv::Mat Morphed(const cv::Mat& from, const Rows& rows, MorphOperation operation, int radius) {
  const auto eroded = [&](const cv::Mat& of) { return Extreme(of, rows, cv::MORPH_ERODE, radius); };
  const auto dilated = [&](const cv::Mat& of) {
    return Extreme(of, rows, cv::MORPH_DILATE, radius);
  };
  cv::Mat difference;
  switch (operation) {
    case MorphOperation::Erode:
      return eroded(from);
    case MorphOperation::Dilate:
      return dilated(from);
    case MorphOperation::Open:
      return dilated(eroded(from));
    case MorphOperation::Close:
      return eroded(dilated(from));
    case MorphOperation::Gradient:
      cv::subtract(dilated(from), eroded(from), difference);
      return difference;
    case MorphOperation::TopHat:
      cv::subtract(from, dilated(eroded(from)), difference);
      return difference;
    case MorphOperation::BlackHat:
      cv::subtract(eroded(dilated(from)), from, difference);
      return difference;
  }
  return from;
}

}  // namespace

std::span<const MorphOperationName> MorphOperationNames() {
  return kNames;
}

QImage Morph(const QImage& picture, const MorphSettings& settings, double scale) {
  const QImage in = InWorkFormat(picture);
  const double radius = std::clamp(settings.radius, 0, 50) * scale;
  if (in.isNull() || !(radius > 0)) return in;
  // Between two whole radii it is a mixture of both.
  const int small = static_cast<int>(radius);
  const double more = radius - small;
  const int halo = 2 * (small + 1);
  return FilterInBands(in, halo, [&](const cv::Mat& from, cv::Mat& filtered) {
    Rows rows{{}, settings.round};
    if (in.hasAlphaChannel()) {
      cv::Mat alpha;
      cv::extractChannel(from, alpha, 3);
      cv::compare(alpha, 0, rows.unseen, cv::CMP_EQ);
    }
    filtered = Morphed(from, rows, settings.operation, small);
    if (more > 0) {
      const cv::Mat wider = Morphed(from, rows, settings.operation, small + 1);
      cv::addWeighted(filtered, 1 - more, wider, more, 0, filtered);
    }
  });
}

}  // namespace zqm
