// SPDX-License-Identifier: GPL-3.0-or-later
// The seven values that a user gives to photos: which column each has, and what a row may hold.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

#include "catalogue/catalogue.h"
#include "shell/failure_list.h"

namespace zqm {

enum class KeywordField { Notes, Author, Date, Rating, Categories, Tags, Flag };
inline constexpr int kKeywordFieldCount = 7;

/// "Notes", "Author" and so on: what the program calls the value while it is saved.
QString KeywordWord(KeywordField field);
Column KeywordColumn(KeywordField field);

/// A user's text as the catalogue keeps it, or nothing for one that isn't valid: a rating is "1" to
/// "5", a flag "Flagged", "Rejected" or "Unflagged", a date one that `ParseDate` reads or empty.
std::optional<QString> StoredText(KeywordField field, const QString& text);
/// A stored text as the user sees it.
QString ShownText(KeywordField field, const QString& stored);

/// Why none of these photos' values can be changed, in words for the user; "" if one's can: it is
/// catalogued, its file stands, and the catalogue may be written.
QString WhyNotEditable(const Catalogue& catalogue, const QStringList& paths);
inline constexpr char16_t kCatalogueReadOnly[] = u"The catalogue is read-only.";

/// A value for photos, as the catalogue keeps it.
struct KeywordValue {
  KeywordField field;
  QString stored;
};

/// Gives the values to all catalogued photos among `paths`, in one transaction: on failure no row
/// has changed. `progress` gets the number of photos done. Others end in `notCatalogued`, if given.
Outcome AssignKeywords(PhotoRecordset& photos, const std::vector<KeywordValue>& values,
                       const QStringList& paths, const std::function<void(int done)>& progress,
                       FailureList* notCatalogued = nullptr);

}  // namespace zqm
