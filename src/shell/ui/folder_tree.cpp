// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/folder_tree.h"

#include <QCollator>
#include <QContextMenuEvent>
#include <QDir>
#include <QHeaderView>
#include <QMenu>
#include <QScopedValueRollback>
#include <QStandardPaths>
#include <QStorageInfo>
#include <algorithm>

#include "shell/error.h"
#include "shell/files.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kPathRole = Qt::UserRole + 1;
constexpr int kListedRole = Qt::UserRole + 2;
constexpr int kRestMilliseconds = 200;
constexpr int kListers = 4;  // network folders may be slow, and they wait more than they work

/// Names of the folders right inside, hidden ones left out.
QStringList Subfolders(const QString& folder) {
  QStringList names = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
  QCollator collator;
  collator.setNumericMode(true);
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  std::ranges::sort(names, [&collator](const QString& a, const QString& b) {
    return collator.compare(a, b) < 0;
  });
  return names;
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

FolderTree::FolderTree(Ticks ticks, QWidget* parent) : QTreeView(parent), ticks_(ticks) {
  setModel(&model_);
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setEditTriggers(NoEditTriggers);
  setFrameShape(QFrame::NoFrame);
  setProperty("role", u"bare"_s);
  setIndentation(look::kSpace16);
  setIconSize({look::kIconSize, look::kIconSize});
  pool_.setMaxThreadCount(kListers);
  rest_.setSingleShot(true);
  rest_.setInterval(kRestMilliseconds);
  connect(&rest_, &QTimer::timeout, this, &FolderTree::RelistChanged);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &FolderTree::OnFolderChanged);
  connect(this, &QTreeView::expanded, this, [this](const QModelIndex& index) {
    if (!index.data(kListedRole).toBool()) List(index);
  });
  connect(&model_, &QStandardItemModel::itemChanged, this, [this] {
    if (!quiet_) Q_EMIT TicksChanged();
  });
  SetRoots(UsualRoots());
}

FolderTree::~FolderTree() {
  pool_.clear();
  pool_.waitForDone();
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
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes())
    if (IsUsersVolume(volume))
      roots.push_back({volume.displayName(), volume.rootPath(), "drive-removable-media"});
  roots.push_back({tr("File System"), QDir::rootPath(), "drive-harddisk"});
  return roots;
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
  pool_.start([this, path, at = QPersistentModelIndex(index), tickAll] {
    const QStringList names = Subfolders(path);
    QMetaObject::invokeMethod(this, [this, at, names, tickAll] {
      if (at.isValid()) Guarded("FolderTree", "Merge", [&] { Merge(at, names, tickAll); });
    });
  });
}

void FolderTree::Merge(const QModelIndex& index, const QStringList& names, bool tickAll) {
  QStandardItem* parent = model_.itemFromIndex(index);
  const QString folder = PathOf(index);
  {
    const QScopedValueRollback quiet(quiet_, true);
    for (int row = parent->rowCount() - 1; row >= 0; --row) {
      const QString path = parent->child(row)->data(kPathRole).toString();
      if (!path.isEmpty() && names.contains(GetFileName(path))) continue;
      // The current folder is gone: its parent takes its place.
      if (!path.isEmpty() && IsInside(current_, path)) {
        setCurrentIndex(index);
        QMetaObject::invokeMethod(
            this, [this, folder] { Choose(folder); }, Qt::QueuedConnection);
      }
      parent->removeRow(row);
    }
    for (int row = 0; row < names.size(); ++row) {
      const bool there = row < parent->rowCount() && parent->child(row)->text() == names[row];
      if (!there)
        parent->insertRow(row, MakeItem(names[row], Within(folder, names[row]), "folder"));
      if (!tickAll) continue;
      parent->child(row)->setCheckState(Qt::Checked);
      List(parent->child(row)->index(), true);
    }
    parent->setData(true, kListedRole);
  }
  watcher_.addPath(folder);
  if (tickAll) Q_EMIT TicksChanged();
  Reveal();
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

// Ticks.

QStringList FolderTree::TickedFolders() const {
  QStringList folders;
  const auto visit = [&folders](const auto& self, const QStandardItem* item) -> void {
    const QString path = item->data(kPathRole).toString();
    if (item->isCheckable() && item->checkState() == Qt::Checked && !folders.contains(path))
      folders.append(path);
    for (int row = 0; row < item->rowCount(); ++row)
      self(self, item->child(row));
  };
  for (int row = 0; row < model_.rowCount(); ++row)
    visit(visit, model_.item(row));
  return folders;
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
    model_.itemFromIndex(at)->setCheckState(Qt::Checked);
    expand(at);
    List(at, true);
  });
  menu.addAction(tr("Untick All"), this, &FolderTree::ClearTicks);
  menu.exec(event->globalPos());
}

}  // namespace zqm
