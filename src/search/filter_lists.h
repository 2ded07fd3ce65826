// SPDX-License-Identifier: GPL-3.0-or-later
// Advanced Search: a slot is set to one column, lists the values that the catalogue holds in it,
// and narrows the search to those that are ticked.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <span>

#include "catalogue/catalogue.h"
#include "catalogue/columns.h"

namespace zqm {

/// Whether the column has a value list: all texts have, `ID`, `Date` and `Thumbnail` are none.
bool HasValueList(Column column);

/// The different values of a column, letter case ignored, in the order of the column's kind:
/// numbers by their value under the unit, exposures from the longest to the shortest, texts by the
/// alphabet. What should be a number and can't be read comes last. The texts are as stored.
QStringList Populate(const Catalogue& catalogue, Column column);

/// The clause of a slot: any of the ticked values, exactly as the catalogue holds it. "" without
/// any. Double quotes are dropped, so that a value with one finds nothing.
QString FilterClause(Column column, const QStringList& ticked);

/// The clauses of all slots as one: slots narrow each other. Empty ones don't count.
QString sql(const QStringList& slotClauses);

/// An entry of the Filter menu; `name` is the action's. No column means "None".
struct FilterEntry {
  const char* name;
  std::optional<Column> column;
};

/// A submenu, or with a `part` one in it; without a caption its entries stand in the menu itself.
struct FilterGroup {
  const char* caption;
  const char* part;
  std::span<const FilterEntry> entries;
};

std::span<const FilterGroup> FilterMenu();

/// What an unused slot is headed with.
inline constexpr char16_t kNoFilter[] = u"None";

}  // namespace zqm
