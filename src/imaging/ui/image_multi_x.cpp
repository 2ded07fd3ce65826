// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/image_multi_x.h"

#include <QContextMenuEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSet>
#include <QWheelEvent>
#include <algorithm>

#include "imaging/thumbnail_list.h"
#include "imaging/ui/thumbnail_delegate.h"
#include "shell/ui/look.h"

namespace zqm {
namespace {
constexpr int kSmallest = 80, kLargest = 320, kSizeStep = 20;
}

ImageMultiX::ImageMultiX(QWidget* parent) : QListView(parent) {
  setProperty("role", QStringLiteral("thumbnails"));
  setItemDelegate(new ThumbnailDelegate(this));
  setFrameShape(QFrame::NoFrame);
  setSelectionMode(ExtendedSelection);
  setSelectionRectVisible(true);
  setMovement(Static);
  setResizeMode(Adjust);
  setUniformItemSizes(true);
  setEditTriggers(NoEditTriggers);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollMode(ScrollPerPixel);
  setMouseTracking(true);
  visibleTimer_.setSingleShot(true);
  visibleTimer_.setInterval(0);
  connect(&visibleTimer_, &QTimer::timeout, this, &ImageMultiX::TellVisible);
  const auto moved = [this] {
    visibleTimer_.start();
    Q_EMIT OnImageDraw();
  };
  connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, moved);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, moved);
  connect(this, &QListView::activated, this,
          [this](const QModelIndex& index) { Q_EMIT Activated(PathAt(index)); });
  SetRows(Rows::Single);
}

ImageMultiX::~ImageMultiX() = default;

ThumbnailList* ImageMultiX::List() const {
  return static_cast<ThumbnailList*>(model());
}

void ImageMultiX::SetList(ThumbnailList* list) {
  setModel(list);
  ApplySize();
}

QString ImageMultiX::PathAt(const QModelIndex& index) const {
  return index.data(ThumbnailList::PathRole).toString();
}

void ImageMultiX::SetRows(Rows rows) {
  rows_ = rows;
  setFlow(LeftToRight);
  setWrapping(rows == Rows::Multiple);
  setVerticalScrollBarPolicy(rows == Rows::Multiple ? Qt::ScrollBarAsNeeded
                                                    : Qt::ScrollBarAlwaysOff);
  setHorizontalScrollBarPolicy(rows == Rows::Multiple ? Qt::ScrollBarAlwaysOff
                                                      : Qt::ScrollBarAsNeeded);
  ApplySize();
}

void ImageMultiX::SetThumbnailSize(int pixels) {
  pixels = std::clamp(pixels, kSmallest, kLargest);
  if (pixels == size_) return;
  size_ = pixels;
  ApplySize();
  Q_EMIT ThumbnailSizeChanged(size_);
}

void ImageMultiX::ApplySize() {
  static_cast<ThumbnailDelegate*>(itemDelegate())->SetThumbnailSize(size_);
  const QSize cell = ThumbnailDelegate::CellSize(size_);
  setGridSize(cell);
  const int device = qRound(size_ * devicePixelRatioF());
  if (List() != nullptr) List()->SetThumbnailBox({device, device});
  const QModelIndex current = currentIndex();
  doItemsLayout();
  if (current.isValid()) scrollTo(current);
}

void ImageMultiX::SetEmptyText(const QString& text) {
  emptyText_ = text;
  viewport()->update();
}

void ImageMultiX::dataChanged(const QModelIndex& first, const QModelIndex& last,
                              const QList<int>& roles) {
  // Pictures and marks change no cell's size; the base class would lay the list out anew for each.
  if (roles.isEmpty() || roles.contains(Qt::DisplayRole))
    return QListView::dataChanged(first, last, roles);
  if (first == last)
    update(first);
  else
    viewport()->update();
}

// What is in view.

void ImageMultiX::updateGeometries() {
  QListView::updateGeometries();
  visibleTimer_.start();
}

void ImageMultiX::TellVisible() {
  if (List() == nullptr || List()->ImageCount() == 0) return;
  const QSize cell = gridSize();
  const QRect room = viewport()->rect();
  const int columns = std::max(1, room.width() / cell.width());
  const QModelIndex first = indexAt({cell.width() / 2, look::kSpace8});
  const bool single = rows_ == Rows::Single;
  const QModelIndex last =
      single ? indexAt({room.right() - 1, cell.height() / 2})
             : indexAt({columns * cell.width() - cell.width() / 2, room.bottom() - look::kSpace8});
  const int firstRow = first.isValid() ? first.row() : 0;
  const int shown =
      single ? room.width() / cell.width() + 2 : columns * (room.height() / cell.height() + 2);
  const int lastRow =
      last.isValid() ? last.row() : std::min(firstRow + shown, List()->ImageCount()) - 1;
  List()->SetVisible(firstRow, lastRow);
}

