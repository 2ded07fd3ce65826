// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QStorageInfo>

#include "session/maintenance.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"
#include "tests/support/small_disk.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class Maintenance : public ::testing::Test {
 protected:
  Maintenance() : folders_(ResolveSessionFolders(scratch_.Path("home"))) { Open(); }

  void Open() {
    session_.reset();
    session_ = std::make_unique<Session>(folders_);
    ASSERT_TRUE(session_->PrepareFolders());
    ASSERT_TRUE(session_->LockHome());
    ASSERT_TRUE(session_->Activate(u"Zolmira QM.mdb"_s));
  }

  PhotoRecordset& Photos() { return session_->ActiveCatalogue().Photos(); }
  QString File() const { return folders_.WorkingFolder() + u"/Zolmira QM.mdb"_s; }
  QString Compacted() const { return folders_.ScratchFolder() + u"/temp.mdb"_s; }

  void AddRows(int count) {
    for (int i = 0; i < count; ++i) {
      ASSERT_TRUE(Photos().BeginNewRow());
      Photos().SetField(Column::Photo, u"/p/%1.jpg"_s.arg(i));
      Photos().SetField(Column::Notes, u"Föhn's %1"_s.arg(i));
      Photos().WriteThumbnail(QByteArray(5001 + i, 'x'));
      ASSERT_TRUE(Photos().CommitRow());
    }
  }
  void DeleteRow(const QString& path) {
    ASSERT_TRUE(Photos().LocateRow(path));
    ASSERT_TRUE(Photos().DeleteCurrentRow());
  }

  test::Scratch scratch_;
  SessionFolders folders_;
  std::unique_ptr<Session> session_;
};

TEST_F(Maintenance, TheOptimizedCatalogueIsSmallerAndHoldsAll) {
  AddRows(300);
  ASSERT_TRUE(session_->ActiveCatalogue().AddCategory(u"Family"_s));
  for (int i = 100; i < 300; ++i)
    DeleteRow(u"/p/%1.jpg"_s.arg(i));
  Open();  // everything is in the file itself now
  ASSERT_TRUE(Photos().LocateRow(u"/p/99.jpg"_s));
  Photos().SetField(Column::Notes, u"gathered, not committed"_s);

  scratch_.Write("home/AppData/Zolmira/QM/Temp/temp.mdb", "of an earlier run");
  std::vector<int> progress;
  bool closed = false;
  const auto report = Optimize(
      *session_, [&](int done, int total) { progress.push_back(100 * done / total); },
      [&] { closed = true; });
  ASSERT_TRUE(report) << report.Reason().toStdString();
  EXPECT_TRUE(closed);
  EXPECT_FALSE(session_->HasActiveCatalogue());
  EXPECT_TRUE(std::ranges::is_sorted(progress));
  EXPECT_EQ(progress.back(), 100);
  EXPECT_EQ(report->after, QFileInfo(File()).size());
  EXPECT_LT(report->after, report->before / 2);
  EXPECT_FALSE(QFileInfo::exists(Compacted()));

  Open();
  EXPECT_EQ(session_->ActiveCatalogue().CheckIntegrity(), QStringList());
  EXPECT_EQ(session_->ActiveCatalogue().Categories(), QStringList{u"Family"_s});
  EXPECT_EQ(Photos().Count(), 100);
  ASSERT_TRUE(Photos().LocateRow(u"/p/99.jpg"_s));
  EXPECT_EQ(Photos().GetField(Column::Notes), u"gathered, not committed"_s);
  EXPECT_EQ(Photos().ReadThumbnail()->size(), 5100);
  // Numbers of deleted rows are not given away again.
  ASSERT_TRUE(Photos().BeginNewRow());
  Photos().SetField(Column::Photo, u"/p/new.jpg"_s);
  ASSERT_TRUE(Photos().CommitRow());
  EXPECT_EQ(Photos().GetField(Column::ID), u"301"_s);
}

TEST_F(Maintenance, ACatalogueThatOthersReadStaysAsItIs) {
  AddRows(3);
  OpenProblem problem = OpenProblem::None;
  const auto reader = Catalogue::Open(File(), problem, CatalogueAccess::Reading);
  ASSERT_TRUE(reader);
  ASSERT_EQ(reader->Photos().Count(), 3);
  const auto report = Optimize(*session_, {});
  EXPECT_EQ(report.Reason(),
            u"The database is in use by another program. Close that program and try again."_s);
  EXPECT_FALSE(QFileInfo::exists(Compacted()));
  ASSERT_TRUE(session_->HasActiveCatalogue());
  // And can still be written.
  ASSERT_TRUE(Photos().LocateRow(u"/p/1.jpg"_s));
  Photos().SetField(Column::Notes, u"later"_s);
  ASSERT_TRUE(Photos().MoveFirst());
  EXPECT_EQ(reader->Query(u"Select * from qryphoto WHERE [Notes] = 'later'"_s, Column::Photo),
            QStringList{u"/p/1.jpg"_s});
}

