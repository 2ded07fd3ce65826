// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFileSystemWatcher>
#include <QPersistentModelIndex>
#include <QSet>
#include <QStandardItemModel>
#include <QTimer>
#include <QTreeView>
#include <vector>

namespace zqm {

/// The user's folders. What lies in a folder is listed beside the interface thread when the folder
/// is opened, and kept in step while it is open.
class FolderTree : public QTreeView {
  Q_OBJECT
 public:
  enum class Ticks { No, Yes };
  struct Root {
    QString caption;
    QString path;
    const char* icon;
  };

  /// With ticks each folder has a box of its own; ticking one says nothing about those in it.
  explicit FolderTree(Ticks ticks, QWidget* parent = nullptr);

  /// Pictures, home, desktop, documents, and the whole file system. Mounted volumes join them
  /// when they are known.
  static std::vector<Root> UsualRoots();
  void SetRoots(const std::vector<Root>& roots);

  /// "" without one.
  QString CurrentFolder() const { return current_; }
  /// Tells `FolderClick` at once and unfolds the tree down to the folder as it is listed. A folder
  /// that doesn't stand changes nothing.
  void SetCurrentFolder(const QString& path);
  /// Depth first, a folder before those in it; each once.
  QStringList TickedFolders() const;
  void ClearTicks();
  /// Ticks the folder and all below it; links to folders are not followed. They are read beside
  /// the interface thread: `TicksChanged` tells of each, the last when `IsTicking` ends.
  void TickWithSubfolders(const QModelIndex& folder);
  bool IsTicking() const { return ticking_ > 0; }

 Q_SIGNALS:
  /// Another folder was chosen, by mouse, keyboard or `SetCurrentFolder`, or the current one was
  /// clicked again.
  void FolderClick(const QString& path);
  void TicksChanged();

 protected:
  void currentChanged(const QModelIndex& now, const QModelIndex& before) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  struct Listing {
    QStringList names;    // sorted
    QSet<QString> links;  // those of them that are links
  };
  static Listing ListFolder(const QString& folder);
  void AddVolumes();
  QStandardItem* MakeItem(const QString& caption, const QString& path, const char* icon) const;
  QString PathOf(const QModelIndex& index) const;
  void List(const QModelIndex& index, bool tickAll = false);
  void Merge(const QModelIndex& index, const Listing& listing, bool tickAll);
  void RemoveVanished(QStandardItem* parent, const QSet<QString>& names);
  void Reveal();
  QModelIndex RootFor(const QString& path) const;
  void Choose(const QString& path);
  void OnFolderChanged(const QString& path);
  void RelistChanged();

  Ticks ticks_;
  QStandardItemModel model_;
  QFileSystemWatcher watcher_;
  QTimer rest_;
  QSet<QString> changed_;
  QString current_;
  QString revealing_;      // the folder that the tree is being unfolded to
  bool relisted_ = false;  // on the way there a list was old once
  int ticking_ = 0;        // lists under way whose folders will be ticked
  bool clickedAgain_ = false;
  bool usualRoots_ = false;
  bool quiet_ = false;
};

}  // namespace zqm
