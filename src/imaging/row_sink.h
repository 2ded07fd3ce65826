// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QSize>
#include <cstdint>
#include <memory>
#include <vector>

#include "imaging/progress.h"
#include "shell/result.h"

namespace zqm {

/// Layout of the rows that a decoder hands over; samples in native byte order. Alpha is not
/// multiplied in. `Rgb32` is the layout of `QImage::Format_RGB32`.
enum class RowFormat { Gray8, Gray16, Rgb24, Rgb32, Rgba32, Rgb48, Rgba64 };

/// No picture is wider or higher; a row then takes at most 8 MB.
inline constexpr int kMostSide = 1 << 20;

/// Takes a picture row by row, in any order, each row once, and keeps only what is needed: the
/// whole picture, or, for a box, the picture averaged down by a whole factor to no less than its
/// fit into the box, 8 bits a sample. So a thumbnail of a huge picture costs one row and the small
/// result. The rows are a pass that tells the progress sink of the thread that makes it.
class RowSink {
 public:
  /// Fails on empty sizes, above `kMostPixels` or `kMostSide`, or when the result would take over
  /// 800 MB.
  static Result<RowSink> Create(int width, int height, RowFormat format, const QSize& box);

  int Width() const { return width_; }
  int Height() const { return height_; }

  /// `row` holds Width() pixels of the format; `y` from 0 to Height() - 1 (others are ignored).
  void PutRow(int y, const void* row);

  /// Whether any row came.
  bool HasRows() const { return rows_ > 0; }
  /// Whether all came.
  bool IsWhole() const { return rows_ >= height_; }

  /// The picture; rows never put are black (transparent where there is alpha). Once.
  QImage Take();

 private:
  RowSink() = default;

  int width_ = 0, height_ = 0;
  RowFormat format_ = RowFormat::Rgb24;
  int factor_ = 1;
  int rows_ = 0;
  std::unique_ptr<ProgressPass> pass_;
  bool deep_ = false;                  // whether the picture keeps 16 bits a sample
  QImage image_;                       // the result; filled at once for factor 1
  std::vector<std::uint8_t> pixels_;   // one row brought to RGBA, 8 bits, before it is summed
  std::vector<std::uint32_t> sums_;    // factor > 1: four sums an output pixel
  std::vector<std::uint16_t> rowsIn_;  // how many source rows each output row got
};

/// The size of a picture fitted into a box, aspect kept, never enlarged, at least 1 x 1.
QSize FitInto(const QSize& picture, const QSize& box);

}  // namespace zqm
