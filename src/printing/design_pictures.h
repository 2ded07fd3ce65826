// SPDX-License-Identifier: GPL-3.0-or-later
// The two pictures that templates are designed with. Each is a file in a folder of the program's,
// which a user may replace; it is drawn when it is missing (the file is written then) or can't be
// read.
#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QSize>
#include <QString>

namespace zqm {

/// "Canvas.jpg", the blank page, in the shape of a sheet (pixels, above 0); smaller than that for
/// posters. Any thread.
QImage CanvasPicture(const QString& folder, const QSize& sheet);

/// "Palette.png", the colours to choose from.
QImage PalettePicture(const QString& folder);

/// The colour of the pixel at a place, or of the nearest one to a place beyond the edges; invalid
/// for a null image.
QColor ColourAt(const QImage& image, const QPointF& pixel);

}  // namespace zqm
