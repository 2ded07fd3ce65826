// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/print_pdf.h"

#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>
#include <algorithm>

#include "shell/files.h"
#include "shell/platform.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kPdfDpi = 300;
constexpr char16_t kNotWritten[] = u"The file could not be written, the disk may be full";

/// Knows whether all of it was written: the writer of pages doesn't ask, and what a full disk takes
/// of a block counts as written.
class WholeFile : public QSaveFile {
 public:
  using QSaveFile::QSaveFile;

  bool CommitWhole() {
    if (!flush() || cut_ || error() != NoError) {
      cancelWriting();
      commit();
      return false;
    }
    return commit();
  }

 protected:
  qint64 writeData(const char* data, qint64 length) override {
    const qint64 written = QSaveFile::writeData(data, length);
    if (written != length) cut_ = true;
    return written;
  }

 private:
  bool cut_ = false;
};

}  // namespace

Outcome CheckPdfTarget(const QString& path, const QStringList& photos) {
  if (FolderExists(path)) return Failure{path + u" is a folder"_s};
  if (!FileExists(path)) return {};
  QFile file(path);
  const bool isPdf = file.open(QFile::ReadOnly) && file.read(5) == "%PDF-";
  const bool isPhoto = std::ranges::any_of(
      photos, [&](const QString& photo) { return platform::SameFile(photo, path); });
  if (!isPdf || isPhoto) return Failure{path + u" exists and is no PDF file"_s};
  if (ReadOnlyFile(path)) return Failure{path + u": "_s + QString::fromUtf16(kReasonPermission)};
  return {};
}

Result<PrintResult> PrintPdf(const PrintJob& job, const QSizeF& paper, const QString& path,
                             const PrintObserver& observer) {
  WholeFile file(path);
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
  if (!file.CommitWhole()) return Failure{path + u": "_s + QString::fromUtf16(kNotWritten)};
  SyncFolder(GetParentFolderName(path));
  return printed;
}

}  // namespace zqm
