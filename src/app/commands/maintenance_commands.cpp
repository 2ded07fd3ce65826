// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/commands.h"
#include "cataloguing/folder_import.h"
#include "cataloguing/reconnect.h"
#include "session/maintenance.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {

int RunNew(const GlobalOptions& global, const QString& name, const Console& console) {
  Session session(ResolveSessionFolders(global.home));
  if (Outcome prepared = session.PrepareFolders(); !prepared)
    return console.Refuse(prepared.Reason());
  if (Outcome locked = session.LockHome(); !locked) return console.Refuse(locked.Reason());
  if (Outcome made = CreateCatalogue(session.Folders(), name); !made)
    return console.Refuse(made.Reason());
  return console.Done(u"The new database was successfully created."_s);
}

int RunOptimize(const GlobalOptions& global, const Console& console) {
  const OpenedSession opened = OpenSession(global, true, console);
  if (!opened.session) return opened.exitCode;
  const auto report = Optimize(*opened.session, [&console](int done, int total) {
    console.Progress(QString::fromUtf16(maintenance_text::kOptimizing) +
                     u" %1%"_s.arg(total > 0 ? 100 * done / total : 100));
  });
  console.ClearProgress();
  if (!report) return console.Fail(report.Reason());
  return console.Done(report->Text().trimmed());
}

int RunRebuild(const GlobalOptions& global, const QStringList& files, const Console& console) {
  const OpenedSession opened = OpenSession(global, true, console);
  if (!opened.session) return opened.exitCode;
  QStringList paths;
  for (const QString& file : files)
    paths.append(AbsolutePath(file));
  paths.removeDuplicates();
  Session& session = *opened.session;
  const ImportResult result = RebuildPhotos(
      paths, session.ReadSettings(), session.ActiveCatalogue(),
      [&console](const ImportProgress& at) {
        console.Progress(
            u"%1/%2  Processing %3"_s.arg(at.done).arg(at.total).arg(GetFileName(at.file)));
      });
  console.ClearProgress();
  return console.Report(result.added, "Rebuilt",
                        QString::fromUtf16(result.failures.Empty() ? import_text::kRebuildDone
                                                                   : import_text::kRebuildFailures),
                        result.failures);
}

int RunReconnect(const GlobalOptions& global, const QString& oldFolder, const QString& newFolder,
                 const Console& console) {
  const OpenedSession opened = OpenSession(global, true, console);
  if (!opened.session) return opened.exitCode;
  int rows = 0;
  const FailureList failures =
      ReconnectFolder(opened.session->ActiveCatalogue(), AbsolutePath(oldFolder),
                      AbsolutePath(newFolder), [&](int done, int total) {
                        rows = total;
                        console.Progress(u"%1/%2"_s.arg(done).arg(total));
                      });
  console.ClearProgress();
  return console.Report(
      rows - static_cast<int>(failures.rows.size()), "Reconnected",
      QString::fromUtf16(failures.Empty() ? reconnect_text::kDone : reconnect_text::kFailures),
      failures);
}

}  // namespace zqm
