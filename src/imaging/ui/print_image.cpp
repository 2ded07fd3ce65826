// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/print_image.h"

#include <QApplication>
#include <QPageLayout>
#include <QPrintDialog>
#include <QPrinter>

#include "imaging/resample.h"
#include "shell/busy.h"
#include "shell/messages.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

struct WaitCursor {
  WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

/// As many pixels as the place has on paper: more would only be sent in vain.
QImage ForPlace(const QImage& picture, const QSize& place) {
  if (place.width() >= picture.width() || place.isEmpty()) return picture;
  return RunAside([=] { return Resample(picture, place, ResampleFilter::Triangle); });
}

}  // namespace

QRectF PlaceOnPage(const QSizeF& picture, const QRectF& page) {
  if (picture.isEmpty() || page.isEmpty()) return {};
  QRectF place({}, picture.scaled(page.size(), Qt::KeepAspectRatio));
  place.moveCenter(page.center());
  return place;
}

Outcome PrintImage(const QImage& picture, QPrinter& printer) {
  if (picture.isNull()) return Failure{u"There is no picture to print"_s};
  const QRectF paintable = printer.pageLayout().paintRectPixels(printer.resolution());
  const QRectF place = PlaceOnPage(picture.size(), QRectF({}, paintable.size()));
  if (place.isEmpty()) return Failure{u"The page has no room for a picture"_s};
  const QImage pixels = ForPlace(picture, place.size().toSize());
  if (pixels.isNull()) return Failure{u"There is not enough memory for it"_s};
  QPainter painter;
  if (!painter.begin(&printer)) return Failure{u"The printer could not be reached"_s};
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(place, pixels);
  if (!painter.end() || printer.printerState() == QPrinter::Error)
    return Failure{u"The page could not be written"_s};
  return {};
}

void PrintImageDialog(const QImage& picture, const QString& title, QWidget* parent) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(title);
  printer.setCreator(QString::fromUtf16(kMessageTitle));
  if (picture.width() > picture.height()) printer.setPageOrientation(QPageLayout::Landscape);
  QPrintDialog dialog(&printer, parent);
  dialog.setWindowTitle(title);
  dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
  if (dialog.exec() != QDialog::Accepted) return;
  const Outcome printed = [&] {
    const WaitCursor wait;
    return PrintImage(picture, printer);
  }();
  if (!printed)
    MsgBox(u"The picture could not be printed: %1."_s.arg(printed.Reason()), MessageKind::Warning);
}

}  // namespace zqm
