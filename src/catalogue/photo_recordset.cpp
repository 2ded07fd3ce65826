// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/photo_recordset.h"

#include <array>
#include <map>
#include <optional>
#include <utility>

#include "catalogue/database.h"
#include "catalogue/schema.h"
#include "catalogue/thumbnail_chunks.h"
#include "shell/error.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

// The texts of a row as they were read, in one piece; a value is made only when it is asked for.
class RowTexts {
 public:
  explicit RowTexts(const Row& row) {
    for (size_t i = 0; i < ends_.size(); ++i) {
      bytes_.append(row.Utf8(static_cast<int>(i)));
      ends_[i] = bytes_.size();
    }
  }

  QString At(Column column) const {
    const auto columns = TextColumns();
    const auto at =
        static_cast<size_t>(std::ranges::lower_bound(columns, column) - columns.begin());
    const size_t begin = at == 0 ? 0 : ends_[at - 1];
    return QString::fromUtf8(bytes_.data() + begin, static_cast<qsizetype>(ends_[at] - begin));
  }

 private:
  std::string bytes_;
  std::array<size_t, kColumnCount - 2> ends_{};
};

std::string Listed(std::span<const Column> columns, std::string_view suffix = "") {
  std::string list;
  for (const Column column : columns) {
    if (!list.empty()) list += ", ";
    list.append(QuotedName(ColumnName(column))).append(suffix);
  }
  return list;
}

const std::string& InsertStatement() {
  static const std::string statement = [] {
    std::string marks = "?";
    for (size_t i = 1; i < TextColumns().size(); ++i)
      marks += ", ?";
    return "INSERT INTO texts (" + Listed(TextColumns()) + ") VALUES (" + marks + ")";
  }();
  return statement;
}

const std::string& RowStatement() {
  static const std::string statement =
      "SELECT " + Listed(TextColumns()) + " FROM texts WHERE ID = ?";
  return statement;
}

Result<QByteArray> Checked(const QByteArray& thumbnail) {
  if (ThumbnailSizeRefused(thumbnail.size())) return Failure{QString::fromUtf16(kReasonThumbnail)};
  return thumbnail;
}

Outcome Done(const Result<int>& written) {
  if (!written) return Failure{written.Reason()};
  return {};
}

}  // namespace

struct PhotoRecordset::State {
  explicit State(Database& source) : database(source) {}

  Database& database;
  RowIndex index;
  qint64 current = 0;  // the row's ID, 0 without one; IDs begin with 1
  bool newRow = false;
  std::map<Column, QString> assigned;  // of the current row, not yet written
  std::optional<QByteArray> thumbnail;
  std::optional<RowTexts> stored;
  bool asked = false;                        // for one of its texts, while `stored` is empty
  std::vector<RowIndex::Entry> formerPaths;  // since the last commit, for taking them back
  Outcome unreported;                        // of a `LocateRow`, which had no words for it

  void RequireRow() const {
    if (current == 0 && !newRow)
      throw Error(error_number::kUnexpected, u"No photo row is current"_s);
  }

  void ForgetStored() {
    stored.reset();
    asked = false;
  }

  // A run over many rows mostly wants one text of each, a panel wants them all.
  QString Stored(Column column) {
    const std::array<Value, 1> id{current};
    std::optional<QString> text;
    if (!stored && !asked) {
      asked = true;
      database.Read("SELECT " + QuotedName(ColumnName(column)) + " FROM texts WHERE ID = ?", id,
                    [&](const Row& row) { text = row.Text(0); });
    } else if (!stored) {
      database.Read(RowStatement(), id, [&](const Row& row) { stored.emplace(row); });
    }
    if (stored) text = stored->At(column);
    if (!text) throw Error(error_number::kDatabase, u"A photo row is gone"_s);
    return *text;
  }

  void ForgetAssigned() {
    assigned.clear();
    thumbnail.reset();
    ForgetStored();
  }

  void RollBack() {
    database.Rollback();
    for (auto former = formerPaths.rbegin(); former != formerPaths.rend(); ++former)
      index.ChangePath(former->id, former->path);
    formerPaths.clear();
    ForgetAssigned();
  }

  Outcome OrRollBack(Outcome outcome) {
    if (!outcome) RollBack();
    return outcome;
  }

  // A batch that has lost rows stays lost as a whole until its caller has heard of it.
  Outcome TakeUnreported() {
    if (!unreported) RollBack();
    return std::exchange(unreported, Outcome());
  }

  Outcome Begin() { return database.InTransaction() ? Outcome() : database.Begin(); }

  QByteArray StoredThumbnail(qint64 row) const {
    const std::array<Value, 1> id{row};
    QByteArray bytes;
    database.Read("SELECT Thumbnail FROM thumbnails WHERE ID = ?", id,
                  [&](const Row& found) { bytes = found.Bytes(0); });
    return bytes;
  }

