// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/number_edit.h"

#include <QKeyEvent>

#include "shell/ui/look.h"

namespace zqm {

NumberEdit::NumberEdit(TypedNumber number, const char* name, const QString& text, QWidget* parent)
    : QLineEdit(text, parent), number_(number) {
  setObjectName(QString::fromLatin1(name));
  look::MakeCompact(this);
}

void NumberEdit::keyPressEvent(QKeyEvent* event) {
  const QString typed = event->text();
  const bool types = !typed.isEmpty() && typed.at(0).isPrint() &&
                     (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0;
  if (types && !TakesKey(number_, typed.at(0))) return;
  QLineEdit::keyPressEvent(event);
}

}  // namespace zqm
