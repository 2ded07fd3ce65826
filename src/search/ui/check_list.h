// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <QSortFilterProxyModel>
#include <QStringList>
#include <vector>

namespace zqm {

/// Texts with a tick each.
class CheckListModel : public QAbstractListModel {
  Q_OBJECT
 public:
  explicit CheckListModel(QObject* parent) : QAbstractListModel(parent) {}

  /// Ticks of texts that stay are kept.
  void SetItems(const QStringList& items);
  const QStringList& Items() const { return items_; }
  /// In list order.
  QStringList Ticked() const;
  void Tick(const QList<int>& rows, bool ticked);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 Q_SIGNALS:
  void ItemCheck();

 private:
  QStringList items_;
  std::vector<bool> ticks_;
};

/// A list to tick in. Space or a click anywhere on a row ticks it; the pop-up menu ticks all that
/// are shown. Thousands of rows are no trouble.
class CheckList : public QListView {
  Q_OBJECT
 public:
  explicit CheckList(QWidget* parent = nullptr);

  void SetItems(const QStringList& items) { model_->SetItems(items); }
  const QStringList& Items() const { return model_->Items(); }
  QStringList Ticked() const { return model_->Ticked(); }
  void SetTicked(const QStringList& items);
  void TickNone();

  /// Shows only texts that contain this, letter case ignored; ticks stay.
  void Find(const QString& text);
  /// What an empty list says.
  void SetEmptyText(const QString& text) { emptyText_ = text; }

 Q_SIGNALS:
  /// The user has changed a tick.
  void ItemCheck();

 protected:
  void contextMenuEvent(QContextMenuEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void TickShown(bool ticked);

  CheckListModel* model_;
  QSortFilterProxyModel* shown_;
  QString emptyText_;
};

}  // namespace zqm
