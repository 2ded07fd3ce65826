// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <array>
#include <span>
#include <utility>
#include <vector>

#include "catalogue/columns.h"

namespace zqm {

/// The scratch record of one photo: a text for each metadata column, as the catalogue stores it.
/// The user's columns, `ID`, `Photo`, `Thumbnail` and `Flag` are never in it.
class MetadataRecord {
 public:
  const QString& Text(Column column) const { return texts_[static_cast<std::size_t>(column)]; }
  void Set(Column column, const QString& text) { texts_[static_cast<std::size_t>(column)] = text; }

  /// Captions and texts of what files tell and no column holds: resolution units and the other GPS
  /// values.
  std::vector<std::pair<QString, QString>> extras;

 private:
  std::array<QString, kColumnCount> texts_;
};

/// The 79 columns of the record, in the order in which they are copied to a row: file facts first.
std::span<const Column> RecordColumns();

}  // namespace zqm
