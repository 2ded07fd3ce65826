// SPDX-License-Identifier: GPL-3.0-or-later
#include <unistd.h>

#include "batch/carry_photos.h"
#include "batch/delete_photos.h"
#include "batch/photo_commands.h"
#include "batch/rename_photos.h"
#include "tests/batch/batch_fixture.h"
#include "tests/support/small_disk.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

const QString kExists = QString::fromUtf16(kReasonExists);
const QString kDenied = QString::fromUtf16(kReasonPermission);
const QString kMissing = QString::fromUtf16(kReasonMissing);

class Carry : public test::BatchTest {
 protected:
  BatchResult Move(const QStringList& paths, ExistingFiles existing = ExistingFiles::Skip) {
    return MovePhotos(TheCatalogue(), paths, {In("b"), existing}, &view_, {});
  }
  BatchResult Copy(const QStringList& paths, ExistingFiles existing = ExistingFiles::Skip) {
    return CopyPhotos(TheCatalogue(), paths, {In("b"), existing}, &view_, {});
  }
  static constexpr auto kOver = ExistingFiles::Overwrite;
};

TEST_F(Carry, AMovedPhotoKeepsItsRow) {
  const QString path = Photo("a/Föhn's 1.jpg"), target = In("b/Föhn's 1.jpg");
  Note(path, u"mine"_s);
  const QString id = Stored(path, Column::ID);
  std::vector<int> percent;
  const BatchResult result =
      MovePhotos(TheCatalogue(), {path}, {In("b")}, &view_,
                 [&percent](const BatchProgress& at) { percent.push_back(at.Percent()); });
  EXPECT_EQ(result.done, 1);
  EXPECT_EQ(percent, (std::vector{0, 100}));
  EXPECT_EQ(Stored(target, Column::Notes), u"mine"_s);
  EXPECT_EQ(Stored(target, Column::ID), id);
  EXPECT_EQ(Stored(target, Column::ParentFolder), In("b"));
  EXPECT_TRUE(Photos().ReadThumbnail());
  EXPECT_FALSE(Photos().IsCatalogued(path));
  EXPECT_FALSE(FileExists(path));
  EXPECT_EQ(view_.told, (QStringList{u"- "_s + target, u"- "_s + path, u"live"_s}));
}

TEST_F(Carry, ACopyHasNoRowAndTheSourceKeepsItsOwn) {
  const QString path = Photo("a/1.jpg"), target = In("b/1.jpg");
  EXPECT_EQ(Copy({path}).done, 1);
  EXPECT_TRUE(Photos().IsCatalogued(path));
  EXPECT_FALSE(Photos().IsCatalogued(target));
  EXPECT_EQ(test::Scratch::Read(target), test::Scratch::Read(path));
}

TEST_F(Carry, WhatStandsIsSkippedOrOverwritten) {
  const QString path = Photo("a/1.jpg"), target = Photo("b/1.jpg");
  Note(path, u"new"_s);
  Note(target, u"old"_s);
  test::Scratch::Read(path);
  EXPECT_EQ(ReasonsOf(Move({path})), QStringList{kExists});
  EXPECT_EQ(ReasonsOf(Copy({path})), QStringList{kExists});
  EXPECT_EQ(Stored(target, Column::Notes), u"old"_s);

  EXPECT_EQ(Copy({path}, kOver).done, 1);
  EXPECT_FALSE(Photos().IsCatalogued(target));
  CatalogueThem({target});
  const QString id = Stored(path, Column::ID);
  EXPECT_EQ(Move({path}, kOver).done, 1);
  EXPECT_EQ(Stored(target, Column::Notes), u"new"_s);
  EXPECT_EQ(Stored(target, Column::ID), id);
  EXPECT_EQ(Photos().Count(), 1);
  EXPECT_EQ(TheCatalogue().CheckIntegrity(), QStringList());
}

