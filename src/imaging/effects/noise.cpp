// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effects/noise.h"

#include <cmath>
#include <opencv2/imgproc.hpp>

#include "imaging/effects/bands.h"
#include "imaging/pixel_formats.h"

namespace zqm {
namespace {

/// A pixel becomes the mean of those about it that are like it. Likeness is told by softened
/// pictures, so that a grain doesn't vouch for itself, and ends at `tolerance` (Tukey's biweight:
/// F. Durand and J. Dorsey, "Fast Bilateral Filtering", 2002, name it for edges that stay).
struct Likeness {
  int reach;        // steps to each side
  int step;         // pixels
  float tolerance;  // 0 to 1
  bool sparse;      // every other place only, as on a chessboard

  int Halo() const { return reach * step + 1; }
};

cv::Mat1f Padded(const cv::Mat1f& plane, int by) {
  cv::Mat1f padded;
  cv::copyMakeBorder(plane, padded, by, by, by, by, cv::BORDER_REPLICATE);
  return padded;
}

cv::Mat1f Softened(const cv::Mat1f& plane) {
  cv::Mat1f soft;
  cv::GaussianBlur(plane, soft, {3, 3}, 0.8, 0.8, cv::BORDER_REPLICATE);
  return soft;
}

/// Weighed sums of a row of pixels and the sums of their weights.
struct RowSums {
  explicit RowSums(int columns)
      : first(static_cast<std::size_t>(columns)),
        second(static_cast<std::size_t>(columns)),
        weights(static_cast<std::size_t>(columns)) {}
  void Clear() {
    for (auto* sums : {&first, &second, &weights})
      std::fill(sums->begin(), sums->end(), 0.0F);
  }
  std::vector<float> first, second, weights;
};

/// Calls `add(down, aside, nearness)` for each place about a pixel.
template <class Add>
void ForPlaces(const Likeness& likeness, const Add& add) {
  for (int dy = -likeness.reach; dy <= likeness.reach; ++dy) {
    for (int dx = -likeness.reach; dx <= likeness.reach; ++dx) {
      if (likeness.sparse && (dx + dy) % 2 != 0) continue;
      const double away = (dx * dx + dy * dy) / (2.0 * likeness.reach * likeness.reach);
      add(dy * likeness.step, dx * likeness.step, static_cast<float>(std::exp(-away)));
    }
  }
}

/// Without a branch, which would keep the compiler from doing several at a time.
float AboveZero(float value) {
  return (value + std::abs(value)) * 0.5F;
}

// Rows are told apart for the compiler, which does several pixels at a time then.

void AddLike(int count, const float* __restrict guideHere, const float* __restrict guideThere,
             const float* __restrict there, float near, float steepness, float* __restrict sum,
             float* __restrict weight) {
  for (int x = 0; x < count; ++x) {
    const float off = guideThere[x] - guideHere[x];
    const float like = AboveZero(1 - off * off * steepness);
    const float w = like * like * near;
    sum[x] += w * there[x];
    weight[x] += w;
  }
}

struct ColourRow {
  const float* luma;
  const float* blue;
  const float* red;
};

/// Pixels of other brightness are less alike too, so that colour doesn't run over edges.
void AddLikeColours(int count, const ColourRow& hereRow, const ColourRow& thereRow, float near,
                    float steepness, float* __restrict blueSum, float* __restrict redSum,
                    float* __restrict weight) {
  constexpr float kLumaShare = 0.3F;
  const float* __restrict lumaHere = hereRow.luma;
  const float* __restrict blueHere = hereRow.blue;
  const float* __restrict redHere = hereRow.red;
  const float* __restrict lumaThere = thereRow.luma;
  const float* __restrict blueThere = thereRow.blue;
  const float* __restrict redThere = thereRow.red;
  for (int x = 0; x < count; ++x) {
    const float l = lumaThere[x] - lumaHere[x];
    const float b = blueThere[x] - blueHere[x];
    const float r = redThere[x] - redHere[x];
    const float off = kLumaShare * l * l + b * b + r * r;
    const float like = AboveZero(1 - off * steepness);
    const float w = like * like * near;
    blueSum[x] += w * blueThere[x];
    redSum[x] += w * redThere[x];
    weight[x] += w;
  }
}

cv::Mat1f Evened(const cv::Mat1f& plane, const Likeness& likeness) {
  const int pad = likeness.Halo();
  const cv::Mat1f values = Padded(plane, pad), guide = Padded(Softened(plane), pad);
  const float steepness = 1 / (likeness.tolerance * likeness.tolerance);
  cv::Mat1f out(plane.size());
  RowSums sums(plane.cols);
  for (int y = 0; y < out.rows; ++y) {
    sums.Clear();
    ForPlaces(likeness, [&](int down, int aside, float near) {
      AddLike(out.cols, guide[y + pad] + pad, guide[y + pad + down] + pad + aside,
              values[y + pad + down] + pad + aside, near, steepness, sums.first.data(),
              sums.weights.data());
    });
    for (std::size_t x = 0; x < sums.weights.size(); ++x)
      out[y][x] = sums.first[x] / sums.weights[x];
  }
  return out;
}

/// Both planes of colour at once.
void EvenColours(const cv::Mat1f& luma, cv::Mat1f& blue, cv::Mat1f& red, const Likeness& likeness) {
  const int pad = likeness.Halo();
  const cv::Mat1f lumas = Padded(Softened(luma), pad);
  const cv::Mat1f blues = Padded(Softened(blue), pad), reds = Padded(Softened(red), pad);
  const float steepness = 1 / (likeness.tolerance * likeness.tolerance);
  const auto rowAt = [&](int y, int aside) {
    return ColourRow{lumas[y] + aside, blues[y] + aside, reds[y] + aside};
  };
  RowSums sums(luma.cols);
  for (int y = 0; y < luma.rows; ++y) {
    sums.Clear();
    const ColourRow here = rowAt(y + pad, pad);
    ForPlaces(likeness, [&](int down, int aside, float near) {
      AddLikeColours(luma.cols, here, rowAt(y + pad + down, pad + aside), near, steepness,
                     sums.first.data(), sums.second.data(), sums.weights.data());
    });
    for (std::size_t x = 0; x < sums.weights.size(); ++x) {
      blue[y][x] = sums.first[x] / sums.weights[x];
      red[y][x] = sums.second[x] / sums.weights[x];
    }
  }
}

/// Luma and the differences of blue and red from it (ITU-R BT.601), 0 to 1 and -1 to 1.
struct Planes {
  cv::Mat1f luma, blue, red;
};

struct Order {
  int red, blue;  // places in a pixel; green is 1
};

template <class Sample>
Planes PlanesOf(const cv::Mat& rows, const Order& order) {
  constexpr float kStep = 1.0F / std::numeric_limits<Sample>::max();
  Planes planes{cv::Mat1f(rows.size()), cv::Mat1f(rows.size()), cv::Mat1f(rows.size())};
  for (int y = 0; y < rows.rows; ++y) {
    const auto* pixel = rows.ptr<Sample>(y);
    float* const lumas = planes.luma[y];
    float* const blues = planes.blue[y];
    float* const reds = planes.red[y];
    for (int x = 0; x < rows.cols; ++x, pixel += 4) {
      const float red = static_cast<float>(pixel[order.red]) * kStep;
      const float green = static_cast<float>(pixel[1]) * kStep;
      const float blue = static_cast<float>(pixel[order.blue]) * kStep;
      const float luma = 0.299F * red + 0.587F * green + 0.114F * blue;
      lumas[x] = luma;
      blues[x] = blue - luma;
      reds[x] = red - luma;
    }
  }
  return planes;
}

/// Adds what the planes have changed by: where they haven't, samples stay exactly.
template <class Sample>
void AddChanges(const cv::Mat& rows, const Planes& before, const Planes& after, const Order& order,
                cv::Mat& out) {
  constexpr float kMost = std::numeric_limits<Sample>::max();
  for (int y = 0; y < rows.rows; ++y) {
    const auto* from = rows.ptr<Sample>(y);
    auto* to = out.ptr<Sample>(y);
    const auto put = [&](int channel, float change) {
      const float sample = static_cast<float>(from[channel]) + change * kMost + 0.5F;
      to[channel] = static_cast<Sample>(std::clamp(sample, 0.0F, kMost));
    };
    const float *lumaBefore = before.luma[y], *lumaAfter = after.luma[y];
    const float *blueBefore = before.blue[y], *blueAfter = after.blue[y];
    const float *redBefore = before.red[y], *redAfter = after.red[y];
    for (int x = 0; x < rows.cols; ++x, from += 4, to += 4) {
      const float luma = lumaAfter[x] - lumaBefore[x];
      const float blue = blueAfter[x] - blueBefore[x];
      const float red = redAfter[x] - redBefore[x];
      put(order.red, luma + red);
      put(1, luma - (0.299F * red + 0.114F * blue) / 0.587F);
      put(order.blue, luma + blue);
    }
  }
}

struct Strengths {
  std::optional<Likeness> grain, colour;
};

template <class Sample>
void ReduceInColours(const cv::Mat& rows, cv::Mat& filtered, const Strengths& strengths,
                     const Order& order) {
  const Planes before = PlanesOf<Sample>(rows, order);
  Planes after = before;
  if (strengths.grain) after.luma = Evened(before.luma, *strengths.grain);
  if (strengths.colour) {
    after.blue = before.blue.clone();
    after.red = before.red.clone();
    EvenColours(before.luma, after.blue, after.red, *strengths.colour);
  }
  filtered.create(rows.size(), rows.type());
  AddChanges<Sample>(rows, before, after, order, filtered);
}

void ReduceInGray(const cv::Mat& rows, cv::Mat& filtered, const Likeness& grain) {
  const double most = rows.depth() == CV_16U ? 65535 : 255;
  cv::Mat1f plane;
  rows.convertTo(plane, CV_32F, 1 / most);
  Evened(plane, grain).convertTo(filtered, rows.depth(), most);
}

/// What is averaged on the way to a smaller picture is noise already gone: less is left to do.
std::optional<Likeness> LikenessOf(double strength, double scale, int reach, int step,
                                   bool sparse) {
  constexpr float kMostTolerance = 0.2F;
  const double share = std::clamp(strength, 0.0, 100.0) / 100 * std::clamp(scale, 0.0, 1.0);
  if (!(share > 0)) return std::nullopt;
  const auto shrunk = [&](int pixels) {
    return std::max(1, static_cast<int>(std::lround(pixels * scale)));
  };
  return Likeness{shrunk(reach), shrunk(step), static_cast<float>(share) * kMostTolerance, sparse};
}

}  // namespace

QImage ReduceNoise(const QImage& picture, double grain, double colour, double scale) {
  const QImage in = InWorkFormat(picture);
  if (in.isNull()) return {};
  const Strengths strengths{LikenessOf(grain, scale, 2, 1, false),
                            LikenessOf(colour, scale, 2, 3, true)};
  int halo = 0;
  for (const auto& likeness : {strengths.grain, strengths.colour}) {
    if (likeness) halo = std::max(halo, likeness->Halo() + 1);
  }
  if (halo == 0 || (IsGray(in) && !strengths.grain)) return in;
  return FilterColours(in, halo, [&](const cv::Mat& rows, cv::Mat& filtered) {
    if (rows.channels() == 1)
      ReduceInGray(rows, filtered, *strengths.grain);
    else if (rows.depth() == CV_16U)
      ReduceInColours<std::uint16_t>(rows, filtered, strengths, {0, 2});
    else
      ReduceInColours<std::uint8_t>(rows, filtered, strengths, {2, 0});
  });
}

}  // namespace zqm
