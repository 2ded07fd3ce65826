// SPDX-License-Identifier: GPL-3.0-or-later
// Turning a picture by a line that the user draws along something that should be level or upright.
#pragma once

#include <QPointF>
#include <QString>
#include <optional>

#include "shell/result.h"

namespace zqm {

enum class TurnDirection { Clockwise, CounterClockwise };

struct LevelTurn {
  QString angle;  ///< degrees as the user reads them, never negative
  /// Nothing for a line that is level or upright already: what was chosen stays.
  std::optional<TurnDirection> direction;
};

/// By how much the picture has to be turned so that the line from `from` to `to` (picture pixels)
/// ends level, or upright where it is nearer to that.
LevelTurn LevelAngle(QPointF from, QPointF to);

/// Degrees counter-clockwise for a typed angle, or "Invalid rotation angle.".
Result<double> TurnDegrees(const QString& angle, TurnDirection direction);

}  // namespace zqm
