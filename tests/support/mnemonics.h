// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QStringList>
#include <QWidget>

namespace zqm::test {

/// The letters by which the labels and buttons of a window are reached, one each.
inline QStringList Mnemonics(const QWidget& window) {
  QStringList letters;
  const auto take = [&](const QString& text) {
    const qsizetype at = text.indexOf(u'&');
    if (at >= 0) letters.append(text.at(at + 1).toUpper());
  };
  for (const auto* label : window.findChildren<QLabel*>())
    take(label->text());
  for (const auto* button : window.findChildren<QAbstractButton*>())
    take(button->text());
  letters.sort();
  return letters;
}

}  // namespace zqm::test
