// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDirIterator>
#include <QtEndian>

#include "imaging/codecs/codecs.h"
#include "imaging/codecs/embedded_blocks.h"
#include "imaging/jpeg_segments.h"
#include "imaging/picture.h"
#include "imaging/tiff_editor.h"
#include "shell/files.h"
#include "tests/support/photos.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr ExifTag kMakerNote{ExifGroup::Photo, 0x927C};
constexpr ExifTag kSoftware{ExifGroup::Image, 0x0131};

TagValue Ascii(const QByteArray& text) {
  return {2, static_cast<std::uint32_t>(text.size() + 1), text + '\0'};
}

/// The segments behind those of metadata, and the compressed picture.
QByteArray PictureOf(const QByteArray& jpeg) {
  QByteArray picture;
  qsizetype at = 2;
  for (;;) {
    const auto marker = static_cast<uchar>(jpeg.at(at + 1));
    if (marker == 0xDA) return picture + jpeg.mid(at);
    const qsizetype length = 2 + qFromBigEndian<quint16>(jpeg.constData() + at + 2);
    if (marker != 0xE1 && marker != 0xED) picture += jpeg.mid(at, length);
    at += length;
  }
}

/// Every tag but the named ones, as texts that show a difference.
QStringList Tags(const QByteArray& block, const std::vector<ExifTag>& but) {
  QStringList tags;
  const auto editor = TiffEditor::Open(block);
  if (!editor) return tags;
  for (const ExifGroup group : {ExifGroup::Image, ExifGroup::Photo, ExifGroup::Gps})
    for (const int number : editor->Tags(group)) {
      // Pointers to directories change with their place.
      if (std::ranges::find(but, ExifTag{group, number}) != but.end() || number == 0x8769 ||
          number == 0x8825)
        continue;
      const auto value = editor->Get({group, number});
      tags.append(u"%1 %2 %3 %4"_s.arg(number, 0, 16)
                      .arg(value->type)
                      .arg(value->count)
                      .arg(QString::fromLatin1(value->bytes.toHex())));
    }
  return tags;
}

TEST(TiffEditor, ValuesAndDirectoriesStayWhereTheyFit) {
  TiffEditor fresh = TiffEditor::Empty();
  fresh.Set(kSoftware, Ascii("a rather long name"));
  fresh.Set({ExifGroup::Photo, 0x9003}, Ascii("2007:05:06 07:08:09"));
  const QByteArray block = fresh.Take();

  auto shorter = TiffEditor::Open(block);
  ASSERT_TRUE(shorter);
  shorter->Set(kSoftware, Ascii("another name"));
  const QByteArray inPlace = shorter->Take();
  EXPECT_EQ(inPlace.size(), block.size());
  EXPECT_EQ(TiffEditor::Open(inPlace)->Get(kSoftware), Ascii("another name"));

  auto longer = TiffEditor::Open(block);
  longer->Set(kSoftware, Ascii("a name that is longer than the one before"));
  longer->Set({ExifGroup::Image, 0x010F}, Ascii("Aurora"));
  longer->Set({ExifGroup::Gps, 1}, Ascii("N"));
  longer->Remove({ExifGroup::Photo, 0x9003});
  const auto changed = TiffEditor::Open(longer->Take());
  ASSERT_TRUE(changed);
  EXPECT_EQ(changed->Get(kSoftware), Ascii("a name that is longer than the one before"));
  EXPECT_EQ(changed->Tags(ExifGroup::Image), (std::vector{0x010F, 0x0131, 0x8769, 0x8825}));
  EXPECT_EQ(changed->Get({ExifGroup::Gps, 1}), Ascii("N"));
  EXPECT_TRUE(changed->Tags(ExifGroup::Photo).empty());
}

