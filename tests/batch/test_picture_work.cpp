// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/convert_photos.h"
#include "batch/convert_settings.h"
#include "batch/edit_metadata.h"
#include "batch/resize_photos.h"
#include "batch/rotate_photos.h"
#include "cataloguing/replaced_photos.h"
#include "imaging/save_options.h"
#include "tests/batch/batch_fixture.h"
#include "tests/support/photos.h"
#include "tests/support/print_text.h"
#include "tests/support/sample_photo.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// What the runs tell a browser.
struct Told : BrowserView {
  void ShowChanged(const QString& path) override { changed.append(path); }
  void ShowWritten(const QString& path, bool catalogued) override {
    written.append(path + (catalogued ? u" catalogued"_s : QString()));
  }
  void Say(const QString& line) override { said = line; }
  void Live() override { ++live; }
  QStringList changed, written;
  QString said;
  int live = 0;
};

class PictureWork : public test::BatchTest {
 protected:
  QString Sample(const QString& name, int width = 60, int height = 40) {
    return scratch_.Write(
        name, test::SampleJpeg(width, height, {{u"EXIF_Make", u"Aurora"}}, {{90, u"Graz"}}));
  }
  PictureRun Run() { return {TheCatalogue(), &told_, nobody_, {}}; }
  static QStringList ReasonsOf(const FailureList& list) {
    QStringList reasons;
    for (const FailureRow& row : list.rows)
      reasons.append(row.Reason);
    return reasons;
  }
  void AddRow(const QString& path, const std::map<Column, QString>& fields = {}) {
    ASSERT_TRUE(Photos().BeginNewRow());
    Photos().SetField(Column::Photo, path);
    for (const auto& [column, text] : fields)
      Photos().SetField(column, text);
    ASSERT_TRUE(Photos().CommitRow());
  }
  Picture Loaded(const QString& path) {
    Picture picture;
    EXPECT_TRUE(picture.LoadFromFile(path)) << qUtf8Printable(path);
    return picture;
  }

  Told told_;
  BatchObserver nobody_ = [](const BatchProgress&) {};
};

TEST_F(PictureWork, EveryFormatComesOutWithItsMetadataBesideItsSource) {
  const QString photo = Sample(u"in/a.jpg"_s);
  for (const ConvertFormat& format : ConvertFormats()) {
    ConvertOptions options;
    options.format = &format;
    options.output.existing = ExistingFiles::Overwrite;
    const PictureResult result = ConvertPhotos(Run(), {photo}, options);
    const QString out = scratch_.Path(u"in/a."_s + QString::fromUtf16(format.extension));
    EXPECT_TRUE(result.failures.Empty() && result.unwritten.Empty()) << qUtf8Printable(out);
    const Picture read = Loaded(out);
    EXPECT_EQ(read.Image().size(), QSize(60, 40)) << qUtf8Printable(out);
    const QString make = read.GetIOProperty(u"EXIF_Make");
    const bool holds = QStringList{u"jpg"_s, u"png"_s, u"psd"_s, u"tif"_s, u"jp2"_s}.contains(
        QString::fromUtf16(format.extension));
    EXPECT_EQ(make, holds ? u"Aurora"_s : QString()) << qUtf8Printable(out);
    EXPECT_EQ(read.IPTC_Get(read.IPTC_Find(2, 90)), holds ? u"Graz"_s : QString())
        << qUtf8Printable(out);
    EXPECT_EQ(read.GetIOProperty(u"EXIF_Software"), holds ? u"Zolmira QM"_s : QString());
  }
}

TEST_F(PictureWork, AFileThatStandsIsLeftOrReplacedAndItsRowGoes) {
  const QString photo = Sample(u"in/a.jpg"_s), standing = scratch_.Write(u"out/a.PNG"_s, "old");
  AddRow(standing);
  ConvertOptions options;
  options.format = FindConvertFormat(u"png");
  options.besideSource = false;
  options.folder = scratch_.Path(u"out"_s);
  EXPECT_EQ(
      ReasonsOf(ConvertPhotos(Run(), {photo, scratch_.Path(u"in/b.jpg"_s)}, options).failures),
      (QStringList{u"File already exists in destination folder"_s,
                   u"File is offline or missing"_s}));
  EXPECT_EQ(test::Scratch::Read(standing), "old");
  EXPECT_TRUE(Photos().IsCatalogued(standing));

  // Over one of another spelling: the new spelling stands, one file is left.
  options.output.existing = ExistingFiles::Overwrite;
  EXPECT_TRUE(ConvertPhotos(Run(), {photo}, options).failures.Empty());
  EXPECT_EQ(QDir(options.folder).entryList(QDir::Files), QStringList{u"a.png"_s});
  EXPECT_FALSE(Photos().IsCatalogued(standing));

  options.output.catalogue = true;
  EXPECT_TRUE(ConvertPhotos(Run(), {photo}, options).failures.Empty());
  const QString out = scratch_.Path(u"out/a.png"_s);
  ASSERT_TRUE(Photos().LocateRow(out));
  EXPECT_EQ(Photos().GetField(Column::Flag), u"Unflagged"_s);
  EXPECT_EQ(Photos().GetField(Column::City), u"Graz"_s);
  EXPECT_EQ(told_.written.last(), out + u" catalogued"_s);
}

