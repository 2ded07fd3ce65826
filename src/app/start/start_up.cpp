// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/start_up.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QThread>
#include <QTimer>
#include <utility>

#include "app/start/sample_offer.h"
#include "app/start/start_windows.h"
#include "browser/ui/frmmain.h"
#include "cataloguing/replaced_photos.h"
#include "shell/busy.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kSmallestScreen{1024, 768};
constexpr std::chrono::seconds kRestartPatience(15);
// Two starts in the same moment: the one that is late gives the other time to listen.
constexpr std::chrono::milliseconds kUsualPatience(1000);
constexpr std::chrono::milliseconds kBetweenTries(200);
constexpr int kExitUsage = 2;

/// An empty file.
Outcome CreateTempFile(const QString& path) {
  QFile file(path);
  if (file.open(QFile::WriteOnly)) return {};
  return Failure{path + u": "_s + file.errorString()};
}

/// The catalogue that was asked for by name, or nothing.
QString CatalogueNamed(const QString& wanted, const QStringList& names) {
  for (const QString& name : {wanted, wanted + u".mdb"_s})
    if (names.contains(name)) return name;
  return QString();
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
      folders_(folders),
      session_(std::make_unique<Session>(folders)),
      instance_(GetParentFolderName(folders.ScratchFolder())) {
  connect(&instance_, &SingleInstance::Activated, this, &StartUp::Raise);
}

StartUp::~StartUp() = default;

QString StartUp::RestartMarker() const {
  return folders_.ScratchFolder() + u"/Optimize.txt"_s;
}

bool StartUp::Begin() {
  Form_Load();
  return !ended_;
}

// The beginning.

void StartUp::Form_Load() {
  start_ = std::make_unique<frmstart>();
  if (const Outcome prepared = session_->PrepareFolders(); !prepared)
    return Fail(prepared.Reason());
  restarted_ = TakeRestartMarker();
  if (!restarted_ && instance_.ActivatePrevInstance(options_.paths)) return End(0);
  start_->show();
  YieldToInterface();
  if (const Outcome locked = WaitForLock(); !locked) {
    if (instance_.ActivatePrevInstance(options_.paths)) return End(0);
    return Fail(locked.Reason());
  }
  instance_.Listen();
  QTimer::singleShot(1, this,
                     [this] { Guarded("frmstart", "Timer1_Timer", [this] { Timer_Timer(); }); });
}

/// Whether the instance that is just ending has started this one, which must not take it for
/// another. Said once.
bool StartUp::TakeRestartMarker() {
  return FileExists(RestartMarker()) && QFile::remove(RestartMarker());
}

Outcome StartUp::WaitForLock() {
  const QString running = QString::fromUtf16(kReasonRunning);
  const QDeadlineTimer patience(restarted_ ? kRestartPatience : kUsualPatience);
  for (;;) {
    Outcome locked = session_->LockHome();
    if (locked || locked.Reason() != running || patience.hasExpired()) return locked;
    QThread::msleep(20);
    YieldToInterface();
  }
}

void StartUp::Timer_Timer() {
  const QStringList names = session_->CatalogueNames();
  if (names.isEmpty())
    return Fail(QString::fromUtf16(session_text::kNoCatalogue) + folders_.WorkingFolder());
  if (!options_.catalogue.isEmpty()) {
    const QString name = CatalogueNamed(options_.catalogue, names);
    if (!name.isEmpty()) return Activate(name);
    return Fail(QString::fromUtf16(session_text::kSelectCatalogue) + u'\n' + names.join(u'\n'));
  }
  if (names.size() == 1) return Activate(names.first());
  check_ = std::make_unique<frmcheckDB>(names);
  connect(check_.get(), &QDialog::rejected, this, [this] { End(0); });
  connect(check_.get(), &QDialog::accepted, this,
          [this] { Guarded("frmcheckDB", "cmdok_Click", [this] { Activate(check_->Name()); }); });
  check_->show();
  start_.reset();
}

Outcome StartUp::OpenMainWindow(const QString& name,
                                const std::function<void(const QString&)>& status) {
  if (Outcome activated = session_->Activate(name, status); !activated) return activated;
  FollowReplaced(session_->ActiveCatalogue(), session_->ReadSettings());
  try {
    main_ = std::make_unique<frmmain>(*session_);
  } catch (const Error& error) {
    // A catalogue that opens and can't be read is a lost one, not a fault of the program.
    if (error.Number() != error_number::kDatabase) throw;
    return Failure{QString::fromUtf16(session_text::kDamaged)};
  }
  loaded_ = name;
  return {};
}

void StartUp::Activate(const QString& name) {
  // Whoever starts the program now is to see what is being loaded, not the choice again.
  if (check_) check_.release()->deleteLater();
  frmintro intro;
  intro.show();
  YieldToInterface();
  const Outcome opened =
      OpenMainWindow(name, [&intro](const QString& status) { intro.SetStatus(status); });
  const QString former = std::exchange(former_, QString());
  if (!opened) {
    intro.hide();
    if (former.isEmpty() || former == name) return Fail(opened.Reason());
    MsgBox(opened.Reason(), MessageKind::Critical);
    return Activate(former);
  }
  connect(main_.get(), &frmmain::SelectDatabaseWanted, this,
          [this] { Guarded("frmcheckDB", "cmdok_Click", [this] { SelectDatabase(); }); });
  connect(main_.get(), &frmmain::Closed, this, [this] {
    if (switchTo_.isEmpty()) instance_.Close();
    // Not from inside the window's own event.
    QTimer::singleShot(0, this,
                       [this] { Guarded("frmmain", "Form_Unload", [this] { Unload(); }); });
  });
  main_->show();
  start_.reset();
  intro.hide();
  Q_EMIT Ready();
  if (!options_.paths.isEmpty()) return OpenPaths();
  if (!options_.offerSamples || !SamplesAreDue(*session_)) return;
  QTimer::singleShot(0, main_.get(), [this] {
    Guarded("frmmain", "OfferSamples", [this] {
      const QString folder = OfferSamples(SamplesFolder(options_.home), main_.get());
      if (!folder.isEmpty()) main_->OpenPath(folder);
    });
  });
}

/// From the menu: the window closes, and opens anew on the chosen catalogue.
void StartUp::SelectDatabase() {
  frmcheckDB check(session_->CatalogueNames(), main_.get());
  if (check.exec() != QDialog::Accepted) return;
  switchTo_ = check.Name();
  if (!main_->close()) switchTo_.clear();
}

// While it runs.

void StartUp::Raise(const QStringList& paths) {
  if (!paths.isEmpty()) options_.paths = paths;
  QWidget* window = main_ ? static_cast<QWidget*>(main_.get()) : check_.get();
  // Still loading: the window comes by itself, and opens the paths.
  if (window == nullptr) return;
  const auto bring = [](QWidget* front) {
    front->setWindowState(front->windowState() & ~Qt::WindowMinimized);
    front->show();
    front->raise();
    front->activateWindow();
  };
  bring(window);
  if (QWidget* dialog = QApplication::activeModalWidget()) bring(dialog);
  if (main_) OpenPaths();
}

void StartUp::OpenPaths() {
  if (!main_ || options_.paths.isEmpty()) return;
  // Not behind the back of a dialog.
  if (QApplication::activeModalWidget() != nullptr) {
    QTimer::singleShot(kBetweenTries, this,
                       [this] { Guarded("frmmain", "OpenPath", [this] { OpenPaths(); }); });
    return;
  }
  const QString path = options_.paths.first();
  options_.paths.clear();
  main_->OpenPath(path);
}

// The end.

void StartUp::Unload() {
  if (const QString name = std::exchange(switchTo_, QString()); !name.isEmpty()) {
    former_ = GetFileName(session_->ActiveCatalogue().Path());
    main_.reset();
    return Activate(name);
  }
  const bool restarts = main_->RestartRequested();
  if (restarts)
    if (const Outcome marked = CreateTempFile(RestartMarker()); !marked)
      MsgBox(marked.Reason(), MessageKind::Warning);
  UnloadAllForms();
  if (restarts) Restart();
  End(0);
}

void StartUp::UnloadAllForms() {
  start_.reset();
  check_.reset();
  main_.reset();
  QApplication::closeAllWindows();
  // The catalogue is closed and the home free before the next start asks for it.
  session_.reset();
}

void StartUp::Restart() const {
  QStringList arguments;
  if (!options_.home.isEmpty()) arguments = {u"--home"_s, options_.home};
  // The same catalogue again, without the question for it.
  if (!loaded_.isEmpty()) arguments += {u"--catalogue"_s, loaded_};
  if (QProcess::startDetached(QApplication::applicationFilePath(), arguments)) return;
  QFile::remove(RestartMarker());
  MsgBox(tr("Zolmira QM could not be started again. Please start it by hand."),
         MessageKind::Warning);
}

void StartUp::Fail(const QString& text) {
  start_.reset();
  MsgBox(text, MessageKind::Critical);
  End(kExitUsage);
}

void StartUp::End(int exitCode) {
  if (ended_) return;
  ended_ = true;
  exitCode_ = exitCode;
  start_.reset();
  Q_EMIT Finished(exitCode);
}

}  // namespace zqm
