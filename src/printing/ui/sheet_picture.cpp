// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/ui/sheet_picture.h"

#include <QGuiApplication>
#include <QPainter>
#include <QTextOption>
#include <algorithm>

#include "imaging/object_painter.h"
#include "shell/files.h"
#include "shell/ui/look.h"

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

/// On the screen only: on paper the box is white.
void PaintReason(QPainter& painter, const EmptyBox& empty) {
  constexpr double kMargin = 4, kShare = 12;
  constexpr int kLeastLetters = 12, kMostLetters = 24;
  painter.setPen(QPen(QColor(look::kPlain), 1, Qt::DashLine));
  painter.drawRect(empty.box);
  QFont font = QGuiApplication::font();
  font.setPixelSize(
      std::clamp(static_cast<int>(empty.box.width() / kShare), kLeastLetters, kMostLetters));
  painter.setFont(font);
  painter.setPen(QColor(look::kPlain));
  const QRectF room = empty.box.adjusted(kMargin, kMargin, -kMargin, -kMargin);
  painter.setClipRect(room);
  QTextOption lines(Qt::AlignCenter);
  lines.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  painter.drawText(room, GetFileName(empty.why.File) + u'\n' + empty.why.Reason, lines);
  painter.setClipping(false);
}

}  // namespace

double PreviewDpi(const QSize& sheet) {
  constexpr double kSharp = 150, kMostSide = 3000;
  return std::min(kSharp, kMostSide * kSheetDpi / std::max(sheet.width(), sheet.height()));
}

QImage SheetPicture(const QSize& sheet, std::span<const QRectF> boxes, const QStringList& photos,
                    double dpi, const PictureSettings& load) {
  return OnSheet(sheet, dpi, [&](QPainter& painter) {
    for (const EmptyBox& empty : PaintPage(painter, boxes, photos, dpi, load))
      PaintReason(painter, empty);
  });
}

QImage SheetPicture(const PrintTemplate& layout, double dpi) {
  return OnSheet(layout.sheet, dpi,
                 [&](QPainter& painter) { PaintObjects(painter, layout.objects); });
}

}  // namespace zqm
