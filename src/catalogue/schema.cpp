// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/schema.h"

#include <array>

#include "catalogue/core_database.h"

namespace zqm {
namespace {

std::string Name(Column column) {
  return QuotedName(ColumnName(column));
}

// Texts and thumbnails lie apart, so that a search reads no picture. IDs are never used twice: row
// order is ID order, and new rows come last.
std::string FirstCatalogue() {
  std::string table = "CREATE TABLE texts (ID INTEGER PRIMARY KEY AUTOINCREMENT";
  for (const Column column : TextColumns())
    table += ", " + Name(column) + " TEXT NOT NULL DEFAULT ''";

  std::string view = "CREATE VIEW qryphoto AS SELECT ";
  for (const ColumnInfo& info : Columns()) {
    if (info.column != Column::ID) view += ", ";
    view += info.column == Column::Thumbnail
                ? "(SELECT thumbnails.Thumbnail FROM thumbnails WHERE thumbnails.ID = texts.ID) AS "
                  "Thumbnail"
                : "texts." + Name(info.column) + " AS " + Name(info.column);
  }
  return table + ");" + view +
         " FROM texts;"
         // Holds all that the row index needs: opening reads this and not the rows.
         "CREATE INDEX texts_photo ON texts(Photo);"
         "CREATE TABLE thumbnails (ID INTEGER PRIMARY KEY REFERENCES texts(ID) ON DELETE CASCADE,"
         " Thumbnail BLOB NOT NULL);"
         "CREATE TABLE categories (ID INTEGER PRIMARY KEY AUTOINCREMENT, Categories TEXT NOT NULL);"
         "CREATE VIEW qrycategories AS SELECT ID, Categories FROM categories ORDER BY ID;"
         "CREATE TABLE intents (ID INTEGER PRIMARY KEY, Operation TEXT NOT NULL,"
         " Source TEXT NOT NULL, Target TEXT NOT NULL);";
}

std::string FirstCore() {
  const Settings defaults;
  std::string table = "CREATE TABLE settings (ID INTEGER PRIMARY KEY CHECK (ID = 1)";
  std::string names, values;
  for (const SettingsField& field : SettingsFields()) {
    table += ", " + std::string(field.name) + " TEXT NOT NULL";
    names += ", " + std::string(field.name);
    values += ", " + QuotedText(defaults.*field.member);
  }
  return table + ");INSERT INTO settings (ID" + names + ") VALUES (1" + values +
         ");CREATE VIEW qrysettings AS SELECT " + names.substr(2) +
         " FROM settings;"
         "CREATE TABLE editors (ID INTEGER PRIMARY KEY AUTOINCREMENT, EditorName TEXT NOT NULL,"
         " EditorPath TEXT NOT NULL);"
         "CREATE VIEW qryeditors AS SELECT EditorName, EditorPath FROM editors ORDER BY ID;";
}

constexpr std::array<SchemaStep, 1> kCatalogueSteps{FirstCatalogue};
constexpr std::array<SchemaStep, 1> kCoreSteps{FirstCore};

constexpr int kTextColumnCount = kColumnCount - 2;

constexpr std::array<Column, kTextColumnCount> MakeTextColumns() {
  std::array<Column, kTextColumnCount> columns{};
  size_t next = 0;
  for (int i = 0; i < kColumnCount; ++i) {
    const auto column = static_cast<Column>(i);
    if (column != Column::ID && column != Column::Thumbnail) columns[next++] = column;
  }
  return columns;
}
constexpr auto kTextColumns = MakeTextColumns();

}  // namespace

std::span<const SchemaStep> SchemaSteps(Database::Kind kind) {
  return kind == Database::Kind::Core ? std::span<const SchemaStep>(kCoreSteps)
                                      : std::span<const SchemaStep>(kCatalogueSteps);
}

int ApplicationId(Database::Kind kind) {
  constexpr int kCatalogueFile = 0x5A514D01;  // "ZQM" 1
  constexpr int kCoreFile = 0x5A514D02;       // "ZQM" 2
  return kind == Database::Kind::Core ? kCoreFile : kCatalogueFile;
}

std::span<const Column> TextColumns() {
  return kTextColumns;
}

}  // namespace zqm
