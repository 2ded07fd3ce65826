// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopeGuard>
#include <cstdio>

#include "cataloguing/metadata_record.h"
#include "session/session.h"
#include "tests/app/zqm_process.h"
#include "tests/support/photos.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class CommandLine : public ::testing::Test {
 protected:
  test::Ran Run(QStringList arguments) {
    return test::RunZqm(QStringList{u"--home"_s, scratch_.Path("home")} + arguments);
  }
  QString Working(const QString& name) const {
    return scratch_.Path(u"home/Documents/Zolmira/QM/"_s + name);
  }
  void ExpectSoundCatalogue(int& rows) {
    Session session(ResolveSessionFolders(scratch_.Path("home")));
    ASSERT_TRUE(session.PrepareFolders());
    ASSERT_TRUE(session.LockHome());
    ASSERT_TRUE(session.Activate(u"Zolmira QM.mdb"_s));
    ASSERT_EQ(session.ActiveCatalogue().CheckIntegrity(), QStringList());
    PhotoRecordset& photos = session.ActiveCatalogue().Photos();
    rows = photos.Count();
    for (int i = 0; i < rows; ++i) {
      ASSERT_TRUE(photos.MoveTo(i));
      EXPECT_EQ(photos.GetField(Column::Photo), photos.Index().At(i).path);
      EXPECT_EQ(photos.GetField(Column::FileType), u"JPEG Bitmap (JPG)"_s);
      EXPECT_TRUE(photos.ReadThumbnail());
    }
  }

  test::Scratch scratch_;
};

TEST_F(CommandLine, AFolderBecomesRowsOnceAndFailuresTheNextTime) {
  const QString photo =
      scratch_.Write("photos/Jörg's ü.jpg", test::SampleJpeg(300, 200, {}, {{90, u"Graz"}}));
  const test::Ran first = Run({u"catalog"_s, u"--notes"_s, u"So schön"_s, u"--date"_s,
                               u"02/01/2008"_s, scratch_.Path("photos")});
  EXPECT_EQ(first.exitCode, 0);
  EXPECT_EQ(first.out,
            u"Images from the selected folder(s) have been added to Zolmira QM Database.\n"_s);
  EXPECT_EQ(first.err, QString());

  const test::Ran row = Run({u"--json"_s, u"row"_s, photo});
  EXPECT_EQ(row.exitCode, 0);
  const QJsonObject object = QJsonDocument::fromJson(row.out.toUtf8()).array().at(0).toObject();
  EXPECT_EQ(object[u"Notes"_s].toString(), u"So schön"_s);
  EXPECT_EQ(object[u"Date"_s].toString(), u"2008-01-02"_s);
  EXPECT_EQ(object[u"City"_s].toString(), u"Graz"_s);
  EXPECT_EQ(object[u"Photo"_s].toString(), photo);

  const test::Ran again = Run({u"catalog"_s, scratch_.Path("photos"), photo});
  EXPECT_EQ(again.exitCode, 1);
  EXPECT_EQ(again.out, QString());
  EXPECT_EQ(again.err, u"The following files could to be added to Zolmira QM Database:\n"_s +
                           photo + u": File already exists in database\n"_s);

  const QString out = scratch_.Path("thumbnail.jpg");
  EXPECT_EQ(Run({u"thumbnail"_s, photo, out}).exitCode, 0);
  EXPECT_EQ(QImage(out).size(), QSize(200, 133));

  const QByteArray before = test::Scratch::Read(photo);
  EXPECT_EQ(Run({u"thumbnail"_s, photo, photo}).err, photo + u": File already exists\n"_s);
  EXPECT_EQ(test::Scratch::Read(photo), before);
}

