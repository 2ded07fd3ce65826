// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QListView>
#include <QString>
#include <QStringList>
#include <QTimer>

namespace zqm {

class ThumbnailList;

/// The view of a `ThumbnailList`: one row or many, marks, selection by mouse and keyboard whose
/// order is kept.
class ImageMultiX : public QListView {
  Q_OBJECT
 public:
  enum class Rows { Single, Multiple };

  explicit ImageMultiX(QWidget* parent = nullptr);
  ~ImageMultiX() override;

  /// Not owned.
  void SetList(ThumbnailList* list);
  void SetRows(Rows rows);
  /// The longer side of a thumbnail, 80 to 320.
  void SetThumbnailSize(int pixels);
  int ThumbnailSize() const { return size_; }
  /// Shown in the middle while the list is empty.
  void SetEmptyText(const QString& text);

  /// In the order in which they were selected.
  const QStringList& SelectedPaths() const { return selected_; }
  /// Selects these, in this order, and brings the last one into view.
  void SelectPaths(const QStringList& paths);
  /// The keys go on from that photo; the selection stays.
  void MakeCurrent(const QString& path);
  /// All, in the order of the list.
  void selectAll() override;
  void BlockSelectionSignals(bool block) { quiet_ = block; }

 Q_SIGNALS:
  void OnImageSelect();
  /// Nothing is selected any more.
  void OnImageDeselect();
  /// The view has moved over the list.
  void OnImageDraw();
  /// Double click or Enter.
  void Activated(const QString& path);
  void MenuWanted(const QPoint& globalPosition);
  void ThumbnailSizeChanged(int pixels);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void selectionChanged(const QItemSelection& now, const QItemSelection& before) override;
  void dataChanged(const QModelIndex& first, const QModelIndex& last,
                   const QList<int>& roles) override;
  void updateGeometries() override;
  void reset() override;

 private:
  ThumbnailList* List() const;
  void ApplySize();
  void TellVisible();
  void OrderRange();
  QString PathAt(const QModelIndex& index) const;

  QStringList selected_;
  QString emptyText_;
  QTimer visibleTimer_;
  Rows rows_ = Rows::Single;
  int size_ = 140;
  bool quiet_ = false;
};

}  // namespace zqm
