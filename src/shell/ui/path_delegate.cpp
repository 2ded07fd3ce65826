// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/path_delegate.h"

#include <QApplication>
#include <QBrush>
#include <QPainter>
#include <utility>

#include "shell/files.h"
#include "shell/ui/look.h"

namespace zqm {
namespace {

constexpr int kPadding = look::kSpace8;

}  // namespace

PathDelegate::PathDelegate(Folders folders, QObject* parent)
    : QStyledItemDelegate(parent), folders_(folders) {}

void PathDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  QStyleOptionViewItem ground = option;
  initStyleOption(&ground, index);
  const QString path = std::exchange(ground.text, QString());
  QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &ground, painter, option.widget);
  const QString folder = folders_ == Folders::Shown ? GetParentFolderName(path) : QString();
  const QString name = folder.isEmpty() ? path : GetFileName(path);
  const QRect room = option.rect.adjusted(kPadding, 0, -kPadding, 0);
  const QFontMetrics& metrics = option.fontMetrics;
  painter->save();
  const QVariant own = index.data(Qt::ForegroundRole);
  painter->setPen(own.isValid() ? own.value<QBrush>().color() : QColor(look::kText));
  painter->drawText(room, Qt::AlignVCenter,
                    metrics.elidedText(name, Qt::ElideMiddle, room.width()));
  const int taken = metrics.horizontalAdvance(name) + look::kSpace12;
  if (taken < room.width()) {
    painter->setPen(QColor(look::kQuiet));
    const QRect rest = room.adjusted(taken, 0, 0, 0);
    painter->drawText(rest, Qt::AlignVCenter,
                      metrics.elidedText(folder, Qt::ElideMiddle, rest.width()));
  }
  painter->restore();
}

}  // namespace zqm
