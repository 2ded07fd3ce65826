// SPDX-License-Identifier: GPL-3.0-or-later
// Which photos go on which page, how each lies in its box, and whether the paper will do.
#pragma once

#include <QRectF>
#include <QSize>
#include <QSizeF>
#include <QString>

#include "printing/print_template.h"
#include "shell/result.h"

namespace zqm {

/// How many pages there are. Without boxes or photos: none.
int PagesRequired(int photos, int boxes);

/// The photos of a page, first and last, from 0. Pages count from 0 as well.
struct PagePhotos {
  int from = 0;
  int to = -1;
  int Count() const { return to - from + 1; }
  bool operator==(const PagePhotos&) const = default;
};
PagePhotos PhotosOnPage(int page, int photos, int boxes);

/// "Page 2 of 3", for page 1.
QString PageCaption(int page, int pages);

enum class Orientation { Portrait, Landscape, Static };
/// Static is a square.
Orientation OrientationOf(const QSizeF& size);
/// "Portrait", "Landscape", "Static".
QString OrientationWord(Orientation orientation);

/// How a photo goes into a box.
struct PhotoPlace {
  int turn = 0;  ///< degrees counter-clockwise, first of all: 0, 90 or 270
  QRect crop;    ///< what is kept, pixels of the turned photo
  QRectF place;  ///< where on the sheet, in its pixels

  bool operator==(const PhotoPlace&) const = default;
};

/// A wide photo is turned to a tall box and the other way round. One that is smaller than the box
/// in both directions stays as it is, a pixel of it for a pixel of the sheet, in the box's upper
/// left corner. Any other is cropped around its middle to the box's shape, and fills it. Both sizes
/// in pixels, not empty.
PhotoPlace PlacePhoto(const QSize& photo, const QRectF& box);

/// The part around the middle of a photo that has the box's shape, in steps of ten pixels of its
/// width.
QSize CropSize(const QSize& photo, double boxRatio);

/// A sheet's size on paper, and what a page must have for it, inches: printers leave a little out.
QSizeF SheetInches(const QSize& sheet);
QSizeF NeededInches(const QSize& sheet);

/// Whether the page is large enough for the template, or the message why not. `page` in inches as
/// the printer has it; `printer` says how it lies.
Outcome CheckPage(const QSize& sheet, const QSizeF& page, Orientation printer);

/// Whether the preview shows the sheet turned by a quarter, as it leaves the printer.
bool AdjustPreview(const QSize& sheet, Orientation printer);

/// How often each photo is printed, from a typed text; or the message why that is no number of
/// copies.
Result<int> CopiesOf(const QString& text);
/// The number after a click on an arrow, `by` 1 or -1: 1 for a text that is no number of copies.
/// The arrows go up to 9,999 and leave a larger number that was typed.
int SteppedCopies(const QString& text, int by);

}  // namespace zqm
