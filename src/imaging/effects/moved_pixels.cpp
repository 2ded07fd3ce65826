// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effects/moved_pixels.h"

#include <atomic>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "imaging/cv_view.h"
#include "imaging/row_blocks.h"

namespace zqm {
namespace {

constexpr int kTile = 128;  // pixels of a side: the library's own sizes end at 32,767

/// The pixels of [0, count) that interpolation between `low` and `high` reads.
cv::Range Span(double low, double high, int count) {
  constexpr int kReach = 3;
  const int begin = std::clamp(static_cast<int>(std::floor(low)) - kReach, 0, count - 1);
  const int end = std::clamp(static_cast<int>(std::ceil(high)) + kReach, 0, count - 1);
  return {begin, end + 1};
}

void MoveTile(const cv::Mat& from, const cv::Mat& to, const cv::Rect& tile,
              const RowSource& source) {
  cv::Mat1f x(tile.size()), y(tile.size());
  for (int row = 0; row < tile.height; ++row)
    source(tile.x, tile.y + row, tile.width, x[row], y[row]);
  // Numbers that are none, or lie far outside, would overflow what they are turned into.
  cv::patchNaNs(x);
  cv::patchNaNs(y);
  cv::max(cv::min(x, from.cols - 1), 0, x);
  cv::max(cv::min(y, from.rows - 1), 0, y);
  double left, right, top, bottom;
  cv::minMaxLoc(x, &left, &right);
  cv::minMaxLoc(y, &top, &bottom);
  const cv::Range columns = Span(left, right, from.cols), rows = Span(top, bottom, from.rows);
  cv::subtract(x, columns.start, x);
  cv::subtract(y, rows.start, y);
  const cv::Mat part(rows.size(), columns.size(), from.type(),
                     const_cast<uchar*>(from.ptr(rows.start, columns.start)), from.step);
  cv::Mat target = to(tile);
  cv::remap(part, target, x, y, cv::INTER_CUBIC, cv::BORDER_REPLICATE);
}

}  // namespace

QImage MovedPixels(const QImage& picture, const QRect& changed, const RowSource& source) {
  const QImage in = Weighed(InWorkFormat(picture));
  const QRect area = changed & in.rect();
  if (in.isNull() || area.isEmpty()) return Unweighed(in);
  QImage out = in.copy();
  if (out.isNull()) return {};
  const cv::Mat from = CvView(in);
  const cv::Mat to = CvView(out);
  std::atomic<bool> failed = false;
  ForRowBlocks(area.height(), std::int64_t{area.width()} * 32, [&](int begin, int end) {
    try {
      for (int y = area.top() + begin; y < area.top() + end; y += kTile) {
        for (int x = area.left(); x <= area.right(); x += kTile) {
          const cv::Rect tile(x, y, std::min(kTile, area.right() + 1 - x),
                              std::min(kTile, area.top() + end - y));
          MoveTile(from, to, tile, source);
        }
      }
    } catch (const cv::Exception&) {
      failed = true;  // out of memory
    }
  });
  return failed ? QImage() : Unweighed(std::move(out));
}

}  // namespace zqm
