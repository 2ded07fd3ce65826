// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effects/bands.h"

#include <QThread>
#include <atomic>

#include "imaging/cv_view.h"
#include "imaging/row_blocks.h"

namespace zqm {
namespace {

/// Rows that stay in the processor's cache from one step of a filter to the next, and that are
/// still many more than the halo, which is filtered twice, as long as there is a band for each
/// thread.
int BandRows(const QImage& picture, int halo) {
  constexpr qsizetype kCached = 1024 * 1024;
  constexpr int kHalos = 24, kFewestBands = 4;
  const auto rows = static_cast<int>(kCached / std::max<qsizetype>(1, picture.bytesPerLine()));
  const int bands = std::max(kFewestBands, QThread::idealThreadCount());
  return std::max({1, rows, std::min(kHalos * halo, picture.height() / bands + 1)});
}

void KeepAlpha(const cv::Mat& before, cv::Mat& after) {
  constexpr int kAlpha = 3;
  const int pairs[] = {kAlpha, kAlpha};
  cv::mixChannels(&before, 1, &after, 1, pairs, 1);
}

}  // namespace

QImage FilterInBands(const QImage& in, int halo, const BandFilter& filter) {
  QImage out = BlankLike(in);
  if (out.isNull()) return {};
  const cv::Mat from = CvView(in);
  const cv::Mat to = CvView(out);
  const int bandRows = BandRows(in, halo);
  const auto filterBand = [&](int begin, int end) {
    const int first = std::max(0, begin - halo);
    const int last = std::min(from.rows, end + halo);
    // A matrix of its own: of a part of a larger one some filters would read beyond.
    const cv::Mat rows(last - first, from.cols, from.type(), const_cast<uchar*>(from.ptr(first)),
                       from.step);
    cv::Mat filtered;
    filter(rows, filtered);
    cv::Mat target = to.rowRange(begin, end);
    filtered.rowRange(begin - first, end - first).copyTo(target);
    if (!IsGray(in)) KeepAlpha(from.rowRange(begin, end), target);
  };
  std::atomic<bool> failed = false;
  const int bands = (from.rows + bandRows - 1) / bandRows;
  const std::int64_t bandCost = std::int64_t{from.cols} * bandRows * 16;
  ForRowBlocks(bands, bandCost, [&](int begin, int end) {
    try {
      for (int band = begin; band < end && !failed; ++band)
        filterBand(band * bandRows, std::min(from.rows, (band + 1) * bandRows));
    } catch (const cv::Exception&) {
      failed = true;  // out of memory
    } catch (const std::bad_alloc&) {
      failed = true;
    }
  });
  return failed ? QImage() : out;
}

QImage FilterColours(const QImage& picture, int halo, const BandFilter& filter) {
  const QImage weighed = Weighed(InWorkFormat(picture));
  return weighed.isNull() ? QImage() : Unweighed(FilterInBands(weighed, halo, filter));
}

}  // namespace zqm
