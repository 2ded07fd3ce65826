// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <optional>

namespace zqm {

/// What a cast of colour is taken away by, or put in by.
struct ColourBalance {
  std::optional<QColor> neutral;  ///< a colour of the picture that should have been gray
  double temperature = 0;         ///< -100, colder and bluer, to 100, warmer and redder
  double tint = 0;                ///< -100, greener, to 100, towards magenta

  bool IsNeutral() const { return !neutral && temperature == 0 && tint == 0; }
};

/// Channels scaled, so that grays keep their luma. Nothing to do: the pixels as they were. A gray
/// picture comes out in colours, but where there is nothing to do or its gray was the neutral one.
QImage BalanceColours(const QImage& picture, const ColourBalance& balance);

/// The balance without a neutral colour.
QImage TemperatureTint(const QImage& picture, double temperature, double tint);

/// The mean of the pixels about one, `radius` to each side, transparent ones left out; no colour
/// where the picture has none there.
std::optional<QColor> MeanAround(const QImage& picture, const QPoint& pixel, int radius);

}  // namespace zqm
