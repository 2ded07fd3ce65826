// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/ui/check_list.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QSet>

#include "shell/ui/look.h"

namespace zqm {

void CheckListModel::SetItems(const QStringList& items) {
  const QStringList ticked = Ticked();
  const QSet<QString> kept(ticked.begin(), ticked.end());
  beginResetModel();
  items_ = items;
  ticks_.assign(static_cast<std::size_t>(items.size()), false);
  for (std::size_t row = 0; row < ticks_.size(); ++row)
    ticks_[row] = kept.contains(items_.at(static_cast<qsizetype>(row)));
  endResetModel();
}

QStringList CheckListModel::Ticked() const {
  QStringList ticked;
  for (std::size_t row = 0; row < ticks_.size(); ++row)
    if (ticks_[row]) ticked.append(items_.at(static_cast<qsizetype>(row)));
  return ticked;
}

void CheckListModel::Tick(const QList<int>& rows, bool ticked) {
  if (rows.isEmpty()) return;
  for (const int row : rows)
    ticks_[static_cast<std::size_t>(row)] = ticked;
  Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::CheckStateRole});
  Q_EMIT ItemCheck();
}

int CheckListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

QVariant CheckListModel::data(const QModelIndex& index, int role) const {
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return items_.at(index.row());
  if (role == Qt::CheckStateRole)
    return ticks_[static_cast<std::size_t>(index.row())] ? Qt::Checked : Qt::Unchecked;
  return {};
}

bool CheckListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole) return false;
  Tick({index.row()}, value.toInt() == Qt::Checked);
  return true;
}

Qt::ItemFlags CheckListModel::flags(const QModelIndex& index) const {
  return QAbstractListModel::flags(index) | Qt::ItemIsUserCheckable;
}

CheckList::CheckList(QWidget* parent)
    : QListView(parent), model_(new CheckListModel(this)), shown_(new QSortFilterProxyModel(this)) {
  shown_->setSourceModel(model_);
  shown_->setFilterCaseSensitivity(Qt::CaseInsensitive);
  setModel(shown_);
  setUniformItemSizes(true);
  setTextElideMode(Qt::ElideRight);
  setEditTriggers(NoEditTriggers);
  connect(model_, &CheckListModel::ItemCheck, this, &CheckList::ItemCheck);
}

void CheckList::SetTicked(const QStringList& items) {
  for (const bool ticked : {false, true}) {
    QList<int> rows;
    for (int row = 0; row < model_->rowCount(); ++row)
      if (items.contains(Items().at(row)) == ticked) rows.append(row);
    model_->Tick(rows, ticked);
  }
}

void CheckList::TickNone() {
  SetTicked({});
}

void CheckList::Find(const QString& text) {
  shown_->setFilterFixedString(text);
}

void CheckList::TickShown(bool ticked) {
  QList<int> rows;
  for (int row = 0; row < shown_->rowCount(); ++row)
    rows.append(shown_->mapToSource(shown_->index(row, 0)).row());
  model_->Tick(rows, ticked);
}

void CheckList::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu(this);
  connect(menu.addAction(tr("Tick All")), &QAction::triggered, this, [this] { TickShown(true); });
  connect(menu.addAction(tr("Tick None")), &QAction::triggered, this, [this] { TickShown(false); });
  menu.exec(event->globalPos());
}

void CheckList::mouseReleaseEvent(QMouseEvent* event) {
  const QModelIndex pressed = currentIndex();
  const QVariant before = pressed.data(Qt::CheckStateRole);
  QListView::mouseReleaseEvent(event);
  // The box itself has just been dealt with; the text beside it ticks as well.
  const bool onRow = pressed.isValid() && indexAt(event->position().toPoint()) == pressed;
  if (event->button() != Qt::LeftButton || !onRow) return;
  if (pressed.data(Qt::CheckStateRole) == before)
    shown_->setData(pressed, before == Qt::Checked ? Qt::Unchecked : Qt::Checked,
                    Qt::CheckStateRole);
}

void CheckList::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  if (shown_->rowCount() > 0) return;
  QPainter painter(viewport());
  painter.setPen(QColor(look::kQuiet));
  painter.drawText(viewport()->rect().adjusted(look::kSpace8, 0, -look::kSpace8, 0),
                   Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

}  // namespace zqm
