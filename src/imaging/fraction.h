// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace zqm {

struct Fraction {
  std::uint32_t top = 0;
  std::uint32_t bottom = 1;
};

/// The fraction with the smallest denominator whose 32-bit quotient is `value` (0 or more): 0.004f
/// is 1/250. What no such fraction reaches comes as the nearest with numbers up to 2^31 - 1;
/// negative values, NaN and infinities give 0/1. Source: the walk down the Stern-Brocot tree.
Fraction SimplestFraction(float value);

}  // namespace zqm