TEST_F(CommandLine, InfoPrintsTheRecordOfEveryFile) {
  const QString photo = scratch_.Write("a.jpg", test::SampleJpeg(30, 20));
  const QString broken = scratch_.Write("b.jpg", "no image");
  const test::Ran lines = Run({u"info"_s, photo, broken});
  EXPECT_EQ(lines.exitCode, 1);
  EXPECT_TRUE(lines.out.startsWith(u"Photo: "_s + photo + u"\nFilename: a.jpg\n"_s));
  EXPECT_EQ(lines.out.count(u'\n'), static_cast<int>(RecordColumns().size()) + 1);
  EXPECT_EQ(lines.err, broken + u": File could not be read as an image\n"_s);
  const test::Ran json = Run({u"--json"_s, u"info"_s, photo});
  const QJsonArray array = QJsonDocument::fromJson(json.out.toUtf8()).array();
  ASSERT_EQ(array.size(), 1);
  EXPECT_EQ(array[0].toObject().size(), static_cast<int>(RecordColumns().size()) + 1);
}

TEST_F(CommandLine, NamesAndValuesStandAsTheyAre) {
  const QString photo = scratch_.Write("[2020]/[a,b].jpg", test::SampleJpeg(30, 20));
  const QString odd = scratch_.Write("[2020]/two\nlines.jpg",
                                     test::SampleJpeg(30, 20, {{u"EXIF_Make", u"a\x1B[31m\nb"}}));
  QProcess inside;
  inside.setWorkingDirectory(scratch_.Path());
  test::PrepareZqm(inside, {u"--home"_s, scratch_.Path("home"), u"catalog"_s, u"--notes"_s,
                            u"[a,b]"_s, u"[2020]"_s});
  inside.start();
  ASSERT_TRUE(inside.waitForFinished());
  EXPECT_EQ(inside.exitCode(), 0);
  const test::Ran row = Run({u"row"_s, photo});
  EXPECT_TRUE(row.out.contains(u"\nNotes: [a,b]\n"_s));
  const test::Ran lines = Run({u"info"_s, odd});
  EXPECT_TRUE(lines.out.contains(u"\nFilename: two\\nlines.jpg\n"_s));
  EXPECT_TRUE(lines.out.contains(u"\nCamera Make: a\\x1b[31m\\nb\n"_s));
  const QString plain = scratch_.Write("bytes/plain.jpg", "");
  // The toolkit can't clear such a name away.
  const QByteArray unreadable = QFile::encodeName(scratch_.Path("bytes")) + "/f\xFF.jpg";
  const auto clear = qScopeGuard([&unreadable] { remove(unreadable.constData()); });
  ASSERT_EQ(rename(QFile::encodeName(plain).constData(), unreadable.constData()), 0);
  const test::Ran bytes = Run({u"catalog"_s, scratch_.Path("bytes")});
  EXPECT_EQ(bytes.exitCode, 1);
  EXPECT_TRUE(bytes.err.contains(u"File name cannot be read"_s));
}

TEST_F(CommandLine, WhatTheUserGotWrongIsSaidAndChangesNothing) {
  const QString photos = scratch_.Path("photos");
  scratch_.Write("photos/a.jpg", test::SampleJpeg(30, 20));
  const QString empty = scratch_.Path("empty");
  QDir().mkpath(empty);
  const struct {
    QStringList arguments;
    int exitCode;
    QString err;
  } cases[] = {
      {{u"catalog"_s, u"--date"_s, u"31/02/2020"_s, photos}, 2, u"Invalid date format.\n"_s},
      {{u"catalog"_s, empty}, 2, u"No Images were found in the selected folders.\n"_s},
      {{u"row"_s, photos + u"/a.jpg"_s}, 1, photos + u"/a.jpg: File is not in the database\n"_s},
      {{u"--catalogue"_s, u"none"_s, u"catalog"_s, photos},
       2,
       u"Select the database to be loaded.\nZolmira QM.mdb\n"_s},
      {{u"catalog"_s, u"/no/such/folder"_s},
       1,
       u"The following files could to be added to Zolmira QM Database:\n"
       u"/no/such/folder: File is offline or missing\n"_s}};
  for (const auto& c : cases) {
    const test::Ran ran = Run(c.arguments);
    EXPECT_EQ(ran.exitCode, c.exitCode) << c.arguments.join(u' ').toStdString();
    EXPECT_EQ(ran.err, c.err);
  }
  EXPECT_EQ(Run({u"catalog"_s}).err, u"No folder has been selected.\n"_s);
  EXPECT_EQ(Run({u"catalog"_s, u""_s}).exitCode, 2);
  EXPECT_EQ(Run({u"--json"_s, u"catalog"_s, empty}).out.simplified(),
            u"{ \"Message\": \"No Images were found in the selected folders.\" }"_s);
  EXPECT_EQ(Run({u"no-such-command"_s}).exitCode, 2);
  EXPECT_EQ(Run({u"--help"_s}).exitCode, 0);
  EXPECT_EQ(Run({u"catalog"_s, photos}).exitCode, 0);
}