TEST_F(Carry, NothingIsCarriedOntoItself) {
  const QString path = Photo("b/1.jpg");
  ASSERT_TRUE(QFile::link(In("b"), In("c")));
  ASSERT_TRUE(QFile::link(path, In("a/1.jpg")));
  for (const QString& source : {path, In("c/1.jpg"), In("a/1.jpg")}) {
    EXPECT_EQ(ReasonsOf(Move({source}, kOver)), QStringList{kDenied}) << source.toStdString();
    EXPECT_EQ(ReasonsOf(Copy({source}, kOver)), QStringList{kDenied}) << source.toStdString();
    EXPECT_EQ(ReasonsOf(Move({source})), QStringList{kExists}) << source.toStdString();
  }
  EXPECT_EQ(Names("b"), QStringList{u"1.jpg"_s});
  EXPECT_GT(QFileInfo(path).size(), 100);
  // Two names of one file are two files.
  ASSERT_EQ(::link(path.toUtf8(), In("a/2.jpg").toUtf8()), 0);
  ASSERT_EQ(::link(path.toUtf8(), In("b/2.jpg").toUtf8()), 0);
  EXPECT_EQ(Move({In("a/2.jpg")}, kOver).done, 1);
  EXPECT_EQ(Names("a"), QStringList{u"1.jpg"_s});
}

TEST_F(Carry, LetterCaseMakesNoOtherName) {
  const QString path = Photo("a/x.jpg"), standing = Photo("b/X.JPG");
  EXPECT_EQ(ReasonsOf(Move({path})), QStringList{kExists});
  EXPECT_EQ(Copy({path}, kOver).done, 1);
  EXPECT_EQ(Names("b"), QStringList{u"X.JPG"_s});
  EXPECT_FALSE(Photos().IsCatalogued(standing));
  CatalogueThem({standing});
  EXPECT_EQ(Move({path}, kOver).done, 1);
  EXPECT_EQ(Names("b"), QStringList{u"x.jpg"_s});
  EXPECT_EQ(Photos().Index().Paths(), QStringList{In("b/x.jpg")});
}

TEST_F(Carry, WhatCantBeDoneIsSaidAndLeavesAllAsItWas) {
  const QString path = Photo("a/1.jpg"), other = Photo("a/2.jpg");
  EXPECT_EQ(ReasonsOf(Move({In("a/gone.jpg"), path, path})), (QStringList{kMissing, kMissing}));
  // The folder goes, or is no folder.
  EXPECT_EQ(ReasonsOf(MovePhotos(TheCatalogue(), {other}, {In("none")}, &view_, {})),
            QStringList{kDenied});
  EXPECT_EQ(ReasonsOf(CopyPhotos(TheCatalogue(), {other}, {In("b/1.jpg")}, &view_, {})),
            QStringList{kDenied});
  // What would be overwritten is read-only, or a folder.
  const QString readOnly = Write("b/2.jpg", "keep");
  QFile::setPermissions(readOnly, QFile::ReadOwner);
  EXPECT_EQ(ReasonsOf(Move({other}, kOver)), QStringList{kDenied});
  EXPECT_EQ(ReasonsOf(Copy({other}, kOver)), QStringList{kDenied});
  EXPECT_EQ(test::Scratch::Read(readOnly), "keep");
  QFile::remove(readOnly);
  ASSERT_TRUE(QDir().mkdir(readOnly));
  EXPECT_EQ(ReasonsOf(Move({other}, kOver)), QStringList{kDenied});
  EXPECT_TRUE(FileExists(other));
  EXPECT_EQ(Stored(other, Column::Photo), other);
}

