// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/start_up.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QTimer>

#include "app/start/start_windows.h"
#include "browser/ui/frmmain.h"
#include "shell/busy.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kSmallestScreen{1024, 768};
constexpr std::chrono::seconds kRestartPatience(10);
constexpr int kExitUsage = 2;

void TellFailure(const QString& text) {
  MsgBox(text, MessageKind::Critical);
}

}  // namespace

std::optional<QString> ScreenTooSmall(const QSize& pixels) {
  if (pixels.width() >= kSmallestScreen.width() && pixels.height() >= kSmallestScreen.height())
    return std::nullopt;
  return u"Your computer does not meet the minimum required resolution for Zolmira QM to function "
         u"properly.\nYour screen resolution is %1 x %2 pixels, but Zolmira QM needs a minimum of "
         u"1024 x 768 pixels to work."_s.arg(pixels.width())
             .arg(pixels.height());
}

StartUp::StartUp(StartOptions options, const SessionFolders& folders)
    : options_(std::move(options)),
      session_(std::make_unique<Session>(folders)),
      instance_(GetParentFolderName(folders.ScratchFolder())) {
  connect(&instance_, &SingleInstance::Activated, this, &StartUp::Raise);
}

StartUp::~StartUp() = default;

QString StartUp::RestartMarker() const {
  return session_->Folders().ScratchFolder() + u"/Optimize.txt"_s;
}

bool StartUp::Begin() {
  start_ = std::make_unique<frmstart>();
  start_->show();
  Form_Load();
  return !ended_;
}

void StartUp::Form_Load() {
  if (const Outcome prepared = session_->PrepareFolders(); !prepared) {
    TellFailure(prepared.Reason());
    return End(kExitUsage);
  }
  // A restarted program meets the one that is just ending, and must not take it for another.
  restarted_ = FileExists(RestartMarker());
  if (restarted_)
    QFile::remove(RestartMarker());
  else if (instance_.ActivatePrevInstance(options_.paths))
    return End(0);
  if (!WaitForLock()) {
    TellFailure(QString::fromUtf16(kReasonRunning));
    return End(kExitUsage);
  }
  instance_.Listen();
  QTimer::singleShot(1, this,
                     [this] { Guarded("frmstart", "Timer1_Timer", [this] { Timer_Timer(); }); });
}

bool StartUp::WaitForLock() {
  const QDeadlineTimer patience(restarted_ ? QDeadlineTimer(kRestartPatience)
                                           : QDeadlineTimer(std::chrono::seconds(0)));
  while (!session_->LockHome()) {
    if (patience.hasExpired()) return false;
    QThread::msleep(20);
    YieldToInterface();
  }
  return true;
}

void StartUp::Timer_Timer() {
  const QStringList names = session_->CatalogueNames();
  if (names.isEmpty()) {
    TellFailure(QString::fromUtf16(session_text::kNoCatalogue) +
                session_->Folders().WorkingFolder());
    return End(kExitUsage);
  }
  if (!options_.catalogue.isEmpty()) return Activate(options_.catalogue);
  if (names.size() == 1) return Activate(names.first());
  check_ = std::make_unique<frmcheckDB>(names);
  connect(check_.get(), &QDialog::rejected, this, [this] { End(0); });
  connect(check_.get(), &QDialog::accepted, this,
          [this] { Guarded("frmcheckDB", "cmdok_Click", [this] { Activate(check_->Name()); }); });
  check_->show();
  start_.reset();
}

void StartUp::Activate(const QString& name) {
  frmintro intro;
  intro.show();
  YieldToInterface();
  const Outcome activated =
      session_->Activate(name, [&intro](const QString& status) { intro.SetStatus(status); });
  if (!activated) {
    TellFailure(activated.Reason());
    return End(kExitUsage);
  }
  try {
    main_ = std::make_unique<frmmain>(*session_);
  } catch (const Error& error) {
    // A catalogue that opens and can't be read is a lost one, not a fault of the program.
    if (error.Number() != error_number::kDatabase) throw;
    TellFailure(QString::fromUtf16(session_text::kDamaged));
    return End(kExitUsage);
  }
  connect(main_.get(), &frmmain::Closed, this, &StartUp::OnClosed);
  main_->show();
  start_.reset();
  if (!options_.paths.isEmpty()) main_->OpenPath(options_.paths.first());
  Q_EMIT Ready();
}

void StartUp::Raise(const QStringList& paths) {
  QWidget* window = main_ ? static_cast<QWidget*>(main_.get()) : check_.get();
  if (window == nullptr) {
    options_.paths += paths;
    return;
  }
  window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
  window->show();
  window->raise();
  window->activateWindow();
  if (paths.isEmpty()) return;
  if (main_)
    main_->OpenPath(paths.first());
  else
    options_.paths = paths;
}

void StartUp::OnClosed() {
  const bool restarts = main_->RestartRequested();
  if (restarts) {
    const QString marker = RestartMarker();
    QFile file(marker);
    if (!file.open(QFile::WriteOnly)) TellFailure(marker + u": "_s + file.errorString());
  }
  QApplication::closeAllWindows();
  if (restarts) Restart();
  End(0);
}

void StartUp::Restart() const {
  QStringList arguments;
  if (!options_.home.isEmpty()) arguments = {u"--home"_s, options_.home};
  QProcess::startDetached(QApplication::applicationFilePath(), arguments);
}

void StartUp::End(int exitCode) {
  if (ended_) return;
  ended_ = true;
  exitCode_ = exitCode;
  start_.reset();
  Q_EMIT Finished(exitCode);
}

}  // namespace zqm
