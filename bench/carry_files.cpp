// SPDX-License-Identifier: GPL-3.0-or-later
// Work on many files with rows beside the same work on files without, and the catalogue's part of
// it alone: what it costs, and whether it grows in line with the number. `carry_files FOLDER` makes
// its files below FOLDER.
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <cstdio>
#include <utility>

#include "batch/carry_photos.h"
#include "batch/delete_photos.h"
#include "batch/rename_photos.h"
#include "cataloguing/user_fields.h"
#include "shell/files.h"
#include "shell/locale_info.h"

using namespace Qt::StringLiterals;

namespace {

using namespace zqm;

struct Times {
  double move = 0, rename = 0, flag = 0, remove = 0;  // milliseconds; files alone have no flag
};

double Took(const std::function<BatchResult()>& run, int count) {
  QElapsedTimer clock;
  clock.start();
  const BatchResult result = run();
  if (result.done != count) std::abort();
  return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

QStringList MakeFiles(const QString& folder, int count) {
  QDir().mkpath(folder);
  QStringList paths;
  for (int i = 0; i < count; ++i) {
    paths.append(PathIn(folder, u"IMG_%1.jpg"_s.arg(i)));
    QFile file(paths.last());
    if (!file.open(QFile::WriteOnly) || file.write("photo") != 5) std::abort();
  }
  return paths;
}

void AddRows(Catalogue& catalogue, const QStringList& paths) {
  PhotoRecordset& photos = catalogue.Photos();
  const QByteArray thumbnail(8001, 't');
  for (const QString& path : paths) {
    if (!photos.BeginNewRow()) std::abort();
    photos.SetField(Column::Photo, path);
    photos.SetField(Column::ParentFolder, GetParentFolderName(path));
    photos.WriteThumbnail(thumbnail);
    if (!photos.CommitRow()) std::abort();
  }
}

std::unique_ptr<Catalogue> NewCatalogue(const QTemporaryDir& scratch) {
  const QString file = scratch.filePath(u"rows.mdb"_s);
  if (!CreateCatalogueFile(file)) std::abort();
  OpenProblem problem{};
  return Catalogue::Open(file, problem);
}

Times Whole(const QString& parent, int count, bool catalogued) {
  const QTemporaryDir scratch(parent + u"/carry-XXXXXX"_s);
  const auto catalogue = NewCatalogue(scratch);
  QStringList paths = MakeFiles(scratch.filePath(u"from"_s), count);
  if (catalogued) AddRows(*catalogue, paths);
  const QString to = scratch.filePath(u"to"_s);
  QDir().mkpath(to);

  Times times;
  times.move = Took([&] { return MovePhotos(*catalogue, paths, {to}, nullptr, {}); }, count);
  for (QString& path : paths)
    path = PathIn(to, GetFileName(path));
  const QStringList names =
      RenamePreview(paths, {.mode = RenameMode::Sequential, .customText = u"Trip"_s});
  times.rename = Took([&] { return RenamePhotos(*catalogue, paths, names, nullptr, {}); }, count);
  for (qsizetype i = 0; i < paths.size(); ++i)
    paths[i] = PathIn(to, names.at(i));
  times.remove = Took([&] { return RemovePhotos(*catalogue, paths, nullptr, {}); }, count);
  return times;
}

/// What the catalogue does for them, with changes of files that do nothing.
Times CatalogueWork(const QString& parent, int count) {
  const QTemporaryDir scratch(parent + u"/carry-XXXXXX"_s);
  const auto catalogue = NewCatalogue(scratch);
  QStringList paths;
  for (int i = 0; i < count; ++i)
    paths.append(u"/from/IMG_%1.jpg"_s.arg(i));
  AddRows(*catalogue, paths);

  const auto carry = [&](const char* operation, const std::function<QString(int)>& target) {
    return Took(
        [&] {
          BatchResult result;
          for (int i = 0; i < count; ++i) {
            const QString to = target(i);
            const Intent intent{QString::fromLatin1(operation), paths.at(i), to};
            const auto recorded = catalogue->RecordIntent(intent);
            if (recorded && catalogue->FollowIntent(*recorded, intent)) ++result.done;
            paths[i] = to;
          }
          return result;
        },
        count);
  };
  Times times;
  times.move = carry("move", [&](int i) { return PathIn(u"/to"_s, GetFileName(paths.at(i))); });
  times.rename = carry("rename", [](int i) { return u"/to/Trip_%1.jpg"_s.arg(i); });
  times.flag = Took(
      [&] {
        BatchResult result;
        const auto outcome =
            AssignKeywords(catalogue->Photos(), {{KeywordField::Flag, u"Flagged"_s}}, paths,
                           [&](int done) { result.done = done; });
        if (!outcome) std::abort();
        return result;
      },
      count);
  times.remove = Took([&] { return RemovePhotos(*catalogue, paths, nullptr, {}); }, count);
  return times;
}

void Print(const char* what, double with, double without, double catalogue) {
  std::printf("  %-8s %8.0f ms, without rows %8.0f ms, the catalogue's work alone %8.0f ms\n", what,
              with, without, catalogue);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  UseSystemLocale();
  const QString parent = QString::fromLocal8Bit(argc > 1 ? argv[1] : ".");
  double half = 0, whole = 0;
  for (const int count : {2'500, 5'000, 10'000}) {
    const Times without = Whole(parent, count, false), with = Whole(parent, count, true);
    const Times alone = CatalogueWork(parent, count);
    std::printf("%d photos\n", count);
    Print("moved", with.move, without.move, alone.move);
    Print("renamed", with.rename, without.rename, alone.rename);
    Print("removed", with.remove, without.remove, alone.remove);
    half = std::exchange(whole, alone.move + alone.rename + alone.flag);
  }
  std::printf("10,000 rows moved, renamed and flagged  %.0f ms (bar: under 2000 ms)\n", whole);
  std::printf("the same / 5,000 rows  %.0f ms against %.0f ms, ratio %.2f (bar: at most 2.5)\n",
              whole, half, whole / half);
  return 0;
}
