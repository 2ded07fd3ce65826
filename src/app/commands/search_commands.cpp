// SPDX-License-Identifier: GPL-3.0-or-later
#include <QJsonArray>
#include <map>

#include "app/commands/commands.h"
#include "cataloguing/user_fields.h"
#include "search/categories.h"
#include "search/filter_lists.h"
#include "search/query_builder.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

void PrintList(const QStringList& list, const Console& console) {
  if (console.Json()) return console.Document(QJsonDocument(QJsonArray::fromStringList(list)));
  for (const QString& text : list)
    console.Line(OnOneLine(text));
}

/// A column that can be filtered by, or why not.
Result<Column> FilterColumn(const QString& name) {
  const auto column = ColumnByName(name);
  if (!column) return Failure{u"There is no column \"%1\"."_s.arg(name)};
  if (!HasValueList(*column))
    return Failure{u"The column \"%1\" has no list of values."_s.arg(name)};
  return *column;
}

/// The clause of all `--filter` options: a slot for each column, in the order of their first
/// mention.
Result<QString> AdvancedClause(const QStringList& filters) {
  std::vector<std::pair<Column, QStringList>> slotValues;
  for (const QString& filter : filters) {
    const qsizetype sign = filter.indexOf(u'=');
    if (sign < 0) return Failure{u"A filter reads \"Column=Value\": "_s + filter};
    const auto column = FilterColumn(filter.left(sign));
    if (!column) return Failure{column.Reason()};
    auto slot = std::ranges::find(slotValues, *column, &std::pair<Column, QStringList>::first);
    if (slot == slotValues.end()) slot = slotValues.insert(slot, {*column, {}});
    slot->second.append(filter.mid(sign + 1));
  }
  QStringList clauses;
  for (const auto& [column, values] : slotValues)
    clauses.append(FilterClause(column, values));
  return sql(clauses);
}

/// Names that the list of categories lacks are added to it.
Result<QString> StoredCategories(Catalogue& catalogue, const QString& typed) {
  QStringList names;
  for (const QString& piece : typed.split(u',')) {
    const QString name = CategoryName(piece).trimmed();
    if (name.isEmpty()) continue;
    const QStringList known = catalogue.Categories();
    const auto same = std::ranges::find_if(known, [&name](const QString& category) {
      return category.compare(name, Qt::CaseInsensitive) == 0;
    });
    names.append(same == known.end() ? name : *same);
    if (same != known.end()) continue;
    if (const auto added = AddCategory(catalogue, name); !added) return Failure{added.Reason()};
  }
  names.removeDuplicates();
  return CategoriesText(names);
}

struct GivenValue {
  KeywordField field;
  const std::optional<QString> SetOptions::*text;
  const char16_t* problem;
};
constexpr GivenValue kGivenValues[] = {
    {KeywordField::Notes, &SetOptions::notes, u""},
    {KeywordField::Author, &SetOptions::author, u""},
    {KeywordField::Date, &SetOptions::date, search_text::kInvalidDate},
    {KeywordField::Rating, &SetOptions::rating, u"A rating is a number from 1 to 5."},
    {KeywordField::Tags, &SetOptions::tags, u""},
    {KeywordField::Flag, &SetOptions::flag, u"A flag is Flagged, Rejected or Unflagged."},
};

Result<std::vector<KeywordValue>> ReadValues(const SetOptions& options) {
  std::vector<KeywordValue> values;
  for (const GivenValue& given : kGivenValues) {
    const std::optional<QString>& text = options.*given.text;
    if (!text) continue;
    const auto stored = StoredText(given.field, *text);
    if (!stored) return Failure{QString::fromUtf16(given.problem)};
    values.push_back({given.field, *stored});
  }
  return values;
}

}  // namespace

int RunSearch(const GlobalOptions& global, const SearchOptions& options, const Console& console) {
  const auto advanced = AdvancedClause(options.filters);
  if (!advanced) return console.Refuse(advanced.Reason());
  const WordMode mode = options.any ? WordMode::AnyOfTheseWords : WordMode::AllOfTheseWords;
  const auto statement =
      BuildSQL({options.keywords, mode, options.author, options.from, options.to, options.ratings,
                options.categories, !options.filters.isEmpty(), *advanced});
  if (!statement) return console.Refuse(statement.Reason());
  if (statement->condition.isEmpty()) return console.Refuse(u"Nothing to search for was given."_s);
  if (options.printSql) {
    console.Line(statement->Text());
    return kExitDone;
  }
  const OpenedSession opened = OpenSession(global, false, console);
  if (!opened.session) return opened.exitCode;
  PrintList(opened.session->ActiveCatalogue().Query(statement->Text(), Column::Photo), console);
  return kExitDone;
}

int RunValues(const GlobalOptions& global, const QString& column, const Console& console) {
  const auto known = FilterColumn(column);
  if (!known) return console.Refuse(known.Reason());
  const OpenedSession opened = OpenSession(global, false, console);
  if (!opened.session) return opened.exitCode;
  PrintList(Populate(opened.session->ActiveCatalogue(), *known), console);
  return kExitDone;
}

int RunSet(const GlobalOptions& global, const SetOptions& options, const Console& console) {
  auto values = ReadValues(options);
  if (!values) return console.Refuse(values.Reason());
  if (values->empty() && !options.categories) return console.Refuse(u"No value was given."_s);
  const OpenedSession opened = OpenSession(global, true, console);
  if (!opened.session) return opened.exitCode;
  Catalogue& catalogue = opened.session->ActiveCatalogue();
  FailureList failures;
  Outcome written;
  if (options.categories) {
    const auto stored = StoredCategories(catalogue, *options.categories);
    if (stored) values->push_back({KeywordField::Categories, *stored});
    if (!stored) written = Failure{stored.Reason()};
  }
  QStringList paths;
  for (const QString& file : options.files)
    paths.append(AbsolutePath(file));
  if (written)
    written = AssignKeywords(
        catalogue.Photos(), *values, paths, [](int) {}, &failures);
  if (!written) {
    failures.rows.clear();
    for (const QString& path : paths)
      failures.Add(path, written.Reason());
  }
  return console.Report(static_cast<int>(paths.size() - std::ssize(failures.rows)), "Changed",
                        QString(), failures);
}

int RunCategories(const GlobalOptions& global, CategoryAction action, const QString& name,
                  const Console& console) {
  const OpenedSession opened = OpenSession(global, action != CategoryAction::List, console);
  if (!opened.session) return opened.exitCode;
  Catalogue& catalogue = opened.session->ActiveCatalogue();
  if (action == CategoryAction::List) {
    PrintList(catalogue.Categories(), console);
    return kExitDone;
  }
  if (action == CategoryAction::Delete) {
    if (CategoryInUse(catalogue, name))
      return console.Refuse(QString::fromUtf16(category_text::kInUse));
    const Outcome deleted = catalogue.DeleteCategory(name);
    return deleted ? console.Done(QString()) : console.Refuse(deleted.Reason());
  }
  const auto added = AddCategory(catalogue, name);
  if (!added || added->isEmpty())
    return console.Refuse(added ? u"A category needs a name."_s : added.Reason());
  return console.Done(*added);
}

}  // namespace zqm
