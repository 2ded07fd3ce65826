// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QSize>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

#include "app/start/single_instance.h"
#include "session/session.h"

namespace zqm {

class frmcheckDB;
class frmmain;
class frmstart;

/// Why a screen of this size in device pixels won't do, or nothing.
std::optional<QString> ScreenTooSmall(const QSize& pixels);

/// What the window program was started with.
struct StartOptions {
  QString home;               ///< "" for the user's own folders
  QString catalogue;          ///< with or without ".mdb"; "" to choose
  QStringList paths;          ///< photos or a folder to browse; absolute
  bool offerSamples = false;  ///< ask once whether sample photos are welcome
};

/// The life of the window program, from its first window to its end or its next start.
class StartUp : public QObject {
  Q_OBJECT
 public:
  StartUp(StartOptions options, const SessionFolders& folders);
  ~StartUp() override;

  /// Prepares folders and looks for another instance, then goes on from a timer so that the first
  /// window is on screen before the long work. False: the program is to end with `ExitCode`.
  bool Begin();

  int ExitCode() const { return exitCode_; }
  frmmain* MainWindow() const { return main_.get(); }

 Q_SIGNALS:
  /// The main window is usable.
  void Ready();
  /// Nothing is left to do.
  void Finished(int exitCode);

 private:
  void Form_Load();
  bool TakeRestartMarker();
  Outcome WaitForLock();
  void Timer_Timer();
  void Activate(const QString& name);
  Outcome OpenMainWindow(const QString& name, const std::function<void(const QString&)>& status);
  void SelectDatabase();
  void Raise(const QStringList& paths);
  void OpenPaths();
  void Unload();
  void UnloadAllForms();
  void Restart() const;
  void Fail(const QString& text);
  void End(int exitCode);
  QString RestartMarker() const;

  StartOptions options_;
  SessionFolders folders_;
  std::unique_ptr<Session> session_;
  SingleInstance instance_;
  std::unique_ptr<frmstart> start_;
  std::unique_ptr<frmcheckDB> check_;
  std::unique_ptr<frmmain> main_;
  QString switchTo_;  ///< the catalogue to load when the main window has closed
  QString loaded_;    ///< the active catalogue's name
  QString former_;    ///< the one to go back to if that fails
  bool restarted_ = false;
  bool ended_ = false;
  int exitCode_ = 0;
};

}  // namespace zqm
