// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/selection.h"

#include <QPainter>
#include <cmath>
#include <opencv2/imgproc.hpp>

#include "imaging/cv_view.h"
#include "imaging/row_blocks.h"

namespace zqm {
namespace {

/// The painter's coordinates end at 2^15.
constexpr int kPaintedAtOnce = 1 << 14;
/// More lines than these are drawn coarser: nobody can tell them apart.
constexpr int kMostOutlinePoints = 40'000;

QPainterPath Clipped(const QPainterPath& shape, const QSize& picture) {
  const QRectF all({}, QSizeF(picture));
  if (all.contains(shape.boundingRect())) return shape;
  QPainterPath room;
  room.addRect(all);
  return shape.intersected(room);
}

/// 255 where a pixel's samples are all within the tolerance of the seed's.
cv::Mat Similar(const QImage& in, const QPoint& seed, int tolerance) {
  const cv::Mat pixels = CvView(in);
  const cv::Mat one = pixels(cv::Rect(seed.x(), seed.y(), 1, 1));
  const double full = IsDeep(in) ? 65535 : 255;
  const double reach = std::floor(full * std::clamp(tolerance, 0, 99) / 100);
  const cv::Scalar colour = cv::sum(one);
  cv::Scalar low = colour - cv::Scalar::all(reach), high = colour + cv::Scalar::all(reach);
  // A fourth sample that isn't alpha is nothing.
  if (!in.hasAlphaChannel()) low[3] = 0, high[3] = full;
  cv::Mat similar(pixels.size(), CV_8UC1);
  std::atomic<bool> failed = false;
  ForRowBlocks(in.height(), std::int64_t{in.width()} * 4, [&](int begin, int end) {
    try {
      cv::Mat rows = similar.rowRange(begin, end);
      cv::inRange(pixels.rowRange(begin, end), low, high, rows);
    } catch (const cv::Exception&) {
      failed = true;
    }
  });
  return failed ? cv::Mat() : similar;
}

/// Reads an area at every `step`-th pixel, counted from the picture's corner; all around it is
/// out.
class Samples {
 public:
  Samples(const QImage& area, const QPoint& corner, int step)
      : area_(area), corner_(corner), step_(step) {}

  bool At(int column, int row) const {
    const int x = column * step_ + step_ / 2 - corner_.x();
    const int y = row * step_ + step_ / 2 - corner_.y();
    return x >= 0 && y >= 0 && x < area_.width() && y < area_.height() &&
           area_.constScanLine(y)[x] != 0;
  }

