// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace zqm {

/// For what lies in a panel that scrolls: the wheel scrolls the panel, and turns a list, slider or
/// number below it only when that has the focus.
void KeepFromWheel(QWidget& panel);

}  // namespace zqm