TEST_F(PictureWork, ARowFollowsAfterAKillBetweenFileAndRow) {
  const QString changed = Sample(u"changed.jpg"_s), untouched = Sample(u"untouched.jpg"_s),
                gone = Sample(u"gone.jpg"_s), broken = Sample(u"broken.jpg"_s);
  const QStringList all{changed, untouched, gone, broken};
  for (const QString& path : all) {
    AddRow(path, {{Column::ImageWidth, u"1"_s}, {Column::Notes, u"mine"_s}});
    ASSERT_TRUE(ReplaceIntent::Record(TheCatalogue(), path));
  }
  ASSERT_TRUE(WriteFileAtomically(changed, test::SampleJpeg(90, 30, {})));
  ASSERT_TRUE(DeleteFile(gone));
  ASSERT_TRUE(WriteFileAtomically(broken, "not a picture"));
  ASSERT_TRUE(session_->Activate(u"Zolmira QM.mdb"_s));
  FollowReplaced(TheCatalogue(), ReadRequest());
  for (const QString& path : all) {
    ASSERT_TRUE(Photos().LocateRow(path)) << qUtf8Printable(path);
    EXPECT_EQ(Photos().GetField(Column::ImageWidth), path == changed ? u"90"_s : u"1"_s)
        << qUtf8Printable(path);
    EXPECT_EQ(Photos().GetField(Column::Notes), u"mine"_s);
  }
  EXPECT_TRUE(TheCatalogue().Replaced().empty());
}

TEST_F(PictureWork, RunsLeaveNoIntentBehind) {
  const QString photo = Sample(u"in/a.jpg"_s), over = Sample(u"out/a.jpg"_s),
                locked = Sample(u"in/locked.jpg"_s);
  for (const QString& path : {photo, over, locked})
    AddRow(path);
  QFile::setPermissions(locked, QFile::ReadOwner);
  ResizeOptions options;
  options.width = options.height = u"20"_s;
  options.dpi = u"72"_s;
  options.inPlace = true;
  ResizePhotos(Run(), {photo, locked}, options);
  options.inPlace = false;
  options.folder = scratch_.Path(u"out"_s);
  options.output.existing = ExistingFiles::Overwrite;
  ResizePhotos(Run(), {photo}, options);
  ApplyExif(TheCatalogue(), {photo, locked}, {{0, u"Aurora"_s}}, nullptr, nobody_);
  EXPECT_TRUE(TheCatalogue().Replaced().empty());
  EXPECT_EQ(Loaded(over).Image().size(), QSize(20, 20));
}

TEST_F(PictureWork, AFileThatIsCutOffIsNotWrittenOver) {
  QImage motley(300, 200, QImage::Format_RGB32);
  for (int y = 0; y < motley.height(); ++y)
    for (int x = 0; x < motley.width(); ++x)
      motley.setPixel(x, y, qRgb(x * 7 % 256, y * 5 % 256, x * y % 256));
  for (const ConvertFormat& format : ConvertFormats()) {
    const QString extension = QString::fromUtf16(format.extension);
    const QString path = scratch_.Path(u"cut."_s + extension);
    Picture picture;
    picture.SetImage(motley);
    ASSERT_TRUE(picture.SaveToFile(path)) << qUtf8Printable(extension);
    const QByteArray whole = test::Scratch::Read(path);
    EXPECT_TRUE(RotatePhotos(Run(), {path}, Turns()[0], {}).failures.Empty())
        << qUtf8Printable(extension);
    const QByteArray cut = whole.first(whole.size() * 2 / 3);
    ASSERT_TRUE(WriteFileAtomically(path, cut));
    const PictureResult result = RotatePhotos(Run(), {path}, Turns()[0], {});
    EXPECT_EQ(result.failures.rows.size(), 1U) << qUtf8Printable(extension);
    EXPECT_EQ(test::Scratch::Read(path), cut) << qUtf8Printable(extension);
  }
}

