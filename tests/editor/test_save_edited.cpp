// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/carry_photos.h"
#include "catalogue/reasons.h"
#include "editor/save_edited.h"
#include "imaging/codecs/codecs.h"
#include "imaging/photo_reader.h"
#include "imaging/raster.h"
#include "tests/batch/batch_fixture.h"
#include "tests/support/noise.h"
#include "tests/support/small_disk.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Also tells "~ path" for a changed picture and "+ path" for one that was written.
class EditorView : public test::ToldView {
 public:
  void ShowChanged(const QString& path) override { told.append(u"~ "_s + path); }
  void ShowWritten(const QString& path, bool catalogued) override {
    told.append((catalogued ? u"* "_s : u"+ "_s) + path);
  }
};

class SaveEditedPhotos : public test::BatchTest {
 protected:
  void Open(const QString& path) {
    open_ = EditedFile::Of(path);
    ASSERT_TRUE(picture_.LoadFromFile(path));
  }
  void Paint(const QColor& colour, const QSize& size = QSize(64, 48)) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    picture_.SetImage(image);
  }
  SaveFollowers Followers(Catalogue* catalogue = nullptr) {
    return {catalogue ? *catalogue : TheCatalogue(), &told_, ReadRequest()};
  }
  SaveResult Save() { return SaveEdited(Followers(), picture_, open_); }
  SaveResult SaveAs(const QString& typed) {
    return SaveEditedAs(Followers(), picture_, FindSaveTarget(typed), open_);
  }
  static QColor ColourOf(const QString& path) {
    Picture picture;
    EXPECT_TRUE(picture.LoadFromFile(path)) << path.toStdString();
    return picture.Image().pixelColor(0, 0);
  }
  static bool IsNear(const QColor& a, const QColor& b) {
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
               std::abs(a.blue() - b.blue()) <
           12;
  }
  QByteArray Png(const QImage& image) { return *kPngCodec.save(image, {}, {}); }

  Picture picture_;
  EditedFile open_;
  EditorView told_;
};

TEST_F(SaveEditedPhotos, TheRowFollowsAndKeepsWhatTheUserGave) {
  const QString path = scratch_.Write(
      "a/Föhn 'ß'.jpg", test::SampleJpeg(32, 24, {{u"EXIF_Make", u"Zorki"}}, {{90, u"Graz"}}));
  CatalogueThem({path});
  Note(path, u"mine"_s);
  Open(path);
  Paint(Qt::red);
  const SaveResult saved = Save();
  ASSERT_TRUE(saved) << saved.Reason().toStdString();
  EXPECT_TRUE(IsNear(ColourOf(path), Qt::red));
  EXPECT_EQ(Stored(path, Column::ImageWidth), u"64");
  EXPECT_EQ(Stored(path, Column::Notes), u"mine");
  EXPECT_EQ(Stored(path, Column::CameraMake), u"Zorki");
  EXPECT_EQ(Stored(path, Column::City), u"Graz");
  EXPECT_EQ(Stored(path, Column::CreationSoftware), u"Zolmira QM");
  const auto thumbnail = Photos().ThumbnailOf(path);
  ASSERT_TRUE(thumbnail);
  EXPECT_TRUE(IsNear(QImage::fromData(*thumbnail).pixelColor(9, 9), Qt::red));
  EXPECT_EQ(told_.told, (QStringList{u"~ "_s + path, u"live"_s}));
  EXPECT_TRUE(TheCatalogue().Replaced().empty());
  EXPECT_TRUE(TheCatalogue().CheckIntegrity().isEmpty());

  // An uncatalogued photo gets none.
  const QString other = Write("a/other.jpg", test::SampleJpeg(32, 24));
  Open(other);
  Paint(Qt::blue);
  ASSERT_TRUE(Save());
  EXPECT_TRUE(IsNear(ColourOf(other), Qt::blue));
  EXPECT_FALSE(Photos().IsCatalogued(other));
}

TEST_F(SaveEditedPhotos, WhatIsUndoneAfterASaveIsSavedAgain) {
  const QString path = Write("a/x.jpg", test::SampleJpeg(32, 24));
  const QColor first = ColourOf(path);
  ASSERT_FALSE(IsNear(first, Qt::red) || IsNear(first, Qt::blue));
  Open(path);
  const QImage before = picture_.Image();
  ASSERT_TRUE(Save());
  EXPECT_FALSE(open_.rewritten) << "its pixels stay byte for byte";
  Paint(Qt::red);
  ASSERT_TRUE(Save());
  EXPECT_TRUE(IsNear(ColourOf(path), Qt::red));
  picture_.SetImage(before);
  ASSERT_TRUE(Save());
  EXPECT_TRUE(IsNear(ColourOf(path), first));
  Paint(Qt::blue);
  ASSERT_TRUE(SaveAs(path));
  EXPECT_TRUE(IsNear(ColourOf(path), Qt::blue));
  picture_.SetImage(before);
  ASSERT_TRUE(SaveAs(path));
  EXPECT_TRUE(IsNear(ColourOf(path), first));
}

