// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDirIterator>
#include <cstdio>
#include <random>

#include "batch/carry_photos.h"
#include "batch/delete_photos.h"
#include "batch/rename_photos.h"
#include "browser/browser.h"
#include "shell/files.h"
#include "tests/browser/home_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Any work on a few names in three folders, by the program and behind its back. One of the folders
/// is shown.
class RandomWork : public test::HomeTest {
 protected:
  RandomWork() {
    const int wanted = qEnvironmentVariableIntValue("ZQM_SEED");
    seed_ = wanted != 0 ? static_cast<unsigned>(wanted) : std::random_device()();
    random_.seed(seed_);
    std::printf("ZQM_SEED=%u\n", seed_);
    for (const QString& folder : folders_)
      QDir().mkpath(folder);
    browser_.LoadFolder(folders_[0]);
  }

  int Pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  const QString& AnyName() { return names_[Pick(static_cast<int>(names_.size()))]; }
  const QString& AnyFolder() { return folders_[Pick(3)]; }
  QString AnyPath() { return PathIn(AnyFolder(), AnyName()); }
  Catalogue& TheCatalogue() { return session_->ActiveCatalogue(); }

  void Select() {
    const QStringList shown = browser_.Thumbnails().FileNames();
    QStringList some;
    for (const QString& path : shown)
      if (Pick(2) == 0) some.append(path);
    browser_.OnImageSelect(some);
  }
  /// As a window of the program does it.
  void Work() {
    const FolderHold hold(browser_);
    const QStringList paths{AnyPath(), AnyPath(), AnyPath()};
    const CarryOptions to{AnyFolder(),
                          Pick(2) == 0 ? ExistingFiles::Skip : ExistingFiles::Overwrite};
    switch (Pick(6)) {
      case 0:
        MovePhotos(TheCatalogue(), paths, to, &browser_, {});
        break;
      case 1:
        CopyPhotos(TheCatalogue(), paths, to, &browser_, {});
        break;
      case 2:
        DeletePhotos(TheCatalogue(), paths.first(1), &browser_, {});
        break;
      case 3:
        RenamePhotos(TheCatalogue(), paths, {AnyName(), AnyName(), AnyName()}, &browser_, {});
        browser_.Live();
        break;
      case 4:
        RemovePhotos(TheCatalogue(), paths.first(1), &browser_, {});
        break;
      default:
        CatalogueFiles(paths, {}, ReadRequest(), TheCatalogue(), &browser_, {});
    }
  }
  /// Another program makes, deletes or renames a file.
  void Outside() {
    const FolderHold hold(browser_);
    const QString path = AnyPath(), other = AnyPath();
    switch (Pick(4)) {
      case 0:
        QFile::remove(path);
        break;
      case 1:
        QFile::rename(path, other);
        break;
      default:
        QFile file(path);
        if (file.open(QFile::NewOnly)) file.write(photo_);
    }
    // What it did with rows' files is none of the program's.
    for (const QString& row : Photos().Index().Paths())
      if (!FileExists(row)) away_.insert(row);
  }
  void ExpectAgreement() {
    ASSERT_EQ(TheCatalogue().CheckIntegrity(), QStringList());
    for (const QString& path : Photos().Index().Paths()) {
      ASSERT_TRUE(FileExists(path) || away_.contains(path)) << path.toStdString();
      EXPECT_EQ(Stored(path, Column::ParentFolder), GetParentFolderName(path));
      EXPECT_EQ(Stored(path, Column::Filename), GetFileName(path));
    }
    const QStringList list = browser_.Thumbnails().FileNames();
    QSet<QString> shown(list.begin(), list.end());
    ASSERT_EQ(shown.size(), list.size());
    FailureList unread;
    for (const QString& path : ScanFolder(folders_[0], false, unread))
      ASSERT_TRUE(shown.remove(path)) << path.toStdString();
    // The others are photos whose files are away.
    for (const QString& path : shown)
      ASSERT_TRUE(Photos().IsCatalogued(path)) << path.toStdString();
    const QStringList rows = Photos().Index().Paths();
    for (const QString& path : list) {
      const bool marked =
          !browser_.Thumbnails().Look(browser_.Thumbnails().IndexOf(path)).topText.isEmpty();
      // A row of another spelling counts or not as its own file comes and goes.
      const bool certain = rows.contains(path) || !Photos().IsCatalogued(path);
      ASSERT_TRUE(!certain || marked == rows.contains(path)) << path.toStdString();
    }
    for (const QString& path : browser_.Selected())
      ASSERT_TRUE(list.contains(path)) << path.toStdString();
  }

  unsigned seed_;
  std::mt19937 random_;
  QStringList folders_{scratch_.Path("a"), scratch_.Path("b"), scratch_.Path("c")};
  QStringList names_{u"x.jpg"_s, u"X.jpg"_s, u"ü.jpg"_s, u"it's.jpg"_s};
  QByteArray photo_ = test::SampleJpeg(16, 16);
  QSet<QString> away_;
  Busy busy_;
  Browser browser_{*session_, busy_};
};

TEST_F(RandomWork, RowsListAndDiskAgree) {
  constexpr int kRounds = 500;
  for (int round = 0; round < kRounds; ++round) {
    SCOPED_TRACE("round " + std::to_string(round) + " of ZQM_SEED=" + std::to_string(seed_));
    Select();
    Pick(3) == 0 ? Outside() : Work();
    ASSERT_NO_FATAL_FAILURE(ExpectAgreement());
  }
}

}  // namespace
}  // namespace zqm
