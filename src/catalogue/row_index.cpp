// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/row_index.h"

#include "catalogue/like_pattern.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/platform.h"

namespace zqm {
namespace {

size_t LowBit(size_t number) {
  return number & (~number + 1);
}

}  // namespace

void RowIndex::Clear() {
  *this = RowIndex();
}

int RowIndex::Count() const {
  return static_cast<int>(slotOf_.size());
}

void RowIndex::Append(qint64 id, const QString& path) {
  if (Full()) throw Error(error_number::kOverflow, QStringLiteral("Overflow"));
  slotOf_.insert(id, static_cast<int>(slots_.size()));
  slots_.push_back({id, path, true});
  byPath_.insert(path, id);
  byFoldedPath_.insert(FoldCase(path), id);

  // Node n of the tree (from 1) counts the living slots of the LowBit(n) ones that end with it.
  const size_t node = slots_.size();
  int living = 1;
  for (size_t covered = 1; covered < LowBit(node); covered *= 2)
    living += tree_[node - covered - 1];
  tree_.push_back(living);
}

void RowIndex::Remove(qint64 id) {
  const auto found = slotOf_.constFind(id);
  if (found == slotOf_.constEnd()) return;
  const auto slot = static_cast<size_t>(found.value());
  const QString path = slots_[slot].path;
  if (byPath_.value(path) == id) byPath_.remove(path);
  byFoldedPath_.remove(FoldCase(path), id);
  slots_[slot].alive = false;
  slots_[slot].path.clear();
  slotOf_.erase(found);
  for (size_t node = slot + 1; node <= tree_.size(); node += LowBit(node))
    --tree_[node - 1];
}

void RowIndex::ChangePath(qint64 id, const QString& path) {
  const auto found = slotOf_.constFind(id);
  if (found == slotOf_.constEnd()) return;
  QString& stored = slots_[static_cast<size_t>(found.value())].path;
  if (byPath_.value(stored) == id) byPath_.remove(stored);
  byFoldedPath_.remove(FoldCase(stored), id);
  stored = path;
  byPath_.insert(path, id);
  byFoldedPath_.insert(FoldCase(path), id);
}

std::optional<qint64> RowIndex::Find(const QString& path) const {
  if (const auto exact = byPath_.constFind(path); exact != byPath_.constEnd()) return *exact;
  const auto [first, last] = byFoldedPath_.equal_range(FoldCase(path));
  for (auto candidate = first; candidate != last; ++candidate) {
    const QString& stored = slots_[static_cast<size_t>(slotOf_.value(*candidate))].path;
    if (!FileExists(stored) || platform::SameFile(stored, path)) return *candidate;
  }
  return std::nullopt;
}

int RowIndex::PositionOf(qint64 id) const {
  const auto found = slotOf_.constFind(id);
  if (found == slotOf_.constEnd()) return -1;
  int living = 0;
  for (auto node = static_cast<size_t>(found.value()) + 1; node > 0; node -= LowBit(node))
    living += tree_[node - 1];
  return living - 1;
}

RowIndex::Entry RowIndex::At(int position) const {
  if (position < 0 || position >= Count())
    throw Error(error_number::kSubscript, QStringLiteral("Subscript out of range"));
  size_t node = 0, step = 1;
  while (step * 2 <= tree_.size())
    step *= 2;
  int before = position;
  for (; step > 0; step /= 2) {
    if (node + step > tree_.size() || tree_[node + step - 1] > before) continue;
    node += step;
    before -= tree_[node - 1];
  }
  return {slots_[node].id, slots_[node].path};
}

QStringList RowIndex::Paths() const {
  QStringList paths;
  paths.reserve(Count());
  for (const Slot& slot : slots_)
    if (slot.alive) paths.append(slot.path);
  return paths;
}

}  // namespace zqm
