// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include "shell/result.h"

class QPrinter;
class QWidget;

namespace zqm {

/// Where a picture lies on a page: as large as fits, its aspect kept, in the middle. `page` and the
/// result in one unit; an empty size gives an empty place.
QRectF PlaceOnPage(const QSizeF& picture, const QRectF& page);

/// Prints one picture on one page, at the printer's resolution. A failure says why nothing was
/// printed.
Outcome PrintImage(const QImage& picture, QPrinter& printer);

/// Asks for a printer, which may be a PDF file, and prints. `title` names the print job. What goes
/// wrong is told in a message.
void PrintImageDialog(const QImage& picture, const QString& title, QWidget* parent);

}  // namespace zqm
