// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace zqm {

/// What stands between a file and an open catalogue.
enum class OpenProblem {
  None,
  Missing,
  Damaged,     ///< or of another origin or a newer version
  Locked,      ///< by another program
  Unreadable,  ///< sound as far as can be told: no permission, disk full or failing
};

/// What an open file is for. Who doesn't hold the lock of the home may only read.
enum class CatalogueAccess { Reading, ReadWrite };

}  // namespace zqm
