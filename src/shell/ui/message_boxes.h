// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace zqm {

/// From now on messages and pickers of the whole program are windows.
void UseMessageBoxes();

}  // namespace zqm
