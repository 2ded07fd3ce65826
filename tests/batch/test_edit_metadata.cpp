// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/edit_metadata.h"
#include "imaging/picture.h"
#include "shell/text.h"
#include "tests/batch/batch_fixture.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class EditMetadata : public test::BatchTest {
 protected:
  /// A catalogued photo with EXIF, a position and IPTC items, one dataset repeated.
  QString Rich(const char* name = "a/Föhn 1.jpg") {
    const QString path = scratch_.Write(
        name, test::SampleJpeg(32, 24,
                               {{u"EXIF_Make", u"Zorki"},
                                {u"EXIF_ImageDescription", u"Föhn"},
                                {u"EXIF_DateTimeOriginal", u"2007:12:31 23:59:59"},
                                {u"EXIF_GPSLatitudeRef", u"N"},
                                {u"EXIF_GPSLatitudeDegrees", u"47"}},
                               {{90, u"Graz"}, {25, u"fog"}, {25, u"lake"}, {80, u"Müller"}}));
    CatalogueThem({path});
    return path;
  }
  static ExifEdit Exif(std::initializer_list<std::pair<const char16_t*, const char16_t*>> texts) {
    ExifEdit edit;
    for (const auto& [caption, text] : texts)
      edit[FindExifField(caption)] = QString::fromUtf16(text);
    return edit;
  }
  static IptcEdit Iptc(std::initializer_list<std::pair<const char16_t*, const char16_t*>> texts) {
    IptcEdit edit;
    for (const auto& [caption, text] : texts)
      edit[FindIptcField(caption)] = QString::fromUtf16(text);
    return edit;
  }
  BatchResult WriteExif(const QStringList& paths, const ExifEdit& edit) {
    return ApplyExif(TheCatalogue(), paths, edit, &view_, {});
  }
  BatchResult WriteIptc(const QStringList& paths, const IptcEdit& edit) {
    return ApplyIptc(TheCatalogue(), paths, edit, &view_, {});
  }
  BatchResult Remove(const QStringList& paths, MetadataBlock block) {
    return RemoveMetadata(TheCatalogue(), paths, block, &view_, {});
  }
  BatchResult Export(const QStringList& paths, MetadataKind kind, const char* folder = "b") {
    return ExportMetadata(TheCatalogue(), paths, kind, In(folder), {});
  }
  static QString Tag(const QString& path, QStringView key) {
    Picture picture;
    EXPECT_TRUE(picture.ReadParamsFromFile(path));
    return picture.GetIOProperty(key);
  }
  static QStringList Items(const QString& path, int dataset) {
    Picture picture;
    EXPECT_TRUE(picture.ReadParamsFromFile(path));
    QStringList texts;
    for (int at = 0; (at = picture.IPTC_Find(2, dataset)) >= 0; picture.IPTC_Remove(at))
      texts.append(picture.IPTC_Get(at));
    return texts;
  }
  /// The compressed picture of a JPEG.
  static QByteArray Scan(const QString& path) {
    const QByteArray file = test::Scratch::Read(path);
    return file.mid(file.indexOf("\xFF\xDA"));
  }
};

TEST_F(EditMetadata, TheFileTakesTheFieldsAndTheRowWhatTheFileThenSays) {
  const QString path = Rich(), stranger = Write("a/2.jpg", test::SampleJpeg(16, 16));
  Note(path, u"mine"_s);
  const QString id = Stored(path, Column::ID);
  const QByteArray scan = Scan(path);
  const BatchResult result = WriteExif({path, stranger}, Exif({{u"Camera Model", u"4K"},
                                                               {u"Shutter Speed", u"1/250"},
                                                               {u"Lens Aperture", u"2.8"},
                                                               {u"Image Description", u""},
                                                               {u"F-number", u"0"},
                                                               {u"Flash Mode", u"Flash Off"}}));
  EXPECT_EQ(result.done, 2);
  EXPECT_EQ(Scan(path), scan);
  EXPECT_EQ(Stored(path, Column::CameraModel), u"4K"_s);
  EXPECT_EQ(Stored(path, Column::ShutterSpeed), u"1/250 sec"_s);
  EXPECT_EQ(Stored(path, Column::LensAperture), u"F/2.8"_s);
  EXPECT_EQ(Stored(path, Column::ImageDescription), QString());
  EXPECT_EQ(Stored(path, Column::FNumber), QString());
  EXPECT_EQ(Stored(path, Column::FlashMode), u"Flash off"_s);
  EXPECT_EQ(Stored(path, Column::CreationSoftware), u"Zolmira QM"_s);
  EXPECT_EQ(Stored(path, Column::Size),
            PlainText(Round(static_cast<double>(QFileInfo(path).size()) / 1024, 2)));
  // What wasn't named stays, and so does what is the user's.
  EXPECT_EQ(Stored(path, Column::CameraMake), u"Zorki"_s);
  EXPECT_EQ(Stored(path, Column::LatitudeDegrees), u"47"_s);
  EXPECT_EQ(Stored(path, Column::City), u"Graz"_s);
  EXPECT_EQ(Stored(path, Column::Notes), u"mine"_s);
  EXPECT_EQ(Stored(path, Column::ID), id);
  EXPECT_TRUE(Photos().ReadThumbnail());
  EXPECT_EQ(Tag(stranger, u"EXIF_Model"), u"4K"_s);
  EXPECT_FALSE(Photos().IsCatalogued(stranger));
  EXPECT_EQ(view_.told, QStringList{u"live"_s});
}