void ImageMultiX::resizeEvent(QResizeEvent* event) {
  const QModelIndex current = currentIndex();
  const bool wasInView = current.isValid() && viewport()->rect().intersects(visualRect(current));
  QListView::resizeEvent(event);
  if (wasInView) scrollTo(current);
  visibleTimer_.start();
}

// Selection.

void ImageMultiX::reset() {
  QListView::reset();
  selected_.clear();
  visibleTimer_.start();
}

void ImageMultiX::selectionChanged(const QItemSelection& now, const QItemSelection& before) {
  QListView::selectionChanged(now, before);
  const bool hadAny = !selected_.isEmpty();
  QSet<QString> left;
  for (const QModelIndex& index : before.indexes())
    left.insert(PathAt(index));
  selected_.removeIf([&left](const QString& path) { return left.contains(path); });
  QList<int> rows;
  for (const QModelIndex& index : now.indexes())
    rows.append(index.row());
  std::ranges::sort(rows);
  // A range goes on from where it began.
  if (rows.size() > 1 && currentIndex().row() == rows.first()) std::ranges::reverse(rows);
  const QSet<QString> known(selected_.begin(), selected_.end());
  for (const int row : rows)
    if (const QString path = List()->ImageFileName(row); !known.contains(path))
      selected_.append(path);
  if (rows.size() > 1) OrderRange();
  if (quiet_) return;
  if (!selected_.isEmpty())
    Q_EMIT OnImageSelect();
  else if (hadAny)
    Q_EMIT OnImageDeselect();
}

/// A whole range has its own order, also where single photos of it were selected before.
void ImageMultiX::OrderRange() {
  const QModelIndexList indexes = selectionModel()->selectedIndexes();
  const auto [first, last] = std::ranges::minmax(indexes, {}, &QModelIndex::row);
  const int current = currentIndex().row();
  if (last.row() - first.row() + 1 != indexes.size()) return;
  if (current != first.row() && current != last.row()) return;
  selected_.clear();
  for (int row = first.row(); row <= last.row(); ++row)
    selected_.append(List()->ImageFileName(row));
  if (current == first.row()) std::ranges::reverse(selected_);
}

void ImageMultiX::selectAll() {
  const bool before = quiet_;
  quiet_ = true;
  QListView::selectAll();
  quiet_ = before;
  if (selected_.isEmpty()) return;
  selected_ = List()->FileNames();
  if (!quiet_) Q_EMIT OnImageSelect();
}

void ImageMultiX::MakeCurrent(const QString& path) {
  const int row = List()->IndexOf(path);
  if (row < 0) return;
  const QModelIndex index = List()->index(row);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  scrollTo(index);
}

void ImageMultiX::SelectPaths(const QStringList& paths) {
  QItemSelection selection;
  QModelIndex last;
  QStringList found;
  for (const QString& path : paths) {
    const int row = List()->IndexOf(path);
    if (row < 0) continue;
    last = List()->index(row);
    selection.select(last, last);
    found.append(path);
  }
  // The order is the caller's, whatever order the rows have; one change is told.
  const bool before = quiet_;
  quiet_ = true;
  if (last.isValid()) selectionModel()->setCurrentIndex(last, QItemSelectionModel::NoUpdate);
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  quiet_ = before;
  selected_ = found;
  if (last.isValid()) scrollTo(last);
  if (quiet_) return;
  if (found.isEmpty())
    Q_EMIT OnImageDeselect();
  else
    Q_EMIT OnImageSelect();
}

void ImageMultiX::contextMenuEvent(QContextMenuEvent* event) {
  QPoint at = event->globalPos();
  if (event->reason() == QContextMenuEvent::Keyboard) {
    const QRect cell = currentIndex().isValid() ? visualRect(currentIndex()) : QRect();
    at = viewport()->mapToGlobal(cell.center());
  } else if (const QModelIndex under = indexAt(event->pos());
             under.isValid() && !selectionModel()->isSelected(under)) {
    selectionModel()->setCurrentIndex(under, QItemSelectionModel::ClearAndSelect);
  }
  Q_EMIT MenuWanted(at);
}

void ImageMultiX::wheelEvent(QWheelEvent* event) {
  const int turned = event->angleDelta().y();
  if (event->modifiers().testFlag(Qt::ControlModifier) && turned != 0) {
    SetThumbnailSize(size_ + (turned > 0 ? kSizeStep : -kSizeStep));
    return event->accept();
  }
  if (rows_ == Rows::Multiple || turned == 0) return QListView::wheelEvent(event);
  constexpr int kNotch = 120;
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() -
                                  turned * gridSize().width() / kNotch);
  event->accept();
}

void ImageMultiX::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  if (emptyText_.isEmpty() || (model() != nullptr && model()->rowCount() > 0)) return;
  QPainter painter(viewport());
  painter.setPen(QColor(look::kQuiet));
  painter.drawText(viewport()->rect().adjusted(look::kSpace24, 0, -look::kSpace24, 0),
                   Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

}  // namespace zqm