TEST_F(CommandLine, SeveralCataloguesAreChosenByName) {
  EXPECT_EQ(Run({u"catalogues"_s}).out, u"Zolmira QM.mdb\n"_s);
  ASSERT_TRUE(QFile::copy(Working(u"Zolmira QM.mdb"_s), Working(u"Other.mdb"_s)));
  EXPECT_EQ(Run({u"--json"_s, u"catalogues"_s}).out.simplified(),
            u"[ \"Other.mdb\", \"Zolmira QM.mdb\" ]"_s);
  const QString photo = scratch_.Write("a.jpg", test::SampleJpeg(30, 20));
  const test::Ran unclear = Run({u"catalog"_s, photo});
  EXPECT_EQ(unclear.exitCode, 2);
  EXPECT_EQ(unclear.err, u"Select the database to be loaded.\nOther.mdb\nZolmira QM.mdb\n"_s);
  EXPECT_EQ(Run({u"--catalogue"_s, u"other"_s, u"catalog"_s, photo}).exitCode, 0);
  EXPECT_EQ(Run({u"--catalogue"_s, u"Other.mdb"_s, u"row"_s, photo}).exitCode, 0);
  EXPECT_EQ(Run({u"--catalogue"_s, u"Zolmira QM"_s, u"row"_s, photo}).exitCode, 1);
}

TEST_F(CommandLine, CataloguesThatCannotBeUsedAreSaidSo) {
  Run({u"catalogues"_s});
  const QString photo = scratch_.Write("a.jpg", test::SampleJpeg(30, 20));
  {
    Session holder(ResolveSessionFolders(scratch_.Path("home")));
    ASSERT_TRUE(holder.LockHome());
    const test::Ran refused = Run({u"catalog"_s, photo});
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_EQ(refused.err, u"Zolmira QM is running. Close it first.\n"_s);
  }
  QFile damaged(Working(u"Zolmira QM.mdb"_s));
  ASSERT_TRUE(damaged.open(QFile::WriteOnly));
  damaged.write(QByteArray(5000, 'x'));
  damaged.close();
  const test::Ran refused = Run({u"catalog"_s, photo});
  EXPECT_EQ(refused.exitCode, 2);
  EXPECT_EQ(refused.err, QString::fromUtf16(session_text::kDamaged) + u'\n');
  QFile::remove(damaged.fileName());
  const test::Ran none = Run({u"catalog"_s, photo});
  EXPECT_EQ(none.exitCode, 2);
  EXPECT_EQ(none.err, u"Cannot locate any Zolmira QM compatible database in\n"_s +
                          Working(QString()).chopped(1) + u'\n');
}

TEST_F(CommandLine, TheCameraFolderGivesItsRows) {
  const QString camera = test::Photos("camera");
  if (camera.isEmpty()) GTEST_SKIP() << "the real photos are not here";
  const test::Ran first = Run({u"catalog"_s, camera});
  EXPECT_EQ(first.exitCode, 1);
  EXPECT_EQ(first.err, u"The following files could to be added to Zolmira QM Database:\n"_s +
                           camera + u"/beach.jpg: File could not be read as an image\n"_s);
  const test::Ran again = Run({u"catalog"_s, camera});
  EXPECT_EQ(again.err.count(u": File already exists in database\n"_s), 68);
}

