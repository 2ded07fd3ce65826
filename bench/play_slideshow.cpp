// SPDX-License-Identifier: GPL-3.0-or-later
// What the show paints: `play_slideshow PHOTO PHOTO [NUMBER…]` runs transitions between two photos
// in the show's own window on an offscreen screen of 1920 x 1080, and prints how many frames a
// second it painted and the longest time between two of them. A screen of 60 hertz asks for 62.
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>

#include "imaging/transitions.h"
#include "shell/ui/look.h"
#include "viewers/ui/frmslideshow.h"

using namespace Qt::StringLiterals;

namespace {

using namespace zqm;

/// Counts the paintings of a window.
class FrameWatch : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      if (++frames_ > 1) longest_ = std::max(longest_, since_.elapsed());
      since_.restart();
    }
    return QObject::eventFilter(watched, event);
  }
  void Reset() { frames_ = 0, longest_ = 0; }
  int Frames() const { return frames_; }
  qint64 Longest() const { return longest_; }

 private:
  int frames_ = 0;
  qint64 longest_ = 0;
  QElapsedTimer since_;
};

template <class Done>
void Until(const Done& done) {
  while (!done())
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void Play(const QStringList& photos, int number) {
  constexpr int kTimes = 4;
  frmslideshow window({photos, number, std::chrono::minutes(1), true, {}});
  FrameWatch watch;
  window.installEventFilter(&watch);
  window.show();
  Until([&] { return window.Show().Current() == 0; });
  qint64 longest = 0, milliseconds = 0;
  int frames = 0;
  for (int time = 0; time < kTimes; ++time) {
    const int before = window.Show().Current();
    window.Show().Step(1);
    Until([&] { return window.Show().Current() != before; });
    watch.Reset();
    QElapsedTimer clock;
    clock.start();
    Until([&] { return !window.Show().IsChanging(); });
    milliseconds += clock.elapsed();
    frames += watch.Frames();
    longest = std::max(longest, watch.Longest());
  }
  std::printf("%-34s %5.1f frames a second, longest %lld ms\n", TransitionAt(number).entry.data(),
              1000.0 * frames / static_cast<double>(milliseconds), static_cast<long long>(longest));
}

}  // namespace

int main(int argc, char** argv) {
  const QTemporaryDir folder;
  QFile screen(folder.filePath(u"screen.json"_s));
  if (!screen.open(QFile::WriteOnly)) return 1;
  screen.write(R"({"synchronousWindowSystemEvents": false, "windowFrameMargins": false,
    "screens": [{"name": "s", "x": 0, "y": 0, "width": 1920, "height": 1080, "logicalDpi": 96,
                 "logicalBaseDpi": 96, "dpr": 1}]})");
  screen.close();
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(screen.fileName()));
  QApplication application(argc, argv);
  look::Apply(application);
  const QStringList arguments = application.arguments();
  if (arguments.size() < 3) {
    std::fputs("play_slideshow PHOTO PHOTO [NUMBER...]\n", stderr);
    return 2;
  }
  for (const QString& number : arguments.mid(3))
    Play(arguments.mid(1, 2), number.toInt());
  return 0;
}