TEST(TiffEditor, ASharedValueIsNotOverwritten) {
  // Both densities at one place, as some writers store them.
  const QByteArray rational("\x48\0\0\0\1\0\0\0", 8);
  TiffEditor made = TiffEditor::Empty();
  made.Set({ExifGroup::Image, 0x011A}, {5, 1, rational});
  made.Set({ExifGroup::Image, 0x011B}, {5, 1, rational});
  QByteArray block = made.Take();
  const qsizetype entries = block.size() - 4 - 24;
  block.replace(entries + 12 + 8, 4, block.mid(entries + 8, 4));
  ASSERT_EQ(block.mid(entries + 20, 4), block.mid(entries + 8, 4));
  auto editor = TiffEditor::Open(block);
  editor->Set({ExifGroup::Image, 0x011A}, {5, 1, QByteArray("\x2C\1\0\0\1\0\0\0", 8)});
  const auto changed = TiffEditor::Open(editor->Take());
  EXPECT_EQ(changed->Get({ExifGroup::Image, 0x011B})->bytes, rational);
}

TEST(TiffEditor, BrokenBlocksAreRefusedOrKept) {
  EXPECT_FALSE(TiffEditor::Open("no such block"));
  EXPECT_FALSE(TiffEditor::Open(QByteArray("II*\0\xF0\0\0\0", 8)));
  TiffEditor made = TiffEditor::Empty();
  made.Set(kSoftware, Ascii("a rather long name"));
  made.Set({ExifGroup::Photo, 0x9003}, Ascii("2007:05:06 07:08:09"));
  const QByteArray block = made.Take();
  for (qsizetype cut = 0; cut < block.size(); ++cut) {
    auto editor = TiffEditor::Open(block.left(cut));
    if (!editor) continue;
    editor->Set(kSoftware, Ascii("x"));
    EXPECT_EQ(TiffEditor::Open(editor->Take())->Get(kSoftware), Ascii("x"));
  }
}

class Saving : public ::testing::Test {
 protected:
  /// A copy of a file in the scratch folder.
  QString Copy(const QString& from) {
    return scratch_.Write(GetFileName(from), test::Scratch::Read(from));
  }
  Picture Loaded(const QString& path) {
    Picture picture;
    const Outcome loaded = picture.LoadFromFile(path);
    EXPECT_TRUE(loaded) << qUtf8Printable(path + u": "_s + loaded.Reason());
    return picture;
  }
  test::Scratch scratch_;
};

TEST_F(Saving, AnEditLeavesPictureMakerNoteAndAllOtherTagsOfEveryCamera) {
  const QString folder = test::Photos("camera");
  if (folder.isEmpty()) GTEST_SKIP();
  int notes = 0;
  for (QDirIterator it(folder, {u"*.jpg"_s, u"*.JPG"_s}, QDir::Files); it.hasNext();) {
    const QString path = Copy(it.next());
    const QByteArray before = test::Scratch::Read(path);
    Picture picture;
    if (!picture.ReadParamsFromFile(path)) continue;
    picture.SetIOProperty(u"EXIF_Software", u"A name that no camera has"_s);
    picture.SetIOProperty(u"EXIF_GPSLatitudeRef", u"N"_s);
    picture.SetIOProperty(u"EXIF_Artist", u"Jörg"_s);
    picture.IPTC_Remove(picture.IPTC_Find(2, 90));
    picture.IPTC_Add(2, 90, u"Graz"_s);
    picture.SetIOProperty(u"XMP_Info", QString());
    const Outcome saved = picture.SaveToFile(path);
    ASSERT_TRUE(saved) << qUtf8Printable(path + u": "_s + saved.Reason());
    const QByteArray after = test::Scratch::Read(path);
    EXPECT_EQ(PictureOf(after), PictureOf(before)) << qUtf8Printable(path);

    const QByteArray oldBlock = JpegExif(Bytes(before)), newBlock = JpegExif(Bytes(after));
    const std::vector<ExifTag> edited{kSoftware, {ExifGroup::Gps, 1}, {ExifGroup::Image, 0x013B}};
    EXPECT_EQ(Tags(newBlock, edited), Tags(oldBlock, edited)) << qUtf8Printable(path);
    if (const auto old = TiffEditor::Open(oldBlock)) {
      // At the same place too: its offsets count from the block's start.
      if (const auto note = old->Get(kMakerNote); note && note->bytes.size() > 8) {
        ++notes;
        EXPECT_EQ(newBlock.indexOf(note->bytes), oldBlock.indexOf(note->bytes));
      }
    }
    Picture read;
    ASSERT_TRUE(read.ReadParamsFromFile(path));
    EXPECT_EQ(read.GetIOProperty(u"EXIF_Artist"), u"Jörg"_s);
    EXPECT_EQ(read.GetIOProperty(u"XMP_Info"), QString());
    EXPECT_EQ(read.IPTC_Get(read.IPTC_Find(2, 90)), u"Graz"_s);
    QFile::remove(path);
  }
  EXPECT_GT(notes, 20);
}

