// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <set>

#include "catalogue/catalogue.h"
#include "catalogue/thumbnail_chunks.h"
#include "cataloguing/catalogue_photo.h"
#include "cataloguing/folder_import.h"
#include "cataloguing/virtual_exif.h"
#include "imaging/thumbnail.h"
#include "shell/files.h"
#include "tests/support/photos.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class Import : public ::testing::Test {
 protected:
  Import() {
    const QString path = scratch_.Path("photos.mdb");
    EXPECT_TRUE(CreateCatalogueFile(path));
    OpenProblem problem = OpenProblem::None;
    catalogue_ = Catalogue::Open(path, problem);
    EXPECT_NE(catalogue_, nullptr);
  }

  ImportResult Run(const QStringList& paths, const ImportTexts& texts = {},
                   BrowserView* view = nullptr,
                   const std::function<void(const ImportProgress&)>& progress = {}) {
    return CatalogueFiles(paths, texts, ReadRequest(), *catalogue_, view, progress);
  }

  QString Field(const QString& path, Column column) {
    EXPECT_TRUE(catalogue_->Photos().LocateRow(path)) << path.toStdString();
    return catalogue_->Photos().GetField(column);
  }

  void ExpectSound() { EXPECT_EQ(catalogue_->CheckIntegrity(), QStringList()); }

  test::Scratch scratch_;
  std::unique_ptr<Catalogue> catalogue_;
};

TEST_F(Import, ARowHoldsWhatTheFileTells) {
  const QString path =
      scratch_.Write("photos/Föhn's \n day.jpg",
                     test::SampleJpeg(600, 400,
                                      {{u"EXIF_ExposureTime", u"0.004"},
                                       {u"EXIF_DateTimeOriginal", u"2007:12:31 23:59:59"},
                                       {u"EXIF_GPSLatitudeRef", u"N"},
                                       {u"EXIF_GPSLatitudeDegrees", u"47"}},
                                      {{90, u"Graz"}, {10, u"5"}}));
  const ImportResult result = Run({path}, {u"Winter"_s, u"Jörg O'Neill"_s, QDate(2008, 1, 2)});
  EXPECT_TRUE(result.failures.Empty());
  EXPECT_EQ(result.added, 1);
  const std::map<Column, QString> expected = {{Column::Photo, path},
                                              {Column::Filename, u"Föhn's \n day.jpg"_s},
                                              {Column::FileType, u"JPEG Bitmap (JPG)"_s},
                                              {Column::ImageWidth, u"600"_s},
                                              {Column::ImageHeight, u"400"_s},
                                              {Column::ParentFolder, scratch_.Path("photos")},
                                              {Column::ExposureTime, u"1/250 sec"_s},
                                              {Column::DateTimeOriginal, u"2007:12:31 23:59:59"_s},
                                              {Column::LatitudeReference, u"North Latitude"_s},
                                              {Column::LatitudeDegrees, u"47"_s},
                                              {Column::City, u"Graz"_s},
                                              {Column::Urgency, u"5 (normal urgency)"_s},
                                              {Column::Notes, u"Winter"_s},
                                              {Column::Author, u"Jörg O'Neill"_s},
                                              {Column::Date, u"2008-01-02"_s},
                                              {Column::Flag, u"Unflagged"_s},
                                              {Column::Rating, QString()}};
  for (const auto& [column, text] : expected)
    EXPECT_EQ(Field(path, column), text) << ColumnName(column).toStdString();
  const Result<QByteArray> thumbnail = catalogue_->Photos().ReadThumbnail();
  ASSERT_TRUE(thumbnail);
  EXPECT_EQ(QImage::fromData(*thumbnail).size(), QSize(200, 133));
  ExpectSound();
}

TEST_F(Import, APhotoWithoutExifHasEmptyColumnsAndARow) {
  const QString path = scratch_.Write("plain.jpg", test::SampleJpeg(40, 30));
  EXPECT_EQ(Run({path}).added, 1);
  for (const ColumnInfo& info : Columns()) {
    if (info.group != ColumnGroup::Exif && info.group != ColumnGroup::Gps) continue;
    EXPECT_EQ(Field(path, info.column), QString()) << ColumnName(info.column).toStdString();
  }
  EXPECT_EQ(Field(path, Column::ImageWidth), u"40"_s);
}

