// SPDX-License-Identifier: GPL-3.0-or-later
// A frame in the middle of a transition, on a screen of 1920 x 1080 and on one thread: a row of
// each family and the slowest ones. 33 ms are 30 frames a second. Preparing uses the free threads.
#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>

#include "imaging/transitions.h"

namespace zqm {
namespace {

constexpr QSize kScreen(1920, 1080);

QImage Photo(unsigned noise) {
  QImage picture(kScreen, QImage::Format_RGB32);
  for (int y = 0; y < picture.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < picture.width(); ++x) {
      noise = noise * 1664525U + 1013904223U;
      row[x] = 0xff000000 | noise >> 8;
    }
  }
  return picture;
}

void Frame(benchmark::State& state) {
  cv::setNumThreads(1);
  const Transition& transition = TransitionAt(static_cast<int>(state.range(0)));
  const TransitionFrames frames(transition, kScreen);
  const QImage from = Photo(1);
  const QImage to = Photo(2);
  QImage out;
  for (auto _ : state) {
    frames.Draw(from, to, 0.6, out);
    benchmark::DoNotOptimize(out.constBits());
  }
  state.SetLabel(transition.entry.data());
}

void Prepare(benchmark::State& state) {
  const Transition& transition = TransitionAt(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const TransitionFrames frames(transition, kScreen);
    benchmark::DoNotOptimize(&frames);
  }
  state.SetLabel(transition.entry.data());
}

BENCHMARK(Frame)
    ->Arg(1)
    ->Arg(4)
    ->Arg(5)
    ->Arg(6)
    ->Arg(17)
    ->Arg(25)
    ->Arg(26)
    ->Arg(29)
    ->Arg(31)
    ->Arg(32)
    ->Arg(56)
    ->Arg(60)
    ->Arg(62)
    ->Arg(81)
    ->Arg(91)
    ->Arg(116)
    ->Arg(140)
    ->Arg(141)
    ->Arg(150)
    ->Arg(160)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

BENCHMARK(Prepare)
    ->Arg(5)
    ->Arg(25)
    ->Arg(103)
    ->Arg(116)
    ->Arg(129)
    ->Arg(135)
    ->Arg(139)
    ->Arg(160)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zqm

BENCHMARK_MAIN();
