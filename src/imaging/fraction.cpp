// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/fraction.h"

#include <cmath>

namespace zqm {
namespace {

constexpr double kMost = 2147483647.0;

}  // namespace

Fraction SimplestFraction(float value) {
  if (!(value > 0) || !std::isfinite(value)) return {0, 1};
  if (value >= static_cast<float>(kMost)) return {static_cast<std::uint32_t>(kMost), 1};
  // All reals that round to `value` lie strictly between its neighbours' midpoints.
  const double exact = value;
  const double low = (exact + static_cast<double>(std::nextafter(value, 0.0F))) / 2;
  const double high = (exact + static_cast<double>(std::nextafter(value, INFINITY))) / 2;
  // The simplest fraction of an interval: take whole parts while both ends share them, then the
  // smallest whole number between; fold the steps up again.
  double topBefore = 0, top = 1, bottomBefore = 1, bottom = 0;
  double from = low, to = high;
  for (int step = 0; step < 64; ++step) {
    const double whole = std::floor(from);
    const bool last = whole + 1 < to;
    const double term = last ? whole + 1 : whole;
    const double nextTop = term * top + topBefore;
    const double nextBottom = term * bottom + bottomBefore;
    if (nextTop > kMost || nextBottom > kMost) break;
    topBefore = top;
    top = nextTop;
    bottomBefore = bottom;
    bottom = nextBottom;
    if (last || from == whole) break;
    const double swapped = 1 / (to - whole);
    to = 1 / (from - whole);
    from = swapped;
  }
  if (bottom == 0) return {static_cast<std::uint32_t>(kMost), 1};
  return {static_cast<std::uint32_t>(top), static_cast<std::uint32_t>(bottom)};
}

}  // namespace zqm