TEST_F(PictureWork, WhatCannotBeLoadedOrSavedIsToldApart) {
  const QString good = Sample(u"in/a.jpg"_s), bad = scratch_.Write(u"in/b.jpg"_s, "no picture");
  ConvertOptions options;
  options.format = FindConvertFormat(u"TIF");
  options.saveKeys = {{u"TIFF_COMPRESSION"_s, u"6"_s}};  // nobody writes it any more
  const PictureResult result = ConvertPhotos(Run(), {good, bad}, options);
  EXPECT_TRUE(result.failures.Empty());
  EXPECT_EQ(result.done, 0);
  EXPECT_EQ(ReasonsOf(result.unwritten), (QStringList{u"File format cannot be written"_s,
                                                      u"File could not be read as an image"_s}));
  EXPECT_EQ(told_.said,
            u"a.jpg could not be written: File format cannot be written (and 1 more)"_s);
  EXPECT_EQ(QDir(scratch_.Path(u"in"_s)).entryList({u"*.tif"_s}), QStringList());
}

TEST_F(PictureWork, APhotoMadeOfAnEarlierResultIsLoadedInItsTurn) {
  const QString photo = Sample(u"a.jpg"_s, 64, 16);
  // Turned twice: the second turn finds what the first one left.
  const PictureResult result = RotatePhotos(Run(), {photo, photo}, Turns()[0], {});
  EXPECT_EQ(result.done, 2);
  EXPECT_EQ(Loaded(photo).Image().size(), QSize(64, 16));
  EXPECT_EQ(told_.changed, (QStringList{photo, photo}));
}

TEST_F(PictureWork, TurnsMovePixelsAndLeaveRowAndOrientation) {
  QImage corner(40, 24, QImage::Format_RGB32);
  corner.fill(Qt::white);
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 8; ++x)
      corner.setPixel(x, y, qRgb(200, 0, 0));
  const struct {
    QSize size;
    QPoint red;
  } expected[] = {{{24, 40}, {20, 3}},
                  {{24, 40}, {3, 36}},
                  {{40, 24}, {36, 20}},
                  {{40, 24}, {3, 20}},
                  {{40, 24}, {36, 3}}};
  for (const Turn& turn : Turns()) {
    const QString photo = scratch_.Path(u"corner.jpg"_s);
    QFile::remove(photo);
    Picture drawn;
    drawn.SetImage(corner);
    drawn.SetIOProperty(u"EXIF_Orientation", u"6"_s);
    ASSERT_TRUE(drawn.SaveToFile(photo));
    if (turn.index == 1) AddRow(photo, {{Column::ImageWidth, u"40"_s}});
    EXPECT_TRUE(RotatePhotos(Run(), {photo}, turn, {}).failures.Empty());
    const Picture turned = Loaded(photo);
    const auto& [size, red] = expected[turn.index - 1];
    EXPECT_EQ(turned.Image().size(), size) << turn.index;
    EXPECT_LT(qGreen(turned.Image().pixel(red)), 40) << turn.index;
    EXPECT_EQ(turned.GetIOProperty(u"EXIF_Orientation"), u"6"_s);
  }
  ASSERT_TRUE(Photos().LocateRow(scratch_.Path(u"corner.jpg"_s)));
  EXPECT_EQ(Photos().GetField(Column::ImageWidth), u"40"_s);
}

TEST_F(PictureWork, InPlaceTheRowFollowsAndKeepsWhatTheUserWrote) {
  const QString photo = Sample(u"a.jpg"_s);
  AddRow(photo, {{Column::Notes, u"mine"_s}, {Column::Flag, u"Rejected"_s}});
  ASSERT_TRUE(Photos().LocateRow(photo));
  const QString id = Photos().GetField(Column::ID);
  ResizeOptions options;
  options.width = u"30"_s;
  options.autoHeight = true;
  options.dpi = u"144"_s;
  EXPECT_TRUE(ResizePhotos(Run(), {photo}, options).failures.Empty());
  const Picture resized = Loaded(photo);
  EXPECT_EQ(resized.Image().size(), QSize(30, 20));
  EXPECT_EQ(resized.GetIOProperty(u"DPIX"), u"144"_s);
  ASSERT_TRUE(Photos().LocateRow(photo));
  const auto field = [&](Column column) { return Photos().GetField(column); };
  EXPECT_EQ(field(Column::ID), id);
  EXPECT_EQ(field(Column::ImageWidth), u"30"_s);
  EXPECT_EQ(field(Column::Notes), u"mine"_s);
  EXPECT_EQ(field(Column::Flag), u"Rejected"_s);
  EXPECT_EQ(field(Column::CreationSoftware), u"Zolmira QM"_s);
}

