// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/database.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QUuid>
#include <QtEndian>
#include <array>
#include <cerrno>
#include <optional>
#include <unordered_map>
#include <vector>

#include "catalogue/like_pattern.h"
#include "catalogue/reasons.h"
#include "catalogue/schema.h"
#include "shell/files.h"
#include "shell/platform.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kBusyMilliseconds = 2000;
constexpr size_t kMostKept = 128;  // prepared statements

struct ExpectedFault {
  int code;
  const char16_t* reason;
};
constexpr ExpectedFault kExpectedFaults[] = {
    {SQLITE_FULL, kReasonDiskFull},
    {SQLITE_IOERR_SHMSIZE, kReasonDiskFull},  // no room for the smallest of the side files
    {SQLITE_BUSY, kReasonDatabaseLocked},
    {SQLITE_LOCKED, kReasonDatabaseLocked},
    {SQLITE_READONLY, kReasonDatabaseReadOnly},
    {SQLITE_PERM, kReasonDatabaseReadOnly},
    {SQLITE_IOERR, kReasonDiskFailed},
    {SQLITE_CANTOPEN, kReasonDiskFailed},
    {SQLITE_TOOBIG, u"The text is too long"},
    {SQLITE_NOMEM, u"There is not enough memory"},
};

int PrimaryCode(const SQLite::Exception& fault) {
  return fault.getErrorCode() & 0xFF;
}

// The words for the exact code go before those for its family.
std::optional<QString> ReasonOf(const SQLite::Exception& fault) {
  for (const int code : {fault.getExtendedErrorCode(), PrimaryCode(fault)})
    for (const ExpectedFault& expected : kExpectedFaults)
      if (expected.code == code) return QString::fromUtf16(expected.reason);
  return std::nullopt;
}

// Only what the machine or other programs do leaves a file sound.
OpenFault OpenFaultOf(const SQLite::Exception& fault) {
  const auto reason = ReasonOf(fault);
  if (!reason) return {OpenProblem::Damaged, QString::fromUtf8(fault.what())};
  const bool locked = PrimaryCode(fault) == SQLITE_BUSY || PrimaryCode(fault) == SQLITE_LOCKED;
  return {locked ? OpenProblem::Locked : OpenProblem::Unreadable, *reason};
}

[[noreturn]] void Raise(const SQLite::Exception& fault) {
  throw ReadError(OpenFaultOf(fault));
}

Failure FailureOf(const SQLite::Exception& fault) {
  if (const auto reason = ReasonOf(fault)) return {*reason};
  Raise(fault);
}

std::string_view Utf8Of(sqlite3_value* value) {
  const auto* text = static_cast<const char*>(static_cast<const void*>(sqlite3_value_text(value)));
  if (!text) return {};
  return {text, static_cast<size_t>(sqlite3_value_bytes(value))};
}

struct TextHash : std::hash<std::string_view> {
  using is_transparent = void;
};

// The patterns of a running statement, read once. The engine remembers the first few for each place
// in the statement; it would look through all of them at every comparison, so the rest, of which a
// statement may have thousands, are found here.
constexpr size_t kMostRemembered = 32;
using Patterns = std::unordered_map<std::string, LikePattern, TextHash, std::equal_to<>>;

// `text LIKE pattern` arrives as like(pattern, text).
void Like(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[0]) == SQLITE_NULL ||
      sqlite3_value_type(arguments[1]) == SQLITE_NULL)
    return;
  const std::string_view text = Utf8Of(arguments[1]);
  if (const auto* known = static_cast<const LikePattern*>(sqlite3_get_auxdata(context, 0))) {
    sqlite3_result_int(context, known->MatchesUtf8(text));
    return;
  }
  auto& patterns = *static_cast<Patterns*>(sqlite3_user_data(context));
  const std::string_view pattern = Utf8Of(arguments[0]);
  try {
    auto known = patterns.find(pattern);
    if (known == patterns.end()) {
      const QString characters =
          QString::fromUtf8(pattern.data(), static_cast<qsizetype>(pattern.size()));
      known = patterns.try_emplace(std::string(pattern), characters).first;
    }
    sqlite3_result_int(context, known->second.MatchesUtf8(text));
    if (patterns.size() <= kMostRemembered)
      sqlite3_set_auxdata(context, 0, &known->second, nullptr);
  } catch (const std::bad_alloc&) {  // must not unwind through the engine
    sqlite3_result_error_nomem(context);
  }
}

