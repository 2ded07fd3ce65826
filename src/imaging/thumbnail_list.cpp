// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/thumbnail_list.h"

#include <QSet>
#include <algorithm>
#include <utility>

#include "shell/files.h"

namespace zqm {
namespace {

constexpr qint64 kMostBytes = qint64{96} << 20;
/// What is kept when more than that was loaded, so that letting go is rare.
constexpr qint64 kKeptBytes = kMostBytes * 3 / 4;
/// Rows read ahead on either side of the view, at most.
constexpr int kMostAhead = 300;
/// Photos that are taken out one after the other; more of them at once.
constexpr int kMostStretches = 64;

}  // namespace

ThumbnailList::ThumbnailList() {
  connect(&loader_, &ThumbnailLoader::Arrived, this, &ThumbnailList::Take);
  connect(&loader_, &ThumbnailLoader::RoomMade, this, &ThumbnailList::Load);
}

ThumbnailList::~ThumbnailList() = default;

int ThumbnailList::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ImageCount();
}

QVariant ThumbnailList::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= ImageCount()) return {};
  const Item& item = At(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return GetFileName(item.path);
    case Qt::ToolTipRole:
      return item.path;
    case Qt::AccessibleTextRole:
      return item.look.topText.isEmpty()
                 ? GetFileName(item.path)
                 : GetFileName(item.path) + QStringLiteral(", ") + item.look.topText;
    case PathRole:
      return item.path;
    case LookRole:
      return QVariant::fromValue(item.look);
    case PictureRole:
      return item.picture;
    case StateRole:
      return QVariant::fromValue(item.state);
    case OfflineRole:
      return item.offline;
    default:
      return {};
  }
}

// The list.

void ThumbnailList::Clear() {
  beginResetModel();
  items_.clear();
  bytes_ = 0;
  first_ = 0;
  last_ = -1;
  indexed_ = false;
  endResetModel();
}

int ThumbnailList::AppendImage(const QString& path) {
  AppendImages({path});
  return ImageCount() - 1;
}

void ThumbnailList::AppendImages(const QStringList& paths) {
  if (paths.isEmpty()) return;
  beginInsertRows({}, ImageCount(), ImageCount() + static_cast<int>(paths.size()) - 1);
  items_.reserve(items_.size() + static_cast<std::size_t>(paths.size()));
  for (const QString& path : paths) {
    Item item;
    item.path = path;
    item.key = ++lastKey_;
    items_.push_back(std::move(item));
  }
  indexed_ = false;
  endInsertRows();
  Load();
}

void ThumbnailList::DeleteImages(const QStringList& paths) {
  const QSet<QString> gone(paths.begin(), paths.end());
  if (gone.size() > kMostStretches) return DeleteAtOnce(gone);
  // From the end, a stretch of neighbours at a time.
  for (int last = ImageCount() - 1; last >= 0; --last) {
    if (!gone.contains(At(last).path)) continue;
    int first = last;
    while (first > 0 && gone.contains(At(first - 1).path))
      --first;
    beginRemoveRows({}, first, last);
    for (int row = first; row <= last; ++row)
      bytes_ -= At(row).picture.sizeInBytes();
    items_.erase(items_.begin() + first, items_.begin() + last + 1);
    indexed_ = false;
    endRemoveRows();
    last = first;
  }
  Load();
}

void ThumbnailList::DeleteAtOnce(const QSet<QString>& gone) {
  beginResetModel();
  std::erase_if(items_, [this, &gone](const Item& item) {
    if (!gone.contains(item.path)) return false;
    bytes_ -= item.picture.sizeInBytes();
    return true;
  });
  indexed_ = false;
  endResetModel();
  Load();
}

QString ThumbnailList::ImageFileName(int row) const {
  return At(row).path;
}

void ThumbnailList::SetImageFileName(int row, const QString& path) {
  QString& own = At(row).path;
  if (indexed_) {
    rowOfPath_.remove(own);
    rowOfPath_.insert(path, row);
  }
  own = path;
  Changed(row, {PathRole});
}

QStringList ThumbnailList::FileNames() const {
  QStringList paths;
  paths.reserve(ImageCount());
  for (const Item& item : items_)
    paths.append(item.path);
  return paths;
}

void ThumbnailList::Reindex() const {
  if (indexed_) return;
  rowOfPath_.clear();
  rowOfKey_.clear();
  for (int row = 0; row < ImageCount(); ++row) {
    rowOfPath_.insert(At(row).path, row);
    rowOfKey_.insert(At(row).key, row);
  }
  indexed_ = true;
}

int ThumbnailList::IndexOf(const QString& path) const {
  Reindex();
  return rowOfPath_.value(path, -1);
}

void ThumbnailList::Reorder(const std::vector<int>& order) {
  if (order.size() != items_.size()) return;
  Q_EMIT layoutAboutToBeChanged();
  std::vector<Item> ordered(items_.size());
  std::vector<int> rowNow(items_.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    const auto from = static_cast<std::size_t>(order[i]);
    ordered[i] = std::move(items_[from]);
    rowNow[from] = static_cast<int>(i);
  }
  items_ = std::move(ordered);
  indexed_ = false;
  const QModelIndexList before = persistentIndexList();
  QModelIndexList now;
  now.reserve(before.size());
  for (const QModelIndex& at : before)
    now.append(index(rowNow[static_cast<std::size_t>(at.row())]));
  changePersistentIndexList(before, now);
  Q_EMIT layoutChanged();
  Load();
}

