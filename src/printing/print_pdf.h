// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSizeF>
#include <QString>
#include <QStringList>

#include "printing/page_painter.h"

namespace zqm {

/// Whether a PDF may be written there: no photo that is printed, and nothing else that isn't a PDF
/// file, is replaced. A PDF file that stands there is the caller's question.
Outcome CheckPdfTarget(const QString& path, const QStringList& photos);

/// Prints into a PDF file at 300 dots to the inch. The file stands whole when all pages are in it,
/// or is as it was before, also where not one photo could be printed. `paper` in millimetres as it
/// lies.
Result<PrintResult> PrintPdf(const PrintJob& job, const QSizeF& paper, const QString& path,
                             const PrintObserver& observer);

}  // namespace zqm
