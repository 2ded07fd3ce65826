// SPDX-License-Identifier: GPL-3.0-or-later
#include <QPainter>
#include <QThread>

#include "imaging/object_painter.h"
#include "imaging/template_files.h"
#include "shell/files.h"
#include "tests/batch/batch_fixture.h"
#include "tests/support/noise.h"
#include "tests/support/photos.h"
#include "tests/support/small_disk.h"
#include "watermark/stamp_photos.h"
#include "watermark/watermark_layers.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class StampedPhotos : public test::BatchTest {
 protected:
  /// A red square of 20 pixels at 10, 10.
  static VectorObjects Square() {
    VectorObjects objects;
    QImage red(20, 20, QImage::Format_RGB32);
    red.fill(Qt::red);
    const int id = ImportNewImage(objects, red, red.size());
    objects.SetObjectProperty(id, u"LEFT", u"10"_s);
    objects.SetObjectProperty(id, u"TOP", u"10"_s);
    return objects;
  }
  PictureResult Stamp(const QStringList& paths, const VectorObjects& objects = Square()) {
    const BatchObserver observer = [this](const BatchProgress& at) {
      percents_.append(at.Percent());
      if (during_) during_(at);
    };
    return StampPhotos({TheCatalogue(), &view_, observer, {}}, paths, objects, {});
  }
  QString Save(const char* name, const QImage& image) {
    const QString path = In(name);
    EXPECT_TRUE(image.save(path));
    return path;
  }
  static Picture Loaded(const QString& path) {
    Picture picture;
    EXPECT_TRUE(picture.LoadFromFile(path)) << path.toStdString();
    return picture;
  }
  static bool IsRed(const QColor& colour) {
    return colour.red() > 240 && colour.green() < 20 && colour.blue() < 20;
  }

  QList<int> percents_;
  std::function<void(const BatchProgress&)> during_;
};

TEST_F(StampedPhotos, LieAtTheirPixelsAndTheRestStaysWithItsMetadata) {
  const QString path = scratch_.Write(
      "a/Ünal's.jpg", test::SampleJpeg(200, 120, {{u"EXIF_Make", u"Aurora"}}, {{90, u"Graz"}}));
  CatalogueThem({path});
  Note(path, u"mine"_s);
  const QImage before = Loaded(path).Image();
  const QByteArray thumbnail = *Photos().ReadThumbnail();
  EXPECT_TRUE(Stamp({path}).failures.Empty());
  const Picture after = Loaded(path);
  ASSERT_EQ(after.Image().size(), before.size());
  EXPECT_TRUE(IsRed(after.Image().pixelColor(20, 20)));
  EXPECT_TRUE(IsRed(after.Image().pixelColor(12, 27)));
  int worst = 0;
  for (int y = 0; y < 120; ++y)
    for (int x = 48; x < 200; ++x)
      worst =
          std::max(worst, std::abs(qGreen(after.Image().pixel(x, y)) - qGreen(before.pixel(x, y))));
  EXPECT_LE(worst, 3);
  EXPECT_EQ(after.GetIOProperty(u"EXIF_Make"), u"Aurora"_s);
  EXPECT_EQ(after.GetIOProperty(u"EXIF_Software"), u"Zolmira QM"_s);
  EXPECT_EQ(after.IPTC_Get(after.IPTC_Find(2, 90)), u"Graz"_s);
  // Neither the row nor what is shown of it.
  ASSERT_TRUE(Photos().LocateRow(path));
  EXPECT_EQ(*Photos().ReadThumbnail(), thumbnail);
  EXPECT_EQ(Photos().GetField(Column::Notes), u"mine"_s);
  EXPECT_EQ(view_.told, QStringList());
  EXPECT_EQ(percents_, (QList<int>{0, 100}));
}

TEST_F(StampedPhotos, SmallerOnesLoseWhatFallsOutsideAndLargerOnesShowItAtTheTopLeft) {
  QImage plain(15, 400, QImage::Format_RGB32);
  plain.fill(Qt::white);
  const QString narrow = Save("a/narrow.png", plain),
                dot = Save("a/dot.png", plain.copy(0, 0, 1, 1)),
                large = Save("a/large.png", plain.scaled(600, 400));
  EXPECT_TRUE(Stamp({narrow, dot, large}).failures.Empty());
  const QImage cut = Loaded(narrow).Image(), whole = Loaded(large).Image();
  EXPECT_EQ(cut.size(), QSize(15, 400));
  EXPECT_TRUE(IsRed(cut.pixelColor(14, 15)));
  EXPECT_EQ(cut.pixelColor(9, 15), QColor(Qt::white));
  EXPECT_EQ(Loaded(dot).Image().pixelColor(0, 0), QColor(Qt::white));
  EXPECT_TRUE(IsRed(whole.pixelColor(29, 29)));
  EXPECT_EQ(whole.pixelColor(30, 30), QColor(Qt::white));
}

