// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/folder_tree.h"

#include <QCollator>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QThreadPool>
#include <algorithm>
#include <utility>

#include "shell/error.h"
#include "shell/files.h"
#include "shell/locale_info.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kPathRole = Qt::UserRole + 1;
constexpr int kListedRole = Qt::UserRole + 2;
constexpr int kRestMilliseconds = 200;
constexpr int kListers = 4;  // network folders may be slow, and they wait more than they work

/// Lists folders for all trees. It is never taken down: that would wait for folders of a network
/// that has gone away.
QThreadPool& Listers() {
  static QThreadPool* const pool = [] {
    auto* made = new QThreadPool;
    made->setMaxThreadCount(kListers);
    return made;
  }();
  return *pool;
}

/// Runs `work` beside the interface thread and hands what it gives to `then` there, unless the
/// receiver is gone by then.
template <class Work, class Then>
void Aside(QObject* receiver, Work work, Then then) {
  Listers().start([guard = QPointer<QObject>(receiver), work, then] {
    auto value = work();
    QMetaObject::invokeMethod(QCoreApplication::instance(), [guard, value, then] {
      if (guard) Guarded("FolderTree", "Aside", [&] { then(value); });
    });
  });
}

QString Within(const QString& folder, const QString& name) {
  return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

bool IsInside(const QString& path, const QString& folder) {
  return path == folder || path.startsWith(folder.endsWith(u'/') ? folder : folder + u'/');
}

bool IsUsersVolume(const QStorageInfo& volume) {
  const QString root = volume.rootPath();
  return volume.isValid() && volume.isReady() &&
         (root.startsWith(u"/media/") || root.startsWith(u"/mnt/") ||
          root.startsWith(u"/run/media/"));
}

}  // namespace

/// The folders right inside, hidden ones left out.
FolderTree::Listing FolderTree::ListFolder(const QString& folder) {
  Listing listing;
  for (const QFileInfo& entry :
       QDir(folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort)) {
    listing.names.append(entry.fileName());
    if (entry.isSymLink()) listing.links.insert(entry.fileName());
  }
  QCollator collator(UserLocale());
  collator.setNumericMode(true);
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  std::ranges::sort(listing.names, [&collator](const QString& a, const QString& b) {
    const int order = collator.compare(a, b);
    // Two lists of one folder must have one order.
    return order != 0 ? order < 0 : a < b;
  });
  return listing;
}

FolderTree::FolderTree(Ticks ticks, QWidget* parent) : QTreeView(parent), ticks_(ticks) {
  setModel(&model_);
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setEditTriggers(NoEditTriggers);
  setFrameShape(QFrame::NoFrame);
  setIndentation(look::kSpace16);
  setIconSize({look::kIconSize, look::kIconSize});
  rest_.setSingleShot(true);
  rest_.setInterval(kRestMilliseconds);
  connect(&rest_, &QTimer::timeout, this, &FolderTree::RelistChanged);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &FolderTree::OnFolderChanged);
  // Again each time: a folder that isn't open isn't watched.
  connect(this, &QTreeView::expanded, this, [this](const QModelIndex& index) { List(index); });
  connect(this, &QTreeView::activated, this, [this](const QModelIndex& index) {
    if (PathOf(index) != current_) Choose(PathOf(index));
  });
  connect(this, &QTreeView::clicked, this, [this](const QModelIndex& index) {
    if (std::exchange(clickedAgain_, false)) Choose(PathOf(index));
  });
  connect(&model_, &QStandardItemModel::itemChanged, this, [this] {
    if (!quiet_) Q_EMIT TicksChanged();
  });
  SetRoots(UsualRoots());
  AddVolumes();
}

std::vector<FolderTree::Root> FolderTree::UsualRoots() {
  using Paths = QStandardPaths;
  struct Place {
    const char* caption;
    Paths::StandardLocation location;
    const char* icon;
  };
  constexpr Place kPlaces[] = {
      {"Pictures", Paths::PicturesLocation, "folder-pictures"},
      {"Home", Paths::HomeLocation, "user-home"},
      {"Desktop", Paths::DesktopLocation, "user-desktop"},
      {"Documents", Paths::DocumentsLocation, "folder-documents"},
  };
  std::vector<Root> roots;
  const QString home = QDir::homePath();
  for (const Place& place : kPlaces) {
    const QString path = Paths::writableLocation(place.location);
    const bool isHome = place.location == Paths::HomeLocation;
    if (FolderExists(path) && (isHome || path != home))
      roots.push_back({tr(place.caption), path, place.icon});
  }
  roots.push_back({tr("File System"), QDir::rootPath(), "drive-harddisk"});
  return roots;
}

