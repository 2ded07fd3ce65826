// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/resample.h"

#include <cmath>
#include <numbers>

#include "imaging/codec.h"
#include "imaging/pixel_formats.h"
#include "imaging/row_blocks.h"

namespace zqm {
namespace {

using Filter = ResampleFilter;

constexpr ResampleFilterName kNames[] = {
    {u"No Filter", Filter::NoFilter},  {u"Triangle", Filter::Triangle},
    {u"Hermite", Filter::Hermite},     {u"Bell", Filter::Bell},
    {u"BSpline", Filter::BSpline},     {u"Lanczos3", Filter::Lanczos3},
    {u"Mitchell", Filter::Mitchell},   {u"Nearest", Filter::Nearest},
    {u"Linear", Filter::Linear},       {u"Fast linear", Filter::FastLinear},
    {u"Bilinear", Filter::Bilinear},   {u"Bicubic", Filter::Bicubic},
    {u"ProjectBW", Filter::ProjectBW}, {u"ProjectWB", Filter::ProjectWB},
};

double Triangle(double x) {
  return std::max(0.0, 1.0 - std::abs(x));
}

/// The cubic with flat tangents at its ends.
double Hermite(double x) {
  const double d = std::min(1.0, std::abs(x));
  return (2 * d - 3) * d * d + 1;
}

/// The quadratic B-spline: three boxes folded.
double Bell(double x) {
  const double d = std::abs(x);
  if (d < 0.5) return 0.75 - d * d;
  return d < 1.5 ? (d - 1.5) * (d - 1.5) / 2 : 0;
}

/// The family of D. Mitchell and A. Netravali, "Reconstruction Filters in Computer Graphics"
/// (1988).
double Cubic(double x, double b, double c) {
  const double d = std::abs(x);
  if (d < 1)
    return ((12 - 9 * b - 6 * c) * d * d * d + (-18 + 12 * b + 6 * c) * d * d + 6 - 2 * b) / 6;
  if (d >= 2) return 0;
  return ((-b - 6 * c) * d * d * d + (6 * b + 30 * c) * d * d + (-12 * b - 48 * c) * d + 8 * b +
          24 * c) /
         6;
}

double BSpline(double x) {
  return Cubic(x, 1, 0);
}

double Mitchell(double x) {
  return Cubic(x, 1.0 / 3, 1.0 / 3);
}

/// R. Keys, "Cubic Convolution Interpolation for Digital Image Processing" (1981), a = -1/2.
double Keys(double x) {
  return Cubic(x, 0, 0.5);
}

/// The sinc under the middle lobe of a sinc three times as wide.
double Lanczos3(double x) {
  const double angle = x * std::numbers::pi;
  if (std::abs(x) < 1e-9) return 1;
  return std::abs(x) < 3 ? 3 * std::sin(angle) * std::sin(angle / 3) / (angle * angle) : 0;
}

/// A kernel around 0, zero from `support` on, for no reduction; reductions stretch it.
struct Kernel {
  Filter filter;
  double support;
  double (*weight)(double distance);
};

/// All that is linear is one kernel.
constexpr Kernel kKernels[] = {
    {Filter::FastLinear, 1, Triangle}, {Filter::NoFilter, 1, Triangle},
    {Filter::Triangle, 1, Triangle},   {Filter::Linear, 1, Triangle},
    {Filter::Bilinear, 1, Triangle},   {Filter::Hermite, 1, Hermite},
    {Filter::Bell, 1.5, Bell},         {Filter::BSpline, 2, BSpline},
    {Filter::Lanczos3, 3, Lanczos3},   {Filter::Mitchell, 2, Mitchell},
    {Filter::Bicubic, 2, Keys},
};

const Kernel& FindKernel(Filter filter) {
  const auto* found = std::ranges::find(kKernels, filter, &Kernel::filter);
  return found == std::end(kKernels) ? kKernels[0] : *found;
}

/// The source pixels that make one target pixel: weights[0 … count), from `first` on.
struct Tap {
  int first = 0;
  int count = 0;
  std::size_t weights = 0;
};

struct Taps {
  std::vector<Tap> taps;
  std::vector<float> weights;  // those of one tap add up to 1

