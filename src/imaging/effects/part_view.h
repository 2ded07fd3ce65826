// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPoint>
#include <QSize>
#include <functional>

namespace zqm {

/// Which part of a picture the pixels in hand are, and how much smaller: a preview works on little
/// and still looks like the whole. As it comes: all of the picture at its own size.
struct PartView {
  double scale = 1;  ///< pixels in hand for one of the full picture, at most 1
  QPoint offset;     ///< of the first pixel in hand in the whole picture at that scale
  QSize whole;       ///< the whole picture at that scale; empty when it is what is in hand

  QSize WholeOf(const QImage& part) const { return whole.isEmpty() ? part.size() : whole; }
};

/// A change that works on parts too. Settings count in pixels of the full picture.
using PartChange = std::function<QImage(const QImage& part, const PartView& view)>;

}  // namespace zqm