TEST(ExifStore, ACommentBeyondAsciiHasTheBlocksByteOrder) {
  constexpr ExifTag kComment{ExifGroup::Photo, 0x9286};
  ExifStore store;
  store.Set(kComment, ExifType::Comment, 0, u"a😀"_s);
  const QByteArray mark("UNICODE\0", 8);
  EXPECT_EQ(store.Value(kComment, false)->bytes, mark + QByteArray("a\0=\xD8\0\xDE", 6));
  EXPECT_EQ(store.Value(kComment, true)->bytes, mark + QByteArray("\0a\xD8=\xDE\0", 6));
  EXPECT_EQ(store.Comment(kComment), u"a😀"_s);
}

TEST_F(Saving, AnEditOfATiffOrPsdLeavesTheirPictures) {
  for (const char* sub : {"formats/tif", "formats/psd"}) {
    const QString folder = test::Photos(sub);
    if (folder.isEmpty()) GTEST_SKIP();
    for (QDirIterator it(folder, QDir::Files); it.hasNext();) {
      const QString path = Copy(it.next());
      Picture picture;
      if (!picture.LoadFromFile(path)) continue;
      const QImage before = picture.Image();
      const QByteArray bytes = test::Scratch::Read(path);
      picture.SetIOProperty(u"EXIF_Software", u"A name that no camera has"_s);
      picture.IPTC_Remove(picture.IPTC_Find(2, 90));
      picture.IPTC_Add(2, 90, u"Graz"_s);
      const Outcome saved = picture.SaveToFile(path);
      if (!saved) {
        EXPECT_EQ(saved.Reason(), u"Metadata cannot be written"_s) << qUtf8Printable(path);
        EXPECT_EQ(test::Scratch::Read(path), bytes);
        continue;
      }
      Picture after = Loaded(path);
      EXPECT_EQ(after.Image(), before) << qUtf8Printable(path);
      EXPECT_EQ(after.GetIOProperty(u"EXIF_Software"), u"A name that no camera has"_s);
      EXPECT_EQ(after.IPTC_Get(after.IPTC_Find(2, 90)), u"Graz"_s) << qUtf8Printable(path);
      const QByteArray now = test::Scratch::Read(path);
      const auto pages = [](const QByteArray& file) {
        const auto editor = TiffEditor::Open(file);
        return editor ? editor->FollowingDirectories() : -1;
      };
      EXPECT_EQ(pages(now), pages(bytes));
    }
  }
}

TEST_F(Saving, ChangedPixelsTakeThumbnailSizeAndMetadataAlong) {
  const QString camera = test::Photos("camera");
  if (camera.isEmpty()) GTEST_SKIP();
  int thumbnails = 0;
  for (QDirIterator it(camera, {u"*.jpg"_s}, QDir::Files); it.hasNext() && thumbnails < 5;) {
    const QString path = Copy(it.next());
    Picture picture = Loaded(path);
    const QByteArray block = JpegExif(Bytes(test::Scratch::Read(path)));
    const auto before = TiffEditor::Open(block);
    if (!before || before->Thumbnail().empty() || !before->Get(kMakerNote)) continue;
    ++thumbnails;
    QImage turned(picture.ImageHeight() / 8, picture.ImageWidth() / 8, QImage::Format_RGB32);
    turned.fill(qRgb(10, 200, 30));
    picture.SetImage(turned);
    picture.SetIOProperty(u"JPEG_QUALITY", u"100"_s);
    ASSERT_TRUE(picture.SaveToFile(path));
    const auto after = TiffEditor::Open(JpegExif(Bytes(test::Scratch::Read(path))));
    ASSERT_TRUE(after);
    const QImage thumbnail = QImage::fromData(after->Thumbnail().data(),
                                              static_cast<int>(after->Thumbnail().size()), "JPEG");
    EXPECT_NEAR(qGreen(thumbnail.pixel(1, 1)), 200, 4) << qUtf8Printable(path);
    EXPECT_EQ(after->Number(*after->Get({ExifGroup::Photo, 0xA002})),
              static_cast<unsigned>(turned.width()));
    EXPECT_EQ(after->Get(kMakerNote), before->Get(kMakerNote));
  }
  EXPECT_EQ(thumbnails, 5);
}

