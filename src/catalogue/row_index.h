// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <optional>
#include <vector>

namespace zqm {

/// Every row's path in row order: turns a path into a row position without asking the database.
/// Look-up is by exact path first, then by case-folded path; a match that differs only in letter
/// case counts if the stored path's file is gone or is the same file as the one asked for.
/// Look-up O(1) and position O(log n); insert, delete and change O(log n).
class RowIndex {
 public:
  /// The most rows of a catalogue: positions have always been 16-bit signed numbers.
  static constexpr int kMostRows = 32767;

  struct Entry {
    qint64 id = 0;  ///< the row's `ID`
    QString path;
  };

  void Clear();
  int Count() const;
  bool Full() const { return Count() >= kMostRows; }

  void Append(qint64 id, const QString& path);
  void Remove(qint64 id);
  void ChangePath(qint64 id, const QString& path);

  /// The row's id, or nothing.
  std::optional<qint64> Find(const QString& path) const;
  /// Position of a row, from 0 in row order; -1 for an unknown id.
  int PositionOf(qint64 id) const;
  /// The entry at a position from 0 to Count() - 1.
  Entry At(int position) const;
  /// All paths in row order.
  QStringList Paths() const;

 private:
  // Slots are only appended; a Fenwick tree over the living ones gives positions.
  struct Slot {
    qint64 id;
    QString path;
    bool alive;
  };
  std::vector<Slot> slots_;
  std::vector<int> tree_;
  QHash<QString, qint64> byPath_;
  QMultiHash<QString, qint64> byFoldedPath_;
  QHash<qint64, int> slotOf_;
};

}  // namespace zqm