TEST_F(StampedPhotos, EveryKindOfPixelsIsStamped) {
  const QString deep = Save("a/deep.png", test::Noise({80, 60}, QImage::Format_RGBX64)),
                gray = Save("a/gray.png", test::Noise({80, 60}, QImage::Format_Grayscale8)),
                palette = Save("a/palette.png", test::Noise({80, 60}, QImage::Format_RGB32)
                                                    .convertToFormat(QImage::Format_Indexed8)),
                clear = Save("a/clear.png", QImage(80, 60, QImage::Format_ARGB32));
  QImage nothing(80, 60, QImage::Format_ARGB32);
  nothing.fill(Qt::transparent);
  ASSERT_TRUE(nothing.save(clear));
  const QString ink = In("a/ink.jpg");
  Picture inks;
  inks.SetImage(QImage(80, 60, QImage::Format_RGB32));
  inks.SetIOProperty(u"JPEG_COLORSPACE", u"3"_s);
  ASSERT_TRUE(inks.SaveToFile(ink));
  VectorObjects text;
  TextPanel white;
  white.text = u"████"_s;
  InsertNewText(text, white);
  EXPECT_TRUE(Stamp({deep, palette, clear, ink}).failures.Empty());
  EXPECT_TRUE(Stamp({gray}, text).failures.Empty());
  for (const QString& path : {deep, palette, clear, ink})
    EXPECT_TRUE(IsRed(Loaded(path).Image().pixelColor(20, 20))) << path.toStdString();
  EXPECT_EQ(Loaded(deep).GetIOProperty(u"BITSPERSAMPLE"), u"16"_s);
  EXPECT_EQ(Loaded(clear).Image().pixelColor(70, 50).alpha(), 0);
  EXPECT_EQ(Loaded(gray).Image().format(), QImage::Format_Grayscale8);
}

TEST_F(StampedPhotos, WhatFailsIsListedWithItsReasonAndTheRunGoesOn) {
  const QString missing = In("a/gone.jpg"), text = Write("a/words.jpg"),
                locked = scratch_.Write("a/locked.jpg", test::SampleJpeg(60, 40)),
                last = scratch_.Write("a/last.jpg", test::SampleJpeg(60, 40));
  const QByteArray whole = test::SampleJpeg(60, 40);
  const QString empty = scratch_.Write("a/empty.jpg", {});
  QFile::setPermissions(locked, QFile::ReadOwner);
  const PictureResult result = Stamp({missing, text, locked, empty, last});
  ASSERT_EQ(result.failures.rows.size(), 4u);
  EXPECT_EQ(result.failures.label, u"The following photos could not be watermarked:"_s);
  EXPECT_EQ(result.failures.rows[0], (FailureRow{missing, u"File is offline or missing"_s}));
  EXPECT_EQ(result.failures.rows[1].File, text);
  EXPECT_EQ(result.failures.rows[2], (FailureRow{locked, u"Permission was denied"_s}));
  for (const FailureRow& row : result.failures.rows)
    EXPECT_FALSE(row.Reason.isEmpty());
  EXPECT_EQ(result.done, 1);
  EXPECT_TRUE(result.unwritten.Empty());
  EXPECT_EQ(test::Scratch::Read(locked), whole);
  EXPECT_TRUE(IsRed(Loaded(last).Image().pixelColor(20, 20)));

  EXPECT_EQ(ReasonsOf(Stamp({missing})), QStringList{u"File is offline or missing"_s});
}

TEST_F(StampedPhotos, AFileIsStampedOnceHoweverManyPathsLeadToIt) {
  const QString path = scratch_.Write("a/1.jpg", test::SampleJpeg(60, 40)),
                alone = scratch_.Write("a/2.jpg", test::SampleJpeg(60, 40));
  ASSERT_TRUE(QFile::link(path, In("a/link.jpg")));
  VectorObjects veil = Square();
  SetTransparency(veil, veil.Ids(), 100);
  EXPECT_TRUE(Stamp({path, In("a/link.jpg"), path, alone}, veil).failures.Empty());
  EXPECT_EQ(Loaded(path).Image(), Loaded(alone).Image());
}

