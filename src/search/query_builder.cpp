// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/query_builder.h"

#include <array>

#include "catalogue/columns.h"
#include "catalogue/statements.h"
#include "shell/dates.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// The columns that keywords are looked for in, in the statement's order.
constexpr std::array kKeywordColumns = {
    Column::Tags,
    Column::Notes,
    Column::KeywordsIptc,
    Column::OtherCategories,
    Column::ImageDescription,
    Column::Comments,
    Column::Caption,
};

QString Contains(Column column, const QString& text) {
  return u'[' + ColumnName(column) + u"] LIKE \"%"_s + text + u"%\""_s;
}

/// With "all of these words" all of them must occur in the same column.
QString KeywordClause(const SearchCriteria& criteria) {
  const QStringList words = KeywordWords(criteria.keywords);
  if (words.isEmpty()) return QString();
  const bool all = criteria.wordMode == WordMode::AllOfTheseWords;
  QStringList columns;
  for (const Column column : kKeywordColumns) {
    QStringList tests;
    for (const QString& word : words)
      tests.append(Contains(column, word));
    columns.append(InParentheses(tests, all ? u" AND " : u" OR "));
  }
  return InParentheses(columns, u" OR ");
}

QString RatingClause(const QStringList& ratings) {
  QStringList tests;
  for (const QString& rating : ratings)
    tests.append(u"[Rating] = '"_s + rating + u'\'');
  return InParentheses(tests, u" OR ");
}

/// Every category stands between commas in its column.
QString CategoriesClause(const QStringList& categories) {
  QStringList tests;
  for (const QString& category : categories)
    tests.append(u"[Categories] LIKE \"%,"_s + category + u",%\""_s);
  return InParentheses(tests, u" OR ");
}

QString AuthorClause(const QString& author) {
  const QString text = WithoutPatternMarks(author);
  return text.isEmpty() ? QString() : u'(' + Contains(Column::Author, text) + u')';
}

QString DateClause(const QString& from, const QString& to) {
  if (from.isEmpty()) return QString();
  return u"([Date] Between #"_s + from + u"# AND #"_s + to + u"#)"_s;
}

}  // namespace

QString SearchStatement::Text() const {
  return condition.isEmpty() ? QString() : u"Select * from qryphoto WHERE "_s + condition;
}

QString WithoutPatternMarks(QString text) {
  text.removeIf([](QChar c) { return c == u'"' || c == u'[' || c == u']'; });
  return text;
}

QStringList KeywordWords(const QString& keywords) {
  QStringList words;
  for (const QString& piece : WithoutPatternMarks(keywords).split(u','))
    if (const QString word = piece.trimmed(); !word.isEmpty()) words.append(word);
  return words;
}

QString InParentheses(const QStringList& parts, QStringView joiner) {
  return parts.isEmpty() ? QString() : u'(' + parts.join(joiner) + u')';
}

Result<SearchStatement> BuildSQL(const SearchCriteria& criteria) {
  SearchStatement statement{criteria.dateFrom, criteria.dateTo, {}};
  for (const QString* date : {&statement.dateFrom, &statement.dateTo})
    if (!date->isEmpty() && !IsDate(*date))
      return Failure{QString::fromUtf16(search_text::kInvalidDate)};
  if (statement.dateTo.isEmpty()) statement.dateTo = statement.dateFrom;
  if (statement.dateFrom.isEmpty()) statement.dateFrom = statement.dateTo;

  QStringList clauses{KeywordClause(criteria), RatingClause(criteria.ratings),
                      CategoriesClause(criteria.categories), AuthorClause(criteria.author),
                      DateClause(statement.dateFrom, statement.dateTo)};
  if (criteria.advancedSearch) clauses.append(criteria.advancedClause);
  clauses.removeAll(QString());
  statement.condition = clauses.join(u" AND ");
  return statement;
}

QString DateBoxText(QDate date) {
  const QString iso = date.toString(Qt::ISODate);
  const QString text = ShortDate(date);
  return DateLiteralToIso(text) == iso ? text : iso;
}

}  // namespace zqm
