// SPDX-License-Identifier: GPL-3.0-or-later
// The command line.
#include <CLI/CLI.hpp>
#include <QFile>
#include <QGuiApplication>
#include <functional>

#include "app/commands/commands.h"
#include "shell/error.h"
#include "shell/file_info.h"
#include "shell/locale_info.h"
#include "shell/messages.h"

namespace {

using namespace zqm;

QString ToText(const std::string& bytes) {
  return QFile::decodeName(bytes.c_str());
}

QStringList ToTexts(const std::vector<std::string>& list) {
  QStringList texts;
  for (const std::string& bytes : list)
    texts.append(ToText(bytes));
  return texts;
}

/// The options as the parser fills them, of all commands together.
struct Arguments {
  std::string home, catalogue;
  bool json = false;
  std::vector<std::string> files;
  bool recursive = false;
  std::string notes, author, date;
  std::string file, out;

  GlobalOptions Global() const { return {ToText(home), ToText(catalogue)}; }
  Console MakeConsole() const { return Console(json); }
};

using Command = std::function<int()>;

/// Declares every command and makes `chosen` what the given one does.
void Declare(CLI::App& app, Arguments& a, Command& chosen) {
  app.require_subcommand(1);
  app.set_version_flag("--version", ProgramVersion().toStdString());
  app.add_option("--home", a.home, "Keep documents, settings and scratch files under DIR")
      ->type_name("DIR");
  app.add_option("--catalogue", a.catalogue, "The catalogue to use, with or without .mdb")
      ->type_name("NAME");
  app.add_flag("--json", a.json, "Print the result as one JSON document");

  auto* catalog = app.add_subcommand("catalog", "Add the photos of folders to the catalogue");
  catalog->add_flag("--recursive", a.recursive, "Visit the folders below as well");
  catalog->add_option("--notes", a.notes, "Notes for all added photos")->type_name("TEXT");
  catalog->add_option("--author", a.author, "Author of all added photos")->type_name("TEXT");
  catalog->add_option("--date", a.date, "Date of all added photos, day first: dd/mm/yyyy")
      ->type_name("DATE");
  catalog->add_option("FOLDER", a.files, "Folders, or single files")->required();
  catalog->callback([&a, &chosen] {
    chosen = [&a] {
      return RunCatalog(
          a.Global(),
          {ToTexts(a.files), a.recursive, ToText(a.notes), ToText(a.author), ToText(a.date)},
          a.MakeConsole());
    };
  });

  auto* info = app.add_subcommand("info", "Print the metadata of files");
  info->add_option("FILE", a.files, "Photo files")->required();
  info->callback(
      [&a, &chosen] { chosen = [&a] { return RunInfo(ToTexts(a.files), a.MakeConsole()); }; });

  auto* row = app.add_subcommand("row", "Print what the catalogue holds of files");
  row->add_option("FILE", a.files, "Catalogued photo files")->required();
  row->callback([&a, &chosen] {
    chosen = [&a] { return RunRow(a.Global(), ToTexts(a.files), a.MakeConsole()); };
  });

  auto* thumbnail =
      app.add_subcommand("thumbnail", "Write a row's stored thumbnail to a JPEG file");
  thumbnail->add_option("FILE", a.file, "A catalogued photo file")->required();
  thumbnail->add_option("OUT", a.out, "The JPEG file to write")->required();
  thumbnail->callback([&a, &chosen] {
    chosen = [&a] {
      return RunThumbnail(a.Global(), ToText(a.file), ToText(a.out), a.MakeConsole());
    };
  });

  auto* catalogues = app.add_subcommand("catalogues", "List the catalogues of the home");
  catalogues->callback(
      [&a, &chosen] { chosen = [&a] { return RunCatalogues(a.Global(), a.MakeConsole()); }; });

  auto* demo = app.add_subcommand("demo", "Draw a set of sample photos with metadata");
  demo->add_option("DIR", a.out, "The folder for the photos; made if it is missing")->required();
  demo->callback(
      [&a, &chosen] { chosen = [&a] { return RunDemo(ToText(a.out), a.MakeConsole()); }; });
}

/// Standard error is for the user's files; what the toolkit notes about its surroundings is not.
void DropToolkitRemarks() {
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtFatalMsg || type == QtCriticalMsg) Console(false).ErrorLine(text);
  });
}

void PrintMessagesToStandardError() {
  SetMessageHandler([](const QString& text, MessageKind, Buttons buttons) {
    Console(false).ErrorLine(text);
    return buttons == Buttons::Ok         ? Answer::Ok
           : buttons == Buttons::OkCancel ? Answer::Cancel
                                          : Answer::No;
  });
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  DropToolkitRemarks();
  QGuiApplication application(argc, argv);
  UseSystemLocale();
  PrintMessagesToStandardError();

  CLI::App app("Zolmira QM photo manager, command line");
  app.name("zqm");
  Arguments arguments;
  Command chosen;
  Declare(app, arguments, chosen);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& problem) {
    // Help and version are "errors" of code 0 to the parser.
    return app.exit(problem) == 0 ? kExitDone : kExitUsage;
  }
  int exitCode = kExitUnexpected;
  Guarded("zqm", "main", [&] { exitCode = chosen(); });
  return exitCode;
}