// A kill at any moment costs at most the photo under work: whatever stands is whole, and the next
// import goes on. ZQM_KILLS sets how often, for a long run.
TEST_F(CommandLine, AKilledImportLeavesASoundCatalogue) {
  constexpr int kPhotos = 40;
  for (int i = 0; i < kPhotos; ++i)
    scratch_.Write(u"photos/%1.jpg"_s.arg(i, 3, 10, QChar(u'0')), test::SampleJpeg(500 + i, 400));
  const int kills = std::max(8, qEnvironmentVariableIntValue("ZQM_KILLS"));
  const QStringList arguments{u"--home"_s, scratch_.Path("home"), u"catalog"_s,
                              scratch_.Path("photos")};
  for (int kill = 0; kill < kills; ++kill) {
    QProcess process;
    test::PrepareZqm(process, arguments);
    process.start();
    ASSERT_TRUE(process.waitForStarted());
    // Spread over a whole run of the program, start-up and first-run copies included.
    if (!process.waitForFinished(1 + kill * 37 % 120)) {
      process.kill();
      process.waitForFinished();
    }
    int rows = 0;
    ASSERT_NO_FATAL_FAILURE(ExpectSoundCatalogue(rows)) << "after kill " << kill;
    // Start over now and then, so that first runs are hit too.
    if (rows == kPhotos) QDir(scratch_.Path("home")).removeRecursively();
  }
  test::RunZqm(arguments);
  EXPECT_EQ(Run({u"row"_s, scratch_.Path("photos/039.jpg")}).exitCode, 0);
}

TEST_F(CommandLine, ValuesAreSetSearchedAndListed) {
  const QString first = scratch_.Write(
      "photos/Jörg's.jpg", test::SampleJpeg(30, 20, {{u"EXIF_ExposureTime", u"0.004"}}));
  const QString second =
      scratch_.Write("photos/two.jpg", test::SampleJpeg(30, 20, {{u"EXIF_ExposureTime", u"2"}}));
  ASSERT_EQ(Run({u"catalog"_s, scratch_.Path("photos")}).exitCode, 0);
  EXPECT_EQ(Run({u"values"_s, u"exposure time"_s}).out, u"2 sec\n1/250 sec\n"_s);

  const test::Ran set =
      Run({u"set"_s, u"--rating"_s, u"4"_s, u"--categories"_s, u"Familie,Öl"_s, u"--date"_s,
           u"2/29/2008"_s, u"--tags"_s, u"Größe"_s, first, u"/nowhere.jpg"_s});
  EXPECT_EQ(set.exitCode, 1);
  EXPECT_EQ(set.err, u"/nowhere.jpg: File is not in the database\n"_s);
  EXPECT_EQ(Run({u"categories"_s}).out, u"Familie\nÖl\n"_s);
  const QList<QStringList> findsFirst = {
      {u"--rating"_s, u"4"_s, u"--rating"_s, u"5"_s},
      {u"--category"_s, u"öl"_s},
      {u"--keywords"_s, u"GRÖSSE,größe"_s, u"--any"_s},
      {u"--from"_s, u"29.2.2008"_s},
      {u"--filter"_s, u"Exposure Time=1/250 sec"_s, u"--filter"_s, u"Flag=Unflagged"_s},
  };
  for (const QStringList& criteria : findsFirst)
    EXPECT_EQ(Run(QStringList{u"search"_s} + criteria).out, first + u'\n')
        << criteria.join(u' ').toStdString();
  const test::Ran all = Run({u"--json"_s, u"search"_s, u"--filter"_s, u"Exposure Time=2 sec"_s,
                             u"--filter"_s, u"Exposure Time=1/250 sec"_s});
  EXPECT_EQ(QJsonDocument::fromJson(all.out.toUtf8()).array(), (QJsonArray{first, second}));

  EXPECT_EQ(Run({u"categories"_s, u"delete"_s, u"Öl"_s}).err,
            u"Cannot delete the selected category since it has existing items assigned to it.\n"_s);
  EXPECT_EQ(Run({u"set"_s, u"--categories"_s, u""_s, u"--tags"_s, u""_s, first}).exitCode, 0);
  EXPECT_EQ(Run({u"categories"_s, u"delete"_s, u"öl"_s}).exitCode, 0);
  EXPECT_EQ(Run({u"categories"_s, u"add"_s, u"\"Öl\""_s}).out,
            u"'Öl' has been added to the list of categories.\n"_s);
  EXPECT_EQ(Run({u"search"_s, u"--keywords"_s, u"größe"_s}).out, QString());
}