TEST_F(Import, EachFailureIsARowAndTheRunGoesOn) {
  const QString first = scratch_.Write("a.jpg", test::SampleJpeg(20, 20));
  const QString text = scratch_.Write("b.jpg", "no image");
  const QString vanishing = scratch_.Write("c.jpg", test::SampleJpeg(20, 20));
  const QString link = scratch_.Path("d.jpg");
  QFile::link(scratch_.Path("nowhere.jpg"), link);
  const QString last = scratch_.Write("e.jpg", test::SampleJpeg(20, 20));
  EXPECT_EQ(Run({first}).added, 1);
  const ImportResult result =
      Run({first, text, vanishing, link, last}, {}, nullptr, [&](const ImportProgress& at) {
        if (at.done == 1) QFile::remove(vanishing);
      });
  EXPECT_EQ(result.added, 1);
  const std::vector<FailureRow> expected = {{first, u"File already exists in database"_s},
                                            {text, u"File could not be read as an image"_s},
                                            {vanishing, u"File is offline or missing"_s},
                                            {link, u"File is offline or missing"_s}};
  EXPECT_EQ(result.failures.rows, expected);
  EXPECT_TRUE(catalogue_->Photos().IsCatalogued(last));
  ExpectSound();
}

TEST_F(Import, OrderOfRowsIsTheListsWhateverTheDecodersSpeed) {
  QStringList paths;
  for (int i = 0; i < 30; ++i)
    paths += scratch_.Write(u"%1.jpg"_s.arg(i), test::SampleJpeg(i % 3 == 0 ? 900 : 20, 30));
  EXPECT_EQ(Run(paths).added, 30);
  EXPECT_EQ(catalogue_->Photos().Index().Paths(), paths);
}

TEST_F(Import, ShownThumbnailsAreToldOfTheirRow) {
  struct View : BrowserView {
    QStringList marked;
    void MarkCatalogued(const QString& path) override { marked += path; }
  } view;
  const QString good = scratch_.Write("good.jpg", test::SampleJpeg(20, 20));
  Run({scratch_.Write("bad.jpg", ""), good}, {}, &view);
  EXPECT_EQ(view.marked, QStringList{good});
}

TEST_F(Import, AReadOnlyCatalogueGivesReasonsAndNoRows) {
  const QString path = catalogue_->Path();
  catalogue_.reset();
  QFile::setPermissions(path, QFile::ReadOwner);
  OpenProblem problem = OpenProblem::None;
  catalogue_ = Catalogue::Open(path, problem);
  ASSERT_NE(catalogue_, nullptr);
  const ImportResult result = Run({scratch_.Write("a.jpg", test::SampleJpeg(20, 20))});
  ASSERT_EQ(result.failures.rows.size(), 1U);
  EXPECT_EQ(result.failures.rows[0].Reason, u"The database is read-only"_s);
  EXPECT_EQ(catalogue_->Photos().Count(), 0);
}

TEST_F(Import, CopyingTheRecordKeepsTheUsersWork) {
  const QString path = scratch_.Write("a.jpg", test::SampleJpeg(20, 20, {{u"EXIF_Make", u"Old"}}));
  ASSERT_EQ(Run({path}).added, 1);
  PhotoRecordset& photos = catalogue_->Photos();
  const std::map<Column, QString> users = {
      {Column::Notes, u"n"_s},        {Column::Rating, u"4"_s},     {Column::Tags, u"t"_s},
      {Column::Author, u"a"_s},       {Column::Categories, u"c"_s}, {Column::Flag, u"Rejected"_s},
      {Column::Date, u"2020-02-29"_s}};
  ASSERT_TRUE(photos.LocateRow(path));
  for (const auto& [column, text] : users)
    photos.SetField(column, text);
  scratch_.Write("a.jpg", test::SampleJpeg(30, 20, {{u"EXIF_Make", u"New"}}));
  const Result<PhotoFile> photo = ReadPhotoFile(path, {.thumbnail = true});
  ASSERT_TRUE(photo);
  UpdatefromForm3(ReadMetadataRecord(*photo, path), photo->thumbnail, photos);
  EXPECT_TRUE(photos.CommitRow());
  for (const auto& [column, text] : users)
    EXPECT_EQ(Field(path, column), text);
  EXPECT_EQ(Field(path, Column::CameraMake), u"New"_s);
  EXPECT_EQ(Field(path, Column::ImageWidth), u"30"_s);
  ExpectSound();
}

