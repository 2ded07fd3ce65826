// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/undo_stack.h"

#include <new>
#include <utility>

#include "shell/busy.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Writing to the scratch folder lets the interface paint after so many bytes.
constexpr qint64 kBytesBetweenYields = qint64{8} << 20;

}  // namespace

UndoStack::UndoStack(QString scratchFolder, qint64 mostMemory)
    : scratchFolder_(std::move(scratchFolder)), mostMemory_(mostMemory) {
  pool_.setMaxThreadCount(1);
}

UndoStack::~UndoStack() {
  pool_.waitForDone();
}

int UndoStack::Count(List list) const {
  return static_cast<int>((list == List::Undo ? undo_ : redo_).size());
}

void UndoStack::SetLimit(int levels) {
  limit_ = std::max(0, levels);
  for (auto* list : {&undo_, &redo_}) {
    while (std::ssize(*list) > limit_)
      list->pop_back();
  }
}

void UndoStack::Push(List list, const PictureState& state) {
  if (limit_ == 0) return;
  Settle();
  auto& levels = Levels(list);
  auto level = std::make_shared<Level>(Level{state, {}});
  const auto older = levels.empty() ? nullptr : levels.front();
  levels.push_front(level);
  if (std::ssize(levels) > limit_) levels.pop_back();
  if (restored_ && restoredKey_ == state.image.cacheKey() && !restored_->tiles.IsEmpty())
    level->tiles = restored_->tiles;
  else
    Pack(level, older);
  restored_.reset();
  // Only the newest of a list is kept as it is: for a quick step back, and to be compared with.
  if (older && !older->tiles.IsEmpty()) older->state.image = QImage();
  KeepToMemory();
}

void UndoStack::Pack(const std::shared_ptr<Level>& level, const std::shared_ptr<Level>& older) {
  packing_ = level;
  auto task = std::make_shared<std::packaged_task<std::optional<TiledPicture>()>>(
      [picture = level->state.image, beside = older ? older->state.image : QImage(),
       besideTiles = older ? older->tiles : TiledPicture(), ledger = ledger_] {
        try {
          return PackPicture(picture, beside, besideTiles, ledger);
        } catch (const std::bad_alloc&) {
          return std::optional<TiledPicture>();
        }
      });
  packed_ = task->get_future();
  pool_.start([task] { (*task)(); });
}

/// Takes over what has been packed.
void UndoStack::Settle() {
  if (!packing_) return;
  if (auto tiles = packed_.get()) packing_->tiles = std::move(*tiles);
  packing_.reset();
}

void UndoStack::WaitForPacking() const {
  if (packed_.valid()) packed_.wait();
}

Result<PictureState> UndoStack::At(List list, int index) {
  const auto& levels = Levels(list);
  if (index < 0 || index >= std::ssize(levels)) return Failure{u"There is no such step"_s};
  const auto& level = levels[static_cast<std::size_t>(index)];
  PictureState state = level->state;
  if (state.image.isNull() && !level->tiles.IsEmpty()) state.image = UnpackPicture(level->tiles);
  if (state.image.isNull() && !level->tiles.IsEmpty())
    return Failure{u"The step could not be read back"_s};
  restored_ = level;
  restoredKey_ = state.image.cacheKey();
  return state;
}

void UndoStack::Discard(List list) {
  auto& levels = Levels(list);
  if (!levels.empty()) levels.pop_front();
}

void UndoStack::Clear(List list) {
  Levels(list).clear();
  if (undo_.empty() && redo_.empty()) {
    restored_.reset();
    lost_ = 0;
    lostReason_.clear();
  }
}

qint64 UndoStack::MemoryUsed() const {
  qint64 used = ledger_->memory;
  for (const auto* list : {&undo_, &redo_}) {
    for (const auto& level : *list)
      used += level->state.image.sizeInBytes();
  }
  return used;
}

/// The level farthest from now that still takes memory goes first: to the disk, or for good.
void UndoStack::KeepToMemory() {
  if (MemoryUsed() <= mostMemory_) return;
  for (auto* list : {&undo_, &redo_}) {
    for (const auto& level : *list) {
      if (!level->tiles.IsEmpty()) level->state.image = QImage();
    }
  }
  for (auto* list : {&undo_, &redo_}) {
    for (auto level = list->rbegin(); level != list->rend(); ++level) {
      if (MemoryUsed() <= mostMemory_) return;
      if (const Outcome moved = MoveToDisk(**level); !moved) return DropOldest(moved.Reason());
    }
  }
}

Outcome UndoStack::MoveToDisk(Level& level) {
  const bool any =
      std::ranges::any_of(level.tiles.tiles, [](const auto& tile) { return tile->InMemory(); });
  if (!any) return {};
  if (scratchFolder_.isEmpty()) return Failure{u"There is no scratch folder"_s};
  QString reason;
  const auto file = ScratchFile::Create(scratchFolder_, reason);
  if (!file) return Failure{reason};
  // A copy: painting may come in between.
  qint64 written = 0;
  for (const auto& tile : std::vector(level.tiles.tiles)) {
    if (!tile->InMemory()) continue;
    written += tile->Bytes().size();
    if (const Outcome moved = tile->MoveTo(file); !moved) return moved;
    if (written < kBytesBetweenYields) continue;
    written = 0;
    YieldToInterface();
  }
  return {};
}

void UndoStack::DropOldest(const QString& reason) {
  lostReason_ = reason;
  for (auto* list : {&undo_, &redo_}) {
    // The newest step back stays, however large.
    const std::ptrdiff_t kept = list == &undo_ ? 1 : 0;
    while (std::ssize(*list) > kept && MemoryUsed() > mostMemory_) {
      list->pop_back();
      ++lost_;
    }
  }
}

}  // namespace zqm
