// SPDX-License-Identifier: GPL-3.0-or-later
// The window program.
#include <QApplication>
#include <QCommandLineParser>
#include <QScreen>
#include <QSettings>

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

StartOptions ReadOptions(const QApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription(u"Zolmira QM photo manager"_s);
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption home(
      u"home"_s, u"Keep documents, settings and scratch files under DIR."_s, u"DIR"_s);
  const QCommandLineOption catalogue(u"catalogue"_s, u"The catalogue to load."_s, u"NAME"_s);
  parser.addOptions({home, catalogue});
  parser.addPositionalArgument(u"path"_s, u"A photo or a folder to browse."_s, u"[path...]"_s);
  parser.process(application);
  StartOptions options;
  options.home = parser.value(home).isEmpty() ? QString() : AbsolutePath(parser.value(home));
  options.catalogue = parser.value(catalogue);
  if (!options.catalogue.isEmpty() && !options.catalogue.endsWith(u".mdb"))
    options.catalogue += u".mdb"_s;
  for (const QString& path : parser.positionalArguments())
    options.paths.append(AbsolutePath(path));
  return options;
}

int Run(QApplication& application) {
  const StartOptions options = ReadOptions(application);
  const SessionFolders folders = ResolveSessionFolders(options.home);
  // The layout of windows, too, stays in a home of its own.
  if (!options.home.isEmpty())
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       folders.AppDataPath + u"/config"_s);
  look::Apply(application);
  UseMessageBoxes();
  const QScreen* screen = QApplication::primaryScreen();
  if (screen != nullptr) {
    const QSize pixels = (QSizeF(screen->size()) * screen->devicePixelRatio()).toSize();
    if (const auto tooSmall = ScreenTooSmall(pixels)) {
      MsgBox(*tooSmall, MessageKind::Warning);
      return 0;
    }
  }
  StartUp start(options, folders);
  QObject::connect(&start, &StartUp::Finished, &application,
                   [](int exitCode) { QApplication::exit(exitCode); });
  return start.Begin() ? QApplication::exec() : start.ExitCode();
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(u"Zolmira QM"_s);
  QApplication::setApplicationVersion(ProgramVersion());
  QApplication::setDesktopFileName(u"zolmira-qm"_s);
  QApplication::setQuitOnLastWindowClosed(false);
  UseSystemLocale();
  int exitCode = 3;
  Guarded("main_module", "Main", [&] { exitCode = Run(application); });
  return exitCode;
}
