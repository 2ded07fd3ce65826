// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/town.h"

namespace zqm::demo {
namespace {

constexpr float kFloorHeight = 0.036F;
constexpr float kWindowPitch = 0.030F;

float Fraction(float x) {
  return x - static_cast<float>(Floor(x));
}

}  // namespace

HousePart PartAt(const House& house, float u, float v) {
  HousePart part;
  if (u < house.left || u > house.right || v > house.foot) return part;
  const float x = (u - house.left) / (house.right - house.left);
  if (v < house.eaves) {
    const float up = (house.eaves - v) / house.gable;
    const float slope = house.ridgeAcross ? 1 : 1 - std::abs(2 * x - 1);
    if (up < slope) part = {HousePart::Kind::Roof, 0, 0, x, up};
    // The front of a house under a gable is wall up to a thin edge of tiles.
    if (!house.ridgeAcross && up < slope - 0.10F) part.kind = HousePart::Kind::Wall;
    return part;
  }
  part = {HousePart::Kind::Wall, 0, 0, x, (v - house.eaves) / (house.foot - house.eaves)};
  const int columns = std::max(2, Floor((house.right - house.left) / kWindowPitch + 0.5F));
  const int floors = std::max(1, Floor((house.foot - house.eaves) / kFloorHeight));
  const float across = x * static_cast<float>(columns);
  const float down = part.y * static_cast<float>(floors);
  const float wx = (Fraction(across) - 0.5F) / 0.22F;
  const float wy = (Fraction(down) - 0.52F) / 0.29F;
  const int column = Floor(across);
  const int floor = Floor(down);
  const bool ground = floor == floors - 1;
  if (ground && Cell(column, 99, house.seed) < 0.35F) {
    if (std::abs(wx) < 0.85F && wy > -1) part.kind = HousePart::Kind::Door;
    return part;
  }
  if (std::abs(wx) < 1.28F && std::abs(wy) < 1.16F) part.kind = HousePart::Kind::Frame;
  if (std::abs(wx) < 1 && std::abs(wy) < 1)
    part = {HousePart::Kind::Window, column, floor, 0.5F + 0.5F * wx, 0.5F + 0.5F * wy};
  return part;
}

}  // namespace zqm::demo
