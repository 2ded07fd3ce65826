// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effects/red_eyes.h"

#include <numbers>
#include <opencv2/imgproc.hpp>

#include "imaging/map_pixels.h"

namespace zqm {
namespace {

// Red over the mean of green and blue. Skin lies below 1.7, lips reach 2.3, lit pupils begin at 2;
// what belongs to one pupil may fade out further.
constexpr float kPupilRatio = 2.0F;
constexpr float kFadingRatio = 1.6F;
constexpr float kLeastRed = 0.2F;  // darker things aren't seen to be red

constexpr float kBlack = 0.02F;  // what green and blue count as at least

float Ratio(const Rgb& c) {
  return c.red / std::max(kBlack, (c.green + c.blue) / 2);
}

/// A mask of the picture: 255 where it is red by `ratio`.
cv::Mat1b RedMask(const QImage& in, float ratio) {
  cv::Mat1b mask(in.height(), in.width());
  const auto isRed = [ratio](const Rgb& c) {
    return c.red >= kLeastRed && c.red >= ratio * std::max(kBlack, (c.green + c.blue) / 2);
  };
  const auto markRow = [&](auto pixels, int y) {
    using Pixel = typename decltype(pixels)::Pixel;
    const auto* row = reinterpret_cast<const Pixel*>(in.constScanLine(y));
    uchar* marks = mask[y];
    for (int x = 0; x < in.width(); ++x)
      marks[x] = isRed(pixels.ToRgb(row[x])) && pixels.Alpha(row[x]) > 0 ? 255 : 0;
  };
  ForRowBlocks(in.height(), std::int64_t{in.width()} * 8, [&](int begin, int end) {
    for (int y = begin; y < end; ++y) {
      if (IsDeep(in))
        markRow(DeepPixels(), y);
      else
        markRow(ShallowPixels(), y);
    }
  });
  return mask;
}

/// A spot of connected pixels, glints within it filled.
struct Spot {
  cv::Rect box;
  cv::Mat1b mask;  // of the box
};

Spot SpotOf(const cv::Mat1i& labels, int label, const cv::Rect& box) {
  Spot spot{box, labels(box) == label};
  std::vector<std::vector<cv::Point>> outlines;
  cv::findContours(spot.mask.clone(), outlines, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_NONE);
  cv::drawContours(spot.mask, outlines, -1, 255, cv::FILLED);
  return spot;
}

bool IsAboutSquare(const cv::Rect& box) {
  constexpr double kFlattest = 0.55;  // a lid covers some of the eye
  return std::min(box.width, box.height) >= kFlattest * std::max(box.width, box.height);
}

/// Whether a spot fills the ellipse in its box.
bool IsRound(const Spot& spot) {
  constexpr double kLeastFilled = 0.7;
  const double ellipse = std::numbers::pi / 4 * spot.box.area();
  return cv::countNonZero(spot.mask) >= kLeastFilled * ellipse;
}

/// Whether it is strongly red and not only its edge of some redder thing.
bool IsPupil(const Spot& spot, const cv::Mat1b& strong) {
  constexpr double kLeastStrong = 0.4;
  return IsRound(spot) && cv::countNonZero(strong(spot.box) & spot.mask) >=
                              kLeastStrong * cv::countNonZero(spot.mask);
}

/// 255 on pupils, 0 elsewhere.
cv::Mat1b PupilMask(const QImage& in) {
  constexpr double kAllRed = 0.6;
  const cv::Mat1b strong = RedMask(in, kPupilRatio);
  if (cv::countNonZero(strong) >= kAllRed * static_cast<double>(strong.total())) return strong;
  // Of a large picture, specks are no pupils.
  const int leastPixels = std::max(9, static_cast<int>(strong.total() / 100'000));
  cv::Mat1b pupils = cv::Mat1b::zeros(strong.size());
  // Redness of both degrees: a pupil may lie on redder skin and then only the strong part is round.
  for (const float ratio : {kFadingRatio, kPupilRatio}) {
    cv::Mat1i labels, boxes;
    cv::Mat1d centres;
    const int count =
        cv::connectedComponentsWithStats(RedMask(in, ratio), labels, boxes, centres, 4, CV_32S);
    for (int label = 1; label < count; ++label) {
      const int* at = boxes[label];
      const cv::Rect box(at[cv::CC_STAT_LEFT], at[cv::CC_STAT_TOP], at[cv::CC_STAT_WIDTH],
                         at[cv::CC_STAT_HEIGHT]);
      if (at[cv::CC_STAT_AREA] < leastPixels || !IsAboutSquare(box)) continue;
      const Spot spot = SpotOf(labels, label, box);
      if (IsPupil(spot, strong)) pupils(box) |= spot.mask;
    }
  }
  return pupils;
}

/// A soft rim, so that no red fringe is left and no edge shows.
cv::Mat1b WithRim(const cv::Mat1b& pupils) {
  constexpr int kSmooth = 3;
  cv::Mat wide, soft;
  cv::dilate(pupils, wide, cv::getStructuringElement(cv::MORPH_ELLIPSE, {kSmooth, kSmooth}));
  cv::blur(wide, soft, {kSmooth, kSmooth}, {-1, -1}, cv::BORDER_REPLICATE);
  return cv::max(soft, pupils);
}

template <class Pixel, class Make>
void MakeGray(QImage& picture, const cv::Mat1b& mask, const Make& make) {
  for (int y = 0; y < picture.height(); ++y) {
    auto* row = reinterpret_cast<Pixel*>(picture.scanLine(y));
    for (int x = 0; x < picture.width(); ++x) {
      if (mask(y, x) != 0) row[x] = make(row[x], mask(y, x) / 255.0F);
    }
  }
}

/// Towards the gray of its green and blue: what the pupil would be without the flash. What isn't
/// redder than that, as glints are, stays.
Rgb Corrected(const Rgb& c, float share) {
  const float gray = (c.green + c.blue) / 2;
  if (c.red <= gray) return c;
  // It sets in from a tenth redder, which glints may be, to a half.
  const float redness = std::clamp((Ratio(c) - 1.1F) * 2.5F, 0.0F, 1.0F);
  const float by = share * redness;
  return {c.red + (gray - c.red) * by, c.green + (gray - c.green) * by,
          c.blue + (gray - c.blue) * by};
}

QImage Removed(QImage picture) {
  const cv::Mat1b pupils = PupilMask(picture);
  if (cv::countNonZero(pupils) == 0) return picture;
  const cv::Mat1b mask = WithRim(pupils);
  if (picture.bits() == nullptr) return {};
  if (IsDeep(picture)) {
    MakeGray<QRgba64>(picture, mask, [](QRgba64 pixel, float share) {
      const Rgb c = Corrected({static_cast<float>(pixel.red()), static_cast<float>(pixel.green()),
                               static_cast<float>(pixel.blue())},
                              share);
      const auto level = [](float sample) { return static_cast<quint16>(sample + 0.5F); };
      return QRgba64::fromRgba64(level(c.red), level(c.green), level(c.blue), pixel.alpha());
    });
  } else {
    MakeGray<QRgb>(picture, mask, [](QRgb pixel, float share) {
      const Rgb c = Corrected({static_cast<float>(qRed(pixel)), static_cast<float>(qGreen(pixel)),
                               static_cast<float>(qBlue(pixel))},
                              share);
      const auto level = [](float sample) { return static_cast<int>(sample + 0.5F); };
      return qRgba(level(c.red), level(c.green), level(c.blue), qAlpha(pixel));
    });
  }
  return picture;
}

}  // namespace

QImage RemoveRedEyes(const QImage& picture) {
  QImage in = InWorkFormat(picture);
  if (in.isNull() || IsGray(in)) return in;
  try {
    return Removed(std::move(in));
  } catch (const cv::Exception&) {
    return {};  // out of memory
  }
}

}  // namespace zqm
