// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCursor>
#include <QString>
#include <optional>

namespace zqm {

/// The cursor of a tool: a cross with a small sign of what it does. Nothing for one that has none
/// of its own.
std::optional<QCursor> ToolCursor(const QString& tool);

}  // namespace zqm
