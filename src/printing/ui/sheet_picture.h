// SPDX-License-Identifier: GPL-3.0-or-later
// Sheets as the screen shows them.
#pragma once

#include <QImage>

#include "printing/page_painter.h"

namespace zqm {

/// Pixels to the inch of paper, at which a sheet is shown; less for posters.
double PreviewDpi(const QSize& sheet);

/// The sheet with its photos on white, or with its boxes in their colours, as large as `dpi` makes
/// it. A box whose photo can't be printed names it and says why. Null without memory for it.
/// Thread-safe.
QImage SheetPicture(const QSize& sheet, std::span<const QRectF> boxes, const QStringList& photos,
                    double dpi, const PictureSettings& load);
QImage SheetPicture(const PrintTemplate& layout, double dpi);

}  // namespace zqm
