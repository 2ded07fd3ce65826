// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

namespace zqm {

/// Draws one thumbnail: mark above, picture in its frame, file name below.
class ThumbnailDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void SetThumbnailSize(int pixels) { size_ = pixels; }
  /// Of a whole cell for thumbnails of that size.
  static QSize CellSize(int pixels);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  int size_ = 140;
};

}  // namespace zqm