TEST_F(EditMetadata, EachRefusalHasItsReasonAndTheRunGoesOn) {
  const QString good = Rich(), readOnly = Write("a/2.jpg", test::SampleJpeg(16, 16));
  QFile::setPermissions(readOnly, QFile::ReadOwner);
  const QString text = Write("a/3.jpg"), png = In("a/4.jpg");
  ASSERT_TRUE(QImage(8, 8, QImage::Format_RGB32).save(png, "PNG"));
  const QStringList paths{In("a/gone.jpg"), readOnly, text, png, good};
  const QStringList missingOrReadOnly{u"File is offline or missing"_s, u"File is Read-Only"_s};
  const QByteArray before = test::Scratch::Read(png);

  const BatchResult exif = WriteExif(paths, {});
  EXPECT_EQ(exif.done, 1);
  EXPECT_EQ(ReasonsOf(exif), missingOrReadOnly + QStringList(2, u"Not TIFF or JPEG format"_s));
  const QStringList iptcReasons =
      missingOrReadOnly + QStringList(2, u"Not TIFF , PSD or JPEG format"_s);
  EXPECT_EQ(ReasonsOf(WriteIptc(paths, {})), iptcReasons);
  EXPECT_EQ(ReasonsOf(Remove(paths, MetadataBlock::Exif)), iptcReasons);
  EXPECT_EQ(ReasonsOf(Remove(paths, MetadataBlock::Iptc)), iptcReasons);
  EXPECT_EQ(test::Scratch::Read(png), before);
  EXPECT_EQ(exif.failures.label, u"The EXIF data of the following files could not be edited:"_s);
}

TEST_F(EditMetadata, ACatalogueThatCantBeWrittenKeepsTheFile) {
  const QString path = Rich();
  const QByteArray before = test::Scratch::Read(path);
  Session reading(session_->Folders());  // without the home's lock
  ASSERT_TRUE(reading.Activate(u"Zolmira QM.mdb"_s));
  Catalogue& readOnly = reading.ActiveCatalogue();
  const QStringList reason{u"The database is read-only"_s};
  EXPECT_EQ(ReasonsOf(ApplyExif(readOnly, {path}, {}, nullptr, {})), reason);
  EXPECT_EQ(ReasonsOf(RemoveMetadata(readOnly, {path}, MetadataBlock::Iptc, nullptr, {})), reason);
  EXPECT_EQ(test::Scratch::Read(path), before);
}

TEST_F(EditMetadata, TheFirstItemOfADatasetIsReplacedAndItsRepeatsStay) {
  const QString path = Rich();
  EXPECT_EQ(WriteIptc({path}, Iptc({{u"Keywords", u"mist, Äther"},
                                    {u"City", u""},
                                    {u"Urgency", u"5 (normal urgency)"},
                                    {u"Writer", u"Ø"}}))
                .done,
            1);
  EXPECT_EQ(Items(path, 25), (QStringList{u"mist, Äther"_s, u"lake"_s}));
  EXPECT_EQ(Items(path, 90), QStringList{QString()});
  EXPECT_EQ(Items(path, 10), QStringList{u"5"_s});
  EXPECT_EQ(Items(path, 80), QStringList{u"Müller"_s});
  EXPECT_EQ(Stored(path, Column::KeywordsIptc), u"mist, Äther"_s);
  EXPECT_EQ(Stored(path, Column::City), QString());
  EXPECT_EQ(Stored(path, Column::Urgency), u"5 (normal urgency)"_s);
  EXPECT_EQ(Stored(path, Column::CreationSoftware), u"Zolmira QM"_s);
  // An urgency that nobody chose takes the digit away.
  EXPECT_EQ(WriteIptc({path}, Iptc({{u"Urgency", u""}})).done, 1);
  EXPECT_EQ(Items(path, 10), QStringList{QString()});
  EXPECT_EQ(Items(path, 25), (QStringList{u"mist, Äther"_s, u"lake"_s}));
}

