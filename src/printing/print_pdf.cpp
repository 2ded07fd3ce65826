// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/print_pdf.h"

#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>

#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kPdfDpi = 300;

}  // namespace

Result<PrintResult> PrintPdf(const PrintJob& job, const QSizeF& paper, const QString& path,
                             const PrintObserver& observer) {
  QSaveFile file(path);
  if (!file.open(QFile::WriteOnly)) return Failure{path + u": "_s + file.errorString()};
  Result<PrintResult> printed = Failure{};
  {
    QPdfWriter writer(&file);
    writer.setResolution(kPdfDpi);
    writer.setCreator(u"Zolmira QM"_s);
    writer.setPageSize(QPageSize(paper, QPageSize::Millimeter, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    printed = PrintPages(job, writer, observer);
  }
  if (!printed) return printed;
  // A file of empty pages is of no use.
  if (std::ssize(printed->failures.rows) == job.photos.size()) {
    printed->pages = 0;
    return printed;
  }
  if (!file.commit()) return Failure{path + u": "_s + file.errorString()};
  SyncFolder(GetParentFolderName(path));
  return printed;
}

}  // namespace zqm
