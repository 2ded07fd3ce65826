// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <vector>

namespace zqm {

/// One photo that a run could not handle.
struct FailureRow {
  QString File;
  QString Reason;
  bool operator==(const FailureRow&) const = default;
};

/// What a run collects and shows at its end, under the label that the run chose.
struct FailureList {
  QString label;
  std::vector<FailureRow> rows;

  void Add(const QString& file, const QString& reason) { rows.push_back({file, reason}); }
  bool Empty() const { return rows.empty(); }
};

}  // namespace zqm
