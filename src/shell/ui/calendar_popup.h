// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <optional>

class QWidget;

namespace zqm {

/// A calendar under a button, open until a day is chosen or the user turns away.
std::optional<QDate> PickDate(QWidget* button, std::optional<QDate> shown);

}  // namespace zqm
