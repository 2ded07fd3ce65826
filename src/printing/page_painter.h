// SPDX-License-Identifier: GPL-3.0-or-later
// Photos onto paper, one after the other, each as large as the device can show.
#pragma once

#include <QImage>
#include <QPainter>
#include <functional>
#include <vector>

#include "imaging/picture.h"
#include "printing/page_plan.h"
#include "shell/failure_list.h"
#include "shell/result.h"

class QPagedPaintDevice;

namespace zqm {

/// A photo ready to be painted: turned, cropped, scaled once and a little sharpened.
struct PlacedPhoto {
  QImage pixels;
  QRectF place;  ///< pixels of the sheet
};

/// Reads a photo for a box (sheet pixels) at `dpi` pixels to the inch of paper; the box's place
/// never gets more than that, nor more than `kMostPhotoDpi`. Opaque, what was transparent is white.
/// Pure and thread-safe. Reasons: those of `OpenSourceFile`, what the format says of its pixels,
/// and "Not enough memory".
Result<PlacedPhoto> PlaceOnSheet(const QString& path, const QRectF& box, double dpi,
                                 const PictureSettings& load);
/// More can't be seen on paper, but fills the memory.
inline constexpr double kMostPhotoDpi = 600;

/// A box whose photo can't be printed.
struct EmptyBox {
  QRectF box;  ///< pixels of the sheet
  FailureRow why;
};
/// Paints a page's photos in the order of the boxes, one in memory at a time; gives the boxes that
/// stayed empty. The painter's coordinates are pixels of the sheet.
std::vector<EmptyBox> PaintPage(QPainter& painter, std::span<const QRectF> boxes,
                                const QStringList& photos, double dpi, const PictureSettings& load);

/// What is printed.
struct PrintJob {
  PrintTemplate layout;
  QStringList photos;
  int copies = 1;  ///< of each page, one behind the other
  PictureSettings load;
};

struct PrintResult {
  int pages = 0;         ///< different ones
  FailureList failures;  ///< photos whose boxes stayed empty
};

/// Runs before each page, from 0, while one is made, and before each of its copies; takes no input.
using PrintObserver = std::function<void(int page, int pages)>;

/// Prints all pages at true size from the paper's upper left corner, whatever margins the device
/// asks for. A failure says why the device took no more. What further copies need again is kept up
/// to half a gigabyte, the rest is read for each.
Result<PrintResult> PrintPages(const PrintJob& job, QPagedPaintDevice& device,
                               const PrintObserver& observer);

}  // namespace zqm
