// SPDX-License-Identifier: GPL-3.0-or-later
// A hundred edits of a large photo, all undone and done again: `edit_photo FOLDER [MEGAPIXELS]`.
// Prints the time of a step, the process's peak of memory and what went to the folder; ends with 1
// when a picture doesn't come back as it was.
#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <cmath>
#include <cstdio>
#include <vector>

#include "imaging/edited_picture.h"

namespace zqm {
namespace {

constexpr int kEdits = 100;

/// Fine grain over slow ramps, as a camera makes it.
QImage Drawn(int megapixels) {
  const int width = static_cast<int>(std::sqrt(megapixels * 1.5e6));
  QImage picture(width, width * 2 / 3, QImage::Format_RGB32);
  unsigned noise = 1;
  for (int y = 0; y < picture.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < width; ++x) {
      noise = noise * 1664525U + 1013904223U;
      const int grain = static_cast<int>(noise >> 29);
      row[x] = qRgb((x / 40 + grain) & 255, (y / 30 + grain) & 255, ((x + y) / 50 + grain) & 255);
    }
  }
  return picture;
}

QByteArray Print(const QImage& picture) {
  QCryptographicHash hash(QCryptographicHash::Md5);
  hash.addData(QByteArrayView(picture.constBits(), picture.sizeInBytes()));
  return hash.result();
}

/// A line of the process's state, in megabytes.
long Megabytes(const char* line) {
  QFile status(QStringLiteral("/proc/self/status"));
  if (!status.open(QFile::ReadOnly)) return 0;
  for (const QByteArray& text : status.readAll().split('\n')) {
    if (text.startsWith(line)) return text.simplified().split(' ').at(1).toLong() / 1024;
  }
  return 0;
}

/// Whole pictures and small spots in turn.
Outcome Edit(EditedPicture& picture, int round) {
  picture.Deselect();
  if (round % 2 == 1) {
    const QRectF spot(100 + 20 * round, 100 + 10 * round, 300, 200);
    picture.Select(Selection::Ellipse(spot, picture.Image().size()));
  }
  if (round % 10 == 4) return picture.Flip(FlipDirection::Horizontal);
  return picture.AdjustBrightnessContrastSaturation(round % 3 == 0 ? -3 : 2, 0, 1);
}

bool Step(EditedPicture& picture, bool back) {
  back ? picture.SaveRedo() : picture.SaveUndo();
  if (!(back ? picture.UndoAt(0) : picture.RedoAt(0))) return false;
  back ? picture.DiscardUndo() : picture.DiscardRedo();
  return true;
}

int Run(const QString& folder, int megapixels) {
  EditedPicture picture(folder);
  Picture photo;
  photo.SetImage(Drawn(megapixels));
  picture.Assign(photo);
  photo.Clear();
  std::vector<QByteArray> prints = {Print(picture.Image())};
  QElapsedTimer clock;
  qint64 spent = 0, longest = 0;
  for (int i = 0; i < kEdits; ++i) {
    clock.start();
    if (!Edit(picture, i)) return 1;
    spent += clock.elapsed();
    longest = std::max(longest, clock.elapsed());
    prints.push_back(Print(picture.Image()));
  }
  const auto tell = [&](const char* what) {
    std::printf(
        "%s: %lld ms a step, longest %lld ms; memory %ld MB, peak %ld MB; disk %lld MB, "
        "lost %d\n",
        what, static_cast<long long>(spent / kEdits), static_cast<long long>(longest),
        Megabytes("VmRSS"), Megabytes("VmHWM"),
        static_cast<long long>(picture.History().BytesOnDisk() >> 20), picture.History().Lost());
  };
  tell("edited");
  for (const bool back : {true, false}) {
    spent = longest = 0;
    for (int i = 1; i <= kEdits; ++i) {
      clock.start();
      if (!Step(picture, back)) return 1;
      spent += clock.elapsed();
      longest = std::max(longest, clock.elapsed());
      const int state = back ? kEdits - i : i;
      if (Print(picture.Image()) != prints[static_cast<std::size_t>(state)]) {
        std::printf("state %d is another picture\n", state);
        return 1;
      }
    }
    tell(back ? "undone" : "redone");
  }
  return 0;
}

}  // namespace
}  // namespace zqm

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  if (argc < 2) return 2;
  return zqm::Run(QString::fromLocal8Bit(argv[1]), argc > 2 ? std::atoi(argv[2]) : 24);
}