TEST_F(StampedPhotos, AFileThatVanishesInTheMiddleIsMissing) {
  QStringList paths;
  for (int i = 0; i < 12; ++i)
    paths.append(scratch_.Write(u"a/%1.jpg"_s.arg(i), test::SampleJpeg(60, 40)));
  during_ = [&](const BatchProgress& at) {
    if (at.done == 3) QFile::remove(paths.last());
  };
  EXPECT_EQ(Stamp(paths).failures.rows,
            (std::vector<FailureRow>{{paths.last(), u"File is offline or missing"_s}}));
  EXPECT_FALSE(QFile::exists(paths.last()));
}

TEST_F(StampedPhotos, AFileThatAnotherProgramWritesBeforeItsTurnIsStampedAsItIsThen) {
  QStringList paths;
  for (int i = 0; i < 4; ++i)
    paths.append(scratch_.Write(u"a/%1.jpg"_s.arg(i), test::SampleJpeg(60, 40)));
  during_ = [&](const BatchProgress& at) {
    if (at.done != 1) return;
    QThread::msleep(50);  // the next ones have been read by now
    ASSERT_TRUE(WriteFileAtomically(paths.at(1), test::SampleJpeg(90, 70)));
  };
  EXPECT_TRUE(Stamp(paths).failures.Empty());
  const QImage stamped = Loaded(paths.at(1)).Image();
  EXPECT_EQ(stamped.size(), QSize(90, 70));
  EXPECT_TRUE(IsRed(stamped.pixelColor(20, 20)));
}

TEST_F(StampedPhotos, AFullDiskInTheMiddleLeavesThePhotosWhole) {
  const test::SmallDisk disk(In("b"));
  if (!disk.IsMounted()) GTEST_SKIP() << "needs the right to mount";
  // Well compressed before, hardly at the best quality.
  QImage noise = test::Noise({500, 400}, QImage::Format_RGB32);
  QStringList paths;
  QList<QByteArray> before;
  for (int i = 0; i < 8; ++i) {
    paths.append(In("b") + u"/%1.jpg"_s.arg(i));
    ASSERT_TRUE(noise.save(paths.last(), "jpg", 30));
    before.append(test::Scratch::Read(paths.last()));
  }
  const PictureResult result = Stamp(paths);
  ASSERT_FALSE(result.failures.Empty());
  EXPECT_LT(result.done, 8);
  EXPECT_EQ(result.done + static_cast<int>(result.failures.rows.size()), 8);
  for (const FailureRow& row : result.failures.rows)
    EXPECT_EQ(test::Scratch::Read(row.File), before.at(paths.indexOf(row.File)));
  EXPECT_EQ(Names("b").size(), 8) << "something is left over";
}

TEST_F(StampedPhotos, RealPhotosComeOutAsTheyWouldBePainted) {
  const QString folder = test::Photos("camera");
  if (folder.isEmpty()) GTEST_SKIP() << "no photos here";
  QStringList paths;
  for (const QString& name :
       {u"Canon_EOS_D60.jpg"_s, u"Nikon_D70.jpg"_s, u"Sony_Cybershot_1.jpg"_s}) {
    QFile::copy(folder + u'/' + name, In("a") + u'/' + name);
    paths.append(In("a") + u'/' + name);
    QFile::setPermissions(paths.last(), QFile::ReadOwner | QFile::WriteOwner);
  }
  VectorObjects objects = Square();
  InsertNewText(objects, {});
  QList<QImage> expected;
  for (const QString& path : paths)
    expected.append(Merged(Loaded(path).Image(), objects));
  EXPECT_TRUE(Stamp(paths, objects).failures.Empty());
  for (qsizetype i = 0; i < paths.size(); ++i) {
    const QImage after = Loaded(paths.at(i)).Image();
    ASSERT_EQ(after.size(), expected.at(i).size());
    double sum = 0;
    for (int y = 0; y < after.height(); ++y)
      for (int x = 0; x < after.width(); ++x)
        sum += std::abs(qGreen(after.pixel(x, y)) - qGreen(expected.at(i).pixel(x, y)));
    EXPECT_LT(sum / after.width() / after.height(), 1.0) << paths.at(i).toStdString();
  }
}

}  // namespace
}  // namespace zqm
