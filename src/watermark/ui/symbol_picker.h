// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QListWidget>

namespace zqm {

/// Signs that no key has, to be picked by mouse or keys; goes when one is picked or the user turns
/// to something else.
class SymbolPicker : public QListWidget {
  Q_OBJECT
 public:
  explicit SymbolPicker(QWidget* parent);

  /// Below a button.
  void ShowBelow(const QWidget& button);

 Q_SIGNALS:
  void Picked(const QString& symbol);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Pick(QListWidgetItem* item);
};

}  // namespace zqm
