// SPDX-License-Identifier: GPL-3.0-or-later
// From what the search panel holds to the one statement that finds the photos.
#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <span>

#include "shell/result.h"

namespace zqm {

enum class WordMode { AllOfTheseWords, AnyOfTheseWords };

/// The panel's criteria, as the user left them. Empty ones don't narrow.
struct SearchCriteria {
  QString keywords;  ///< a comma separates words, a blank doesn't
  WordMode wordMode = WordMode::AllOfTheseWords;
  QString author;
  QString dateFrom, dateTo;  ///< as typed
  QStringList ratings;       ///< "1" to "5"
  QStringList categories;
  bool advancedSearch = false;
  QString advancedClause;  ///< of `sql`; used only with `advancedSearch`
};

struct SearchStatement {
  QString dateFrom, dateTo;  ///< one that was left empty has taken the other's text
  QString condition;         ///< "" without any criteria
  /// "Select * from qryphoto WHERE …"; "" without any criteria.
  QString Text() const;
};

/// The words of the Keywords box that are searched for: without double quotes and brackets, which
/// would end or widen a pattern, trimmed, none empty. "%" and "_" stay wildcards.
QStringList KeywordWords(const QString& keywords);

/// The text without double quotes and brackets.
QString WithoutPatternMarks(QString text);

/// The statement for the criteria. Fails for a date that can't be read.
Result<SearchStatement> BuildSQL(const SearchCriteria& criteria);

/// A picked date as a text of the date boxes. The locale's short form, unless a `#…#` literal would
/// take it for another day.
QString DateBoxText(QDate date);

/// `parts` with `joiner` between them, in parentheses; "" without any.
QString InParentheses(const QStringList& parts, QStringView joiner);

namespace search_text {
inline constexpr char16_t kInvalidDate[] = u"Invalid date format.";
inline constexpr char16_t kSearching[] = u"Searching...";
inline constexpr char16_t kNoResults[] = u"Search is complete. There are no results to display.";
}  // namespace search_text

}  // namespace zqm
