// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/thumbnail_delegate.h"

#include <QPainter>
#include <QPainterPath>

#include "imaging/thumbnail_list.h"
#include "shell/ui/look.h"

namespace zqm {
namespace {

constexpr int kTopText = 20, kCaption = 20;
constexpr int kFrame = 4;  // between cell, frame and picture
constexpr double kOfflineOpacity = 0.5;
constexpr double kSmallText = 0.9;  // of the view's font

struct Cell {
  QRect all, top, picture, caption;
};

Cell Divide(const QRect& rect, int size) {
  Cell cell;
  const QSize whole = ThumbnailDelegate::CellSize(size);
  cell.all = QRect(rect.topLeft(), whole)
                 .adjusted(look::kSpace4, look::kSpace4, -look::kSpace4, -look::kSpace4);
  cell.top =
      QRect(cell.all.left() + kFrame, cell.all.top() + 2, cell.all.width() - 2 * kFrame, kTopText);
  cell.picture =
      QRect(cell.all.left() + (cell.all.width() - size) / 2, cell.top.bottom() + 1, size, size);
  cell.caption = QRect(cell.top.left(), cell.picture.bottom() + 1, cell.top.width(), kCaption);
  return cell;
}

/// A picture in the middle of its room, on whole pixels, not enlarged.
void DrawPicture(QPainter& painter, const QRect& room, const QImage& picture) {
  const double ratio = painter.device()->devicePixelRatioF();
  QSizeF size = QSizeF(picture.size()) / ratio;
  const bool larger = size.width() > room.width() || size.height() > room.height();
  if (larger) size.scale(room.size(), Qt::KeepAspectRatio);
  const QPoint corner(room.left() + qRound((room.width() - size.width()) / 2),
                      room.top() + qRound((room.height() - size.height()) / 2));
  painter.setRenderHint(QPainter::SmoothPixmapTransform, larger);
  painter.drawImage(QRectF(corner, size), picture);
}

void DrawPlaceholder(QPainter& painter, const QRect& room, bool broken) {
  if (!broken) {
    // Calm: a photo is on its way.
    const QRect box(0, 0, room.width() * 3 / 5, room.height() * 2 / 5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(look::kRaised));
    painter.drawRoundedRect(box.translated(room.center() - box.center()), look::kRadius,
                            look::kRadius);
    return;
  }
  const int size = qMin(room.width() / 3, 48);
  const QRect box =
      QRect(0, 0, size, size).translated(room.center() - QRect(0, 0, size, size).center());
  look::Icon("image-missing").paint(&painter, box);
}

/// A chain with a gap: the file is away.
void DrawBrokenLink(QPainter& painter, const QRect& room) {
  constexpr int kSign = 20;
  const QRect sign(room.right() - kSign - 3, room.bottom() - kSign - 3, kSign, kSign);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(look::kPanel));
  painter.drawEllipse(sign);
  painter.setPen(QPen(QColor(look::kText), 1.6, Qt::SolidLine, Qt::RoundCap));
  painter.setBrush(Qt::NoBrush);
  painter.save();
  painter.translate(QRectF(sign).center());
  painter.rotate(-45);
  painter.drawArc(QRectF(-7, -3, 6, 6), 50 * 16, 260 * 16);
  painter.drawArc(QRectF(1, -3, 6, 6), 230 * 16, 260 * 16);
  painter.drawLine(QPointF(0, -5), QPointF(0, -3.4));
  painter.drawLine(QPointF(0, 5), QPointF(0, 3.4));
  painter.restore();
}

void DrawTexts(QPainter& painter, const Cell& cell, const ThumbnailLook& look, const QString& name,
               const QFont& base, bool selected) {
  QFont font = base;
  font.setPointSizeF(base.pointSizeF() * kSmallText);
  painter.setFont(font);
  painter.setPen(QColor(selected ? look::kText : look.caption));
  painter.drawText(cell.caption, Qt::AlignCenter,
                   QFontMetrics(font).elidedText(name, Qt::ElideMiddle, cell.caption.width()));
  if (look.topText.isEmpty()) return;
  font.setBold(look.bold);
  font.setUnderline(look.underline);
  painter.setFont(font);
  painter.setPen(QColor(look.topColour));
  painter.drawText(cell.top, Qt::AlignCenter, look.topText);
}

}  // namespace

QSize ThumbnailDelegate::CellSize(int pixels) {
  return {pixels + 2 * (kFrame + look::kSpace8), pixels + kTopText + kCaption + 2 * look::kSpace8};
}

QSize ThumbnailDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
  return CellSize(size_);
}

void ThumbnailDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
  const Cell cell = Divide(option.rect, size_);
  const auto look = index.data(ThumbnailList::LookRole).value<ThumbnailLook>();
  const auto picture = index.data(ThumbnailList::PictureRole).value<QImage>();
  const auto state = index.data(ThumbnailList::StateRole).value<ThumbnailList::State>();
  const bool offline = index.data(ThumbnailList::OfflineRole).toBool();
  const bool selected = option.state.testFlag(QStyle::State_Selected);
  const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
  const bool focused = option.state.testFlag(QStyle::State_HasFocus);

  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  // The frame keeps its own colour; the selection is the ground inside and a ring around.
  const QRectF frame = QRectF(cell.all).adjusted(0.5, 0.5, -0.5, -0.5);
  const QRgb ground = selected ? 0xff35506d : hovered ? 0xff3a3a3a : look::kGround;
  painter->setPen(QPen(QColor(look.frame), 1));
  painter->setBrush(QColor(ground));
  painter->drawRoundedRect(frame, look::kRadius, look::kRadius);
  if (selected || focused) {
    painter->setPen(QPen(QColor(selected ? look::kAccent : look::kQuiet), selected ? 2 : 1));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(QRectF(cell.all).adjusted(-1.5, -1.5, 1.5, 1.5), look::kRadius + 2,
                             look::kRadius + 2);
  }
  painter->setOpacity(offline ? kOfflineOpacity : 1);
  if (picture.isNull())
    DrawPlaceholder(*painter, cell.picture, state == ThumbnailList::State::Broken);
  else
    DrawPicture(*painter, cell.picture, picture);
  painter->setOpacity(1);
  if (offline) DrawBrokenLink(*painter, cell.picture);
  DrawTexts(*painter, cell, look, index.data().toString(), option.font, selected);
  painter->restore();
}

}  // namespace zqm
