// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/level_line.h"

#include <cmath>

#include "editor/edit_text.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr double kDegrees = 180 / 3.141592654;
constexpr int kDecimals = 2;

// The later test wins: a line of 0.00 degrees turns clockwise.
TurnDirection DirectionOf(double angle) {
  const bool upright = std::abs(angle) >= 45;
  if (upright) return angle >= 0 ? TurnDirection::CounterClockwise : TurnDirection::Clockwise;
  return angle >= 0 ? TurnDirection::Clockwise : TurnDirection::CounterClockwise;
}

/// From the line's own angle to that of the turn.
double Corrected(double angle) {
  if (angle >= 45) return Round(90 - angle, kDecimals);
  if (angle < -45) return Round(std::abs(angle + 90), kDecimals);
  return std::abs(angle);
}

}  // namespace

LevelTurn LevelAngle(QPointF from, QPointF to) {
  const float dx = static_cast<float>(to.x()) - static_cast<float>(from.x());
  const float dy = static_cast<float>(from.y()) - static_cast<float>(to.y());  // upwards
  if (dx == 0 || dy == 0) return {u"0"_s, std::nullopt};
  const double slope = static_cast<double>(dy / dx);
  const double angle = Round(std::atan(slope) * kDegrees, kDecimals);
  return {PlainText(Corrected(angle)), DirectionOf(angle)};
}

Result<double> TurnDegrees(const QString& angle, TurnDirection direction) {
  const auto degrees = ToNumber(angle);
  if (!degrees) return Failure{QString::fromUtf16(edit_text::kInvalidAngle)};
  return direction == TurnDirection::Clockwise ? -*degrees : *degrees;
}

}  // namespace zqm
