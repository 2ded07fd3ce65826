// SPDX-License-Identifier: GPL-3.0-or-later
// The window program.
#include <QApplication>
#include <QCommandLineParser>
#include <QScreen>
#include <QSettings>
#include <cstdio>
#include <optional>
#include <string_view>

#include "app/start/start_up.h"
#include "shell/error.h"
#include "shell/file_info.h"
#include "shell/files.h"
#include "shell/locale_info.h"
#include "shell/messages.h"
#include "shell/session_folders.h"
#include "shell/ui/look.h"
#include "shell/ui/message_boxes.h"

using namespace Qt::StringLiterals;

namespace {

using namespace zqm;

constexpr int kExitUsage = 2;
constexpr int kExitUnexpected = 3;

/// What the arguments ask for, or nothing when they can't be understood. Help and version end the
/// process.
std::optional<StartOptions> ReadOptions(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(u"Zolmira QM photo manager"_s);
  const QCommandLineOption help = parser.addHelpOption();
  const QCommandLineOption version = parser.addVersionOption();
  const QCommandLineOption home(
      u"home"_s, u"Keep documents, settings and scratch files under DIR."_s, u"DIR"_s);
  const QCommandLineOption catalogue(u"catalogue"_s,
                                     u"The catalogue to load, with or without .mdb."_s, u"NAME"_s);
  const QCommandLineOption samples(
      u"offer-samples"_s, u"Ask once whether to draw sample photos for an empty catalogue."_s);
  parser.addOptions({home, catalogue, samples});
  parser.addPositionalArgument(u"path"_s, u"A photo or a folder to browse."_s, u"[path]"_s);
  const bool parsed = parser.parse(arguments);
  if (parsed && parser.isSet(help)) parser.showHelp();
  if (parsed && parser.isSet(version)) parser.showVersion();
  const bool noHome = parser.isSet(home) && parser.value(home).isEmpty();
  if (!parsed || noHome) {
    const QString problem = parsed ? u"--home: is empty"_s : parser.errorText();
    std::fprintf(stderr, "%s\n", problem.toUtf8().constData());
    return std::nullopt;
  }
  StartOptions options;
  if (parser.isSet(home)) options.home = AbsolutePath(parser.value(home));
  options.catalogue = parser.value(catalogue);
  options.offerSamples = parser.isSet(samples);
  for (const QString& path : parser.positionalArguments())
    if (!path.isEmpty()) options.paths.append(AbsolutePath(path));
  return options;
}

/// The toolkit ends the process with a fault where it finds no display.
bool DisplayIsThere(int argc, char** argv) {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
    if (!qEnvironmentVariableIsEmpty(name)) return true;
  for (int i = 1; i < argc; ++i)
    if (const std::string_view word = argv[i]; word == "-platform" || word == "--platform")
      return true;
  return false;
}

void NameProgram() {
  QCoreApplication::setApplicationName(u"Zolmira QM"_s);
  QCoreApplication::setApplicationVersion(ProgramVersion());
}

int RunWithoutDisplay(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  NameProgram();
  if (ReadOptions(QCoreApplication::arguments()))
    std::fputs("zolmira-qm needs a display; zqm does its work without one.\n", stderr);
  return kExitUsage;
}

int Run(QApplication& application) {
  const std::optional<StartOptions> options = ReadOptions(QCoreApplication::arguments());
  if (!options) return kExitUsage;
  const SessionFolders folders = ResolveSessionFolders(options->home);
  // The layout of windows, too, stays in a home of its own.
  if (!options->home.isEmpty())
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       folders.AppDataPath + u"/config"_s);
  look::Apply(application);
  QApplication::setWindowIcon(QIcon(u":/app/zolmira-qm.svg"_s));
  UseMessageBoxes();
  if (const QScreen* screen = QApplication::primaryScreen()) {
    const QSize pixels = (QSizeF(screen->size()) * screen->devicePixelRatio()).toSize();
    if (const auto tooSmall = ScreenTooSmall(pixels)) {
      MsgBox(*tooSmall, MessageKind::Warning);
      return 0;
    }
  }
  StartUp start(*options, folders);
  QObject::connect(&start, &StartUp::Finished, &application,
                   [](int exitCode) { QApplication::exit(exitCode); });
  return start.Begin() ? QApplication::exec() : start.ExitCode();
}

}  // namespace

int main(int argc, char** argv) {
  if (!DisplayIsThere(argc, argv)) return RunWithoutDisplay(argc, argv);
  QApplication application(argc, argv);
  NameProgram();
  QApplication::setDesktopFileName(u"org.zolmira.QM"_s);
  QApplication::setQuitOnLastWindowClosed(false);
  UseSystemLocale();
  int exitCode = kExitUnexpected;
  Guarded("main_module", "Main", [&] { exitCode = Run(application); });
  return exitCode;
}