 private:
  const QImage& area_;
  QPoint corner_;
  int step_;
};

}  // namespace

Selection Selection::Rectangle(const QRectF& area, const QSize& picture) {
  const QRectF r = area.normalized() & QRectF({}, QSizeF(picture));
  Selection selection;
  const QPoint corner(qRound(r.left()), qRound(r.top()));
  selection.bounds_ =
      QRect(corner, QSize(qRound(r.right()) - corner.x(), qRound(r.bottom()) - corner.y()));
  return selection;
}

Selection Selection::Ellipse(const QRectF& area, const QSize& picture) {
  const QRectF r = area.normalized();
  Selection selection;
  if (r.width() <= 0 || r.height() <= 0) return selection;
  selection.shape_.addEllipse(r);
  selection.shape_ = Clipped(selection.shape_, picture);
  selection.bounds_ = selection.shape_.boundingRect().toAlignedRect() & QRect({}, picture);
  return selection;
}

Selection Selection::Polygon(const QPolygonF& corners, const QSize& picture) {
  Selection selection;
  const QRectF r = corners.boundingRect();
  if (r.width() <= 0 || r.height() <= 0) return selection;
  selection.shape_.addPolygon(corners);
  selection.shape_.closeSubpath();
  selection.shape_ = Clipped(selection.shape_, picture);
  selection.bounds_ = selection.shape_.boundingRect().toAlignedRect() & QRect({}, picture);
  return selection;
}

Selection Selection::MagicWand(const QImage& picture, const QPoint& seed, int tolerance) {
  const QImage in = InWorkFormat(picture);
  if (in.isNull() || !in.rect().contains(seed)) return {};
  constexpr int kFilled = 128;
  Selection selection;
  try {
    cv::Mat similar = Similar(in, seed, tolerance);
    if (similar.empty()) return {};
    cv::Rect filled;
    cv::floodFill(similar, {seed.x(), seed.y()}, kFilled, &filled, 0, 0, 4);
    QImage area(filled.width, filled.height, QImage::Format_Grayscale8);
    if (area.isNull()) return {};
    cv::Mat out = CvView(area);
    cv::compare(similar(filled), kFilled, out, cv::CMP_EQ);
    selection.area_ = area;
    selection.bounds_ = QRect(filled.x, filled.y, filled.width, filled.height);
  } catch (const cv::Exception&) {
    return {};  // out of memory
  }
  return selection;
}

QImage Selection::Mask(const QRect& box) const {
  QImage mask(box.size(), QImage::Format_Grayscale8);
  if (mask.isNull()) return {};
  mask.fill(0);
  const QRect covered = bounds_ & box;
  if (covered.isEmpty()) return mask;
  for (int top = covered.top(); top <= covered.bottom(); top += kPaintedAtOnce) {
    for (int left = covered.left(); left <= covered.right(); left += kPaintedAtOnce) {
      const QRect part = QRect(left, top, kPaintedAtOnce, kPaintedAtOnce) & covered;
      PaintMask(mask, part, box.topLeft());
    }
  }
  return mask;
}

/// One part of a mask whose corner is at `origin`.
void Selection::PaintMask(QImage& mask, const QRect& part, const QPoint& origin) const {
  const QPoint to = part.topLeft() - origin;
  if (shape_.isEmpty()) {
    const QPoint from = part.topLeft() - bounds_.topLeft();
    const auto width = static_cast<std::size_t>(part.width());
    for (int y = 0; y < part.height(); ++y) {
      uchar* row = mask.scanLine(to.y() + y) + to.x();
      if (area_.isNull())
        std::memset(row, 255, width);
      else
        std::memcpy(row, area_.constScanLine(from.y() + y) + from.x(), width);
    }
    return;
  }
  // A window onto the mask, so that the painter's coordinates stay small.
  QImage window(mask.scanLine(to.y()) + to.x(), part.width(), part.height(), mask.bytesPerLine(),
                QImage::Format_Grayscale8);
  QPainter painter(&window);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(-part.topLeft());
  painter.fillPath(shape_, Qt::white);
}

QPainterPath Selection::Outline(const QRectF& visible, double scale) const {
  if (IsEmpty()) return {};
  if (!shape_.isEmpty()) return shape_;
  QPainterPath path;
  if (area_.isNull()) {
    path.addRect(bounds_);
    return path;
  }
  const QRect seen = visible.toAlignedRect() & bounds_;
  if (seen.isEmpty()) return {};
  int step = scale > 0 && scale < 1 ? static_cast<int>(1 / scale) : 1;
  for (path = AreaOutline(seen, step); path.elementCount() >= kMostOutlinePoints;
       path = AreaOutline(seen, step))
    step *= 2;
  return path;
}

/// The edges between samples that are in and those that are out, as long lines.
QPainterPath Selection::AreaOutline(const QRect& visible, int step) const {
  const Samples samples(area_, bounds_.topLeft(), step);
  const int left = visible.left() / step, right = visible.right() / step + 1;
  const int top = visible.top() / step, bottom = visible.bottom() / step + 1;
  const QPoint last = bounds_.bottomRight() + QPoint(1, 1);
  QPainterPath path;
  const auto line = [&](int x1, int y1, int x2, int y2) {
    path.moveTo(std::min(x1 * step, last.x()), std::min(y1 * step, last.y()));
    path.lineTo(std::min(x2 * step, last.x()), std::min(y2 * step, last.y()));
  };
  // Where the upright line left of each column began, or -1.
  std::vector<int> uprights(static_cast<std::size_t>(right - left + 1), -1);
  for (int row = top; row <= bottom; ++row) {
    if (path.elementCount() >= kMostOutlinePoints) return path;
    int flat = -1;
    for (int column = left; column <= right; ++column) {
      const bool here = samples.At(column, row);
      const bool edge = here != samples.At(column, row - 1) && column < right;
      if (edge && flat < 0) flat = column;
      if (!edge && flat >= 0) line(flat, row, column, row), flat = -1;
      int& upright = uprights[static_cast<std::size_t>(column - left)];
      const bool side = here != samples.At(column - 1, row) && row < bottom;
      if (side && upright < 0) upright = row;
      if (!side && upright >= 0) line(column, upright, column, row), upright = -1;
    }
  }
  return path;
}

QRectF LimitedRectangle(const QPointF& from, const QPointF& to, const SelectionLimits& limits,
                        const QSize& picture) {
  const auto inside = [&](const QPointF& at) {
    return QPointF(std::clamp<double>(at.x(), 0, picture.width()),
                   std::clamp<double>(at.y(), 0, picture.height()));
  };
  const QPointF anchor = inside(from), end = inside(to);
  const bool leftwards = to.x() < from.x(), upwards = to.y() < from.y();
  double width = std::abs(end.x() - anchor.x()), height = std::abs(end.y() - anchor.y());
  const auto most = [](int limit, double room) {
    return limit > 0 ? std::min<double>(limit, room) : room;
  };
  const double widest =
      most(limits.maxWidth, leftwards ? anchor.x() : picture.width() - anchor.x());
  const double highest =
      most(limits.maxHeight, upwards ? anchor.y() : picture.height() - anchor.y());
  if (limits.aspectRatio > 0) {
    width = std::max(width, height * limits.aspectRatio);
    width = std::min({width, widest, highest * limits.aspectRatio});
    height = width / limits.aspectRatio;
  } else {
    width = std::min(width, widest);
    height = std::min(height, highest);
  }
  return {leftwards ? anchor.x() - width : anchor.x(), upwards ? anchor.y() - height : anchor.y(),
          width, height};
}

}  // namespace zqm
