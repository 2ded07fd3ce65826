// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QAction;
class QObject;
class QWidget;

namespace zqm {

/// A command of a window as its menus show it; texts may be "".
struct CommandText {
  const char16_t* text;  ///< with its mnemonic
  const char16_t* shortcut;
  const char* icon;  ///< freedesktop name
  const char* name;  ///< the action's `objectName`
  const char16_t* toolTip;
};

/// An action whose shortcut works in all of the window.
QAction* AddCommand(QWidget* window, QObject* parent, const CommandText& command);

}  // namespace zqm
