// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <opencv2/core.hpp>

#include "imaging/pixel_formats.h"

namespace zqm {

inline int CvType(const QImage& picture) {
  return CV_MAKETYPE(IsDeep(picture) ? CV_16U : CV_8U, IsGray(picture) ? 1 : 4);
}

/// The pixels of a picture in a work format (or one with its colours weighed), not copied: the view
/// is good as long as the picture.
inline cv::Mat CvView(QImage& picture) {
  return {picture.height(), picture.width(), CvType(picture), picture.bits(),
          static_cast<std::size_t>(picture.bytesPerLine())};
}

/// The same for reading only, which the library's type can't say.
inline cv::Mat CvView(const QImage& picture) {
  return {picture.height(), picture.width(), CvType(picture),
          const_cast<uchar*>(picture.constBits()),
          static_cast<std::size_t>(picture.bytesPerLine())};
}

}  // namespace zqm
