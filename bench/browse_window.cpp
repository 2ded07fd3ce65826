// SPDX-License-Identifier: GPL-3.0-or-later
// The window's two bars: `browse_window FOLDER [ROWS]` fills a catalogue of its own with rows,
// starts the window program's own start-up on it, browses FOLDER, and prints how long each took,
// the longest turn of the event loop meanwhile, and the memory. Offscreen; Release builds only.
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>

#include "app/start/start_up.h"
#include "browser/ui/frmmain.h"
#include "imaging/thumbnail_list.h"
#include "imaging/ui/image_multi_x.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace {

using namespace zqm;

void FillCatalogue(const SessionFolders& folders, int rows) {
  Session session(folders);
  if (!session.PrepareFolders() || !session.LockHome() || !session.Activate(u"Zolmira QM.mdb"_s))
    qFatal("no catalogue");
  PhotoRecordset& photos = session.ActiveCatalogue().Photos();
  for (int row = 0; row < rows; ++row) {
    if (!photos.BeginNewRow()) qFatal("no row");
    photos.SetField(Column::Photo, u"/photos/%1/IMG_%2.jpg"_s.arg(row / 500).arg(row));
    photos.SetField(Column::Flag, u"Unflagged"_s);
    photos.SetField(Column::CameraModel, u"Pocket 20 Z"_s);
    photos.SetField(Column::Notes, u"A day in the hills above the lake, number %1"_s.arg(row));
    if (!photos.CommitRow()) qFatal("row not written");
  }
}

/// The longest time between two turns of the event loop since it was reset.
class StallWatch : public QObject {
 public:
  StallWatch() {
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this,
            [this] { longest_ = std::max(longest_, since_.restart()); });
    timer_.start(1);
    Reset();
  }
  void Reset() {
    longest_ = 0;
    since_.start();
  }
  qint64 Longest() const { return longest_; }

 private:
  QTimer timer_;
  QElapsedTimer since_;
  qint64 longest_ = 0;
};

/// "VmRSS" or "VmHWM" in MB.
int Memory(const QByteArray& what) {
  QFile file(u"/proc/self/status"_s);
  if (!file.open(QFile::ReadOnly)) return 0;
  for (const QByteArray& line : file.readAll().split('\n'))
    if (line.startsWith(what)) return line.simplified().split(' ').at(1).toInt() / 1024;
  return 0;
}

template <class Done>
void Until(const Done& done) {
  while (!done())
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
}

/// Whether all thumbnails from `first` to `last` have come.
bool Shown(const ThumbnailList& list, int first, int last) {
  for (int row = first; row <= last; ++row)
    if (list.index(row).data(ThumbnailList::StateRole).value<ThumbnailList::State>() ==
        ThumbnailList::State::Waiting)
      return false;
  return true;
}

void Measure(StartUp& start, const QString& folder, const QElapsedTimer& sinceStart, int rows) {
  const auto started = static_cast<long long>(sinceStart.elapsed());
  std::printf("start to a usable window, %d rows  %lld ms (bar: under 700 ms)\n", rows, started);
  std::printf("memory of that window  %d MB (bar: under 200 MB)\n", Memory("VmRSS"));
  frmmain& window = *start.MainWindow();
  window.resize(1280, 800);
  window.findChild<QAction*>(u"mnumultiplerows"_s)->trigger();
  auto* view = window.findChild<ImageMultiX*>(u"ImageMultiX1"_s);
  const auto* list = static_cast<ThumbnailList*>(view->model());
  // What the start left to do is not the folder's.
  QElapsedTimer rest;
  rest.start();
  Until([&rest] { return rest.elapsed() > 1000; });
  StallWatch watch;
  QElapsedTimer time;
  time.start();
  window.OpenPath(folder);
  const auto lastVisible = [view, list] {
    const QModelIndex last =
        view->indexAt({view->viewport()->width() - 40, view->viewport()->height() - 10});
    return last.isValid() ? last.row() : std::min(list->ImageCount() - 1, 7);
  };
  Until([&] { return list->ImageCount() > 0 && Shown(*list, 0, lastVisible()); });
  std::printf("a folder of %d photos, first screenful of %d  %lld ms (bar: under 150 ms)\n",
              list->ImageCount(), lastVisible() + 1, static_cast<long long>(time.elapsed()));
  Until([&] { return Shown(*list, 0, std::min(list->ImageCount() - 1, 250)); });
  std::printf("longest turn while it fills  %lld ms, memory at most %d MB (bar: at most 50 ms)\n",
              static_cast<long long>(watch.Longest()), Memory("VmHWM"));
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 2) {
    std::fputs("usage: browse_window FOLDER [ROWS]\n", stderr);
    return 2;
  }
  const int rows = arguments.size() > 2 ? arguments[2].toInt() : 32'767;
  const QTemporaryDir home;
  const SessionFolders folders = ResolveSessionFolders(home.path());
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, home.path());
  FillCatalogue(folders, rows);
  QElapsedTimer sinceStart;
  sinceStart.start();
  look::Apply(application);
  StartUp start({home.path(), {}, {}}, folders);
  QObject::connect(
      &start, &StartUp::Ready, &application,
      [&] {
        // Usable is painted.
        start.MainWindow()->repaint();
        Measure(start, arguments[1], sinceStart, rows);
        QApplication::exit(0);
      },
      Qt::QueuedConnection);
  return start.Begin() ? QApplication::exec() : start.ExitCode();
}
