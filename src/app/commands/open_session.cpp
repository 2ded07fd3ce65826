// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/commands.h"
#include "cataloguing/replaced_photos.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

OpenedSession Refuse(const Console& console, const QString& message) {
  return {nullptr, console.Refuse(message)};
}

QString LinesOf(const QStringList& names) {
  QStringList lines;
  for (const QString& name : names)
    lines.append(OnOneLine(name));
  return lines.join(u'\n');
}

/// The catalogue that the options mean, by its file name; "" when that isn't clear. The exact name
/// goes before one that differs in letter case, and that counts only if it is the only one.
QString ChosenCatalogue(const QStringList& names, const QString& wanted) {
  if (wanted.isEmpty()) return names.size() == 1 ? names.first() : QString();
  const QStringList candidates{wanted, wanted + u".mdb"_s};
  for (const QString& candidate : candidates)
    if (names.contains(candidate)) return candidate;
  for (const QString& candidate : candidates) {
    QStringList alike;
    std::ranges::copy_if(names, std::back_inserter(alike), [&candidate](const QString& name) {
      return name.compare(candidate, Qt::CaseInsensitive) == 0;
    });
    if (alike.size() == 1) return alike.first();
  }
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
                  QString::fromUtf16(session_text::kSelectCatalogue) + u'\n' + LinesOf(names));
  if (Outcome opened = session->Activate(name); !opened) return Refuse(console, opened.Reason());
  FollowReplaced(session->ActiveCatalogue(), session->ReadSettings());
  return {std::move(session), kExitDone};
}

int RunCatalogues(const GlobalOptions& global, const Console& console) {
  const Session session(ResolveSessionFolders(global.home));
  if (Outcome prepared = session.PrepareFolders(); !prepared)
    return console.Refuse(prepared.Reason());
  const QStringList names = session.CatalogueNames();
  if (console.Json()) {
    console.Document(QJsonDocument::fromVariant(names));
  } else {
    for (const QString& name : names)
      console.Line(OnOneLine(name));
  }
  return kExitDone;
}

}  // namespace zqm