TEST_F(Saving, PixelsThatStoodInTheFileOnceAreWrittenAgain) {
  Picture picture;
  const QString path = scratch_.Write("a.jpg", test::SampleJpeg(32, 24));
  ASSERT_TRUE(picture.LoadFromFile(path));
  const QImage first = picture.Image();
  QImage black(32, 24, QImage::Format_RGB32);
  black.fill(Qt::black);
  for (const QImage& image : {black, first}) {
    picture.SetImage(image);
    EXPECT_FALSE(picture.PixelsUntouched());
    ASSERT_TRUE(picture.SaveToFile(path));
    EXPECT_TRUE(picture.PixelsUntouched());
    Picture saved;
    ASSERT_TRUE(saved.LoadFromFile(path));
    EXPECT_NEAR(qGray(saved.Image().pixel(9, 9)), qGray(image.pixel(9, 9)), 4);
  }
}

TEST_F(Saving, WhatCannotBeSavedStaysAsItIs) {
  const QByteArray jpeg = test::SampleJpeg(40, 30);
  const QString locked = scratch_.Write("locked.jpg", jpeg);
  QFile(locked).setPermissions(QFile::ReadOwner);
  Picture picture = Loaded(locked);
  picture.SetIOProperty(u"EXIF_Make", u"Aurora"_s);
  EXPECT_EQ(picture.SaveToFile(locked).Reason(), u"Permission was denied"_s);
  EXPECT_EQ(test::Scratch::Read(locked), jpeg);
  EXPECT_EQ(picture.SaveToFile(scratch_.Path("x.nef")).Reason(),
            u"File format cannot be written"_s);
  EXPECT_EQ(scratch_.Names(), QStringList{u"locked.jpg"_s});

  // Another program was quicker.
  const QString path = scratch_.Write("a.jpg", jpeg);
  Picture stale = Loaded(path);
  stale.SetIOProperty(u"EXIF_Make", u"Aurora"_s);
  scratch_.Write("a.jpg", "GIF89a and so on");
  EXPECT_FALSE(stale.SaveToFile(path));
  EXPECT_EQ(test::Scratch::Read(path), "GIF89a and so on");
}

TEST_F(Saving, TiffOfEveryCompressionAndPhotometric) {
  QImage colours(67, 41, QImage::Format_RGB32);
  for (int y = 0; y < colours.height(); ++y)
    for (int x = 0; x < colours.width(); ++x)
      colours.setPixel(x, y, x < 33 ? qRgb(200, 60, 40) : qRgb(240, 240, 250));
  const QString path = scratch_.Path("out.tif");
  int written = 0;
  for (int compression = 0; compression <= 11; ++compression) {
    for (int photometric = -1; photometric <= 7; ++photometric) {
      Picture picture;
      picture.SetImage(colours);
      picture.SetIOProperty(u"TIFF_COMPRESSION", QString::number(compression));
      if (photometric >= 0)
        picture.SetIOProperty(u"TIFF_PHOTOMETINTERPRET", QString::number(photometric));
      picture.SetIOProperty(u"EXIF_Make", u"Aurora"_s);
      picture.SetIOProperty(u"EXIF_FocalLength", u"50"_s);
      QFile::remove(path);
      const auto name = u"compression %1, photometric %2"_s.arg(compression).arg(photometric);
      if (!picture.SaveToFile(path)) {
        EXPECT_FALSE(QFile::exists(path)) << qUtf8Printable(name);
        const bool jpegOfPalette = compression == 7 && (photometric == 3 || photometric == 4);
        EXPECT_TRUE(compression == 6 || compression == 11 || jpegOfPalette) << qUtf8Printable(name);
        continue;
      }
      ++written;
      Picture read = Loaded(path);
      ASSERT_EQ(read.Image().size(), colours.size()) << qUtf8Printable(name);
      EXPECT_EQ(read.GetIOProperty(u"EXIF_Make"), u"Aurora"_s) << qUtf8Printable(name);
      EXPECT_EQ(read.GetIOProperty(u"EXIF_FocalLength"), u"50"_s) << qUtf8Printable(name);
      const bool fax = compression >= 1 && compression <= 4;
      const QRgb red = read.Image().pixel(5, 5), white = read.Image().pixel(60, 30);
      if (fax || photometric == 4) {
        EXPECT_EQ(qGray(red), 0) << qUtf8Printable(name);
        EXPECT_EQ(qGray(white), 255) << qUtf8Printable(name);
      } else if (photometric == 0 || photometric == 1) {
        EXPECT_NEAR(qGray(red), 100, 2) << qUtf8Printable(name);
        EXPECT_NEAR(qGray(white), 241, 3) << qUtf8Printable(name);
      } else {
        EXPECT_NEAR(qRed(red), 200, 6) << qUtf8Printable(name);
        EXPECT_NEAR(qGreen(red), 60, 8) << qUtf8Printable(name);
        EXPECT_NEAR(qBlue(white), 250, 6) << qUtf8Printable(name);
      }
    }
  }
  EXPECT_GT(written, 80);
}

