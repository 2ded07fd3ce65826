// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>
#include <QThreadPool>
#include <deque>
#include <future>
#include <memory>
#include <optional>

#include "imaging/file_parameters.h"
#include "imaging/undo_tiles.h"
#include "shell/result.h"

namespace zqm {

/// What undoing brings back.
struct PictureState {
  QImage image;
  std::shared_ptr<const FileParameters> parameters;  ///< states of the same parameters share them
  bool untouched = false;  ///< the pixels are those of the file that was loaded
};

/// The pictures before and after the one that is worked on, exact in pixels, format, size,
/// resolution, colour table and parameters. Index 0 is the newest of its list.
///
/// Levels are packed on a thread of the stack's own; tiles that neighbours have in common are kept
/// once. Beyond the memory's limit those that are farthest from now go to nameless files of the
/// scratch folder, which the system takes back when the stack ends, however it ends. Where they
/// can't be written the oldest levels are dropped and counted in `Lost`. All calls come from one
/// thread, but for `WaitForPacking`.
class UndoStack {
 public:
  enum class List { Undo, Redo };
  static constexpr int kDefaultLimit = 100;
  static constexpr qint64 kDefaultMemory = qint64{512} << 20;

  /// An empty `scratchFolder` is none: old levels are dropped.
  explicit UndoStack(QString scratchFolder = {}, qint64 mostMemory = kDefaultMemory);
  ~UndoStack();
  UndoStack(const UndoStack&) = delete;
  UndoStack& operator=(const UndoStack&) = delete;

  /// For levels to come.
  void SetScratchFolder(const QString& folder) { scratchFolder_ = folder; }
  /// Levels of each list; 0 and less keeps none.
  void SetLimit(int levels);
  int Limit() const { return limit_; }

  /// The state as it is now. Waits for the packing of the one before, and gives the interface time
  /// to paint while it writes to the scratch folder.
  void Push(List list, const PictureState& state);
  /// How a level looked. A failure when it can't be read back or there is no memory for it. May run
  /// on another thread while this one waits.
  Result<PictureState> At(List list, int index);
  /// Takes the newest away.
  void Discard(List list);
  void Clear(List list);
  int Count(List list) const;

  /// Returns when the newest level has been packed, so that a `Push` won't wait. From any thread.
  void WaitForPacking() const;
  /// Bytes of all levels, waiting ones included.
  qint64 MemoryUsed() const;
  qint64 BytesOnDisk() const { return ledger_->disk; }
  /// How many levels were dropped for want of disk or memory since the lists were last cleared; why
  /// is in `LostReason`.
  int Lost() const { return lost_; }
  const QString& LostReason() const { return lostReason_; }

 private:
  struct Level {
    PictureState state;  // its image is null once it is only packed
    TiledPicture tiles;  // empty until it is packed
  };
  using LevelList = std::deque<std::shared_ptr<Level>>;

  LevelList& Levels(List list) { return list == List::Undo ? undo_ : redo_; }
  void Pack(const std::shared_ptr<Level>& level, const std::shared_ptr<Level>& older);
  void Settle();
  void KeepToMemory();
  Outcome MoveToDisk(Level& level);
  void DropOldest(const QString& reason);

  QString scratchFolder_;
  qint64 mostMemory_;
  int limit_ = kDefaultLimit;
  std::shared_ptr<TileLedger> ledger_ = std::make_shared<TileLedger>();
  LevelList undo_, redo_;  // the newest in front
  // The level that was brought back last: pushed again unchanged, it needn't be packed again.
  std::shared_ptr<Level> restored_;
  qint64 restoredKey_ = 0;
  std::shared_ptr<Level> packing_;
  std::future<std::optional<TiledPicture>> packed_;
  int lost_ = 0;
  QString lostReason_;
  QThreadPool pool_;  // last: waits for its work before the rest goes
};

}  // namespace zqm
