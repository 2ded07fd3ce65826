// SPDX-License-Identifier: GPL-3.0-or-later
// Effects and changes of tone at 24 megapixels, the most common ones beside the library's own call
// for the same work.
#include <benchmark/benchmark.h>

#include <opencv2/imgproc.hpp>

#include "imaging/cv_view.h"
#include "imaging/effects/blur.h"
#include "imaging/effects/bump_map.h"
#include "imaging/effects/colour_balance.h"
#include "imaging/effects/lens.h"
#include "imaging/effects/morph.h"
#include "imaging/effects/noise.h"
#include "imaging/effects/user_filter.h"
#include "imaging/effects/wave.h"
#include "imaging/tonal.h"

namespace zqm {
namespace {

/// Shapes and grain, as a photo has.
const QImage& Photo() {
  static const QImage photo = [] {
    QImage picture(6000, 4000, QImage::Format_RGB32);
    unsigned noise = 1;
    for (int y = 0; y < picture.height(); ++y) {
      auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
      for (int x = 0; x < picture.width(); ++x) {
        noise = noise * 1664525U + 1013904223U;
        const int grain = static_cast<int>(noise >> 28);
        row[x] = qRgb((x / 9 + grain) & 255, (y / 7 + grain) & 255, (x * (y / 64) >> 12) & 255);
      }
    }
    return picture;
  }();
  return photo;
}

using Work = QImage (*)(const QImage&);

void Ours(benchmark::State& state, Work work) {
  const QImage& photo = Photo();
  for (auto _ : state)
    benchmark::DoNotOptimize(work(photo));
}

using LibraryWork = void (*)(const cv::Mat& from, cv::Mat& to);

void Library(benchmark::State& state, LibraryWork work) {
  const cv::Mat photo = CvView(Photo());
  for (auto _ : state) {
    cv::Mat out;  // a new picture each time, as ours is
    work(photo, out);
    benchmark::DoNotOptimize(out.data);
  }
}

#define MEASURED UseRealTime()->Unit(benchmark::kMillisecond)

BENCHMARK_CAPTURE(Ours, Brightness, [](const QImage& p) {
  return AdjustBrightnessContrastSaturation(p, 10, 20, 0);
})->MEASURED;
BENCHMARK_CAPTURE(Library, Brightness, [](const cv::Mat& from, cv::Mat& to) {
  from.convertTo(to, -1, 1.25, -6);
})->MEASURED;

BENCHMARK_CAPTURE(Ours, Saturation, [](const QImage& p) {
  return AdjustSaturation(p, 30);
})->MEASURED;
BENCHMARK_CAPTURE(Library, Saturation, [](const cv::Mat& from, cv::Mat& to) {
  // Luma times (1 - s) plus the sample times s.
  constexpr float s = 1.3F;
  const cv::Matx44f mix(0.114F * (1 - s) + s, 0.587F * (1 - s), 0.299F * (1 - s), 0,  //
                        0.114F * (1 - s), 0.587F * (1 - s) + s, 0.299F * (1 - s), 0,  //
                        0.114F * (1 - s), 0.587F * (1 - s), 0.299F * (1 - s) + s, 0,  //
                        0, 0, 0, 1);
  cv::transform(from, to, mix);
})->MEASURED;

BENCHMARK_CAPTURE(Ours, Sharpen, [](const QImage& p) { return Sharpen(p, 20, 3); })->MEASURED;
BENCHMARK_CAPTURE(Library, Sharpen, [](const cv::Mat& from, cv::Mat& to) {
  cv::Mat mean;
  cv::blur(from, mean, {3, 3}, {-1, -1}, cv::BORDER_REPLICATE);
  cv::addWeighted(from, 1.6, mean, -0.6, 0, to);
})->MEASURED;

BENCHMARK_CAPTURE(Ours, FineBlur, [](const QImage& p) { return Blur(p, 3); })->MEASURED;
BENCHMARK_CAPTURE(Library, FineBlur, [](const cv::Mat& from, cv::Mat& to) {
  cv::GaussianBlur(from, to, {11, 11}, 1.5, 1.5, cv::BORDER_REPLICATE);
})->MEASURED;

BENCHMARK_CAPTURE(Ours, WideBlur, [](const QImage& p) { return Blur(p, 20); })->MEASURED;
BENCHMARK_CAPTURE(Library, WideBlur, [](const cv::Mat& from, cv::Mat& to) {
  cv::GaussianBlur(from, to, {61, 61}, 10, 10, cv::BORDER_REPLICATE);
})->MEASURED;

BENCHMARK_CAPTURE(Ours, UserFilter, [](const QImage& p) {
  return UserFilter(p, FilterPresets()[2].matrix);
})->MEASURED;
BENCHMARK_CAPTURE(Library, UserFilter, [](const cv::Mat& from, cv::Mat& to) {
  const auto& weights = FilterPresets()[2].matrix.weights;
  cv::Mat1f kernel(5, 5);
  std::transform(weights.begin(), weights.end(), kernel.begin(),
                 [](int weight) { return static_cast<float>(weight) / 256; });
  cv::filter2D(from, to, -1, kernel, {-1, -1}, 0, cv::BORDER_REPLICATE);
})->MEASURED;

BENCHMARK_CAPTURE(Ours, Noise, [](const QImage& p) { return ReduceNoise(p, 40, 40); })->MEASURED;
BENCHMARK_CAPTURE(Library, Noise, [](const cv::Mat& from, cv::Mat& to) {
  cv::Mat colours;
  cv::cvtColor(from, colours, cv::COLOR_BGRA2BGR);
  cv::bilateralFilter(colours, to, 5, 20, 3, cv::BORDER_REPLICATE);
})->MEASURED;

BENCHMARK_CAPTURE(Ours, Dilate, [](const QImage& p) {
  return Morph(p, {MorphOperation::Dilate, 6, true});
})->MEASURED;
BENCHMARK_CAPTURE(Library, Dilate, [](const cv::Mat& from, cv::Mat& to) {
  cv::dilate(from, to, cv::getStructuringElement(cv::MORPH_ELLIPSE, {13, 13}), {-1, -1}, 1,
             cv::BORDER_REPLICATE);
})->MEASURED;

BENCHMARK_CAPTURE(Ours, Temperature, [](const QImage& p) {
  return TemperatureTint(p, 30, 10);
})->MEASURED;
BENCHMARK_CAPTURE(Ours, BumpMap, [](const QImage& p) {
  return BumpMap(p, {50, 135, 45, 2});
})->MEASURED;
BENCHMARK_CAPTURE(Ours, Lens, [](const QImage& p) {
  return Lens(p, {{0.5, 0.5}, 90, 60});
})->MEASURED;
BENCHMARK_CAPTURE(Ours, Wave, [](const QImage& p) {
  return Wave(p, {40, 500, 0, WaveDirection::Both});
})->MEASURED;

}  // namespace
}  // namespace zqm

BENCHMARK_MAIN();
