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

const CLI::Validator kNotEmpty(
    [](const std::string& text) { return text.empty() ? std::string("is empty") : std::string(); },
    "");

void AddPaths(CLI::App& command, const char* name, std::vector<std::string>& paths,
              const char* description, bool required = true) {
  command.add_option(name, paths, description)->required(required)->check(kNotEmpty);
}

/// Whether the argument is an option of any command that takes the next argument as its value.
bool TakesValue(const CLI::App& app, const std::string& argument) {
  const auto takes = [&argument](const CLI::App& owner) {
    const CLI::Option* option = owner.get_option_no_throw(argument);
    return option != nullptr && option->get_items_expected_max() > 0;
  };
  if (!argument.starts_with("-")) return false;
  const auto commands = app.get_subcommands([](const CLI::App*) { return true; });
  return takes(app) || std::ranges::any_of(commands, [&](const CLI::App* c) { return takes(*c); });
}

/// The parser would take a path "[2020]" for a list in brackets; "./[2020]" is the same path to us.
/// In reverse order, as the parser wants them.
std::vector<std::string> ReversedArguments(const CLI::App& app, int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  for (std::size_t i = 0; i < arguments.size(); ++i)
    if (arguments[i].starts_with("[") && (i == 0 || !TakesValue(app, arguments[i - 1])))
      arguments[i].insert(0, "./");
  std::ranges::reverse(arguments);
  return arguments;
}

/// Declares every command and makes `chosen` what the given one does.
void Declare(CLI::App& app, Arguments& a, Command& chosen) {
  app.require_subcommand(1);
  app.set_version_flag("--version", ProgramVersion().toStdString());
  app.add_option("--home", a.home, "Keep documents, settings and scratch files under DIR")
      ->type_name("DIR")
      ->check(kNotEmpty);
  app.add_option("--catalogue", a.catalogue, "The catalogue to use, with or without .mdb")
      ->type_name("NAME");
  app.add_flag("--json", a.json, "Print the result as one JSON document");

  auto* catalog = app.add_subcommand("catalog", "Add the photos of folders to the catalogue");
  catalog->add_flag("--recursive", a.recursive, "Visit the folders below as well");
  catalog->add_option("--notes", a.notes, "Notes for all added photos")->type_name("TEXT");
  catalog->add_option("--author", a.author, "Author of all added photos")->type_name("TEXT");
  catalog->add_option("--date", a.date, "Date of all added photos, day first: dd/mm/yyyy")
      ->type_name("DATE");
  AddPaths(*catalog, "FOLDER", a.files, "Folders, or single files", false);
  catalog->callback([&a, &chosen] {
    chosen = [&a] {
      return RunCatalog(
          a.Global(),
          {ToTexts(a.files), a.recursive, ToText(a.notes), ToText(a.author), ToText(a.date)},
          a.MakeConsole());
    };
  });

  auto* info = app.add_subcommand("info", "Print the metadata of files");
  AddPaths(*info, "FILE", a.files, "Photo files");
  info->callback(
      [&a, &chosen] { chosen = [&a] { return RunInfo(ToTexts(a.files), a.MakeConsole()); }; });

  auto* row = app.add_subcommand("row", "Print what the catalogue holds of files");
  AddPaths(*row, "FILE", a.files, "Catalogued photo files");
  row->callback([&a, &chosen] {
    chosen = [&a] { return RunRow(a.Global(), ToTexts(a.files), a.MakeConsole()); };
  });

  auto* thumbnail =
      app.add_subcommand("thumbnail", "Write a row's stored thumbnail to a JPEG file");
  thumbnail->add_option("FILE", a.file, "A catalogued photo file")->required()->check(kNotEmpty);
  thumbnail->add_option("OUT", a.out, "The JPEG file to write; must not exist yet")
      ->required()
      ->check(kNotEmpty);
  thumbnail->callback([&a, &chosen] {
    chosen = [&a] {
      return RunThumbnail(a.Global(), ToText(a.file), ToText(a.out), a.MakeConsole());
    };
  });

  auto* catalogues = app.add_subcommand("catalogues", "List the catalogues of the home");
  catalogues->callback(
      [&a, &chosen] { chosen = [&a] { return RunCatalogues(a.Global(), a.MakeConsole()); }; });

  auto* demo = app.add_subcommand("demo", "Draw sample photos with metadata; replaces nothing");
  demo->add_option("DIR", a.out, "The folder for the photos; made if it is missing")
      ->required()
      ->check(kNotEmpty);
  demo->callback(
      [&a, &chosen] { chosen = [&a] { return RunDemo(ToText(a.out), a.MakeConsole()); }; });
}

/// Standard error is for the user's files; what the toolkit notes about its surroundings is not.
void DropToolkitRemarks() {
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtFatalMsg || type == QtCriticalMsg) Console(false).ErrorLine(text);
  });
}

}  // namespace

int main(int argc, char** argv) {
  // Text is drawn without a display, whatever platform the user's windows are on.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  DropToolkitRemarks();
  QGuiApplication application(argc, argv);
  UseSystemLocale();

  CLI::App app("Zolmira QM photo manager, command line");
  app.name("zqm");
  Arguments arguments;
  Command chosen;
  Declare(app, arguments, chosen);
  try {
    app.parse(ReversedArguments(app, argc, argv));
  } catch (const CLI::ParseError& problem) {
    // Help and version are "errors" of code 0 to the parser.
    return app.exit(problem) == 0 ? kExitDone : kExitUsage;
  }
  int exitCode = kExitUnexpected;
  Guarded("zqm", "main", [&] { exitCode = chosen(); });
  return arguments.MakeConsole().Finish(exitCode);
}