TEST_F(Saving, GrayPicturesTakeTheColoursThatAreAskedFor) {
  QImage gray(20, 10, QImage::Format_Grayscale8);
  gray.fill(90);
  for (const char16_t* extension : {u"jp2", u"j2k"}) {
    const QString path = scratch_.Path(u"gray."_s + QString::fromUtf16(extension));
    for (const QString& space : {QString(), u"0"_s, u"1"_s, u"2"_s}) {
      Picture picture;
      picture.SetImage(gray);
      picture.SetIOProperty(u"J2000_COLORSPACE", space);
      ASSERT_TRUE(picture.SaveToFile(path));
      const Picture read = Loaded(path);
      const bool coloured = space == u"1"_s || space == u"2"_s;
      EXPECT_EQ(read.GetIOProperty(u"SAMPLESPERPIXEL"), coloured ? u"3"_s : u"1"_s);
      EXPECT_NEAR(qRed(read.Image().pixel(5, 5)), 90, 1);
      EXPECT_NEAR(qBlue(read.Image().pixel(5, 5)), 90, 1);
    }
  }
}

TEST_F(Saving, JpegOptionsHaveTheirEffect) {
  QImage colours(64, 48, QImage::Format_RGB32);
  colours.fill(qRgb(180, 90, 45));
  const auto save = [&](std::initializer_list<std::pair<const char16_t*, int>> options) {
    Picture picture;
    picture.SetImage(colours);
    for (const auto& [key, value] : options)
      picture.SetIOProperty(key, QString::number(value));
    EXPECT_TRUE(picture.SaveToFile(scratch_.Path("out.jpg")));
    return test::Scratch::Read(scratch_.Path("out.jpg"));
  };
  for (int space = 0; space <= 4; ++space) {
    save({{u"JPEG_COLORSPACE", space}, {u"JPEG_QUALITY", 95}});
    const Picture read = Loaded(scratch_.Path("out.jpg"));
    const QRgb pixel = read.Image().pixel(20, 20);
    EXPECT_EQ(read.GetIOProperty(u"SAMPLESPERPIXEL"), space == 1  ? u"1"_s
                                                      : space < 3 ? u"3"_s
                                                                  : u"4"_s);
    if (space == 1) {
      EXPECT_NEAR(qGray(pixel), 112, 3);
    } else {
      EXPECT_NEAR(qRed(pixel), 180, 4) << space;
      EXPECT_NEAR(qBlue(pixel), 45, 4) << space;
    }
  }
  const char progressive[] = "\xFF\xC2", baseline[] = "\xFF\xC0";
  EXPECT_TRUE(save({{u"JPEG_PROGRESSIVE", 1}}).contains(progressive));
  EXPECT_TRUE(save({}).contains(baseline));
  EXPECT_LT(save({{u"JPEG_OPTIMALHUFFMAN", 1}}).size(), save({}).size());
  EXPECT_LT(save({{u"JPEG_QUALITY", 20}}).size(), save({{u"JPEG_QUALITY", 90}}).size());
}

}  // namespace
}  // namespace zqm
