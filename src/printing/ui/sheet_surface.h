// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/ui/image_x.h"

namespace zqm {

/// The sheet that boxes are laid out on. Each has a thin line round it, since boxes of one colour
/// would run into one another, and its number, which tells the order in which photos come.
class SheetSurface : public ImageX {
  Q_OBJECT
 public:
  explicit SheetSurface(QWidget* parent = nullptr);

 protected:
  void PaintOver(QPainter& painter, const QRegion& region) override;
};

}  // namespace zqm