TEST_F(EditMetadata, ARemovedBlockEmptiesItsColumnsAndNoOthers) {
  const QString path = Rich();
  Note(path, u"mine"_s);
  EXPECT_EQ(Remove({path}, MetadataBlock::Exif).done, 1);
  EXPECT_EQ(Tag(path, u"EXIF_HASEXIF"), u"0"_s);
  for (const Column column :
       {Column::CameraMake, Column::ImageDescription, Column::DateTimeOriginal,
        Column::ExposureMode, Column::LatitudeReference, Column::LatitudeDegrees})
    EXPECT_EQ(Stored(path, column), QString()) << ColumnName(column).toStdString();
  EXPECT_EQ(Stored(path, Column::City), u"Graz"_s);
  EXPECT_EQ(Stored(path, Column::Notes), u"mine"_s);

  EXPECT_EQ(WriteExif({path}, Exif({{u"Author", u"Ada"}})).done, 1);
  EXPECT_EQ(Remove({path}, MetadataBlock::Iptc).done, 1);
  EXPECT_EQ(Items(path, 25), QStringList());
  EXPECT_EQ(Stored(path, Column::City), QString());
  EXPECT_EQ(Stored(path, Column::KeywordsIptc), QString());
  EXPECT_EQ(Stored(path, Column::AuthorExif), u"Ada"_s);
}

TEST_F(EditMetadata, TextsComeFromTheFileOrFromTheRowOfOneThatIsAway) {
  const QString path = Rich();
  const QString target = In("b/EXIF-Föhn 1.jpg.txt");
  Write("b/EXIF-Föhn 1.jpg.txt", "an old one");
  EXPECT_EQ(Export({path}, MetadataKind::Exif).done, 1);
  const QByteArray ofFile = test::Scratch::Read(target);
  EXPECT_TRUE(ofFile.startsWith("Filename : " + path.toUtf8() + "\n\n\n\nImage Information\n\n" +
                                "Camera Make                                 : Zorki\n"));
  EXPECT_TRUE(ofFile.contains("\nWidth                                       : 32\n"));
  EXPECT_TRUE(ofFile.contains("\nResolution Unit                             : \n"));
  ASSERT_TRUE(QFile::remove(path));
  EXPECT_EQ(Export({path, In("a/none.jpg")}, MetadataKind::Exif).done, 1);
  const QByteArray ofRow = test::Scratch::Read(target);
  EXPECT_TRUE(ofRow.contains("\nWidth                                       : 32 Pixels\n"));
  EXPECT_FALSE(ofRow.contains("Resolution Unit"));
  EXPECT_TRUE(ofRow.contains("\nImage Description                           : Föhn\n"));
  EXPECT_EQ(Names("b"), QStringList{u"EXIF-Föhn 1.jpg.txt"_s});
  EXPECT_EQ(ReasonsOf(Export({In("a/none.jpg")}, MetadataKind::Gps)),
            QStringList{u"File is offline or missing"_s});
  EXPECT_EQ(Export({path}, MetadataKind::Gps).done, 1);
  EXPECT_TRUE(test::Scratch::Read(In("b/GPS-Föhn 1.jpg.txt"))
                  .contains("\n\n\n\nLatitude Reference     : North Latitude\n\nLatitude Degrees"));
}

TEST_F(EditMetadata, OneNameOfTwoFoldersGivesOneText) {
  const QString first = Rich("a/1.jpg");
  QDir().mkpath(In("c"));
  const QString second = Write("c/1.jpg", test::SampleJpeg(16, 16, {}, {{90, u"Linz"}}));
  EXPECT_EQ(Export({first, second}, MetadataKind::Iptc).done, 2);
  EXPECT_EQ(Names("b"), QStringList{u"IPTC-1.jpg.txt"_s});
  EXPECT_TRUE(test::Scratch::Read(In("b/IPTC-1.jpg.txt")).contains(": Linz\n"));
  EXPECT_EQ(Export({first}, MetadataKind::Iptc, "none").done, 0);
}

}  // namespace
}  // namespace zqm
