// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/ui/sheet_surface.h"

#include <QPainter>

#include "shell/ui/look.h"

namespace zqm {
namespace {

QColor ReadableOn(const QColor& ground) {
  constexpr int kMiddle = 128;
  return qGray(ground.rgb()) < kMiddle ? QColor(look::kText) : QColor(look::kOnAccent);
}

}  // namespace

SheetSurface::SheetSurface(QWidget* parent) : ImageX(parent) {
  SetMouseInteract(QStringLiteral("OBJECTSELECT"), true);
}

void SheetSurface::PaintOver(QPainter& painter, const QRegion& region) {
  ImageX::PaintOver(painter, region);
  if (!HasImage()) return;
  painter.setBrush(Qt::NoBrush);
  for (const VectorObject& box : Objects().All()) {
    if (box.kind != ObjectKind::Rectangle) continue;
    const QRectF place(FromBitmap(box.Box().topLeft()), FromBitmap(box.Box().bottomRight()));
    if (!IsObjectSelected(box.id)) {
      painter.setPen(QPen(QColor(look::kLine), 0));
      painter.drawRect(place);
    }
    // Not through a box that lies over it.
    if (Objects().HitTest(box.Box().center(), 0) != box.id) continue;
    painter.setPen(ReadableOn(box.brushColour));
    painter.drawText(place, Qt::AlignCenter | Qt::TextDontClip, QString::number(box.id));
  }
}

}  // namespace zqm