int Collate(void*, int leftSize, const void* left, int rightSize, const void* right) {
  return CompareFolded({static_cast<const char*>(left), static_cast<size_t>(leftSize)},
                       {static_cast<const char*>(right), static_cast<size_t>(rightSize)});
}

struct Inspection {
  OpenFault fault;
  bool pendingLog = false;  ///< a side file holds rows that the file itself lacks
};

Inspection CannotRead(int number) {
  if (number == ENOENT || number == ENOTDIR) return {{OpenProblem::Missing, {}}};
  if (number == EISDIR || number == ENODEV) return {{OpenProblem::Damaged, {}}};
  return {{OpenProblem::Unreadable, ReasonForErrno(number)}};
}

// Looks at the bytes before the engine does: opening by it might already change a foreign file.
Inspection Inspect(const QString& path, Database::Kind kind) {
  constexpr qsizetype kHeaderSize = 100, kVersionAt = 60, kApplicationAt = 68;
  const Inspection damaged{{OpenProblem::Damaged, {}}};
  platform::Handle file;
  if (const int error = file.OpenToRead(path)) return CannotRead(error);
  QByteArray header(kHeaderSize, Qt::Uninitialized);
  qint64 got = 0;
  if (const int error = file.Read(header.data(), kHeaderSize, got)) return CannotRead(error);
  if (got != kHeaderSize || !header.startsWith("SQLite format 3")) return damaged;
  const auto number = [&](qsizetype at) { return qFromBigEndian<qint32>(header.data() + at); };
  if (number(kApplicationAt) != ApplicationId(kind) ||
      number(kVersionAt) > static_cast<int>(SchemaSteps(kind).size()))
    return damaged;
  return {{}, QFileInfo(path + "-wal"_L1).size() > 0};
}

// The engine needs files of its own beside the catalogue.
bool MayWrite(const QString& path) {
  const QFileInfo folder(GetParentFolderName(path));
  return !ReadOnlyFile(path) && folder.permission(QFile::WriteOwner) && folder.isWritable();
}

std::vector<std::string> TablesOf(SQLite::Database& database) {
  std::vector<std::string> texts;
  SQLite::Statement statement(
      database, "SELECT name || ':' || coalesce(sql, '') FROM sqlite_schema ORDER BY name");
  while (statement.executeStep())
    texts.push_back(statement.getColumn(0).getString());
  return texts;
}

int VersionOf(SQLite::Database& database) {
  return database.execAndGet("PRAGMA user_version").getInt();
}

void Upgrade(SQLite::Database& database, Database::Kind kind) {
  const auto steps = SchemaSteps(kind);
  database.exec("BEGIN IMMEDIATE");
  for (auto version = static_cast<size_t>(VersionOf(database)); version < steps.size(); ++version)
    database.exec(steps[version]());
  database.exec("PRAGMA user_version = " + std::to_string(steps.size()));
  database.exec("PRAGMA application_id = " + std::to_string(ApplicationId(kind)));
  database.exec("COMMIT");
}

// Whether the tables, and views that might hide anything, are word for word those of a new file of
// the same version.
bool TablesAreOurs(SQLite::Database& database, Database::Kind kind) {
  const auto steps = SchemaSteps(kind);
  const auto version = static_cast<size_t>(VersionOf(database));
  if (version == 0 || version > steps.size()) return false;
  SQLite::Database model(":memory:", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
  for (const auto& step : steps.first(version))
    model.exec(step());
  return TablesOf(database) == TablesOf(model);
}

void RemoveWithSideFiles(const QString& path) {
  for (const QLatin1StringView suffix : {""_L1, "-wal"_L1, "-shm"_L1, "-journal"_L1})
    QFile::remove(path + suffix);
}

class ResetAtEnd {
 public:
  explicit ResetAtEnd(SQLite::Statement& statement) : statement_(statement) {}
  ~ResetAtEnd() { statement_.tryReset(); }
  ResetAtEnd(const ResetAtEnd&) = delete;
  ResetAtEnd& operator=(const ResetAtEnd&) = delete;

 private:
  SQLite::Statement& statement_;
};

}  // namespace

struct Database::Connection {
  /// How the engine may treat the file.
  enum class Mode {
    Write,
    Read,       ///< makes and tidies away its side files, but writes no row
    Permitted,  ///< as far as the file's and folder's permissions let it
    Unchanging  ///< nobody writes meanwhile: no side files, which might not be makeable
  };

