// SPDX-License-Identifier: GPL-3.0-or-later
#include <QJsonArray>
#include <QJsonObject>

#include "app/commands/commands.h"
#include "imaging/template_files.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Templates of pages have a record beside their objects.
QStringList PrintTemplates(const QString& folder) {
  QStringList names = TemplatesName(folder);
  names.removeIf(
      [&](const QString& name) { return !FileExists(PathIn(folder, name + u".txt"_s)); });
  return names;
}

}  // namespace

int RunTemplates(const GlobalOptions& global, const Console& console) {
  const Session session(ResolveSessionFolders(global.home));
  if (Outcome prepared = session.PrepareFolders(); !prepared)
    return console.Refuse(prepared.Reason());
  const QStringList watermarks = TemplatesName(session.Folders().WatermarkTemplatesFolder());
  const QStringList pages = PrintTemplates(session.Folders().PrintingTemplatesFolder());
  if (console.Json()) {
    console.Document(
        QJsonDocument(QJsonObject{{u"Watermark"_s, QJsonArray::fromStringList(watermarks)},
                                  {u"Print"_s, QJsonArray::fromStringList(pages)}}));
    return kExitDone;
  }
  for (const QString& name : watermarks)
    console.Line(u"watermark: "_s + OnOneLine(name));
  for (const QString& name : pages)
    console.Line(u"print: "_s + OnOneLine(name));
  return kExitDone;
}

}  // namespace zqm