TEST_F(PictureWork, SizesAreExactOrFollowTheAspect) {
  const QString photo = Sample(u"a.jpg"_s, 60, 40);
  const struct {
    QString width, height;
    bool autoWidth, autoHeight;
    QSize size;
  } cases[] = {{u"10"_s, u"10"_s, false, false, {10, 10}},
               {u"x"_s, u"20"_s, true, false, {30, 20}},
               {u"6"_s, QString(), false, true, {6, 4}},
               {u"1"_s, u"1"_s, false, false, {1, 1}},
               {u"120"_s, u"x"_s, false, true, {120, 80}}};
  int folder = 0;
  for (const auto& c : cases) {
    ResizeOptions options{.width = c.width,
                          .height = c.height,
                          .autoWidth = c.autoWidth,
                          .autoHeight = c.autoHeight,
                          .inPlace = false};
    options.folder = scratch_.Path(u"out%1"_s.arg(++folder));
    QDir().mkpath(options.folder);
    ASSERT_TRUE(CheckResize(options));
    EXPECT_TRUE(ResizePhotos(Run(), {photo}, options).failures.Empty());
    EXPECT_EQ(Loaded(options.folder + u"/a.jpg"_s).Image().size(), c.size);
  }
  // More than memory could hold: told, and nothing is written.
  ResizeOptions huge{.width = u"200000"_s, .height = u"200000"_s};
  const QByteArray before = test::Scratch::Read(photo);
  EXPECT_EQ(ReasonsOf(ResizePhotos(Run(), {photo}, huge).unwritten),
            QStringList{u"The picture is too large"_s});
  EXPECT_EQ(test::Scratch::Read(photo), before);
}

TEST_F(PictureWork, WhatIsTypedIsCheckedInOrder) {
  const struct {
    ResizeOptions options;
    QString message;
  } cases[] = {{{.width = u""_s, .height = u"x"_s}, u"Invalid Width."_s},
               {{.height = u"-5"_s, .dpi = u"x"_s}, u"Invalid Height."_s},
               {{.width = u"x"_s, .height = u"0"_s, .autoWidth = true}, u"Invalid Height."_s},
               {{.width = u"0"_s, .height = u"x"_s, .autoHeight = true}, u"Invalid Width."_s},
               {{.dpi = u"abc"_s, .inPlace = false}, u"Invalid DPI Value."_s},
               {{.inPlace = false}, u"Please select destination folder."_s}};
  for (const auto& c : cases)
    EXPECT_EQ(CheckResize(c.options).Reason(), c.message);
  EXPECT_EQ(CheckConvert({.besideSource = false}).Reason(), u"Select output format."_s);
  EXPECT_EQ(CheckConvert({.format = FindConvertFormat(u"JPG"), .besideSource = false}).Reason(),
            u"Please select destination folder."_s);
}

TEST_F(PictureWork, RawFilesAndFilesOfSeveralPagesAreNotWrittenOver) {
  const QString raw = test::Photos("formats/raw"), tif = test::Photos("formats/tif");
  if (raw.isEmpty() || tif.isEmpty()) GTEST_SKIP();
  QStringList refused;
  for (const QString& folder : {raw, tif}) {
    for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files)) {
      const QByteArray before = test::Scratch::Read(file.filePath());
      const QString copy = scratch_.Write(file.fileName(), before);
      const PictureResult result = RotatePhotos(Run(), {copy}, Turns()[0], {});
      if (result.failures.Empty()) continue;
      refused += ReasonsOf(result.failures);
      EXPECT_EQ(test::Scratch::Read(copy), before) << qUtf8Printable(copy);
    }
  }
  EXPECT_TRUE(refused.contains(u"File format cannot be written"_s));
}

TEST(ConvertSettings, EveryKeyIsASaveKeyAndEveryDefaultAChoice) {
  for (const ConvertSetting& setting : ConvertSettings()) {
    EXPECT_TRUE(IsSaveKey(QString::fromUtf16(setting.key)));
    for (const QString& format : QString::fromUtf16(setting.formats).split(u' '))
      EXPECT_NE(FindConvertFormat(format), nullptr);
    bool isNumber = false;
    KeyValue(setting, setting.standard).toDouble(&isNumber);
    EXPECT_TRUE(isNumber);
  }
  const auto rate = std::ranges::find_if(ConvertSettings(), [](const ConvertSetting& setting) {
    return QStringView(setting.key) == u"J2000_RATE";
  });
  EXPECT_EQ(KeyValue(*rate, 1000), u"1"_s);
  EXPECT_EQ(KeyValue(*rate, 50), u"0.05"_s);
}

}  // namespace
}  // namespace zqm
