// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/ui/sheet_picture.h"

#include <QPainter>
#include <algorithm>

#include "imaging/object_painter.h"

namespace zqm {
namespace {

template <class Paint>
QImage OnSheet(const QSize& sheet, double dpi, const Paint& paint) {
  const double scale = dpi / kSheetDpi;
  QImage image((QSizeF(sheet) * scale).toSize().expandedTo({1, 1}), QImage::Format_RGB32);
  if (image.isNull()) return image;
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setRenderHints(QPainter::SmoothPixmapTransform | QPainter::Antialiasing);
  painter.scale(scale, scale);
  paint(painter);
  return image;
}

}  // namespace

double PreviewDpi(const QSize& sheet) {
  constexpr double kSharp = 150, kMostSide = 3000;
  return std::min(kSharp, kMostSide * kSheetDpi / std::max(sheet.width(), sheet.height()));
}

QImage SheetPicture(const QSize& sheet, const Page& page, double dpi) {
  return OnSheet(sheet, dpi, [&](QPainter& painter) { PaintPage(painter, page); });
}

QImage SheetPicture(const PrintTemplate& layout, double dpi) {
  return OnSheet(layout.sheet, dpi,
                 [&](QPainter& painter) { PaintObjects(painter, layout.objects); });
}

}  // namespace zqm
