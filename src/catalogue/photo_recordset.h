// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "catalogue/columns.h"
#include "catalogue/row_index.h"
#include "shell/result.h"

namespace zqm {

class Database;

/// The one cursor over all photo rows, in row order, with its row index kept in step. Values pass
/// as text; `Date` passes as ISO text ("2007-12-31" or "").
///
/// Commit rules: a new row is one transaction, written by `CommitRow`. Values assigned to existing
/// rows gather in one transaction while the cursor moves from row to row, and are committed by
/// `MoveFirst` (or by the next `BeginNewRow` or `DeleteCurrentRow`). A failed write rolls back all
/// that was gathered, and says so once, by the call that failed. `LocateRow` can't say it: the next
/// `MoveFirst`, `BeginNewRow`, `DeleteCurrentRow`, `CommitRow` or `CommitGathered` does, and does
/// nothing else but drop what was assigned in between (`MoveFirst` moves all the same). Moving away
/// from a begun row without `CommitRow` forgets it; after a deletion no row is current. `ID` and
/// `Thumbnail` are never assigned as text.
class PhotoRecordset {
 public:
  explicit PhotoRecordset(Database& database);
  ~PhotoRecordset();

  /// Reads the row index. Raises `Error` (kDatabase) when the rows can't be read.
  void Load();

  const RowIndex& Index() const;
  int Count() const;
  /// Position of the current row from 0, or -1 (no row, or a new row not yet committed).
  int Position() const;

  /// Makes the row of that path current; false when it isn't catalogued, or when the pending values
  /// of the row that is left could not be written (see above).
  bool LocateRow(const QString& path);
  bool IsCatalogued(const QString& path) const;
  Outcome MoveTo(int position);
  Outcome MoveFirst();

  /// A new row, current from now on. Fails before anything is written when the catalogue is full
  /// ("The database is full"), read-only or locked.
  Outcome BeginNewRow();
  /// Writes the current row; a new one gets its `ID` and its entry in the row index (its `Photo`
  /// must be set). On failure a new row is gone as if it had never been begun.
  Outcome CommitRow();
  /// Commits what was gathered without moving, together with what `more` writes: both or neither. A
  /// begun row stays begun and isn't written.
  Outcome CommitGathered(const std::function<Outcome()>& more = {});
  /// Forgets a begun row and all assignments not yet committed.
  void CancelRow();

  void SetField(Column column, const QString& text);
  QString GetField(Column column) const;

  /// One column's texts for many paths by one statement; null where a path isn't catalogued. What
  /// is assigned and not committed yet is not seen.
  std::vector<QString> TextsOf(Column column, const QStringList& paths) const;

  Outcome DeleteCurrentRow();

  /// Thumbnail of the current row (new or existing): committed with it; empty removes it. A JPEG of
  /// a refused length is padded. Stored as the odd piece of n mod 1000 bytes first and then pieces
  /// of 1000.
  void WriteThumbnail(const QByteArray& jpeg);
  /// Fails with `kReasonThumbnail` when nothing is stored or the size is a multiple of 1000.
  Result<QByteArray> ReadThumbnail() const;
  /// The stored thumbnail of any row, the cursor left where it is; reasons as above, and
  /// `kReasonNotCatalogued`.
  Result<QByteArray> ThumbnailOf(const QString& path) const;
  /// For many paths by one statement: whether `ThumbnailOf` would succeed.
  std::vector<bool> HaveThumbnails(const QStringList& paths) const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

inline constexpr char16_t kReasonNotCatalogued[] = u"File is not in the database";
inline constexpr char16_t kReasonDatabaseFull[] = u"The database is full";
inline constexpr char16_t kReasonThumbnail[] =
    u"The thumbnail for this photo is corrupted. Find this photo on your computer, select it and "
    u"click on the Rebuild Thumbnails and Metadata button.";

}  // namespace zqm
