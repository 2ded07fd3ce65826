// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPainterPath>
#include <QPolygonF>
#include <QRect>
#include <QSize>

namespace zqm {

/// What a user picked of a picture: a shape or an area of equal colour. Clipped to the picture; a
/// selection without a pixel is no selection. A value; copies share the area. Coordinates are
/// pixels of the picture.
class Selection {
 public:
  Selection() = default;
  /// The nearest whole pixels.
  static Selection Rectangle(const QRectF& area, const QSize& picture);
  static Selection Ellipse(const QRectF& area, const QSize& picture);
  /// Closed by itself; where it crosses itself every second area is out. A lasso is one too.
  static Selection Polygon(const QPolygonF& corners, const QSize& picture);
  /// The pixels joined to `seed` (side by side) whose red, green, blue and alpha each differ from
  /// its own by at most `tolerance` percent, 0 to 99. None for a seed outside of the picture, or
  /// without memory for it.
  static Selection MagicWand(const QImage& picture, const QPoint& seed, int tolerance);

  bool IsEmpty() const { return bounds_.isEmpty(); }
  /// All pixels that are in it at least in part.
  const QRect& Bounds() const { return bounds_; }
  /// Its bounds are all that there is to it.
  bool IsRectangle() const { return !IsEmpty() && shape_.isEmpty() && area_.isNull(); }

  /// How much of each pixel of `box` is in it, Grayscale8, 255 all of it: shapes have smooth edges.
  /// Null when there is no memory for it.
  QImage Mask(const QRect& box) const;
  /// For a whole picture.
  QImage Mask(const QSize& picture) const { return Mask(QRect({}, picture)); }

  /// The line around it, to be drawn where a pixel of the picture takes `scale` pixels of the
  /// device. Of an area it is the edges within `visible`, as exact as that scale can show.
  QPainterPath Outline(const QRectF& visible, double scale) const;

 private:
  void PaintMask(QImage& mask, const QRect& part, const QPoint& origin) const;
  QPainterPath AreaOutline(const QRect& visible, int step) const;

  QRect bounds_;
  QPainterPath shape_;  // of ellipse and polygon
  QImage area_;         // of the wand, Grayscale8 over the bounds, 0 or 255
};

/// What a rectangle that is drawn must keep to.
struct SelectionLimits {
  double aspectRatio = -1;          ///< width by height; -1 is free
  int maxWidth = 0, maxHeight = 0;  ///< pixels; 0 is no limit
};

/// The rectangle from where the mouse went down to where it is, within limits and picture. A kept
/// aspect takes the larger of both sides as far as there is room.
QRectF LimitedRectangle(const QPointF& from, const QPointF& to, const SelectionLimits& limits,
                        const QSize& picture);

}  // namespace zqm
