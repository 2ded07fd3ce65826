// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAction>
#include <QObject>
#include <map>

class QMenu;
class QMenuBar;
class QWidget;

namespace zqm {

/// Every command of the photo editor.
enum class EditCommand {
  Open,
  Save,
  SaveAs,
  QuickPrint,
  Minimize,
  Exit,
  Undo,
  UndoAll,
  Redo,
  Level,
  Rotate180,
  RotateClockwise,
  RotateCounterClockwise,
  CustomRotation,
  FlipHorizontal,
  FlipVertical,
  Crop,
  Resize,
  RedEye,
  Sharpen,
  Color,
  Saturation,
  Brightness,
  Watermark,
  MagicWand,
  Rectangle,
  Ellipse,
  Polygon,
  Lasso,
  Navigate,
  MagicSettings,
  ClearSelection,
  Grey,
  BlackWhite,
  Colors16,
  Colors256Threshold,
  Colors256Ordered,
  UserFilter,
  BumpMap,
  Lens,
  Wave,
  Morph,
  Sepia,
  ActualSize,
  AutoFit,
  OriginalImage,
  EditingPreview,
  Workflow,
  About,
};

/// The actions behind the editor's menus and shortcuts, made from one table.
class EditActions : public QObject {
  Q_OBJECT
 public:
  explicit EditActions(QWidget* window);

  QAction* Get(EditCommand command) const { return actions_.at(command); }
  /// File, Edit, Selection Tool, Colors, Effects, View, Help.
  void FillMenuBar(QMenuBar* bar) const;
  /// What a right click on the picture offers.
  void FillPictureMenu(QMenu* menu) const;

 Q_SIGNALS:
  void Triggered(zqm::EditCommand command);

 private:
  std::map<EditCommand, QAction*> actions_;
};

}  // namespace zqm
