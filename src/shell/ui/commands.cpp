// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/commands.h"

#include <QAction>
#include <QKeySequence>

#include "shell/ui/look.h"

namespace zqm {

QAction* AddCommand(QWidget* window, QObject* parent, const CommandText& command) {
  auto* action = new QAction(QString::fromUtf16(command.text), parent);
  action->setObjectName(QString::fromLatin1(command.name));
  action->setShortcut(QKeySequence(QString::fromUtf16(command.shortcut)));
  if (command.icon[0] != '\0') action->setIcon(look::Icon(command.icon));
  if (command.toolTip[0] != u'\0') action->setToolTip(QString::fromUtf16(command.toolTip));
  window->addAction(action);
  return action;
}

}  // namespace zqm