/// A volume of a network that has gone away may take minutes to tell its size.
void FolderTree::AddVolumes() {
  const auto find = [] {
    std::vector<Root> volumes;
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes())
      if (IsUsersVolume(volume))
        volumes.push_back({volume.displayName(), volume.rootPath(), "drive-removable-media"});
    return volumes;
  };
  Aside(this, find, [this](const std::vector<Root>& volumes) {
    if (!usualRoots_) return;
    const QScopedValueRollback quiet(quiet_, true);
    for (const Root& volume : volumes)
      model_.insertRow(model_.rowCount() - 1, MakeItem(volume.caption, volume.path, volume.icon));
  });
}

QStandardItem* FolderTree::MakeItem(const QString& caption, const QString& path,
                                    const char* icon) const {
  auto* item = new QStandardItem(look::Icon(icon), caption);
  item->setData(path, kPathRole);
  item->setToolTip(path);
  if (ticks_ == Ticks::Yes) {
    item->setCheckable(true);
    item->setCheckState(Qt::Unchecked);
  }
  // What stands for folders not listed yet, so that there is something to open.
  item->appendRow(new QStandardItem(tr("Reading…")));
  item->child(0)->setEnabled(false);
  return item;
}

void FolderTree::SetRoots(const std::vector<Root>& roots) {
  const QScopedValueRollback quiet(quiet_, true);
  usualRoots_ = model_.rowCount() == 0;
  model_.clear();
  for (const Root& root : roots)
    model_.appendRow(MakeItem(root.caption, StripSlash(root.path), root.icon));
}

QString FolderTree::PathOf(const QModelIndex& index) const {
  return index.data(kPathRole).toString();
}

// Listing.

void FolderTree::List(const QModelIndex& index, bool tickAll) {
  const QString path = PathOf(index);
  if (path.isEmpty()) return;
  if (tickAll) ++ticking_;
  Aside(
      this, [path] { return ListFolder(path); },
      [this, at = QPersistentModelIndex(index), tickAll](const Listing& listing) {
        if (tickAll) --ticking_;
        if (at.isValid()) return Merge(at, listing, tickAll);
        if (tickAll) Q_EMIT TicksChanged();
      });
}

void FolderTree::Merge(const QModelIndex& index, const Listing& listing, bool tickAll) {
  const QStringList& names = listing.names;
  QStandardItem* parent = model_.itemFromIndex(index);
  const QString folder = PathOf(index);
  {
    const QScopedValueRollback quiet(quiet_, true);
    RemoveVanished(parent, QSet<QString>(names.begin(), names.end()));
    for (int row = 0; row < names.size(); ++row) {
      const bool there = row < parent->rowCount() && parent->child(row)->text() == names[row];
      if (!there)
        parent->insertRow(row, MakeItem(names[row], Within(folder, names[row]), "folder"));
      // A link may lead back to where it stands.
      if (!tickAll || listing.links.contains(names[row])) continue;
      parent->child(row)->setCheckState(Qt::Checked);
      List(parent->child(row)->index(), true);
    }
    parent->setData(true, kListedRole);
  }
  if (isExpanded(index)) watcher_.addPath(folder);
  if (tickAll) Q_EMIT TicksChanged();
  Reveal();
}

void FolderTree::RemoveVanished(QStandardItem* parent, const QSet<QString>& names) {
  const int before = parent->rowCount();
  for (int row = before - 1; row >= 0; --row) {
    const QString path = parent->child(row)->data(kPathRole).toString();
    if (!path.isEmpty() && names.contains(GetFileName(path))) continue;
    // The current folder is gone: its parent takes its place.
    if (!path.isEmpty() && IsInside(current_, path)) {
      setCurrentIndex(parent->index());
      const QString folder = PathOf(parent->index());
      QMetaObject::invokeMethod(
          this, [this, folder] { Choose(folder); }, Qt::QueuedConnection);
    }
    parent->removeRow(row);
  }
  if (ticks_ == Ticks::Yes && parent->rowCount() < before)
    QMetaObject::invokeMethod(this, &FolderTree::TicksChanged, Qt::QueuedConnection);
}

void FolderTree::OnFolderChanged(const QString& path) {
  changed_.insert(path);
  rest_.start();
}

void FolderTree::RelistChanged() {
  const QSet<QString> changed = std::exchange(changed_, {});
  const auto visit = [&](const auto& self, QStandardItem* item) -> void {
    if (item->data(kListedRole).toBool() && changed.contains(item->data(kPathRole).toString()))
      List(item->index());
    for (int row = 0; row < item->rowCount(); ++row)
      self(self, item->child(row));
  };
  for (int row = 0; row < model_.rowCount(); ++row)
    visit(visit, model_.item(row));
}

