// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QStringView>
#include <array>
#include <span>

namespace zqm {

/// Weights of a pixel and its neighbours, row by row from the top left, the pixel itself in the
/// middle. The sum of samples times weights is divided by `divisor` (0 counts as 1), then `bias` is
/// added, in levels of 255.
struct FilterMatrix {
  static constexpr int kSide = 5;
  static constexpr std::size_t kMiddle = kSide * kSide / 2;

  std::array<int, kSide* kSide> weights = Only(1);
  int divisor = 1;
  int bias = 0;

  static constexpr std::array<int, kSide * kSide> Only(int middle) {
    std::array<int, kSide * kSide> weights{};
    weights[kMiddle] = middle;
    return weights;
  }
  /// Whether pictures stay as they are.
  bool IsNeutral() const;
  /// The divisor that keeps the brightness: the sum of weights, or 1 where that is not positive.
  int KeepingDivisor() const;
};

struct FilterPreset {
  QStringView name;
  FilterMatrix matrix;
};

/// Well-known matrices, by name; the first one changes nothing.
std::span<const FilterPreset> FilterPresets();

/// The matrix at each pixel; beyond its edges the picture goes on as it ends. `scale` as in
/// PartView: a smaller picture gets the matrix shrunk with it.
QImage UserFilter(const QImage& picture, const FilterMatrix& matrix, double scale = 1);

}  // namespace zqm
