// SPDX-License-Identifier: GPL-3.0-or-later
// The next photo on the whole screen: `view_next FOLDER` steps through FOLDER on a screen of
// 1920 x 1080, the next photo decoded ahead each time, and prints how long it took from the key to
// the painted photo. Offscreen; Release builds only.
#include <QApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "cataloguing/folder_import.h"
#include "imaging/ui/picture_view.h"
#include "session/session.h"
#include "shell/ui/look.h"
#include "viewers/ui/frmfull.h"

using namespace Qt::StringLiterals;

namespace {

using namespace zqm;

constexpr int kSteps = 50;
constexpr int kLookMilliseconds = 600;  // how long each photo is looked at

void MakeScreen(const QTemporaryDir& folder) {
  QFile file(folder.filePath(u"screen.json"_s));
  if (!file.open(QFile::WriteOnly)) qFatal("no screen");
  file.write(R"({"synchronousWindowSystemEvents": false, "windowFrameMargins": false,
    "screens": [{"name": "bench", "x": 0, "y": 0, "width": 1920, "height": 1080,
                 "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(file.fileName()));
}

/// When a widget was painted last.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(QWidget* widget) { widget->installEventFilter(this); }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Paint) return false;
    // The widget paints; then its time counts.
    watched->removeEventFilter(this);
    QCoreApplication::sendEvent(watched, event);
    watched->installEventFilter(this);
    ++painted;
    return true;
  }
  int painted = 0;
};

void Rest(int milliseconds) {
  const QDeadlineTimer rest(milliseconds);
  while (!rest.hasExpired())
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
}

/// From the key until the photo of that step is painted.
double Step(frmfull& window, PaintWatch& paints, Qt::Key key, const QString& wanted) {
  QElapsedTimer time;
  time.start();
  const int before = paints.painted;
  QTest::keyClick(&window, key);
  const QDeadlineTimer patience(std::chrono::seconds(20));
  while (window.LastShown() != wanted || paints.painted == before) {
    if (patience.hasExpired()) qFatal("%s doesn't come", qUtf8Printable(wanted));
    QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
  }
  return static_cast<double>(time.nsecsElapsed()) / 1e6;
}

void Measure(Session& session, const QStringList& photos) {
  frmfull window(session, photos, 0);
  window.show();
  if (!QTest::qWaitForWindowActive(&window)) qFatal("no window");
  PaintWatch paints(window.findChild<PictureView*>(u"ImageX1"_s)->viewport());
  Rest(2 * kLookMilliseconds);
  std::vector<double> times;
  int at = 0, direction = 1;
  for (int step = 0; step < kSteps; ++step) {
    if (at + direction < 0 || at + direction >= photos.size()) direction = -direction;
    at += direction;
    times.push_back(Step(window, paints, direction > 0 ? Qt::Key_Right : Qt::Key_Left, photos[at]));
    Rest(kLookMilliseconds);
  }
  std::ranges::sort(times);
  std::printf(
      "the next of %d photos on %d x %d, median of %d steps  %.1f ms, worst %.1f ms "
      "(bar: under 50 ms)\n",
      static_cast<int>(photos.size()), window.width(), window.height(), kSteps,
      times[times.size() / 2], times.back());
}

}  // namespace

int main(int argc, char** argv) {
  const QTemporaryDir home;
  MakeScreen(home);
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 2) {
    std::fputs("usage: view_next FOLDER\n", stderr);
    return 2;
  }
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, home.path());
  look::Apply(application);
  FailureList unread;
  const QStringList photos = ScanFolder(arguments[1], false, unread);
  Session session(ResolveSessionFolders(home.path()));
  if (photos.size() < 2 || !session.PrepareFolders() || !session.LockHome() ||
      !session.Activate(u"Zolmira QM.mdb"_s)) {
    std::fputs("two photos and a catalogue are needed\n", stderr);
    return 1;
  }
  Measure(session, photos);
  return 0;
}
