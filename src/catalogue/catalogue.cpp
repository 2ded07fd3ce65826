// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/catalogue.h"

#include <QDir>
#include <algorithm>
#include <array>

#include "catalogue/database.h"
#include "catalogue/like_pattern.h"
#include "catalogue/statements.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/platform.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

struct StoredIntent {
  qint64 id;
  Intent intent;
};

std::vector<StoredIntent> StoredIntents(const Database& database) {
  std::vector<StoredIntent> intents;
  database.Read("SELECT ID, Operation, Source, Target FROM intents ORDER BY ID", {},
                [&](const Row& row) {
                  intents.push_back({row.Number(0), {row.Text(1), row.Text(2), row.Text(3)}});
                });
  return intents;
}

Outcome WriteRows(Database& database, const std::string& sql, std::span<const Value> values) {
  const auto written = database.Write(sql, values);
  if (!written) return Failure{written.Reason()};
  return {};
}

bool HasName(const QStringList& names, const QString& name) {
  return std::ranges::any_of(
      names, [folded = FoldCase(name)](const QString& known) { return FoldCase(known) == folded; });
}

Outcome DeleteRow(PhotoRecordset& photos, const QString& path) {
  if (!photos.LocateRow(path)) return photos.MoveFirst();  // which says why, if it failed
  return photos.DeleteCurrentRow();
}

/// The file of an intent is where it was to go, or gone: its row follows. A row that the target had
/// was of the file that was replaced.
Outcome FollowFile(PhotoRecordset& photos, const Intent& intent) {
  const RowIndex& index = photos.Index();
  if (intent.to.isEmpty()) return DeleteRow(photos, intent.from);
  const auto stale = index.Find(intent.to);
  if (stale && stale != index.Find(intent.from))
    if (Outcome deleted = DeleteRow(photos, index.At(index.PositionOf(*stale)).path); !deleted)
      return deleted;
  if (!index.Find(intent.from)) return {};
  if (!photos.LocateRow(intent.from)) return photos.MoveFirst();
  const QString name = GetFileName(intent.to);
  // What the row says of a name stays as long as the name does.
  const bool sameName = GetFileName(photos.GetField(Column::Photo)) == name;
  photos.SetField(Column::Photo, intent.to);
  if (!sameName) photos.SetField(Column::Filename, name);
  photos.SetField(Column::ParentFolder, GetParentFolderName(intent.to));
  return {};
}

}  // namespace

Catalogue::Catalogue(std::unique_ptr<Database> database)
    : database_(std::move(database)), photos_(std::make_unique<PhotoRecordset>(*database_)) {}
Catalogue::~Catalogue() = default;

std::unique_ptr<Catalogue> Catalogue::Open(const QString& path, OpenProblem& problem,
                                           CatalogueAccess access, QString* reason) {
  OpenFault fault;
  std::unique_ptr<Catalogue> catalogue;
  if (auto database = Database::Open(path, Database::Kind::Catalogue, access, fault)) {
    catalogue.reset(new Catalogue(std::move(database)));
    fault = FaultOfReading([&] {
      catalogue->photos_->Load();
      catalogue->SettleIntents();
    });
  }
  problem = fault.problem;
  if (reason) *reason = fault.reason;
  return problem == OpenProblem::None ? std::move(catalogue) : nullptr;
}

// One that can't be settled now (file locked or read-only) waits for the next opening.
void Catalogue::SettleIntents() {
  if (ReadOnly()) return;
  for (const StoredIntent& stored : StoredIntents(*database_)) {
    const auto& [operation, from, to] = stored.intent;
    if (operation == QStringView(kReplaceOperation)) {
      if (platform::FileStamp(from) == to && !FinishIntent(stored.id)) break;
      continue;
    }
    const bool happened = !FileExists(from) && (to.isEmpty() || FileExists(to));
    if (!(happened ? FollowIntent(stored.id, stored.intent) : FinishIntent(stored.id))) break;
  }
  photos_->CancelRow();
  (void)photos_->MoveFirst();  // nothing is left that could fail to be written
}

std::vector<ReplacedFile> Catalogue::Replaced() const {
  std::vector<ReplacedFile> replaced;
  for (const StoredIntent& stored : StoredIntents(*database_))
    if (stored.intent.operation == QStringView(kReplaceOperation))
      replaced.push_back({stored.id, stored.intent.from});
  return replaced;
}

QString Catalogue::Path() const {
  return database_->Path();
}
bool Catalogue::ReadOnly() const {
  return database_->ReadOnly();
}
PhotoRecordset& Catalogue::Photos() {
  return *photos_;
}
const PhotoRecordset& Catalogue::Photos() const {
  return *photos_;
}

QStringList Catalogue::Categories() const {
  QStringList names;
  database_->Read("SELECT Categories FROM qrycategories", {},
                  [&](const Row& row) { names.append(row.Text(0)); });
  return names;
}

