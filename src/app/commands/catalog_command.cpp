// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/commands.h"
#include "cataloguing/folder_import.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// A folder gives the photos in it; anything else is tried as a file.
QStringList CollectFiles(const CatalogOptions& options, FailureList& failures) {
  QStringList paths;
  for (const QString& given : options.folders) {
    const QString path = AbsolutePath(given);
    if (FolderExists(path))
      paths += ScanFolder(path, options.recursive, failures);
    else
      paths += path;
  }
  paths.removeDuplicates();
  return paths;
}

}  // namespace

int RunCatalog(const GlobalOptions& global, const CatalogOptions& options, const Console& console) {
  const auto refuse = [&console](const char16_t* message) {
    return console.Refuse(QString::fromUtf16(message));
  };
  if (options.folders.isEmpty()) return refuse(import_text::kNoFolder);
  ImportTexts texts{options.notes, options.author, ParseImportDate(options.date)};
  if (!options.date.isEmpty() && !texts.date.isValid()) return refuse(import_text::kInvalidDate);

  const OpenedSession opened = OpenSession(global, true, console);
  if (!opened.session) return opened.exitCode;
  Session& session = *opened.session;

  FailureList scanFailures;
  const QStringList paths = CollectFiles(options, scanFailures);
  if (paths.isEmpty() && scanFailures.Empty()) return refuse(import_text::kNoImages);

  ImportResult result = CatalogueFiles(
      paths, texts, session.ReadSettings(), session.ActiveCatalogue(), nullptr,
      [&console](const ImportProgress& at) {
        console.Progress(
            u"%1/%2  Processing %3"_s.arg(at.done).arg(at.total).arg(GetFileName(at.file)));
      });
  console.ClearProgress();
  result.failures.rows.insert(result.failures.rows.begin(), scanFailures.rows.begin(),
                              scanFailures.rows.end());
  return console.Report(
      result.added, "Added",
      QString::fromUtf16(result.failures.Empty() ? import_text::kDone : import_text::kFailures),
      result.failures);
}

}  // namespace zqm