TEST_F(SaveEditedPhotos, AFileOfAnotherProgramStays) {
  const QString path = Photo("a/x.jpg");
  Open(path);
  Paint(Qt::red);
  const QByteArray other = test::SampleJpeg(50, 40);
  scratch_.Write("a/x.jpg", other);
  const SaveResult refused = Save();
  EXPECT_EQ(refused.Reason(), u"File was changed by another program");
  EXPECT_EQ(test::Scratch::Read(path), other);
  EXPECT_EQ(Stored(path, Column::ImageWidth), u"32");
  EXPECT_TRUE(told_.told.isEmpty());
  // What went is made anew, and saved over without a question then.
  ASSERT_TRUE(QFile::remove(path));
  for (const QColor colour : {Qt::red, Qt::blue}) {
    Paint(colour);
    ASSERT_TRUE(Save());
    EXPECT_TRUE(IsNear(ColourOf(path), colour));
  }
  EXPECT_EQ(Stored(path, Column::ImageWidth), u"64");
}

TEST_F(SaveEditedPhotos, FailuresChangeNothing) {
  const QString path = Photo("a/x.jpg");
  const QByteArray before = test::Scratch::Read(path);
  Open(path);
  Paint(Qt::red);
  QFile::setPermissions(path, QFile::ReadOwner);
  EXPECT_EQ(Save().Reason(), u"Permission was denied");
  EXPECT_EQ(SaveAs(path).Reason(), u"Permission was denied");
  QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
  EXPECT_FALSE(SaveAs(In("gone/x.jpg")));
  QDir().mkpath(In("b/folder.jpg"));
  EXPECT_FALSE(SaveAs(In("b/folder.jpg")));
  EXPECT_EQ(SaveAs(In("b/x.cr2")).Reason(), u"File format cannot be written");
  EXPECT_EQ(SaveAs(In("b/x.what")).Reason(), u"File format cannot be written");
  Picture empty;
  EXPECT_FALSE(SaveEditedAs(Followers(), empty, FindSaveTarget(In("b/e.jpg")), open_));
  EXPECT_EQ(test::Scratch::Read(path), before);
  EXPECT_EQ(Stored(path, Column::ImageWidth), u"32");
  EXPECT_EQ(Names("a"), QStringList{u"x.jpg"_s});
  EXPECT_EQ(Names("b"), QStringList());
  EXPECT_TRUE(told_.told.isEmpty());
  EXPECT_TRUE(TheCatalogue().Replaced().empty());
}

TEST_F(SaveEditedPhotos, AFullDiskLeavesPhotoAndRow) {
  const test::SmallDisk disk(In("b"));
  if (!disk.IsMounted()) GTEST_SKIP() << "no file system may be mounted here";
  const QString path = Photo("b/x.jpg"), kept = Photo("b/kept.png");
  const QByteArray before = test::Scratch::Read(path), keptBefore = test::Scratch::Read(kept);
  Open(path);
  picture_.SetImage(test::Noise({1000, 1000}, QImage::Format_RGB32));
  EXPECT_FALSE(SaveAs(kept));
  EXPECT_FALSE(Save());
  EXPECT_EQ(test::Scratch::Read(path), before);
  EXPECT_EQ(test::Scratch::Read(kept), keptBefore);
  EXPECT_EQ(Stored(path, Column::ImageWidth), u"32");
  EXPECT_EQ(Stored(kept, Column::ImageWidth), u"32");
  EXPECT_EQ(Names("b"), (QStringList{u"kept.png"_s, u"x.jpg"_s}));
}

TEST_F(SaveEditedPhotos, ACatalogueThatCantBeWrittenIsSaidBefore) {
  const QString path = Photo("a/x.jpg"), free = Write("a/free.jpg", test::SampleJpeg(32, 24));
  const QByteArray before = test::Scratch::Read(path);
  OpenProblem problem{};
  const auto readOnly = Catalogue::Open(TheCatalogue().Path(), problem, CatalogueAccess::Reading);
  ASSERT_TRUE(readOnly);
  Open(path);
  Paint(Qt::red);
  EXPECT_EQ(SaveEdited(Followers(readOnly.get()), picture_, open_).Reason(),
            QStringView(kReasonDatabaseReadOnly));
  EXPECT_EQ(test::Scratch::Read(path), before);
  const SaveTarget target = FindSaveTarget(free);
  EXPECT_TRUE(SaveEditedAs(Followers(readOnly.get()), picture_, target, open_));
  EXPECT_TRUE(IsNear(ColourOf(free), Qt::red));
}

