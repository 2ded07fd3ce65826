// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/commands.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

OpenedSession Refuse(const Console& console, const QString& message) {
  console.ErrorLine(message);
  return {nullptr, kExitUsage};
}

/// The catalogue that the options mean, by its file name; "" when that isn't clear.
QString ChosenCatalogue(const QStringList& names, const QString& wanted) {
  if (wanted.isEmpty()) return names.size() == 1 ? names.first() : QString();
  for (const QString& candidate : {wanted, wanted + u".mdb"_s})
    if (names.contains(candidate, Qt::CaseInsensitive))
      return *std::ranges::find_if(names, [&candidate](const QString& name) {
        return name.compare(candidate, Qt::CaseInsensitive) == 0;
      });
  return QString();
}

}  // namespace

OpenedSession OpenSession(const GlobalOptions& options, bool writing, const Console& console) {
  auto session = std::make_unique<Session>(ResolveSessionFolders(options.home));
  if (Outcome prepared = session->PrepareFolders(); !prepared)
    return Refuse(console, prepared.Reason());
  if (writing)
    if (Outcome locked = session->LockHome(); !locked) return Refuse(console, locked.Reason());
  const QStringList names = session->CatalogueNames();
  if (names.isEmpty())
    return Refuse(console, QString::fromUtf16(session_text::kNoCatalogue) +
                               session->Folders().WorkingFolder());
  const QString name = ChosenCatalogue(names, options.catalogue);
  if (name.isEmpty())
    return Refuse(console,
                  QString::fromUtf16(session_text::kSelectCatalogue) + u'\n' + names.join(u'\n'));
  if (Outcome opened = session->Activate(name); !opened) return Refuse(console, opened.Reason());
  return {std::move(session), kExitDone};
}

int RunCatalogues(const GlobalOptions& global, const Console& console) {
  const Session session(ResolveSessionFolders(global.home));
  if (Outcome prepared = session.PrepareFolders(); !prepared) {
    console.ErrorLine(prepared.Reason());
    return kExitUsage;
  }
  const QStringList names = session.CatalogueNames();
  if (console.Json()) {
    console.Document(QJsonDocument::fromVariant(names));
  } else {
    for (const QString& name : names)
      console.Line(name);
  }
  return kExitDone;
}

}  // namespace zqm
