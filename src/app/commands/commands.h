// SPDX-License-Identifier: GPL-3.0-or-later
// What the command line does: a function a command, from plain options to an exit code. All of them
// call the same core as the windows do.
#pragma once

#include <QString>
#include <QStringList>

#include "app/commands/console.h"
#include "session/session.h"

namespace zqm {

/// The options before the command.
struct GlobalOptions {
  QString home;       ///< "" for the user's own folders
  QString catalogue;  ///< with or without ".mdb"; "" when there is only one
};

/// A session with its catalogue open, or an exit code with the message told. `writing` takes the
/// home's lock first.
struct OpenedSession {
  std::unique_ptr<Session> session;
  int exitCode = kExitDone;
};
OpenedSession OpenSession(const GlobalOptions& options, bool writing, const Console& console);

struct CatalogOptions {
  QStringList folders;  ///< files are taken too
  bool recursive = false;
  QString notes, author, date;
};
int RunCatalog(const GlobalOptions& global, const CatalogOptions& options, const Console& console);

int RunInfo(const QStringList& files, const Console& console);
int RunRow(const GlobalOptions& global, const QStringList& files, const Console& console);
int RunThumbnail(const GlobalOptions& global, const QString& file, const QString& out,
                 const Console& console);
int RunCatalogues(const GlobalOptions& global, const Console& console);
int RunDemo(const QString& folder, const Console& console);

}  // namespace zqm
