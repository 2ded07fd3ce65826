// SPDX-License-Identifier: GPL-3.0-or-later
// Repeatable randomness for drawn pictures: the same seed gives the same picture on every machine.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace zqm::demo {

inline float Saturate(float x) {
  return std::clamp(x, 0.0F, 1.0F);
}

/// 0 below `from`, 1 above `to`, smooth between; `from` may be the larger one.
inline float Smooth(float from, float to, float x) {
  const float t = Saturate((x - from) / (to - from));
  return t * t * (3 - 2 * t);
}

inline float Lerp(float a, float b, float t) {
  return a + (b - a) * t;
}

inline std::uint32_t Hash(std::uint32_t x) {
  x = (x ^ (x >> 16)) * 0x7FEB352DU;
  x = (x ^ (x >> 15)) * 0x846CA68BU;
  return x ^ (x >> 16);
}

inline std::uint32_t Hash(int x, int y, std::uint32_t seed) {
  return Hash(static_cast<std::uint32_t>(x) * 0x9E3779B1U ^
              (static_cast<std::uint32_t>(y) * 0x85EBCA77U + seed * 0xC2B2AE3DU));
}

/// 0 up to, not including, 1 for a cell of a grid.
inline float Cell(int x, int y, std::uint32_t seed) {
  return static_cast<float>(Hash(x, y, seed) >> 8) * 0x1p-24F;
}

/// A stream of numbers.
class Random {
 public:
  explicit Random(std::uint32_t seed) : state_(seed) {}
  float Next() { return static_cast<float>(Hash(state_++) >> 8) * 0x1p-24F; }
  float Between(float low, float high) { return low + (high - low) * Next(); }
  /// About normal, standard deviation 1.
  float Normal() { return (Next() + Next() + Next() + Next() - 2) * 1.7320508F; }

 private:
  std::uint32_t state_;
};

inline int Floor(float x) {
  const int whole = static_cast<int>(x);
  return whole - (x < static_cast<float>(whole) ? 1 : 0);
}

/// Gradient noise, about -1 to 1, one feature a unit. Source: K. Perlin, "Improving Noise" (2002),
/// with eight directions in the plane.
inline float Noise(float x, float y, std::uint32_t seed) {
  const int ix = Floor(x);
  const int iy = Floor(y);
  const float fx = x - static_cast<float>(ix);
  const float fy = y - static_cast<float>(iy);
  const auto corner = [&](int dx, int dy) {
    static constexpr float kAcross[8] = {1, 0.7071F, 0, -0.7071F, -1, -0.7071F, 0, 0.7071F};
    const std::uint32_t direction = Hash(ix + dx, iy + dy, seed) >> 29;
    return kAcross[direction] * (fx - static_cast<float>(dx)) +
           kAcross[(direction + 6) & 7] * (fy - static_cast<float>(dy));
  };
  const float sx = fx * fx * fx * (fx * (fx * 6 - 15) + 10);
  const float sy = fy * fy * fy * (fy * (fy * 6 - 15) + 10);
  return 1.5F *
         Lerp(Lerp(corner(0, 0), corner(1, 0), sx), Lerp(corner(0, 1), corner(1, 1), sx), sy);
}

/// Noise at octaves, each of twice the frequency; about -1 to 1.
inline float Fbm(float x, float y, int octaves, std::uint32_t seed, float gain = 0.5F) {
  float sum = 0;
  float amplitude = 1;
  float total = 0;
  for (int i = 0; i < octaves; ++i) {
    sum += amplitude * Noise(x, y, seed + static_cast<std::uint32_t>(i));
    total += amplitude;
    amplitude *= gain;
    // Turned between octaves, so that the grid of one doesn't show through the next.
    const float turned = 1.6F * x + 1.2F * y;
    y = 1.6F * y - 1.2F * x;
    x = turned;
  }
  return sum / total;
}

/// Sharp crests with smooth valleys, 0 to 1: each octave is weighted by the one before, so that
/// valleys stay calm. Source: F. K. Musgrave, ridged multifractal terrain (1993).
inline float Ridged(float x, float y, int octaves, std::uint32_t seed, float gain = 0.5F) {
  float sum = 0;
  float amplitude = 0.5F;
  float weight = 1;
  for (int i = 0; i < octaves; ++i) {
    float crest = 1 - std::abs(Noise(x, y, seed + static_cast<std::uint32_t>(i)));
    crest *= crest * weight;
    weight = Saturate(crest * 1.8F);
    sum += crest * amplitude;
    amplitude *= gain;
    const float turned = 1.6F * x + 1.2F * y;
    y = 1.6F * y - 1.2F * x;
    x = turned;
  }
  return sum;
}

}  // namespace zqm::demo
