// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/resample.h"

#include <cmath>

namespace zqm {
namespace {

/// A kernel around 0, zero from `support` on, for no reduction; reductions stretch it.
struct Kernel {
  ResampleFilter number;
  double support;
  double (*weight)(double distance);
};

double Triangle(double x) {
  return std::max(0.0, 1.0 - std::abs(x));
}

constexpr Kernel kKernels[] = {
    {ResampleFilter::FastLinear, 1.0, Triangle},
    {ResampleFilter::Triangle, 1.0, Triangle},
};

const Kernel& FindKernel(ResampleFilter filter) {
  const auto* found = std::ranges::find(kKernels, filter, &Kernel::number);
  return found == std::end(kKernels) ? kKernels[0] : *found;
}

/// The source pixels that make one target pixel: weights[0 … count), from `first` on.
struct Tap {
  int first = 0;
  int count = 0;
  std::size_t weights = 0;
};

constexpr int kWeightBits = 14;

struct Taps {
  std::vector<Tap> taps;
  std::vector<std::int32_t> weights;  // those of one tap add up to 1 << kWeightBits
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
    const int first = std::max(0, static_cast<int>(std::floor(centre - reach)));
    const int end = std::min(from, static_cast<int>(std::ceil(centre + reach)));
    exact.clear();
    double sum = 0;
    for (int j = first; j < end; ++j) {
      exact.push_back(kernel.weight((j + 0.5 - centre) / stretch));
      sum += exact.back();
    }
    // What rounding leaves over goes to the heaviest weight: a flat area stays exactly flat.
    const Tap tap{first, end - first, result.weights.size()};
    std::int32_t left = 1 << kWeightBits;
    for (const double weight : exact) {
      const auto fixed = static_cast<std::int32_t>(std::lround(weight / sum * (1 << kWeightBits)));
      result.weights.push_back(fixed);
      left -= fixed;
    }
    const auto heaviest = std::ranges::max_element(exact) - exact.begin();
    result.weights[tap.weights + static_cast<std::size_t>(heaviest)] += left;
    result.taps.push_back(tap);
  }
  return result;
}

/// Wide enough for weights times samples: 8-bit sums fit 32 bits, 16-bit ones don't.
template <class Sample>
using Sum = std::conditional_t<sizeof(Sample) == 1, std::int32_t, std::int64_t>;

template <class Sample>
Sample Clamp(Sum<Sample> sum) {
  const Sum<Sample> value = (sum + (1 << (kWeightBits - 1))) >> kWeightBits;
  return static_cast<Sample>(std::clamp<Sum<Sample>>(value, 0, std::numeric_limits<Sample>::max()));
}

template <class Sample, int kChannels>
void ResampleRow(const Sample* in, Sample* out, const Taps& across) {
  for (const Tap& tap : across.taps) {
    const std::int32_t* weight = across.weights.data() + tap.weights;
    const Sample* from = in + std::ptrdiff_t{tap.first} * kChannels;
    Sum<Sample> sums[kChannels] = {};
    for (int j = 0; j < tap.count; ++j, from += kChannels) {
      for (int c = 0; c < kChannels; ++c)
        sums[c] += Sum<Sample>{weight[j]} * from[c];
    }
    for (int c = 0; c < kChannels; ++c)
      *out++ = Clamp<Sample>(sums[c]);
  }
}

/// Rows are reduced across as they are needed and kept only while a target row still uses them.
template <class Sample, int kChannels>
QImage ResampleSamples(const QImage& in, const QSize& size, const Kernel& kernel) {
  QImage out(size, in.format());
  if (out.isNull()) return {};
  const Taps across = MakeTaps(in.width(), size.width(), kernel);
  const Taps down = MakeTaps(in.height(), size.height(), kernel);
  const auto rowSamples = static_cast<std::size_t>(size.width()) * kChannels;
  const int ring = std::ranges::max_element(down.taps, {}, &Tap::count)->count;
  std::vector<Sample> rows(rowSamples * static_cast<std::size_t>(ring));
  std::vector<Sum<Sample>> sums(rowSamples);
  const auto kept = [&](int y) {
    return rows.data() + static_cast<std::size_t>(y % ring) * rowSamples;
  };

  int done = 0;
  for (int y = 0; y < size.height(); ++y) {
    const Tap& tap = down.taps[static_cast<std::size_t>(y)];
    for (done = std::max(done, tap.first); done < tap.first + tap.count; ++done) {
      ResampleRow<Sample, kChannels>(reinterpret_cast<const Sample*>(in.constScanLine(done)),
                                     kept(done), across);
    }
    std::ranges::fill(sums, 0);
    for (int j = 0; j < tap.count; ++j) {
      const std::int32_t weight = down.weights[tap.weights + static_cast<std::size_t>(j)];
      const Sample* from = kept(tap.first + j);
      for (std::size_t i = 0; i < rowSamples; ++i)
        sums[i] += Sum<Sample>{weight} * from[i];
    }
    auto* to = reinterpret_cast<Sample*>(out.scanLine(y));
    for (std::size_t i = 0; i < rowSamples; ++i)
      to[i] = Clamp<Sample>(sums[i]);
  }
  return out;
}

}  // namespace

QImage Resample(const QImage& picture, const QSize& size, ResampleFilter filter) {
  if (picture.isNull() || size.isEmpty()) return {};
  const Kernel& kernel = FindKernel(filter);
  switch (picture.format()) {
    case QImage::Format_Grayscale8:
      return ResampleSamples<std::uint8_t, 1>(picture, size, kernel);
    case QImage::Format_Grayscale16:
      return ResampleSamples<std::uint16_t, 1>(picture, size, kernel);
    case QImage::Format_RGB32:
      return ResampleSamples<std::uint8_t, 4>(picture, size, kernel);
    case QImage::Format_RGBX64:
      return ResampleSamples<std::uint16_t, 4>(picture, size, kernel);
    default:
      break;
  }
  const bool deep = picture.depth() > 32;
  if (!picture.hasAlphaChannel()) {
    return Resample(picture.convertToFormat(deep ? QImage::Format_RGBX64 : QImage::Format_RGB32),
                    size, filter);
  }
  // With the colours multiplied by alpha, transparent pixels weigh nothing.
  const QImage weighed = picture.convertToFormat(deep ? QImage::Format_RGBA64_Premultiplied
                                                      : QImage::Format_ARGB32_Premultiplied);
  QImage out = deep ? ResampleSamples<std::uint16_t, 4>(weighed, size, kernel)
                    : ResampleSamples<std::uint8_t, 4>(weighed, size, kernel);
  return out.convertToFormat(deep ? QImage::Format_RGBA64 : QImage::Format_ARGB32);
}

}  // namespace zqm