TEST_F(Carry, ACatalogueThatCantBeWrittenKeepsTheFile) {
  const QString path = Photo("a/1.jpg"), stranger = Write("a/2.jpg");
  Session reading(session_->Folders());  // without the home's lock
  ASSERT_TRUE(reading.Activate(u"Zolmira QM.mdb"_s));
  Catalogue& readOnly = reading.ActiveCatalogue();
  const auto failed = [](const BatchResult& result) { return ReasonsOf(result); };
  const QStringList reason{u"The database is read-only"_s};
  EXPECT_EQ(failed(MovePhotos(readOnly, {path, stranger}, {In("b")}, &view_, {})), reason);
  EXPECT_EQ(failed(DeletePhotos(readOnly, {path}, &view_, {})), reason);
  EXPECT_EQ(failed(RemovePhotos(readOnly, {path}, &view_, {})), reason);
  EXPECT_EQ(failed(RenamePhotos(readOnly, {path}, {u"3.jpg"_s}, &view_, {})), reason);
  EXPECT_EQ(Names("a"), QStringList{u"1.jpg"_s});
  // A file without a row needs no catalogue.
  EXPECT_EQ(Names("b"), QStringList{u"2.jpg"_s});
}

TEST_F(Carry, AcrossFileSystemsTimesAndModesSurviveAndAFullDiskLeavesNoPart) {
  const test::SmallDisk disk(In("b"));
  if (!disk.IsMounted()) GTEST_SKIP() << "needs the right to mount";
  const QString path = Photo("a/1.jpg"), big = Photo("a/2.jpg");
  const QDateTime then(QDate(2003, 4, 5), QTime(6, 7, 8));
  {
    QFile file(path), padded(big);
    ASSERT_TRUE(file.open(QFile::ReadWrite) && padded.open(QFile::Append));
    file.setFileTime(then, QFile::FileModificationTime);
    padded.write(QByteArray(2 << 20, 'x'));
  }
  QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  EXPECT_EQ(ReasonsOf(Copy({big})), QStringList{kDenied});
  EXPECT_EQ(ReasonsOf(Move({big, path})), QStringList{kDenied});
  EXPECT_EQ(Names("b"), QStringList{u"1.jpg"_s});
  const QFileInfo moved(In("b/1.jpg"));
  EXPECT_EQ(moved.lastModified(), then);
  EXPECT_TRUE(moved.permission(QFile::ExeOwner));
  EXPECT_FALSE(moved.permission(QFile::ReadOther));
  EXPECT_EQ(Names("a"), QStringList{u"2.jpg"_s});
  EXPECT_TRUE(Photos().IsCatalogued(In("b/1.jpg")));
  EXPECT_TRUE(Photos().IsCatalogued(big));
  // Over what stands there.
  const QString again = Photo("a/1.jpg");
  EXPECT_EQ(Move({again}, kOver).done, 1);
  EXPECT_EQ(Photos().Count(), 2);
}

TEST_F(Carry, FoldersAreMadeByName) {
  const auto make = [this](const QString& name) { return CreateFolderIn(In("b"), name).Reason(); };
  EXPECT_EQ(make(QString()), u"Enter the name of the new folder."_s);
  EXPECT_EQ(make(u"a:b"_s),
            u"Invalid folder name. Folder name cannot contain the following characters: \\ / : * "
            u"?\" < > |"_s);
  EXPECT_EQ(make(u"Füße"_s), QString());
  EXPECT_TRUE(FolderExists(In("b/Füße")));
  EXPECT_EQ(make(u"Füße"_s),
            u"A folder with the name you specified already exists. Specify a different name."_s);
  EXPECT_EQ(CheckDestination(QString()).Reason(), u"Select destination folder."_s);
}

TEST_F(Carry, CommandsTakeWhatTheyCanUse) {
  const QString here = Write("a/1.jpg"), gone = In("a/gone.jpg");
  const QStringList both{gone, here};
  for (const PhotoCommand& command : PhotoCommands()) {
    EXPECT_EQ(*PreparePhotos(command, both, {}), command.existingOnly ? QStringList{here} : both);
    EXPECT_EQ(PreparePhotos(command, {gone}, {}).Reason(), QString::fromUtf16(command.unusable));
  }
  EXPECT_EQ(FindPhotoCommand(kMoveCommand)->caption, u"Move To Folder..."_s);
  for (const int index : {0, 2, 5, 10, 12})
    EXPECT_EQ(FindPhotoCommand(index), nullptr);
}

}  // namespace
}  // namespace zqm
