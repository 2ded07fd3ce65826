// SPDX-License-Identifier: GPL-3.0-or-later
// The engine behind the catalogue files. No other file knows which one it is.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "catalogue/open_problem.h"
#include "shell/error.h"
#include "shell/result.h"

namespace SQLite {
class Statement;
}

namespace zqm {

/// A value that goes into a statement.
using Value = std::variant<qint64, QString, QByteArray>;

/// One row of a running read: valid inside the callback that receives it. Columns count from 0.
class Row {
 public:
  qint64 Number(int column) const;
  QString Text(int column) const;
  QByteArray Bytes(int column) const;
  std::string_view Utf8(int column) const;

 private:
  friend class Database;
  explicit Row(SQLite::Statement& statement) : statement_(statement) {}
  SQLite::Statement& statement_;
};

/// Why a file could not be opened.
struct OpenFault {
  OpenProblem problem = OpenProblem::None;
  QString reason;  ///< in words for a user when it is `Unreadable`
};

/// A read that failed: no call of a running program can go on without its catalogue.
class ReadError : public Error {
 public:
  explicit ReadError(OpenFault fault)
      : Error(error_number::kDatabase, fault.reason), fault_(std::move(fault)) {}
  const OpenFault& Fault() const { return fault_; }

 private:
  OpenFault fault_;
};

/// What the reads in `body` that belong to the opening of a file met with.
OpenFault FaultOfReading(const std::function<void()>& body);

/// One database file and its only connection.
///
/// Errors: what the machine or other programs do (disk full or failing, file locked or read-only)
/// is a `Failure` of the writing call; a damaged file or a wrong statement raises `Error`
/// (kDatabase). Reads have no expected failures and raise `ReadError`. In statements `LIKE` is the
/// catalogue's own (`LikeMatches`), and the collation `FOLDED` compares texts without regard to
/// letter case.
class Database {
 public:
  enum class Kind { Catalogue, Core };

  /// Opens a file of that kind and brings an older one up to date. A file of another origin is only
  /// ever read. One that may not be written is opened for reading only. `Reading` leaves the file
  /// as it is and works on a full disk; the engine's side files may stand as long as it is open.
  static std::unique_ptr<Database> Open(const QString& path, Kind kind, CatalogueAccess access,
                                        OpenFault& fault);
  /// Makes an empty file, whole or not at all. Never replaces one.
  static Outcome Create(const QString& path, Kind kind);
  ~Database();

  QString Path() const;
  bool ReadOnly() const;

  /// Takes the write lock at once, so that a transaction that has begun can't fail for a lock.
  Outcome Begin();
  /// On failure everything since `Begin` is undone.
  Outcome Commit();
  /// Harmless outside a transaction.
  void Rollback();
  bool InTransaction() const;

  /// Runs one statement and gives the number of rows that it changed.
  Result<int> Write(const std::string& sql, std::span<const Value> values = {});
  qint64 LastInsertedId() const;

  void Read(const std::string& sql, std::span<const Value> values,
            const std::function<void(const Row&)>& each) const;
  /// The same for a statement that won't come again: it isn't kept prepared.
  void ReadOnce(const std::string& sql, const std::function<void(const Row&)>& each) const;

  /// What is wrong inside the file, one line each.
  QStringList CheckIntegrity() const;
  /// Writes the content without its gaps to a new file of that kind, a few rows at a time, which
  /// must not change meanwhile. `progress` is told how many rows of how many are through, between
  /// two statements, so that it may read. On failure no file is left.
  Outcome CompactTo(const QString& path, Kind kind,
                    const std::function<void(int done, int total)>& progress);

  /// Takes the engine's side files into the file and works without them from now on. Fails while
  /// another program has the file open.
  Outcome DropSideFiles();

 private:
  struct Connection;
  explicit Database(std::unique_ptr<Connection> connection);
  Outcome CopyRows(const std::function<void(int done, int total)>& progress);
  Outcome WithoutLog(const std::string& schema);
  std::unique_ptr<Connection> connection_;
};

/// The text as a quoted literal of the engine. Only for what can't be bound as a value.
std::string QuotedText(QStringView text);
/// The name in double quotes.
std::string QuotedName(QStringView name);

}  // namespace zqm