// Marks.

void ThumbnailList::Changed(int row, const QList<int>& roles) {
  Q_EMIT dataChanged(index(row), index(row), roles);
}

void ThumbnailList::SetLook(int row, const ThumbnailLook& look) {
  At(row).look = look;
  Changed(row, {LookRole});
}

const ThumbnailLook& ThumbnailList::Look(int row) const {
  return At(row).look;
}

void ThumbnailList::SetLooks(const std::vector<ThumbnailLook>& looks) {
  if (items_.empty() || looks.size() != items_.size()) return;
  for (std::size_t i = 0; i < looks.size(); ++i)
    items_[i].look = looks[i];
  Q_EMIT dataChanged(index(0), index(ImageCount() - 1), {LookRole});
}

void ThumbnailList::SetOffline(int row, bool offline) {
  Item& item = At(row);
  if (item.offline == offline) return;
  item.offline = offline;
  UpdateImage(row);
}

bool ThumbnailList::IsOffline(int row) const {
  return At(row).offline;
}

void ThumbnailList::SetStoredThumbnails(std::function<QByteArray(const QString& path)> stored) {
  stored_ = std::move(stored);
}

// Pictures.

void ThumbnailList::UpdateImage(int row) {
  Item& item = At(row);
  item.key = ++lastKey_;
  item.box = QSize();
  item.reading = false;
  item.state = item.picture.isNull() ? State::Waiting : State::Loaded;
  indexed_ = false;
  Changed(row, {PictureRole, StateRole, OfflineRole});
  Load();
}

void ThumbnailList::SetReadRequest(const ReadRequest& request) {
  request_ = request;
}

void ThumbnailList::SetThumbnailBox(const QSize& box) {
  box_ = box;
  Load();
}

void ThumbnailList::SetVisible(int first, int last) {
  first_ = first;
  last_ = last;
  Load();
}

bool ThumbnailList::Wanted(const Item& item) const {
  if (item.reading) return false;
  if (item.box.isEmpty()) return true;
  return item.state == State::Loaded && item.box.width() < box_.width();
}

int ThumbnailList::Distance(int row) const {
  if (row < first_) return first_ - row;
  return std::max(0, row - last_);
}

int ThumbnailList::Reach() const {
  const qint64 each = qint64{4} * box_.width() * box_.height();
  const qint64 kept = kKeptBytes / std::max<qint64>(each, 1) - (last_ - first_ + 1);
  return static_cast<int>(std::clamp<qint64>(kept / 2, 0, kMostAhead));
}

/// Rows of the view in their order, then outwards from it.
int ThumbnailList::NextWanted() const {
  const int count = ImageCount();
  for (int row = std::max(first_, 0); row <= std::min(last_, count - 1); ++row)
    if (Wanted(At(row))) return row;
  const int reach = Reach();
  for (int step = 1; step <= reach; ++step) {
    for (const int row : {last_ + step, first_ - step})
      if (row >= 0 && row < count && Wanted(At(row))) return row;
  }
  return -1;
}

void ThumbnailList::Load() {
  if (last_ < first_) return;
  while (loader_.HasRoom()) {
    const int row = NextWanted();
    if (row < 0) return;
    Begin(row);
  }
}

void ThumbnailList::Begin(int row) {
  Item& item = At(row);
  item.reading = true;
  item.box = box_;
  ThumbnailLoader::Wish wish{item.key, item.path, {}};
  if (item.offline && stored_) wish.stored = stored_(item.path);
  loader_.Begin(wish, box_, request_);
}

void ThumbnailList::Take(quint64 key, const QImage& picture) {
  Reindex();
  const int row = rowOfKey_.value(key, -1);
  // Gone, or asked for anew meanwhile.
  if (row < 0) return;
  Item& item = At(row);
  item.reading = false;
  bytes_ += picture.sizeInBytes() - item.picture.sizeInBytes();
  item.picture = picture;
  item.state = picture.isNull() ? State::Broken : State::Loaded;
  LetGo();
  Changed(row, {PictureRole, StateRole});
}

void ThumbnailList::Forget(Item& item) {
  bytes_ -= item.picture.sizeInBytes();
  item.picture = QImage();
  item.state = State::Waiting;
  item.box = QSize();
}

void ThumbnailList::LetGo() {
  if (bytes_ <= kMostBytes) return;
  std::vector<int> held;
  for (int row = 0; row < ImageCount(); ++row)
    if (!At(row).picture.isNull()) held.push_back(row);
  std::ranges::sort(held, std::greater<>(), [this](int row) { return Distance(row); });
  for (const int row : held) {
    if (bytes_ <= kKeptBytes || Distance(row) == 0) return;
    Forget(At(row));
  }
}

}  // namespace zqm
