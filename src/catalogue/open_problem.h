// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace zqm {

/// What stands between a file and an open catalogue.
enum class OpenProblem { None, Missing, Damaged, Locked };

}  // namespace zqm