TEST_F(SaveEditedPhotos, SavingAsCarriesMetadataAndLeavesTheSource) {
  const QString path =
      Write("a/x.jpg", test::SampleJpeg(32, 24, {{u"EXIF_Make", u"Zorki"}}, {{90, u"Graz"}}));
  CatalogueThem({path});
  const QByteArray before = test::Scratch::Read(path);
  Open(path);
  Paint(Qt::red);
  const SaveTarget target = FindSaveTarget(In("b/Neu"));
  EXPECT_EQ(target.path, In("b/Neu.jpg"));
  EXPECT_FALSE(target.exists);
  ASSERT_TRUE(SaveEditedAs(Followers(), picture_, target, open_));
  const auto made = ReadPhotoFile(target.path, {});
  ASSERT_TRUE(made);
  EXPECT_EQ(made->parameters.GetIOProperty(u"EXIF_Make"), u"Zorki");
  EXPECT_EQ(made->parameters.GetIOProperty(u"EXIF_Software"), u"Zolmira QM");
  EXPECT_EQ(made->parameters.GetIOProperty(u"WIDTH"), u"64");
  EXPECT_GE(made->parameters.Iptc().Find(2, 90), 0);
  EXPECT_EQ(test::Scratch::Read(path), before);
  EXPECT_TRUE(Photos().IsCatalogued(path));
  EXPECT_FALSE(Photos().IsCatalogued(target.path));
  EXPECT_EQ(told_.told, (QStringList{u"+ "_s + target.path, u"live"_s}));
  // It has come to stand there since the user was asked.
  EXPECT_EQ(SaveEditedAs(Followers(), picture_, target, open_).Reason(),
            QStringView(kReasonExists));
}

TEST_F(SaveEditedPhotos, AReplacedPhotoLosesItsRow) {
  const QString path = Photo("a/x.jpg"), old = Photo("b/Old.JPG");
  Note(old, u"gone"_s);
  Open(path);
  Paint(Qt::red);
  const SaveTarget target = FindSaveTarget(In("b/old.jpg"));
  EXPECT_TRUE(target.exists) << "letter case aside";
  EXPECT_EQ(ReplaceQuestion(target.path), old + u" already exists.\nDo you want to replace it?"_s);
  ASSERT_TRUE(SaveEditedAs(Followers(), picture_, target, open_));
  EXPECT_EQ(Names("b"), QStringList{u"Old.JPG"_s});
  EXPECT_TRUE(IsNear(ColourOf(old), Qt::red));
  EXPECT_FALSE(Photos().IsCatalogued(old));
  EXPECT_TRUE(Photos().IsCatalogued(path));
  EXPECT_TRUE(TheCatalogue().CheckIntegrity().isEmpty());
  // Over itself too, and the editor goes on with it.
  ASSERT_TRUE(SaveAs(path));
  EXPECT_FALSE(Photos().IsCatalogued(path));
  Paint(Qt::blue);
  EXPECT_TRUE(Save());
  EXPECT_TRUE(IsNear(ColourOf(path), Qt::blue));
}

TEST_F(SaveEditedPhotos, TransparentPartsGoWhereTheListSaysSo) {
  QImage clear(20, 20, QImage::Format_ARGB32);
  clear.fill(QColor(200, 0, 0, 128));
  Open(Write("a/clear.png", Png(clear)));
  for (const auto& [name, opaque] :
       {std::pair{"x.jpg", true}, std::pair{"x.GIF", true}, std::pair{"x.bmp", true},
        std::pair{"x.pcx", true}, std::pair{"x.jp2", true}, std::pair{"x.png", false},
        std::pair{"x.tif", false}, std::pair{"x.tga", false}, std::pair{"x.psd", false}}) {
    const QString path = In("b/") + QString::fromLatin1(name);
    const SaveResult saved = SaveAs(path);
    ASSERT_TRUE(saved) << name << saved.Reason().toStdString();
    const QColor pixel = ColourOf(path);
    EXPECT_EQ(pixel.alpha() == 255, opaque) << name;
    EXPECT_TRUE(IsNear(pixel, opaque ? QColor(227, 127, 127) : QColor(200, 0, 0))) << name;
  }
  EXPECT_TRUE(HasAlphaChannel(picture_.Image())) << "the edited one keeps them";
  EXPECT_TRUE(NonAlphaExtension(u"/a/x.ps"_s));
  EXPECT_FALSE(NonAlphaExtension(u"/a.jpg/x"_s));
}

TEST_F(SaveEditedPhotos, OnlyWhatStandsCanBeEdited) {
  EXPECT_TRUE(MayBeEdited(Photo("a/x.jpg")));
  for (const QString& path : {In("a/none.jpg"), In("a"), QString()})
    EXPECT_EQ(MayBeEdited(path).Reason(),
              u"The selected image is either missing or offline and thus cannot be edited.");
}

}  // namespace
}  // namespace zqm