  /// What a statement that begins with the rows' ID gives for each path; `Value()` where there is
  /// no row.
  template <class Value, class Read>
  std::vector<Value> ForPaths(const std::string& select, const QStringList& paths,
                              const Read& read) const {
    QByteArray ids = "[";
    std::vector<qint64> rows;
    for (const QString& path : paths) {
      rows.push_back(index.Find(path).value_or(0));
      if (rows.back() == 0) continue;
      if (ids.size() > 1) ids += ',';
      ids += QByteArray::number(rows.back());
    }
    ids += ']';
    QHash<qint64, Value> values;
    const std::array<zqm::Value, 1> list{QString::fromLatin1(ids)};
    database.Read(select + " WHERE ID IN (SELECT value FROM json_each(?))", list,
                  [&](const Row& row) { values.insert(row.Number(0), read(row)); });
    std::vector<Value> found;
    found.reserve(rows.size());
    for (const qint64 id : rows)
      found.push_back(values.value(id));
    return found;
  }

  Outcome StoreThumbnail(qint64 id) {
    if (!thumbnail) return {};
    const std::array<Value, 2> values{id, *thumbnail};
    if (thumbnail->isEmpty())
      return Done(
          database.Write("DELETE FROM thumbnails WHERE ID = ?", std::span(values).first(1)));
    return Done(
        database.Write("INSERT OR REPLACE INTO thumbnails (ID, Thumbnail) VALUES (?, ?)", values));
  }

  Outcome StoreTexts() {
    if (assigned.empty()) return {};
    std::vector<Column> columns;
    std::vector<Value> values;
    for (const auto& [column, text] : assigned) {
      columns.push_back(column);
      values.emplace_back(text);
    }
    values.emplace_back(current);
    const auto written =
        database.Write("UPDATE texts SET " + Listed(columns, " = ?") + " WHERE ID = ?", values);
    if (written && *written == 0) return Failure{QString::fromUtf16(kReasonNotCatalogued)};
    return Done(written);
  }

  // What is assigned to the current row of old joins the open transaction; a begun row is
  // forgotten.
  Outcome Leave() {
    if (newRow || (assigned.empty() && !thumbnail)) {
      newRow = false;
      ForgetAssigned();
      return {};
    }
    Outcome written = Begin();
    if (written) written = StoreTexts();
    if (written) written = StoreThumbnail(current);
    if (written) ForgetAssigned();
    return OrRollBack(std::move(written));
  }

  Outcome Commit() {
    if (!database.InTransaction()) return {};
    if (const Outcome committed = OrRollBack(database.Commit()); !committed) return committed;
    formerPaths.clear();
    return {};
  }

  void MakeCurrent(qint64 id) {
    current = id;
    newRow = false;
    ForgetStored();
  }

  Result<qint64> Insert() {
    std::vector<Value> values;
    values.reserve(TextColumns().size());
    for (const Column column : TextColumns()) {
      const auto text = assigned.find(column);
      values.emplace_back(text == assigned.end() ? QString() : text->second);
    }
    Outcome written = Begin();
    if (written) written = Done(database.Write(InsertStatement(), values));
    const qint64 id = database.LastInsertedId();
    if (written) written = StoreThumbnail(id);
    if (written) written = database.Commit();
    if (!written) return Failure{written.Reason()};
    return id;
  }

  Outcome CommitNewRow() {
    const QString path = assigned[Column::Photo];
    if (path.isEmpty()) throw Error(error_number::kUnexpected, u"A photo row needs its path"_s);
    const auto id = Insert();
    newRow = false;
    if (!id) {
      RollBack();
      return Failure{id.Reason()};
    }
    ForgetAssigned();
    index.Append(*id, path);
    current = *id;
    return {};
  }
};

PhotoRecordset::PhotoRecordset(Database& database) : state_(std::make_unique<State>(database)) {}
PhotoRecordset::~PhotoRecordset() = default;

void PhotoRecordset::Load() {
  State& s = *state_;
  s.RollBack();
  s.unreported = Outcome();
  s.index.Clear();
  std::vector<RowIndex::Entry> rows;
  s.database.ReadOnce("SELECT ID, Photo FROM texts INDEXED BY texts_photo", [&](const Row& row) {
    rows.push_back({row.Number(0), row.Text(1)});
  });
  std::ranges::sort(rows, {}, &RowIndex::Entry::id);
  for (const RowIndex::Entry& row : rows)
    s.index.Append(row.id, row.path);
  s.MakeCurrent(rows.empty() ? 0 : rows.front().id);
}

const RowIndex& PhotoRecordset::Index() const {
  return state_->index;
}
int PhotoRecordset::Count() const {
  return state_->index.Count();
}

int PhotoRecordset::Position() const {
  return state_->newRow ? -1 : state_->index.PositionOf(state_->current);
}

bool PhotoRecordset::IsCatalogued(const QString& path) const {
  return state_->index.Find(path).has_value();
}

bool PhotoRecordset::LocateRow(const QString& path) {
  const auto id = state_->index.Find(path);
  if (!id) return false;
  if (*id == state_->current && !state_->newRow) return true;
  if (Outcome left = state_->Leave(); !left) {
    state_->unreported = std::move(left);
    return false;
  }
  state_->MakeCurrent(*id);
  return true;
}