TEST_F(Maintenance, WhatCantBeOptimizedSaysWhy) {
  QFile::remove(File());
  EXPECT_EQ(Optimize(*session_, {}).Reason(), u"Cannot locate Zolmira QM database."_s);
  session_->CloseCatalogue();
  EXPECT_EQ(Optimize(*session_, {}).Reason(), u"Cannot locate Zolmira QM database."_s);
}

TEST_F(Maintenance, ACompactionThatFailsLeavesTheOldFile) {
  AddRows(50);
  Open();
  const QByteArray before = test::Scratch::Read(File());
  // A folder stands where the new file should be.
  ASSERT_TRUE(QDir().mkpath(Compacted()));
  EXPECT_FALSE(Optimize(*session_, {}));
  ASSERT_TRUE(session_->HasActiveCatalogue());
  session_->CloseCatalogue();
  EXPECT_EQ(test::Scratch::Read(File()), before);
}

TEST_F(Maintenance, AFullDiskLeavesTheOldFile) {
  constexpr int kRows = 30;
  const auto fails = [&](const QString& disk) {  // a folder of the scratch
    AddRows(kRows);
    Open();  // everything is in the file itself now
    const QByteArray before = test::Scratch::Read(File());
    const qint64 room = QStorageInfo(scratch_.Path(disk)).bytesFree() - before.size() / 3;
    scratch_.Write(disk + u"/ballast"_s, QByteArray(static_cast<qsizetype>(room), 'x'));
    EXPECT_EQ(Optimize(*session_, {}).Reason(), u"The disk is full"_s);
    EXPECT_FALSE(QFileInfo::exists(Compacted()));
    session_->CloseCatalogue();
    EXPECT_EQ(test::Scratch::Read(File()), before);
    Open();
    EXPECT_EQ(Photos().Count(), kRows);
    session_.reset();
  };
  {
    const test::SmallDisk disk(folders_.ScratchFolder());
    if (!disk.IsMounted()) GTEST_SKIP() << "needs the right to mount";
    fails(u"home/AppData/Zolmira/QM/Temp"_s);
  }
  // The new file is whole, and can't be brought to where the old one stands.
  const test::SmallDisk disk(folders_.DocumentsPath);
  Open();
  // The templates that come along would take most of it.
  for (const QString& name : {u"printing_templates"_s, u"watermark_templates"_s}) {
    const QDir templates(folders_.WorkingFolder() + u'/' + name);
    for (const QString& file : templates.entryList(QDir::Files))
      EXPECT_TRUE(QFile::remove(templates.filePath(file)));
  }
  fails(u"home/Documents"_s);
}

TEST(OptimizeReport, SizesAndSaving) {
  constexpr qint64 kKilobyte = 1024;
  EXPECT_EQ((OptimizeReport{3 * kKilobyte * kKilobyte / 2, 512 * kKilobyte}.Text()),
            u"Old size: 1.5 MB\nNew size: 512 KB\nSaving: 67 %\n"_s);
  EXPECT_EQ((OptimizeReport{100 * kKilobyte, 100 * kKilobyte}.Text()),
            u"Old size: 100 KB\nNew size: 100 KB\nSaving: 0 %\n"_s);
}

TEST_F(Maintenance, ANewCatalogueIsACopyOfTheMaster) {
  const struct {
    const char16_t *name, *reason;
  } refused[] = {
      {u"", u"Enter the name of the new database."},
      {u"a/b", u" File name cannot contain the following characters: \\ / : * ? \" < > |"},
      {u"a\"b", u" File name cannot contain the following characters: \\ / : * ? \" < > |"},
      {u"zolmira qm",
       u"A database with the name you specified already exists. Specify a different name."},
  };
  for (const auto& [name, reason] : refused)
    EXPECT_EQ(CreateCatalogue(folders_, QString::fromUtf16(name)).Reason(),
              QString::fromUtf16(reason));
  ASSERT_TRUE(CreateCatalogue(folders_, u"Jörg's"_s));
  EXPECT_EQ(session_->CatalogueNames(), (QStringList{u"Jörg's.mdb"_s, u"Zolmira QM.mdb"_s}));
  AddRows(1);
  ASSERT_TRUE(session_->Activate(u"Jörg's.mdb"_s));
  EXPECT_EQ(Photos().Count(), 0);
  EXPECT_FALSE(session_->ActiveCatalogue().ReadOnly());
}

}  // namespace
}  // namespace zqm
