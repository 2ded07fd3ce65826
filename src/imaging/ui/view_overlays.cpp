// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/view_overlays.h"

#include <QImage>
#include <cmath>
#include <vector>

#include "shell/ui/look.h"

namespace zqm {
namespace {

constexpr int kCell = 32;  // of the region that marches
constexpr int kHandleSide = 7;

/// Diagonal stripes: a line in any direction crosses them.
const QImage& Stripes() {
  static const QImage stripes = [] {
    QImage image(kAntPhases, kAntPhases, QImage::Format_RGB32);
    for (int y = 0; y < kAntPhases; ++y) {
      for (int x = 0; x < kAntPhases; ++x)
        image.setPixel(x, y, (x + y) % kAntPhases < kAntPhases / 2 ? 0xff000000 : 0xffffffff);
    }
    return image;
  }();
  return stripes;
}

/// Marks the cells that a line crosses.
class Cells {
 public:
  explicit Cells(const QRect& room)
      : room_(room),
        across_(room.width() / kCell + 1),
        down_(room.height() / kCell + 1),
        marked_(static_cast<std::size_t>(across_ * down_)) {}

  void Add(const QLineF& line) {
    const double length = line.length();
    if (!std::isfinite(length)) return;
    const int steps = static_cast<int>(std::min(length, 1e5) / (kCell / 2)) + 1;
    for (int i = 0; i <= steps; ++i)
      Mark(line.pointAt(static_cast<double>(i) / steps));
  }

  QRegion Region() const {
    std::vector<QRect> rects;
    for (int y = 0; y < down_; ++y) {
      for (int x = 0; x < across_; ++x) {
        if (marked_[static_cast<std::size_t>(y * across_ + x)])
          rects.push_back(QRect(x * kCell, y * kCell, kCell, kCell).translated(room_.topLeft()));
      }
    }
    QRegion region;
    region.setRects(rects.data(), static_cast<int>(rects.size()));
    return region & room_;
  }

 private:
  // The line is a pixel wide and may lie on a cell's edge.
  void Mark(const QPointF& at) {
    for (const QPointF& corner : {QPointF(-1, -1), QPointF(1, -1), QPointF(-1, 1), QPointF(1, 1)}) {
      const QPointF inRoom = at + corner - room_.topLeft();
      const double x = std::floor(inRoom.x() / kCell), y = std::floor(inRoom.y() / kCell);
      if (x < 0 || y < 0 || x >= across_ || y >= down_) continue;
      marked_[static_cast<std::size_t>(y) * static_cast<std::size_t>(across_) +
              static_cast<std::size_t>(x)] = true;
    }
  }

  QRect room_;
  int across_, down_;
  std::vector<bool> marked_;
};

}  // namespace

void PaintAnts(QPainter& painter, const QPainterPath& line, int phase) {
  if (line.isEmpty()) return;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setBrush(Qt::NoBrush);
  QBrush stripes(Stripes());
  stripes.setTransform(QTransform::fromTranslate(phase % kAntPhases, 0));
  painter.setPen(QPen(stripes, 1));
  painter.drawPath(line);
  painter.restore();
}

QRegion RegionOfAnts(const QPainterPath& line, const QRect& room) {
  Cells cells(room);
  for (const QPolygonF& polygon : line.toSubpathPolygons()) {
    for (qsizetype i = 1; i < polygon.size(); ++i)
      cells.Add({polygon[i - 1], polygon[i]});
  }
  return cells.Region();
}

void PaintHandles(QPainter& painter, const VectorObject& object, const QTransform& toView) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(look::kAccent), 1));
  painter.drawPolygon(toView.map(object.Outline()));
  if (object.sizeable) {
    painter.setBrush(Qt::white);
    for (const Handle handle : HandlesOf(object)) {
      QRectF square(0, 0, kHandleSide, kHandleSide);
      square.moveCenter(toView.map(HandlePoint(object, handle)));
      painter.drawRect(square.toRect());
    }
  }
  painter.restore();
}

}  // namespace zqm
