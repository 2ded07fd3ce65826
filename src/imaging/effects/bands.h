// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <functional>
#include <opencv2/core.hpp>

namespace zqm {

/// From some rows of a picture to as many filtered ones, of the same type.
using BandFilter = std::function<void(const cv::Mat& rows, cv::Mat& filtered)>;

/// Filters a picture in a work format (or one with its colours weighed) in bands of rows, on the
/// free threads. A band gets `halo` rows above and below with it where the picture has them, which
/// is as far as the filter looks, so that the result doesn't depend on the bands. Alpha, or
/// the byte in its place, stays as it was. Null when there is no memory.
QImage FilterInBands(const QImage& in, int halo, const BandFilter& filter);

/// The same for any picture: in a work format, with colours weighed by alpha while they are mixed.
QImage FilterColours(const QImage& picture, int halo, const BandFilter& filter);

}  // namespace zqm