TEST_F(CommandLine, SearchesAndValuesThatMakeNoSenseAreRefused) {
  const QList<QStringList> refused = {
      {u"search"_s},
      {u"search"_s, u"--keywords"_s, u" , ,"_s},
      {u"search"_s, u"--rating"_s, u"6"_s},
      {u"search"_s, u"--to"_s, u"31/2/2008"_s},
      {u"search"_s, u"--filter"_s, u"Shutter Speed"_s},
      {u"search"_s, u"--filter"_s, u"Colour=red"_s},
      {u"values"_s, u"Thumbnail"_s},
      {u"set"_s, u"/a.jpg"_s},
      {u"set"_s, u"--rating"_s, u"six"_s, u"/a.jpg"_s},
      {u"set"_s, u"--flag"_s, u"flagged"_s, u"/a.jpg"_s},
      {u"categories"_s, u"add"_s, u"[]"_s},
      {u"categories"_s, u"delete"_s, u"unknown"_s},
      {u"new"_s, u"zolmira qm"_s},
  };
  for (const QStringList& arguments : refused) {
    const test::Ran ran = Run(arguments);
    EXPECT_EQ(ran.exitCode, 2) << arguments.join(u' ').toStdString();
    EXPECT_FALSE(ran.err.isEmpty());
  }
  EXPECT_EQ(Run({u"search"_s, u"--rating"_s, u"3"_s, u"--print-sql"_s}).out,
            u"Select * from qryphoto WHERE ([Rating] = '3')\n"_s);
}

/// Kills the process again and again, a little later each time, until it ends by itself.
constexpr int kAnyExit = -1;
void KillUntilDone(const QStringList& arguments, const std::function<void()>& check,
                   int exitCode = 0) {
  for (int wait = 4;; wait += 6) {
    QProcess process;
    test::PrepareZqm(process, arguments);
    process.start();
    ASSERT_TRUE(process.waitForStarted());
    const bool done = process.waitForFinished(wait) && process.exitStatus() == QProcess::NormalExit;
    if (!done) {
      process.kill();
      process.waitForFinished();
    }
    check();
    if (done) {
      if (exitCode != kAnyExit) {
        EXPECT_EQ(process.exitCode(), exitCode);
      }
      return;
    }
  }
}

