// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

namespace zqm {

/// Draws the texts of a table with room at both sides, cut in the middle where they are too long.
/// A text has the colour that its model gives it, if any. Of a path it shows the name first, then
/// the folder in a quiet voice.
class PathDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  enum class Folders { Hidden, Shown };
  explicit PathDelegate(Folders folders, QObject* parent = nullptr);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;

 private:
  Folders folders_;
};

}  // namespace zqm
