// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/user_fields.h"

#include <algorithm>
#include <array>

#include "shell/dates.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

using Store = std::optional<QString> (*)(const QString& text);

std::optional<QString> AnyText(const QString& text) {
  return text;
}

/// An empty date clears.
std::optional<QString> DateText(const QString& text) {
  if (text.trimmed().isEmpty()) return QString();
  const auto date = ParseDate(text);
  if (!date) return std::nullopt;
  return date->date().toString(Qt::ISODate);
}

std::optional<QString> RatingText(const QString& text) {
  const bool valid = text.size() == 1 && text.at(0) >= u'1' && text.at(0) <= u'5';
  return valid ? std::optional(text) : std::nullopt;
}

std::optional<QString> FlagText(const QString& text) {
  const bool valid = text == u"Flagged" || text == u"Rejected" || text == u"Unflagged";
  return valid ? std::optional(text) : std::nullopt;
}

struct Rule {
  const char16_t* word;
  Column column;
  Store store;
};

constexpr std::array<Rule, kKeywordFieldCount> kRules = {{
    {u"Notes", Column::Notes, AnyText},
    {u"Author", Column::Author, AnyText},
    {u"Date", Column::Date, DateText},
    {u"Rating", Column::Rating, RatingText},
    {u"Categories", Column::Categories, AnyText},
    {u"Tags", Column::Tags, AnyText},
    {u"Flag", Column::Flag, FlagText},
}};

const Rule& RuleOf(KeywordField field) {
  return kRules[static_cast<std::size_t>(field)];
}

}  // namespace

QString KeywordWord(KeywordField field) {
  return QString::fromUtf16(RuleOf(field).word);
}

Column KeywordColumn(KeywordField field) {
  return RuleOf(field).column;
}

std::optional<QString> StoredText(KeywordField field, const QString& text) {
  return RuleOf(field).store(text);
}

QString ShownText(KeywordField field, const QString& stored) {
  if (field != KeywordField::Date) return stored;
  const QDate date = QDate::fromString(stored, Qt::ISODate);
  return date.isValid() ? ShortDate(date) : stored;
}

QString WhyNotEditable(const Catalogue& catalogue, const QStringList& paths) {
  if (catalogue.ReadOnly()) return QString::fromUtf16(kCatalogueReadOnly);
  const PhotoRecordset& photos = catalogue.Photos();
  const auto isCatalogued = [&photos](const QString& path) { return photos.IsCatalogued(path); };
  if (std::ranges::none_of(paths, isCatalogued))
    return paths.size() == 1
               ? u"This photo is not in the catalogue. Catalogue it to keep notes."_s
               : u"None of these photos is in the catalogue. Catalogue them to keep notes."_s;
  const bool reachable = std::ranges::any_of(
      paths, [&](const QString& path) { return isCatalogued(path) && FileExists(path); });
  return reachable ? QString() : u"The file is missing or offline."_s;
}

Outcome AssignKeywords(PhotoRecordset& photos, const std::vector<KeywordValue>& values,
                       const QStringList& paths, const std::function<void(int done)>& progress,
                       FailureList* notCatalogued) {
  if (const Outcome first = photos.MoveFirst(); !first) return first;
  int done = 0;
  for (const QString& path : paths) {
    if (photos.LocateRow(path)) {
      for (const KeywordValue& value : values)
        photos.SetField(KeywordColumn(value.field), value.stored);
    } else if (notCatalogued != nullptr && !photos.IsCatalogued(path)) {
      notCatalogued->Add(path, QString::fromUtf16(kReasonNotCatalogued));
    }
    progress(++done);
  }
  return photos.MoveFirst();
}

}  // namespace zqm
