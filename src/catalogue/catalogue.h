// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "catalogue/columns.h"
#include "catalogue/open_problem.h"
#include "catalogue/photo_recordset.h"
#include "shell/result.h"

namespace zqm {

class Database;

/// A change of a file that its row has to follow, written before the file is touched. Opening a
/// catalogue finishes or drops what a kill left: the row follows if the file stands at `to` and no
/// longer at `from`, and stays otherwise. Of a file that is changed in its place the row has to be
/// read anew, which is left to whoever can read files (`Replaced`).
struct Intent {
  QString operation;  ///< "move", "rename", "delete", or `kReplaceOperation`
  QString from;
  QString to;  ///< "" when the file is to go; the stamp it had (`platform::FileStamp`) for "replace"
};
inline constexpr char16_t kReplaceOperation[] = u"replace";

/// A file that was changed in its place without its row.
struct ReplacedFile {
  qint64 intent;
  QString path;
};

/// An open photo catalogue: one file, one connection for the whole run.
class Catalogue {
 public:
  /// Opens and checks (our file, right version, readable); finishes left-over intents; loads the
  /// row index. A file that may not be written is opened for reading only. `Reading` changes
  /// nothing in the file, finishes no intent, and works beside a writer. `reason` takes the words
  /// for an unreadable file ("Permission was denied", "The disk is full"). Raises `Error`
  /// (kOverflow) for a file of more rows than the row index holds.
  static std::unique_ptr<Catalogue> Open(const QString& path, OpenProblem& problem,
                                         CatalogueAccess access = CatalogueAccess::ReadWrite,
                                         QString* reason = nullptr);
  ~Catalogue();

  QString Path() const;
  bool ReadOnly() const;

  PhotoRecordset& Photos();
  const PhotoRecordset& Photos() const;

  /// Category names in the order in which they were added.
  QStringList Categories() const;
  Outcome AddCategory(const QString& name);
  Outcome DeleteCategory(const QString& name);

  /// Runs a statement of the program ("Select … from qryphoto …") and gives the texts of `bound`
  /// for each hit in row order. A statement that can't be translated or run raises `Error`
  /// (kDatabase).
  QStringList Query(const QString& statement, Column bound) const;

  /// Stands in the file when this returns; gathered assignments are committed before it.
  Result<qint64> RecordIntent(const Intent& intent);
  /// Commits what was assigned to rows since then and drops the intent, in one transaction.
  Outcome FinishIntent(qint64 id);
  /// The file is where it was to go: its row follows, a row that the target had goes, and the
  /// intent with them. After a failure the next opening does it.
  Outcome FollowIntent(qint64 id, const Intent& intent);
  /// What earlier runs left; each to be ended with `FinishIntent`.
  std::vector<ReplacedFile> Replaced() const;

  /// The engine's integrity check and the program's own: row index and rows agree, every row has
  /// its path, every thumbnail belongs to a row. Empty when all is well, else what is wrong.
  QStringList CheckIntegrity() const;
  /// What the rows take, those in the log beside the file too.
  qint64 Bytes() const;

  /// Writes the catalogue without its gaps to a new file; `path` must not stand yet. `progress` is
  /// told how many rows of how many are through; it may read rows and yield to windows, but must
  /// not change a row.
  Outcome CompactTo(const QString& path,
                    const std::function<void(int done, int total)>& progress = {});

  /// Makes the catalogue one file without the engine's side files, as it must be when another file
  /// is to take its place. Fails while another program has it open.
  Outcome DropSideFiles();

 private:
  explicit Catalogue(std::unique_ptr<Database> database);
  void SettleIntents();
  std::unique_ptr<Database> database_;
  std::unique_ptr<PhotoRecordset> photos_;
};

/// An empty catalogue file, as the master is made at build time. Replaces nothing.
Outcome CreateCatalogueFile(const QString& path);

/// Names of the catalogues in a working folder: files "*.mdb*" but for "CORE.mdb", spelt so, and
/// the engine's side files; sorted by name without regard to letter case.
QStringList ListCatalogues(const QString& workingFolder);

}  // namespace zqm
