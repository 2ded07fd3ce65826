// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QObject>
#include <map>
#include <span>

class QMenu;
class QMenuBar;
class QWidget;

namespace zqm {

/// Every command of the main window.
enum class Command {
  OpenFolder,
  EditPhoto,
  ExternalEditor,
  MoveTo,
  CopyTo,
  Convert,
  Pdf,
  Watermark,
  Resize,
  Print,
  Rename,
  Delete,
  DeleteRejected,
  Quit,
  SelectAll,
  SelectNone,
  CopyPaths,
  SingleRow,
  MultipleRows,
  SortByName,
  SortByFlag,
  ZoomIn,
  ZoomOut,
  ZoomFit,
  ZoomFull,
  FullScreen,
  Compare,
  InfoPanel,
  Slideshow,
  Refresh,
  CatalogFolders,
  CatalogSelected,
  ShowCatalogue,
  Search,
  Rebuild,
  Reconnect,
  NewDatabase,
  SelectDatabase,
  Optimize,
  Rate1,
  Rate2,
  Rate3,
  Rate4,
  Rate5,
  Flag,
  Unflag,
  Reject,
  WallpaperCenter,
  WallpaperStretch,
  WallpaperTile,
  RotateClockwise,
  RotateCounterClockwise,
  Rotate180,
  FlipVertical,
  FlipHorizontal,
  Editors,
  Settings,
  Guide,
  About,
};

/// The actions behind menus, pop-up menus and shortcuts, made from one table.
class MainActions : public QObject {
  Q_OBJECT
 public:
  explicit MainActions(QWidget* window);

  QAction* Get(Command command) const { return actions_.at(command); }
  /// File, Edit, View, Catalogue, Photo, Tools, Help.
  void FillMenuBar(QMenuBar* bar) const;
  /// What there is to do with the selected photos.
  void FillRatingMenu(QMenu* menu) const;
  void FillFlagMenu(QMenu* menu) const;
  void FillWallpaperMenu(QMenu* menu) const;
  void FillRotateMenu(QMenu* menu) const;

  /// Commands that need a selection, or photos in the list.
  void SetSelected(int count);
  /// Whether user values may be edited.
  void SetEditable(bool editable);

 Q_SIGNALS:
  void Triggered(zqm::Command command);

 private:
  void Fill(QMenu* menu, std::span<const Command> commands) const;
  std::map<Command, QAction*> actions_;
};

}  // namespace zqm
