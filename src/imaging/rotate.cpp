// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/rotate.h"

#include <QTransform>
#include <atomic>
#include <cmath>
#include <limits>
#include <numbers>
#include <opencv2/imgproc.hpp>

#include "imaging/codec.h"
#include "imaging/cv_view.h"
#include "imaging/pixel_formats.h"
#include "imaging/row_blocks.h"

namespace zqm {
namespace {

struct Canvas {
  QSize size;
  cv::Matx23d toCanvas;
};

/// The turn about the middles of both. What a side is longer by than whole pixels, but for
/// rounding, gets a pixel.
Canvas CanvasFor(const QSize& picture, double degrees) {
  constexpr double kRounding = 1e-6;
  const double angle = degrees * std::numbers::pi / 180;
  const double cosine = std::cos(angle);
  const double sine = std::sin(angle);
  const auto side = [&](double along, double across) {
    const double length = std::abs(along * cosine) + std::abs(across * sine);
    return static_cast<int>(std::ceil(length - kRounding));
  };
  const QSize size(side(picture.width(), picture.height()),
                   side(picture.height(), picture.width()));
  const double x = (picture.width() - 1) / 2.0;
  const double y = (picture.height() - 1) / 2.0;
  return {size,
          {cosine, sine, (size.width() - 1) / 2.0 - cosine * x - sine * y,  //
           -sine, cosine, (size.height() - 1) / 2.0 + sine * x - cosine * y}};
}

/// Turns in bands, whose height never depends on the threads: rounding begins anew with each.
QImage Warped(const QImage& in, const Canvas& canvas, bool antialias) {
  constexpr int kBand = 64;
  QImage out(canvas.size, in.format());
  if (out.isNull() || !out.bits()) return {};
  const cv::Mat from = CvView(in);
  cv::Mat to = CvView(out);
  cv::Matx23d toPicture;
  cv::invertAffineTransform(canvas.toCanvas, toPicture);
  const int kind = (antialias ? cv::INTER_CUBIC : cv::INTER_NEAREST) | cv::WARP_INVERSE_MAP;
  const auto around = cv::Scalar::all(in.hasAlphaChannel() ? 0 : IsDeep(in) ? 65535 : 255);
  std::atomic<bool> failed = false;
  const auto warp = [&](int band) {
    const int top = band * kBand;
    cv::Mat rows = to.rowRange(top, std::min(top + kBand, to.rows));
    cv::Matx23d shifted = toPicture;
    shifted(0, 2) += shifted(0, 1) * top;
    shifted(1, 2) += shifted(1, 1) * top;
    try {
      cv::warpAffine(from, rows, shifted, rows.size(), kind, cv::BORDER_CONSTANT, around);
    } catch (const cv::Exception&) {
      failed = true;  // out of memory
    }
  };
  const int bands = (to.rows + kBand - 1) / kBand;
  ForRowBlocks(bands, std::int64_t{to.cols} * kBand * 16, [&](int begin, int end) {
    for (int band = begin; band < end; ++band)
      warp(band);
  });
  return failed ? QImage() : out;
}

}  // namespace

QImage Flipped(const QImage& picture, FlipDirection direction) {
  const bool sideways = direction == FlipDirection::Horizontal;
  return picture.mirrored(sideways, !sideways);
}

QImage Rotated(const QImage& picture, double degrees, bool antialias) {
  if (picture.isNull() || !std::isfinite(degrees)) return {};
  const double angle = std::fmod(degrees, 360);
  const double quarters = angle / 90;
  if (quarters == std::round(quarters)) {
    if (quarters == 0) return picture;
    return picture.transformed(QTransform().rotate(-angle));
  }
  const Canvas canvas = CanvasFor(picture.size(), angle);
  const int longest =
      std::max({picture.width(), picture.height(), canvas.size.width(), canvas.size.height()});
  if (longest >= std::numeric_limits<short>::max()) return {};
  if (std::int64_t{canvas.size.width()} * canvas.size.height() > kMostPixels) return {};
  return Unweighed(Warped(Weighed(InWorkFormat(picture)), canvas, antialias));
}

}  // namespace zqm
