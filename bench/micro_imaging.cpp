// SPDX-License-Identifier: GPL-3.0-or-later
// The road of a thumbnail, its last two steps alone, and what the editor does to whole pictures;
// of those the ones named Peer are the image library's own call for the same work.
#include <benchmark/benchmark.h>

#include <opencv2/imgproc.hpp>

#include "imaging/cv_view.h"
#include "imaging/raster.h"
#include "imaging/resample.h"
#include "imaging/rotate.h"
#include "imaging/selection.h"
#include "imaging/thumbnail.h"
#include "imaging/tonal.h"
#include "imaging/undo_stack.h"

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

// A photo of 24 megapixels in the editor, beside the library's own calls.

const QImage& Photo() {
  static const QImage photo = Drawn({6000, 4000});
  return photo;
}

/// The same work with ours and the peer's result thrown away.
void EditorBench(benchmark::State& state, const std::function<QImage(const QImage&)>& work) {
  const QImage& photo = Photo();
  for (auto _ : state)
    benchmark::DoNotOptimize(work(photo));
}
void PeerBench(benchmark::State& state, const std::function<void(const cv::Mat&, cv::Mat&)>& work) {
  const cv::Mat photo = CvView(Photo());
  for (auto _ : state) {
    cv::Mat out;
    work(photo, out);
    benchmark::DoNotOptimize(out.data);
  }
}

const int kRegistered = [] {
  const auto pair = [](const char* name, std::function<QImage(const QImage&)> ours,
                       std::function<void(const cv::Mat&, cv::Mat&)> peer) {
    const auto add = [](const std::string& full, auto work) {
      benchmark::RegisterBenchmark(full.c_str(), std::move(work))
          ->MeasureProcessCPUTime()
          ->UseRealTime()
          ->Unit(benchmark::kMillisecond);
    };
    add(std::string("Editor/") + name,
        [ours](benchmark::State& state) { EditorBench(state, ours); });
    add(std::string("Peer/") + name, [peer](benchmark::State& state) { PeerBench(state, peer); });
  };
  pair(
      "Rotate7", [](const QImage& photo) { return Rotated(photo, 7, true); },
      [](const cv::Mat& photo, cv::Mat& out) {
        const cv::Mat turn = cv::getRotationMatrix2D({3000, 2000}, 7, 1);
        cv::warpAffine(photo, out, turn, {6443, 4702}, cv::INTER_CUBIC);
      });
  pair(
      "Rotate90", [](const QImage& photo) { return Rotated(photo, 90, true); },
      [](const cv::Mat& photo, cv::Mat& out) {
        cv::rotate(photo, out, cv::ROTATE_90_COUNTERCLOCKWISE);
      });
  pair(
      "FlipSideways", [](const QImage& photo) { return Flipped(photo, FlipDirection::Horizontal); },
      [](const cv::Mat& photo, cv::Mat& out) { cv::flip(photo, out, 1); });
  pair(
      "HalveByArea",
      [](const QImage& photo) {
        return Resample(photo, {2400, 1600}, ResampleFilter::Triangle);
      },
      [](const cv::Mat& photo, cv::Mat& out) {
        cv::resize(photo, out, {2400, 1600}, 0, 0, cv::INTER_AREA);
      });
  pair(
      "Wand",
      [](const QImage& photo) {
        return Selection::MagicWand(photo, {3000, 2000}, 99).IsEmpty() ? QImage() : photo;
      },
      [](const cv::Mat& photo, cv::Mat& out) {
        // The library fills three samples of a pixel.
        cv::cvtColor(photo, out, cv::COLOR_BGRA2BGR);
        cv::Mat mask = cv::Mat::zeros(photo.rows + 2, photo.cols + 2, CV_8UC1);
        cv::floodFill(out, mask, {3000, 2000}, {}, nullptr, cv::Scalar::all(252),
                      cv::Scalar::all(252),
                      4 | cv::FLOODFILL_MASK_ONLY | cv::FLOODFILL_FIXED_RANGE);
      });
  return 0;
}();

/// A step that changes the whole picture, packed and brought back.
void UndoPushAndBack(benchmark::State& state) {
  UndoStack stack;
  stack.SetLimit(2);
  QImage photo = Photo();
  const auto parameters = std::make_shared<const FileParameters>();
  for (auto _ : state) {
    photo.invertPixels();
    stack.Push(UndoStack::List::Undo, {photo, parameters, false});
    stack.WaitForPacking();
    benchmark::DoNotOptimize(
        stack.At(UndoStack::List::Undo, stack.Count(UndoStack::List::Undo) - 1));
  }
}
BENCHMARK(UndoPushAndBack)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zqm

BENCHMARK_MAIN();