TEST(MetadataRecord, CoversEveryColumnThatAFileFills) {
  std::set<Column> columns(RecordColumns().begin(), RecordColumns().end());
  EXPECT_EQ(columns.size(), RecordColumns().size());
  for (const ColumnInfo& info : Columns()) {
    const bool fromFile = info.group != ColumnGroup::User && info.group != ColumnGroup::Program;
    EXPECT_EQ(columns.contains(info.column), fromFile) << ColumnName(info.column).toStdString();
  }
}

TEST(MetadataRecord, SizeIsInKilobytesHalfToEven) {
  const struct {
    qint64 bytes;
    const char16_t* size;
  } cases[] = {{1536, u"1.5"}, {0, u"0"}, {1024, u"1"}, {13480, u"13.16"}, {5242880, u"5120"}};
  for (const auto& c : cases) {
    PhotoFile photo;
    photo.bytes = c.bytes;
    MetadataRecord record;
    VirtualEXIF(photo, u"/a/b.jpg"_s, record);
    EXPECT_EQ(record.Text(Column::Size), QString::fromUtf16(c.size));
  }
}

TEST(ScanFolder, TakesKnownExtensionsByNameAndNoOthers) {
  test::Scratch scratch;
  for (const char* name : {"b.JPG", "a.tif", "C.png", "film.wmf", "x.iev", "notes.txt", "jpg",
                           "sub/d.nef", "sub/deeper/e.gif"})
    scratch.Write(name, "x");
  QFile::link(scratch.Path("sub"), scratch.Path("loop"));
  FailureList failures;
  const auto names = [&](bool recursive) {
    QStringList list;
    for (const QString& path : ScanFolder(scratch.Path(), recursive, failures))
      list += QDir(scratch.Path()).relativeFilePath(path);
    return list;
  };
  EXPECT_EQ(names(false), (QStringList{u"a.tif"_s, u"b.JPG"_s, u"C.png"_s}));
  EXPECT_EQ(names(true), (QStringList{u"a.tif"_s, u"b.JPG"_s, u"C.png"_s, u"sub/d.nef"_s,
                                      u"sub/deeper/e.gif"_s}));
  EXPECT_TRUE(failures.Empty());
  EXPECT_TRUE(ScanFolder(scratch.Path("gone"), true, failures).isEmpty());
  EXPECT_EQ(failures.rows.size(), 1U);
}

TEST(ScanFolder, ANameThatLooksLikeABuiltInResourceIsAName) {
  const test::Scratch scratch;
  const QString odd = scratch.Path() + u"/:e.jpg"_s;
  ASSERT_TRUE(QFile::rename(scratch.Write("e.jpg", "x"), odd));
  FailureList failures;
  EXPECT_EQ(ScanFolder(scratch.Path(), false, failures), QStringList{odd});
}

TEST(ImportDate, IsReadDayFirstAndMustExist) {
  EXPECT_EQ(ParseImportDate(u"02/01/2008"_s), QDate(2008, 1, 2));
  EXPECT_EQ(ParseImportDate(u"12/31/2008"_s), QDate(2008, 12, 31));
  EXPECT_FALSE(ParseImportDate(u"31/02/2008"_s).isValid());
  EXPECT_FALSE(ParseImportDate(u"soon"_s).isValid());
}

TEST(Thumbnails, NeverHaveALengthThatReadersRefuse) {
  const QByteArray jpeg = test::SampleJpeg(200, 150);
  for (int size = static_cast<int>(jpeg.size()); size < jpeg.size() + 1001; size += 37) {
    QByteArray bytes = jpeg + QByteArray(size - jpeg.size(), '\0');
    const QByteArray padded = PadThumbnail(bytes);
    EXPECT_FALSE(ThumbnailSizeRefused(padded.size()));
    EXPECT_EQ(padded == bytes, !ThumbnailSizeRefused(bytes.size()));
  }
  const QByteArray full = jpeg + QByteArray(1000 - jpeg.size() % 1000, '\0');
  const QByteArray padded = PadThumbnail(full);
  EXPECT_FALSE(ThumbnailSizeRefused(padded.size()));
  EXPECT_EQ(QImage::fromData(padded), QImage::fromData(full));
}

}  // namespace
}  // namespace zqm
