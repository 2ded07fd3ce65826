// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures packed without loss, in tiles that several of them can share.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QMutex>
#include <QTemporaryFile>
#include <atomic>
#include <memory>
#include <optional>
#include <vector>

#include "shell/result.h"

namespace zqm {

/// A file without a name, which goes when nobody holds it any more.
class ScratchFile {
 public:
  /// Null with `reason` set when the folder can't be made or written.
  static std::shared_ptr<ScratchFile> Create(const QString& folder, QString& reason);

  /// Where the bytes begin, or the reason why they can't be written.
  Result<qint64> Append(const QByteArray& bytes);
  /// Empty when they can't be read. From any thread.
  QByteArray Read(qint64 at, qint64 size);

 private:
  QTemporaryFile file_;
  qint64 end_ = 0;
  QMutex mutex_;
};

/// What all tiles of a stack take together. They tell it themselves, on whatever thread they end.
struct TileLedger {
  std::atomic<qint64> memory = 0, disk = 0;  ///< bytes
};

/// The packed bytes of a tile, in memory or in a file.
class UndoTile {
 public:
  UndoTile(QByteArray bytes, std::shared_ptr<TileLedger> ledger);
  ~UndoTile();
  UndoTile(const UndoTile&) = delete;
  UndoTile& operator=(const UndoTile&) = delete;

  bool InMemory() const { return !file_; }
  /// Empty when the file can't be read.
  QByteArray Bytes() const;
  /// On failure they stay in memory.
  Outcome MoveTo(const std::shared_ptr<ScratchFile>& file);

 private:
  QByteArray bytes_;
  qsizetype size_;
  std::shared_ptr<TileLedger> ledger_;
  std::shared_ptr<ScratchFile> file_;
  qint64 at_ = 0;
};

/// A picture as tiles: all that makes it equal to the one that was packed.
struct TiledPicture {
  QImage facts;  ///< of one pixel: format, colour table, resolution, texts
  QSize size;
  std::vector<std::shared_ptr<UndoTile>> tiles;

  bool IsEmpty() const { return tiles.empty(); }
};

/// Packs a picture. Tiles whose pixels are those of `beside` at the same place are taken from
/// `besideTiles`, where both are of that format and size. Nothing when there is no memory for it.
/// Thread-safe; large pictures use the work pool.
std::optional<TiledPicture> PackPicture(const QImage& picture, const QImage& beside,
                                        const TiledPicture& besideTiles,
                                        const std::shared_ptr<TileLedger>& ledger);

/// The picture again, every pixel and fact. Null when there is no memory for it or a file can't be
/// read.
QImage UnpackPicture(const TiledPicture& packed);

}  // namespace zqm