TEST_F(CommandLine, KilledFileWorkLeavesRowsAndFilesTogether) {
  constexpr int kPhotos = 60;
  QStringList photos, moved, renamed;
  for (int i = 0; i < kPhotos; ++i) {
    const QString name = u"%1.jpg"_s.arg(i);
    photos.append(scratch_.Write(u"old/"_s + name, test::SampleJpeg(90, 60)));
    moved.append(scratch_.Path(u"new/"_s + name));
    renamed.append(scratch_.Path(u"new/x-%1.jpg"_s.arg(i + 1)));
  }
  scratch_.Write("new/keep.txt", "");
  ASSERT_EQ(Run({u"catalog"_s, scratch_.Path("old")}).exitCode, 0);
  const QStringList home{u"--home"_s, scratch_.Path("home")};
  const auto together = [this](int standing) {
    int rows = 0;
    ExpectSoundCatalogue(rows);
    EXPECT_EQ(rows, standing);
    // Each row has its file, and no file is anywhere without its row.
    const QStringList paths =
        Run({u"search"_s, u"--filter"_s, u"Flag=Unflagged"_s}).out.split(u'\n', Qt::SkipEmptyParts);
    EXPECT_EQ(paths.size(), standing);
    for (const QString& path : paths)
      EXPECT_TRUE(QFile::exists(path)) << path.toStdString();
  };
  // A second run finds some of them gone; that is what it says.
  const auto all = [&](const QStringList& command, const QStringList& files, const auto& check) {
    KillUntilDone(home + command + files, check, kAnyExit);
  };
  all({u"move"_s, u"--to"_s, scratch_.Path("new")}, photos, [&] { together(kPhotos); });
  EXPECT_EQ(QDir(scratch_.Path("old")).entryList(QDir::Files | QDir::Hidden), QStringList());
  all({u"rename"_s, u"--text"_s, u"x"_s}, moved, [&] { together(kPhotos); });
  for (const QString& path : renamed)
    EXPECT_EQ(Run({u"row"_s, path}).exitCode, 0);
  all({u"delete"_s}, renamed, [&] {
    const int left = static_cast<int>(QDir(scratch_.Path("new")).entryList({u"*.jpg"_s}).size());
    together(left);
  });
  EXPECT_EQ(QDir(scratch_.Path("new")).entryList(QDir::Files | QDir::Hidden),
            QStringList{u"keep.txt"_s});
}

TEST_F(CommandLine, FilesAreMovedCopiedRenamedAndDeleted) {
  const QString path = scratch_.Write("[old]/Föhn's.jpg", test::SampleJpeg(90, 60));
  QDir().mkpath(scratch_.Path("new"));
  ASSERT_EQ(Run({u"catalog"_s, path}).exitCode, 0);
  const QString to = scratch_.Path("new");
  EXPECT_EQ(Run({u"copy"_s, u"--to"_s, to, path}).out,
            u"Selected photos have been copied to the specified folder.\n"_s);
  const auto refused = Run({u"move"_s, u"--to"_s, to, path});
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_EQ(refused.err, u"The following photos could not be moved:\n"_s + path +
                             u": File already exists in destination folder\n"_s);
  EXPECT_EQ(Run({u"move"_s, u"--overwrite"_s, u"--to"_s, to, path}).exitCode, 0);
  const QString moved = scratch_.Path("new/Föhn's.jpg");
  EXPECT_EQ(Run({u"row"_s, moved}).exitCode, 0);
  EXPECT_EQ(
      Run({u"rename"_s, u"--preview"_s, u"--text"_s, u"a"_s, u"--start"_s, u"007"_s, moved}).out,
      u"Föhn's.jpg -> a-007.jpg\n"_s);
  EXPECT_EQ(Run({u"rename"_s, u"--name"_s, u"b"_s, moved}).out, u"Renaming Images Completed.\n"_s);
  const QString renamed = scratch_.Path("new/b.jpg");
  EXPECT_EQ(Run({u"remove"_s, renamed}).exitCode, 0);
  EXPECT_EQ(Run({u"row"_s, renamed}).exitCode, 1);
  EXPECT_EQ(Run({u"delete"_s, renamed, renamed}).err.count(u"File is offline or missing"_s), 1);
  EXPECT_FALSE(QFile::exists(renamed));
  // Nothing is begun.
  EXPECT_EQ(Run({u"move"_s, u"--to"_s, scratch_.Path("none"), moved}).exitCode, 2);
  EXPECT_EQ(Run({u"copy"_s, u"--to"_s, to, moved}).exitCode, 1);
  EXPECT_EQ(Run({u"rename"_s, moved}).exitCode, 2);
  EXPECT_EQ(Run({u"rename"_s, u"--text"_s, u"a"_s, u"--name"_s, u"b"_s, moved}).exitCode, 2);
  EXPECT_EQ(Run({u"rename"_s, u"--search"_s, u"a"_s, moved}).exitCode, 2);
  EXPECT_EQ(Run({u"rename"_s, u"--name"_s, u"a"_s, moved, renamed}).exitCode, 2);
}