Outcome PhotoRecordset::MoveTo(int position) {
  const qint64 id = state_->index.At(position).id;
  if (const Outcome left = state_->Leave(); !left) return left;
  state_->MakeCurrent(id);
  return {};
}

Outcome PhotoRecordset::MoveFirst() {
  Outcome written = state_->TakeUnreported();
  if (written) written = state_->Leave();
  if (written) written = state_->Commit();
  state_->MakeCurrent(Count() == 0 ? 0 : state_->index.At(0).id);
  return written;
}

Outcome PhotoRecordset::BeginNewRow() {
  State& s = *state_;
  Outcome ready = s.TakeUnreported();
  if (ready) ready = s.Leave();
  if (ready) ready = s.Commit();
  if (!ready) return ready;
  if (s.index.Full()) return Failure{QString::fromUtf16(kReasonDatabaseFull)};
  // Whether a row can be written shows now, before the caller's work on it.
  if (const Outcome writable = s.database.Begin(); !writable) return writable;
  s.database.Rollback();
  s.MakeCurrent(0);
  s.newRow = true;
  return {};
}

Outcome PhotoRecordset::CommitRow() {
  return state_->newRow ? state_->CommitNewRow() : CommitGathered();
}

Outcome PhotoRecordset::CommitGathered(const std::function<Outcome()>& more) {
  State& s = *state_;
  if (Outcome lost = s.TakeUnreported(); !lost) return lost;
  Outcome written = s.newRow ? Outcome() : s.Leave();
  if (written && more) {
    written = s.Begin();
    if (written) written = more();
    if (!written && s.newRow) s.database.Rollback();
    if (!written && !s.newRow) s.RollBack();
  }
  return written ? s.Commit() : written;
}

void PhotoRecordset::CancelRow() {
  state_->RollBack();
  state_->newRow = false;
}

void PhotoRecordset::SetField(Column column, const QString& text) {
  State& s = *state_;
  s.RequireRow();
  if (column == Column::ID || column == Column::Thumbnail)
    throw Error(error_number::kUnexpected, u"Column can't be assigned: "_s + ColumnName(column));
  if (column == Column::Photo && !s.newRow) {
    s.formerPaths.push_back(s.index.At(s.index.PositionOf(s.current)));
    s.index.ChangePath(s.current, text);
  }
  s.assigned[column] = text;
}

QString PhotoRecordset::GetField(Column column) const {
  State& s = *state_;
  s.RequireRow();
  if (column == Column::Thumbnail)
    throw Error(error_number::kUnexpected, u"The thumbnail is no text"_s);
  if (column == Column::ID) return s.newRow ? QString() : QString::number(s.current);
  if (const auto found = s.assigned.find(column); found != s.assigned.end()) return found->second;
  if (s.newRow) return {};
  return s.Stored(column);
}

std::vector<QString> PhotoRecordset::TextsOf(Column column, const QStringList& paths) const {
  return state_->ForPaths<QString>("SELECT ID, " + QuotedName(ColumnName(column)) + " FROM texts",
                                   paths, [](const Row& row) { return row.Text(1); });
}

Outcome PhotoRecordset::DeleteCurrentRow() {
  State& s = *state_;
  s.RequireRow();
  if (Outcome lost = s.TakeUnreported(); !lost) return lost;
  if (s.newRow) {
    CancelRow();
    return {};
  }
  const qint64 id = s.current;
  Outcome written = s.Leave();
  if (written) written = s.OrRollBack(s.Begin());
  if (!written) return written;
  const std::array<Value, 1> values{id};
  written = s.OrRollBack(Done(s.database.Write("DELETE FROM texts WHERE ID = ?", values)));
  if (written) written = s.Commit();
  if (!written) return written;
  s.index.Remove(id);
  s.MakeCurrent(0);
  return {};
}

void PhotoRecordset::WriteThumbnail(const QByteArray& jpeg) {
  state_->RequireRow();
  state_->thumbnail = PadThumbnail(jpeg);
}

Result<QByteArray> PhotoRecordset::ReadThumbnail() const {
  const State& s = *state_;
  s.RequireRow();
  if (s.thumbnail) return Checked(*s.thumbnail);
  return Checked(s.newRow ? QByteArray() : s.StoredThumbnail(s.current));
}

Result<QByteArray> PhotoRecordset::ThumbnailOf(const QString& path) const {
  const auto id = state_->index.Find(path);
  if (!id) return Failure{QString::fromUtf16(kReasonNotCatalogued)};
  return Checked(state_->StoredThumbnail(*id));
}

std::vector<bool> PhotoRecordset::HaveThumbnails(const QStringList& paths) const {
  return state_->ForPaths<bool>(
      "SELECT ID, length(Thumbnail) FROM thumbnails", paths,
      [](const Row& row) { return !ThumbnailSizeRefused(row.Number(1)); });
}

}  // namespace zqm