// The current folder.

QModelIndex FolderTree::RootFor(const QString& path) const {
  QModelIndex best;
  for (int row = 0; row < model_.rowCount(); ++row) {
    const QModelIndex root = model_.index(row, 0);
    if (IsInside(path, PathOf(root)) && PathOf(root).size() > PathOf(best).size()) best = root;
  }
  return best;
}

void FolderTree::SetCurrentFolder(const QString& path) {
  const QString folder = StripSlash(AbsolutePath(path));
  if (!FolderExists(folder)) return;
  revealing_ = folder;
  relisted_ = false;
  Choose(folder);
  Reveal();
}

void FolderTree::Choose(const QString& path) {
  current_ = path;
  Q_EMIT FolderClick(path);
}

/// Unfolds as far as is listed; goes on when the next list is there.
void FolderTree::Reveal() {
  if (revealing_.isEmpty()) return;
  QModelIndex at = RootFor(revealing_);
  while (at.isValid() && PathOf(at) != revealing_) {
    if (!at.data(kListedRole).toBool()) {
      // Opening lists it.
      expand(at);
      return;
    }
    QModelIndex next;
    for (int row = 0; row < model_.rowCount(at); ++row)
      if (IsInside(revealing_, PathOf(model_.index(row, 0, at)))) next = model_.index(row, 0, at);
    if (!next.isValid() && !std::exchange(relisted_, true)) return List(at);
    if (next.isValid()) expand(at);
    at = next;
  }
  revealing_.clear();
  if (!at.isValid()) return;
  const QScopedValueRollback quiet(quiet_, true);
  setCurrentIndex(at);
  scrollTo(at, PositionAtCenter);
}

void FolderTree::focusInEvent(QFocusEvent* event) {
  // The view makes the first row current when there is none; that is no choice of the user's.
  const QScopedValueRollback quiet(quiet_, true);
  QTreeView::focusInEvent(event);
}

void FolderTree::currentChanged(const QModelIndex& now, const QModelIndex& before) {
  QTreeView::currentChanged(now, before);
  const QString path = PathOf(now);
  if (quiet_ || path.isEmpty() || path == current_) return;
  revealing_.clear();
  // After the view is done with the key or the click: who listens may take a while.
  current_ = path;
  QMetaObject::invokeMethod(
      this,
      [this, path] {
        if (path == current_) Q_EMIT FolderClick(path);
      },
      Qt::QueuedConnection);
}

void FolderTree::mousePressEvent(QMouseEvent* event) {
  clickedAgain_ = event->button() == Qt::LeftButton && currentIndex().isValid() &&
                  indexAt(event->position().toPoint()) == currentIndex();
  QTreeView::mousePressEvent(event);
}

// Ticks.

QStringList FolderTree::TickedFolders() const {
  QStringList folders;
  QSet<QString> known;
  const auto visit = [&](const auto& self, const QStandardItem* item) -> void {
    const QString path = item->data(kPathRole).toString();
    if (item->isCheckable() && item->checkState() == Qt::Checked && !known.contains(path)) {
      folders.append(path);
      known.insert(path);
    }
    for (int row = 0; row < item->rowCount(); ++row)
      self(self, item->child(row));
  };
  for (int row = 0; row < model_.rowCount(); ++row)
    visit(visit, model_.item(row));
  return folders;
}

void FolderTree::TickWithSubfolders(const QModelIndex& folder) {
  model_.itemFromIndex(folder)->setCheckState(Qt::Checked);
  List(folder, true);
  Q_EMIT TicksChanged();
}

void FolderTree::ClearTicks() {
  const auto visit = [](const auto& self, QStandardItem* item) -> void {
    if (item->isCheckable()) item->setCheckState(Qt::Unchecked);
    for (int row = 0; row < item->rowCount(); ++row)
      self(self, item->child(row));
  };
  {
    const QScopedValueRollback quiet(quiet_, true);
    for (int row = 0; row < model_.rowCount(); ++row)
      visit(visit, model_.item(row));
  }
  Q_EMIT TicksChanged();
}

void FolderTree::contextMenuEvent(QContextMenuEvent* event) {
  const QModelIndex at = indexAt(event->pos());
  if (ticks_ == Ticks::No || PathOf(at).isEmpty()) return;
  QMenu menu(this);
  menu.addAction(tr("Tick This Folder and All Below"), this, [this, at] {
    TickWithSubfolders(at);
    expand(at);
  });
  menu.addAction(tr("Untick All"), this, &FolderTree::ClearTicks);
  menu.exec(event->globalPos());
}

}  // namespace zqm