TEST_F(CommandLine, PhotosBecomePdfFiles) {
  const QString photo = scratch_.Write("Föhn.jpg", test::SampleJpeg(90, 60));
  const QString to = scratch_.Path("out");
  EXPECT_EQ(Run({u"pdf"_s, u"--to"_s, to, photo}).exitCode, 2) << "the folder isn't there";
  QDir().mkpath(to);
  EXPECT_EQ(Run({u"pdf"_s, u"--to"_s, to, photo}).out,
            u"The pdf file(s) have been created in the destination folder.\n"_s);
  EXPECT_TRUE(QFile::exists(scratch_.Path("out/Föhn.pdf")));
  const auto refused = Run({u"pdf"_s, u"--to"_s, to, photo});
  EXPECT_EQ(refused.exitCode, 1);
  EXPECT_EQ(refused.err, u"The following pdf files could not be created\n"_s +
                             scratch_.Path("out/Föhn.pdf") +
                             u": File already exists in destination folder\n"_s);
  EXPECT_EQ(
      Run({u"pdf"_s, u"--to"_s, to, u"--overwrite"_s, u"--compression"_s, u"2"_s, photo}).exitCode,
      0);
  EXPECT_TRUE(test::Scratch::Read(scratch_.Path("out/Föhn.pdf")).contains("/CCITTFaxDecode"));
  EXPECT_EQ(Run({u"pdf"_s, u"--to"_s, to, u"--name"_s, u"book"_s, photo, photo}).exitCode, 0);
  EXPECT_EQ(test::Scratch::Read(scratch_.Path("out/book.pdf")).count("/MediaBox"), 2);
  // Nothing is begun.
  EXPECT_EQ(Run({u"pdf"_s, u"--to"_s, to, u"--name"_s, u"a/b"_s, photo}).exitCode, 2);
  EXPECT_EQ(Run({u"pdf"_s, u"--to"_s, to, u"--compression"_s, u"6"_s, photo}).exitCode, 2);
  EXPECT_EQ(Run({u"pdf"_s, u"--to"_s, to, scratch_.Path("gone.jpg")}).exitCode, 1);
}

TEST_F(CommandLine, AKilledOptimizeOrReconnectLosesNoRow) {
  constexpr int kPhotos = 60;
  for (int i = 0; i < kPhotos; ++i)
    scratch_.Write(u"old/%1.jpg"_s.arg(i).toUtf8().constData(), test::SampleJpeg(90, 60));
  ASSERT_EQ(Run({u"catalog"_s, scratch_.Path("old")}).exitCode, 0);
  const QString home = scratch_.Path("home");
  const auto sound = [this, photos = kPhotos] {
    int rows = 0;
    ExpectSoundCatalogue(rows);
    EXPECT_EQ(rows, photos);
  };
  KillUntilDone({u"--home"_s, home, u"optimize"_s}, sound);
  EXPECT_EQ(QDir(home + u"/AppData/Zolmira/QM/Temp"_s).entryList(QDir::Files), QStringList());
  ASSERT_TRUE(QDir().rename(scratch_.Path("old"), scratch_.Path("new")));
  KillUntilDone({u"--home"_s, home, u"reconnect"_s, scratch_.Path("old"), scratch_.Path("new")},
                [&] {
                  sound();
                  // All rows have gone over, or none.
                  const qsizetype moved =
                      Run({u"search"_s, u"--filter"_s, u"Parent Folder="_s + scratch_.Path("new")})
                          .out.count(u'\n');
                  EXPECT_TRUE(moved == 0 || moved == kPhotos) << moved;
                });
  EXPECT_EQ(
      Run({u"rebuild"_s, scratch_.Path("new/1.jpg")}).out,
      u"Thumbnails and Metadata information for the selected photo(s) have been updated.\n"_s);
}

}  // namespace
}  // namespace zqm