  Connection(QString filePath, Mode mode, bool pendingLog)
      : path(std::move(filePath)),
        readOnly(mode != Mode::Write),
        handle(AddressOf(path, mode), OpenFlags(mode), kBusyMilliseconds) {
    sqlite3* raw = handle.getHandle();
    sqlite3_db_config(raw, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(raw, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_create_function_v2(raw, "like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, &patterns, Like,
                               nullptr, nullptr, nullptr);
    sqlite3_create_collation_v2(raw, "FOLDED", SQLITE_UTF8, nullptr, Collate, nullptr);
    // A second search over the same rows finds them in memory (KiB).
    handle.exec("PRAGMA cache_size = -65536");
    if (readOnly) {
      handle.exec("PRAGMA query_only = ON");
      // What a killed writer left in the log is taken over by the next writer, not here.
      sqlite3_db_config(raw, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, pendingLog ? 1 : 0, nullptr);
      return;
    }
    handle.exec("PRAGMA journal_mode = WAL");
    handle.exec("PRAGMA synchronous = NORMAL");
    handle.exec("PRAGMA foreign_keys = ON");
  }

  static std::string AddressOf(const QString& path, Mode mode) {
    return QUrl::fromLocalFile(path).toEncoded().toStdString() +
           (mode == Mode::Unchanging ? "?immutable=1" : "");
  }

  // The engine can't tidy away side files of a file that it has opened for reading.
  static int OpenFlags(Mode mode) {
    const bool writes = mode == Mode::Write || mode == Mode::Read;
    return (writes ? SQLite::OPEN_READWRITE : SQLite::OPEN_READONLY) | SQLite::OPEN_URI;
  }

  SQLite::Statement& Prepared(const std::string& sql) {
    if (const auto found = kept.find(sql); found != kept.end()) return found->second;
    if (kept.size() >= kMostKept) kept.clear();
    return kept.try_emplace(sql, handle, sql).first->second;
  }

  QString path;
  bool readOnly;
  Patterns patterns;  // outlives the handle, which points at it
  SQLite::Database handle;
  std::unordered_map<std::string, SQLite::Statement> kept;
};

namespace {

// Texts go in as UTF-8: `store` keeps them as long as the statement runs.
void Bind(SQLite::Statement& statement, std::span<const Value> values,
          std::vector<std::string>& store) {
  store.reserve(values.size());
  int position = 0;
  for (const Value& value : values) {
    ++position;
    if (const auto* number = std::get_if<qint64>(&value)) {
      statement.bind(position, static_cast<int64_t>(*number));
    } else if (const auto* text = std::get_if<QString>(&value)) {
      statement.bindNoCopy(position, store.emplace_back(text->toStdString()));
    } else {
      const auto& bytes = std::get<QByteArray>(value);
      statement.bindNoCopy(position, bytes.constData(), static_cast<int>(bytes.size()));
    }
  }
}

/// Runs a prepared statement to its end, telling `each` its rows, and leaves it ready for the next
/// run.
template <class Each>
void RunBound(SQLite::Statement& statement, std::span<const Value> values, const Each& each) {
  const ResetAtEnd guard(statement);
  std::vector<std::string> store;
  Bind(statement, values, store);
  while (statement.executeStep())
    each(statement);
}

}  // namespace

qint64 Row::Number(int column) const {
  return statement_.getColumn(column).getInt64();
}

std::string_view Row::Utf8(int column) const {
  const SQLite::Column value = statement_.getColumn(column);
  const char* text = value.getText();  // before its size is asked for: this call converts
  return {text, static_cast<size_t>(value.getBytes())};
}

QString Row::Text(int column) const {
  const std::string_view text = Utf8(column);
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QByteArray Row::Bytes(int column) const {
  const SQLite::Column value = statement_.getColumn(column);
  const auto* bytes = static_cast<const char*>(value.getBlob());
  return QByteArray(bytes, value.getBytes());
}

Database::Database(std::unique_ptr<Connection> connection) : connection_(std::move(connection)) {}
Database::~Database() = default;

std::unique_ptr<Database> Database::Open(const QString& path, Kind kind, CatalogueAccess access,
                                         OpenFault& fault) {
  using Mode = Connection::Mode;
  const Inspection found = Inspect(path, kind);
  fault = found.fault;
  if (fault.problem != OpenProblem::None) return nullptr;
  const auto openAs = [&](Mode mode) -> std::unique_ptr<Database> {
    fault = {OpenProblem::Damaged, {}};
    try {
      auto connection = std::make_unique<Connection>(path, mode, found.pendingLog);
      if (!TablesAreOurs(connection->handle, kind)) return nullptr;
      const bool old = VersionOf(connection->handle) < static_cast<int>(SchemaSteps(kind).size());
      if (old && mode == Mode::Write) Upgrade(connection->handle, kind);
      fault = {};
      return std::unique_ptr<Database>(new Database(std::move(connection)));
    } catch (const SQLite::Exception& raised) {
      fault = OpenFaultOf(raised);
      return nullptr;
    }
  };
  const Mode modest = found.pendingLog ? Mode::Permitted : Mode::Unchanging;
  if (!MayWrite(path)) return openAs(modest);
  // Opening for writing already changes a file, so whose it is must be known before.
  if (access == CatalogueAccess::ReadWrite)
    return openAs(Mode::Read) == nullptr ? nullptr : openAs(Mode::Write);
  auto opened = openAs(Mode::Read);
  // A full disk has no room for side files; with nothing in the log the file itself is all.
  if (fault.problem != OpenProblem::Unreadable || QFileInfo(path + "-wal"_L1).size() > 0)
    return opened;
  return openAs(Mode::Unchanging);
}

Outcome Database::Create(const QString& path, Kind kind) {
  constexpr char kPageSize[] = "PRAGMA page_size = 4096";
  const QString folder = GetParentFolderName(path);
  if (QFileInfo::exists(path)) return Failure{u"File already exists"_s};
  if (!FolderExists(folder)) return Failure{QString::fromUtf16(kReasonMissing)};
  if (!QFileInfo(folder).isWritable()) return Failure{QString::fromUtf16(kReasonPermission)};
  const QString unfinished =
      folder + "/.zqm-"_L1 + QUuid::createUuid().toString(QUuid::WithoutBraces);
  Outcome made;
  try {
    SQLite::Database database(QFile::encodeName(unfinished).toStdString(),
                              SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, kBusyMilliseconds);
    database.exec(kPageSize);
    Upgrade(database, kind);
    database.exec("PRAGMA journal_mode = WAL");
  } catch (const SQLite::Exception& fault) {
    made = FailureOf(fault);
  }
  if (made) made = MoveFile(unfinished, path);
  if (!made) RemoveWithSideFiles(unfinished);
  return made;
}

OpenFault FaultOfReading(const std::function<void()>& body) {
  try {
    body();
    return {};
  } catch (const ReadError& error) {
    return error.Fault();
  } catch (const Error& error) {
    if (error.Number() != error_number::kDatabase) throw;
    return {OpenProblem::Damaged, error.Description()};
  }
}

QString Database::Path() const {
  return connection_->path;
}
bool Database::ReadOnly() const {
  return connection_->readOnly;
}

bool Database::InTransaction() const {
  return sqlite3_get_autocommit(connection_->handle.getHandle()) == 0;
}

Outcome Database::Begin() {
  const auto begun = Write("BEGIN IMMEDIATE");
  if (!begun) return Failure{begun.Reason()};
  return {};
}

Outcome Database::Commit() {
  const auto committed = Write("COMMIT");
  if (committed) return {};
  Rollback();
  return Failure{committed.Reason()};
}

void Database::Rollback() {
  // Some faults have ended the transaction already; a rollback itself has nothing to fail for.
  if (InTransaction()) connection_->handle.tryExec("ROLLBACK");
}

Result<int> Database::Write(const std::string& sql, std::span<const Value> values) {
  if (ReadOnly()) return Failure{QString::fromUtf16(kReasonDatabaseReadOnly)};
  try {
    RunBound(connection_->Prepared(sql), values, [](SQLite::Statement&) {});
    return connection_->handle.getChanges();
  } catch (const SQLite::Exception& fault) {
    return FailureOf(fault);
  }
}

qint64 Database::LastInsertedId() const {
  return connection_->handle.getLastInsertRowid();
}

void Database::Read(const std::string& sql, std::span<const Value> values,
                    const std::function<void(const Row&)>& each) const {
  try {
    RunBound(connection_->Prepared(sql), values,
             [&each](SQLite::Statement& row) { each(Row(row)); });
  } catch (const SQLite::Exception& fault) {
    Raise(fault);
  }
}

void Database::ReadOnce(const std::string& sql, const std::function<void(const Row&)>& each) const {
  connection_->patterns.clear();
  try {
    SQLite::Statement statement(connection_->handle, sql);
    while (statement.executeStep())
      each(Row(statement));
  } catch (const SQLite::Exception& fault) {
    Raise(fault);
  }
}

QStringList Database::CheckIntegrity() const {
  QStringList faults;
  const auto collect = [&](const Row& row) {
    if (row.Utf8(0) != "ok") faults.append(row.Text(0));
  };
  try {
    ReadOnce("PRAGMA integrity_check", collect);
    ReadOnce("SELECT 'row without its owner in ' || \"table\" FROM pragma_foreign_key_check",
             collect);
  } catch (const Error& fault) {
    faults.append(fault.Description());
  }
  return faults;
}

Outcome Database::CopyRows(const std::function<void(int done, int total)>& progress) {
  constexpr int kRowsAtOnce = 64;
  std::vector<std::string> tables;
  Read(
      "SELECT name FROM main.sqlite_schema WHERE type = 'table' AND substr(name, 1, 7) <> 'sqlite_'"
      " ORDER BY rowid",
      {}, [&](const Row& row) { tables.emplace_back(row.Utf8(0)); });
  const auto numberOf = [this](const std::string& sql) {
    qint64 number = 0;
    Read(sql, {}, [&](const Row& row) { number = row.Number(0); });
    return number;
  };
  qint64 total = 0, done = 0;
  for (const std::string& table : tables)
    total += numberOf("SELECT count(*) FROM main." + table);
  // The tables stand in the order in which one refers to the other.
  for (const std::string& table : tables) {
    const std::string copy = "INSERT INTO compact." + table + " SELECT * FROM main." + table +
                             " WHERE rowid > ? ORDER BY rowid LIMIT " + std::to_string(kRowsAtOnce);
    for (qint64 last = 0;;) {
      const std::array<Value, 1> from{last};
      const auto copied = Write(copy, from);
      if (!copied) return Failure{copied.Reason()};
      if (*copied == 0) break;
      done += *copied;
      last = numberOf("SELECT max(rowid) FROM compact." + table);
      if (progress) progress(static_cast<int>(done), static_cast<int>(total));
    }
  }
  // Numbers of rows that are gone are not used again either.
  for (const char* sql : {"DELETE FROM compact.sqlite_sequence",
                          "INSERT INTO compact.sqlite_sequence SELECT * FROM main.sqlite_sequence"})
    if (const auto written = Write(sql); !written) return Failure{written.Reason()};
  return {};
}

Outcome Database::CompactTo(const QString& path, Kind kind,
                            const std::function<void(int done, int total)>& progress) {
  if (ReadOnly()) return Failure{QString::fromUtf16(kReasonDatabaseReadOnly)};
  if (Outcome made = Create(path, kind); !made) return made;
  const std::array<Value, 1> target{path};
  const auto attached = Write("ATTACH DATABASE ? AS compact", target);
  Outcome copied = attached ? Outcome() : Failure{attached.Reason()};
  // The file is new: nothing of it needs a log.
  if (copied) copied = WithoutLog("compact");
  if (copied) copied = Begin();
  if (copied) copied = CopyRows(progress);
  if (copied) copied = Commit();
  Rollback();
  // Statements kept prepared hold on to the file.
  connection_->kept.clear();
  connection_->handle.tryExec("DETACH DATABASE compact");
  if (!copied) RemoveWithSideFiles(path);
  return copied;
}

Outcome Database::WithoutLog(const std::string& schema) {
  const auto switched = Write("PRAGMA " + schema + ".journal_mode = DELETE");
  if (!switched) return Failure{switched.Reason()};
  return {};
}

Outcome Database::DropSideFiles() {
  connection_->kept.clear();
  if (Outcome dropped = WithoutLog("main"); !dropped) return dropped;
  if (QFileInfo::exists(Path() + "-wal"_L1))
    return Failure{QString::fromUtf16(kReasonDatabaseLocked)};
  return {};
}

std::string QuotedText(QStringView text) {
  std::string quoted = "'";
  for (const char c : text.toUtf8())
    quoted.append(c == '\'' ? 2u : 1u, c);
  return quoted + "'";
}

std::string QuotedName(QStringView name) {
  return (u'"' + name.toString() + u'"').toStdString();
}

}  // namespace zqm