Outcome Catalogue::AddCategory(const QString& name) {
  if (HasName(Categories(), name)) {
    return Failure{
        u"'%1' already exists in the list of categories. Specify a category with a "
        u"different name."_s.arg(name)};
  }
  const std::array<Value, 1> values{name};
  return photos_->CommitGathered([&] {
    return WriteRows(*database_, "INSERT INTO categories (Categories) VALUES (?)", values);
  });
}

Outcome Catalogue::DeleteCategory(const QString& name) {
  if (!HasName(Categories(), name))
    return Failure{u"'%1' is not in the list of categories."_s.arg(name)};
  const std::array<Value, 1> values{name};
  return photos_->CommitGathered([&] {
    return WriteRows(*database_, "DELETE FROM categories WHERE Categories = ? COLLATE FOLDED",
                     values);
  });
}

QStringList Catalogue::Query(const QString& statement, Column bound) const {
  const auto translated = TranslateStatement(statement, bound);
  if (!translated) throw Error(error_number::kDatabase, translated.Reason());
  QStringList texts;
  database_->ReadOnce(*translated, [&](const Row& row) { texts.append(row.Text(0)); });
  return texts;
}

Result<qint64> Catalogue::RecordIntent(const Intent& intent) {
  const std::array<Value, 3> values{intent.operation, intent.from, intent.to};
  qint64 id = 0;
  const Outcome written = photos_->CommitGathered([&] {
    const Outcome inserted = WriteRows(
        *database_, "INSERT INTO intents (Operation, Source, Target) VALUES (?, ?, ?)", values);
    id = database_->LastInsertedId();
    return inserted;
  });
  if (!written) return Failure{written.Reason()};
  return id;
}

Outcome Catalogue::FinishIntent(qint64 id) {
  const std::array<Value, 1> values{id};
  return photos_->CommitGathered(
      [&] { return WriteRows(*database_, "DELETE FROM intents WHERE ID = ?", values); });
}

Outcome Catalogue::FollowIntent(qint64 id, const Intent& intent) {
  Outcome followed = FollowFile(*photos_, intent);
  if (followed) followed = FinishIntent(id);
  if (!followed) photos_->CancelRow();
  return followed;
}

qint64 Catalogue::Bytes() const {
  qint64 bytes = 0;
  database_->ReadOnce("SELECT page_count * page_size FROM pragma_page_count, pragma_page_size",
                      [&](const Row& row) { bytes = row.Number(0); });
  return bytes;
}

QStringList Catalogue::CheckIntegrity() const {
  QStringList faults = database_->CheckIntegrity();
  try {
    const RowIndex& index = photos_->Index();
    int position = 0;
    database_->ReadOnce("SELECT ID, Photo FROM texts NOT INDEXED ORDER BY ID", [&](const Row& row) {
      const QString path = row.Text(1);
      const auto entry = position < index.Count() ? index.At(position) : RowIndex::Entry{};
      if (entry.id != row.Number(0) || entry.path != path)
        faults.append(u"row %1 and the row index disagree"_s.arg(row.Number(0)));
      if (path.isEmpty()) faults.append(u"row %1 has no path"_s.arg(row.Number(0)));
      ++position;
    });
    if (position != index.Count()) faults.append(u"the row index holds rows that are gone"_s);
    database_->ReadOnce(
        "SELECT ID FROM thumbnails WHERE ID NOT IN (SELECT ID FROM texts)",
        [&](const Row& row) { faults.append(u"thumbnail %1 has no row"_s.arg(row.Number(0))); });
  } catch (const Error& fault) {
    faults.append(fault.Description());
  }
  return faults;
}

Outcome Catalogue::CompactTo(const QString& path,
                             const std::function<void(int done, int total)>& progress) {
  if (const Outcome committed = photos_->CommitGathered(); !committed) return committed;
  return database_->CompactTo(path, Database::Kind::Catalogue, progress);
}

Outcome Catalogue::DropSideFiles() {
  if (const Outcome committed = photos_->CommitGathered(); !committed) return committed;
  return database_->DropSideFiles();
}

Outcome CreateCatalogueFile(const QString& path) {
  return Database::Create(path, Database::Kind::Catalogue);
}

QStringList ListCatalogues(const QString& workingFolder) {
  static constexpr QLatin1StringView kSideFiles[] = {"-wal"_L1, "-shm"_L1, "-journal"_L1};
  QStringList names = QDir(workingFolder).entryList({u"*.mdb*"_s}, QDir::Files, QDir::Name);
  names.removeIf([](const QString& name) {
    return name == "CORE.mdb"_L1 ||
           std::ranges::any_of(kSideFiles, [&](auto suffix) { return name.endsWith(suffix); });
  });
  std::ranges::stable_sort(names, {}, [](const QString& name) { return FoldCase(name); });
  return names;
}

}  // namespace zqm
