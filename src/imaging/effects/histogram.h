// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <array>
#include <cstdint>

namespace zqm {

/// How many pixels have each of 256 levels. Transparent pixels don't count.
struct Histogram {
  using Levels = std::array<std::uint32_t, 256>;
  Levels red{}, green{}, blue{};
  Levels luma{};  ///< of ITU-R BT.601
};

Histogram HistogramOf(const QImage& picture);

}  // namespace zqm
