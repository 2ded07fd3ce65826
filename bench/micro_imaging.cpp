// SPDX-License-Identifier: GPL-3.0-or-later
// The road of a thumbnail, and its last two steps alone.
#include <benchmark/benchmark.h>

#include "imaging/raster.h"
#include "imaging/resample.h"
#include "imaging/rotate.h"
#include "imaging/thumbnail.h"
#include "imaging/tonal.h"

namespace zqm {
namespace {

/// Detail of several sizes, so that the entropy decoder has a photo's work.
QImage Drawn(const QSize& size) {
  QImage picture(size, QImage::Format_RGB32);
  unsigned noise = 1;
  for (int y = 0; y < size.height(); ++y) {
    for (int x = 0; x < size.width(); ++x) {
      noise = noise * 1664525U + 1013904223U;
      const int grain = static_cast<int>(noise >> 28);
      picture.setPixel(x, y,
                       qRgb((x / 9 + grain) & 255, (y / 7 + grain) & 255, (x * y >> 12) & 255));
    }
  }
  return picture;
}

void JpegThumbnail(benchmark::State& state) {
  const auto width = static_cast<int>(state.range(0));
  const QByteArray file = EncodeJpeg(Drawn({width, width * 3 / 4}), 90);
  const Codec* codec = SniffCodec(Bytes(file), {});
  for (auto _ : state)
    benchmark::DoNotOptimize(MakeThumbnail(Bytes(file), *codec, {}, {}));
}
BENCHMARK(JpegThumbnail)->Arg(1024)->Arg(3264)->Unit(benchmark::kMillisecond);

void ResampleToThumbnail(benchmark::State& state) {
  const QImage picture = Drawn({408, 306});
  for (auto _ : state)
    benchmark::DoNotOptimize(FitThumbnail(picture));
}
BENCHMARK(ResampleToThumbnail)->Unit(benchmark::kMicrosecond);

/// 12 megapixels to 1600 pixels; the argument is the filter's number.
void ResampleFull(benchmark::State& state) {
  const QImage picture = Drawn({4000, 3000});
  const auto filter = static_cast<ResampleFilter>(state.range(0));
  for (auto _ : state)
    benchmark::DoNotOptimize(Resample(picture, {1600, 1200}, filter));
}
BENCHMARK(ResampleFull)
    ->Arg(1)
    ->Arg(5)
    ->Arg(7)
    ->Arg(11)
    ->Arg(12)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

/// 12 megapixels turned; the argument is the angle in degrees.
void RotateFull(benchmark::State& state) {
  const QImage picture = Drawn({4000, 3000});
  const auto degrees = static_cast<double>(state.range(0));
  for (auto _ : state)
    benchmark::DoNotOptimize(Rotated(picture, degrees, true));
}
BENCHMARK(RotateFull)->Arg(7)->Arg(90)->Arg(180)->UseRealTime()->Unit(benchmark::kMillisecond);

void SharpenFull(benchmark::State& state) {
  const QImage picture = Drawn({4000, 3000});
  for (auto _ : state)
    benchmark::DoNotOptimize(Sharpen(picture, 20));
}
BENCHMARK(SharpenFull)->UseRealTime()->Unit(benchmark::kMillisecond);

void GreyFull(benchmark::State& state) {
  const QImage picture = Drawn({4000, 3000});
  for (auto _ : state)
    benchmark::DoNotOptimize(ConvertToGrey(picture));
}
BENCHMARK(GreyFull)->UseRealTime()->Unit(benchmark::kMillisecond);

void EncodeThumbnail(benchmark::State& state) {
  const QImage picture = Drawn({200, 150});
  for (auto _ : state)
    benchmark::DoNotOptimize(EncodeJpeg(picture, 80));
}
BENCHMARK(EncodeThumbnail)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zqm

BENCHMARK_MAIN();
