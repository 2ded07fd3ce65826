// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "imaging/ui/image_x.h"

namespace zqm {

/// The photo that a template is composed on. A layer that is dragged near an edge or the middle of
/// the photo snaps to it, with a line that shows where, unless Ctrl is held; several at once keep
/// their distances and don't.
class TemplateSurface : public ImageX {
  Q_OBJECT
 public:
  explicit TemplateSurface(QWidget* parent = nullptr);

 protected:
  void PaintOver(QPainter& painter, const QRegion& region) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void ReplaceObject(const VectorObject& object) override;
  bool Snaps(const VectorObject& object) const;

  VectorObjects before_;  // the layers as they were when the mouse took one
  bool dragging_ = false;
  bool freely_ = false;
  std::optional<double> lineX_, lineY_;  // pixels of the photo
};

}  // namespace zqm