  const float* Weights(const Tap& tap) const { return weights.data() + tap.weights; }
};

Taps MakeTaps(int from, int to, const Kernel& kernel) {
  const double scale = double(from) / to;
  const double stretch = std::max(1.0, scale);
  const double reach = kernel.support * stretch;
  Taps result;
  result.taps.reserve(static_cast<std::size_t>(to));
  std::vector<double> exact;
  for (int i = 0; i < to; ++i) {
    const double centre = (i + 0.5) * scale;
    int first = std::max(0, static_cast<int>(std::floor(centre - reach)));
    int end = std::min(from, static_cast<int>(std::ceil(centre + reach)));
    const auto weight = [&](int j) { return kernel.weight((j + 0.5 - centre) / stretch); };
    while (first + 1 < end && weight(first) == 0)
      ++first;
    while (first + 1 < end && weight(end - 1) == 0)
      --end;
    exact.clear();
    double sum = 0;
    for (int j = first; j < end; ++j) {
      exact.push_back(weight(j));
      sum += exact.back();
    }
    result.taps.push_back({first, end - first, result.weights.size()});
    for (const double w : exact)
      result.weights.push_back(static_cast<float>(w / sum));
  }
  return result;
}

/// sums[0 … count) of the tap's rows. Two rows at a time halve the traffic of the sums.
template <class Sample>
void AddRows(const QImage& in, std::size_t offset, const Tap& tap, const float* weights,
             float* sums, std::size_t count) {
  std::fill_n(sums, count, 0.0F);
  for (int j = 0; j < tap.count; j += 2) {
    const bool pair = j + 1 < tap.count;
    const auto* a = reinterpret_cast<const Sample*>(in.constScanLine(tap.first + j)) + offset;
    const auto* b =
        pair ? reinterpret_cast<const Sample*>(in.constScanLine(tap.first + j + 1)) + offset : a;
    const float weightA = weights[j];
    const float weightB = pair ? weights[j + 1] : 0;
    for (std::size_t i = 0; i < count; ++i)
      sums[i] += weightA * static_cast<float>(a[i]) + weightB * static_cast<float>(b[i]);
  }
}

template <int kChannels>
void ResampleRow(const float* in, float* out, const Taps& across) {
  for (const Tap& tap : across.taps) {
    const float* weight = across.Weights(tap);
    const float* from = in + std::ptrdiff_t{tap.first} * kChannels;
    float sums[kChannels] = {};
    for (int j = 0; j < tap.count; ++j, from += kChannels) {
      for (int c = 0; c < kChannels; ++c)
        sums[c] += weight[j] * from[c];
    }
    for (int c = 0; c < kChannels; ++c)
      *out++ = sums[c];
  }
}

template <class Sample>
void RoundRow(const float* in, Sample* out, std::size_t count) {
  constexpr auto kMax = static_cast<float>(std::numeric_limits<Sample>::max());
  for (std::size_t i = 0; i < count; ++i) {
    const float positive = in[i] > 0 ? in[i] : 0;
    const float clamped = positive < kMax ? positive : kMax;
    out[i] = static_cast<Sample>(static_cast<int>(clamped + 0.5F));
  }
}

/// Down first: whole source rows are added, which is the bulk of the work and runs in vectors.
template <class Sample, int kChannels>
QImage ResampleSamples(const QImage& in, const QSize& size, const Kernel& kernel) {
  QImage out(size, in.format());
  if (out.isNull()) return {};
  const Taps across = MakeTaps(in.width(), size.width(), kernel);
  const Taps down = MakeTaps(in.height(), size.height(), kernel);
  const auto inSamples = static_cast<std::size_t>(in.width()) * kChannels;
  const auto outSamples = static_cast<std::size_t>(size.width()) * kChannels;
  constexpr std::size_t kStrip = 2048;  // its sums stay in the first cache
  uchar* bits = out.bits();
  const auto stride = out.bytesPerLine();

  const auto work = [&](int begin, int end) {
    std::vector<float> sums(inSamples);
    std::vector<float> row(outSamples);
    for (int y = begin; y < end; ++y) {
      const Tap& tap = down.taps[static_cast<std::size_t>(y)];
      for (std::size_t at = 0; at < inSamples; at += kStrip) {
        AddRows<Sample>(in, at, tap, down.Weights(tap), sums.data() + at,
                        std::min(kStrip, inSamples - at));
      }
      ResampleRow<kChannels>(sums.data(), row.data(), across);
      RoundRow(row.data(), reinterpret_cast<Sample*>(bits + y * stride), outSamples);
    }
  };
  const std::int64_t sourceRows = std::max<std::int64_t>(2, in.height() / size.height());
  ForRowBlocks(size.height(), sourceRows * static_cast<std::int64_t>(inSamples), work);
  return out;
}

/// The source pixels [begin, end) of each target pixel; none is left out or used twice in a
/// reduction.
struct Cell {
  int begin;
  int end;
};

std::vector<Cell> MakeCells(int from, int to) {
  std::vector<Cell> cells;
  cells.reserve(static_cast<std::size_t>(to));
  for (std::int64_t i = 0; i < to; ++i) {
    const auto begin = static_cast<int>(i * from / to);
    cells.push_back({begin, std::max(begin + 1, static_cast<int>((i + 1) * from / to))});
  }
  return cells;
}

/// The middle of each cell.
struct PickMiddle {
  template <class Pixel>
  Pixel operator()(const QImage& in, const Cell& x, const Cell& y) const {
    const auto* row = reinterpret_cast<const Pixel*>(in.constScanLine((y.begin + y.end - 1) / 2));
    return row[(x.begin + x.end - 1) / 2];
  }
};

int Lightness(std::uint8_t gray) {
  return gray;
}

int Lightness(std::uint16_t gray) {
  return gray;
}

/// As seen on white, so that what is transparent isn't dark.
int Lightness(QRgb pixel) {
  return qGray(pixel) * qAlpha(pixel) + 255 * (255 - qAlpha(pixel));
}

int Lightness(QRgba64 pixel) {
  const int gray = (pixel.red() * 11 + pixel.green() * 16 + pixel.blue() * 5) / 32;
  return static_cast<int>(
      (std::int64_t{gray} * pixel.alpha() + std::int64_t{65535} * (65535 - pixel.alpha())) >> 16);
}

template <class Better>
struct PickExtreme {
  template <class Pixel>
  Pixel operator()(const QImage& in, const Cell& x, const Cell& y) const {
    auto best = reinterpret_cast<const Pixel*>(in.constScanLine(y.begin))[x.begin];
    for (int j = y.begin; j < y.end; ++j) {
      const auto* row = reinterpret_cast<const Pixel*>(in.constScanLine(j));
      for (int i = x.begin; i < x.end; ++i) {
        if (Better()(Lightness(row[i]), Lightness(best))) best = row[i];
      }
    }
    return best;
  }
};

template <class Pixel, class Pick>
QImage PickPixels(const QImage& in, const QSize& size) {
  QImage out(size, in.format());
  if (out.isNull()) return {};
  const std::vector<Cell> across = MakeCells(in.width(), size.width());
  const std::vector<Cell> down = MakeCells(in.height(), size.height());
  uchar* bits = out.bits();
  const auto stride = out.bytesPerLine();
  const auto work = [&](int begin, int end) {
    for (int y = begin; y < end; ++y) {
      auto* to = reinterpret_cast<Pixel*>(bits + y * stride);
      for (const Cell& cell : across)
        *to++ = Pick().template operator()<Pixel>(in, cell, down[static_cast<std::size_t>(y)]);
    }
  };
  ForRowBlocks(size.height(), std::max(in.width(), size.width()), work);
  return out;
}

template <class Pick>
QImage PickPixels(const QImage& in, const QSize& size) {
  switch (in.format()) {
    case QImage::Format_Grayscale8:
      return PickPixels<std::uint8_t, Pick>(in, size);
    case QImage::Format_Grayscale16:
      return PickPixels<std::uint16_t, Pick>(in, size);
    case QImage::Format_RGBX64:
    case QImage::Format_RGBA64:
      return PickPixels<QRgba64, Pick>(in, size);
    default:
      return PickPixels<QRgb, Pick>(in, size);
  }
}

}  // namespace

std::span<const ResampleFilterName> ResampleFilterNames() {
  return kNames;
}

std::optional<ResampleFilter> FindResampleFilter(QStringView name) {
  const auto* found = std::ranges::find_if(kNames, [&](const ResampleFilterName& known) {
    return known.name.compare(name, Qt::CaseInsensitive) == 0;
  });
  if (found == std::end(kNames)) return {};
  return found->filter;
}

QImage Resample(const QImage& picture, const QSize& size, ResampleFilter filter) {
  if (picture.isNull() || size.isEmpty()) return {};
  if (std::int64_t{size.width()} * size.height() > kMostPixels) return {};
  const QImage in = InWorkFormat(picture);
  switch (filter) {
    case Filter::Nearest:
      return PickPixels<PickMiddle>(in, size);
    case Filter::ProjectBW:
      return PickPixels<PickExtreme<std::less<int>>>(in, size);
    case Filter::ProjectWB:
      return PickPixels<PickExtreme<std::greater<int>>>(in, size);
    default:
      break;
  }
  const Kernel& kernel = FindKernel(filter);
  // With the colours multiplied by alpha, transparent pixels weigh nothing.
  const QImage weighed = Weighed(in);
  if (IsGray(in)) {
    return IsDeep(in) ? ResampleSamples<std::uint16_t, 1>(weighed, size, kernel)
                      : ResampleSamples<std::uint8_t, 1>(weighed, size, kernel);
  }
  return Unweighed(IsDeep(in) ? ResampleSamples<std::uint16_t, 4>(weighed, size, kernel)
                              : ResampleSamples<std::uint8_t, 4>(weighed, size, kernel));
}

}  // namespace zqm
