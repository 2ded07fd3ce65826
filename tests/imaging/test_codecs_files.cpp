// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDirIterator>
#include <set>
#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

#include "imaging/codecs/codecs.h"
#include "imaging/row_sink.h"
#include "imaging/thumbnail.h"
#include "tests/support/photos.h"

namespace zqm {
namespace {

using namespace Qt::StringLiterals;

QByteArray ReadAll(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList FilesBelow(const QString& folder) {
  QStringList files;
  for (QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
    files += it.next();
  }
  files.sort();
  return files;
}

TEST(Codecs, TheRegistryIsOneTable) {
  std::set<int> numbers;
  std::set<std::string> extensions;
  for (const Codec* codec : Codecs()) {
    EXPECT_TRUE(codec->fileType > 0 && numbers.insert(codec->fileType).second) << codec->name;
    for (const char* extension : codec->extensions) {
      EXPECT_TRUE(extensions.insert(extension).second) << extension;
    }
  }
  EXPECT_EQ(kTiffCodec.fileType, 1);
  EXPECT_EQ(kJpegCodec.fileType, 3);
  for (const auto& known : {"/a/b.JPG"_L1, "b.jpe"_L1, "x.y.Tiff"_L1, "p.j2c"_L1, "q.CR2"_L1}) {
    EXPECT_TRUE(HasKnownExtension(known)) << known.data();
  }
  for (const auto& other : {"/a.jpg/b"_L1, "jpg"_L1, "b.txt"_L1, "c."_L1, ""_L1}) {
    EXPECT_FALSE(HasKnownExtension(other)) << other.data();
  }
}

TEST(Codecs, RawWords) {
  using Quality = RawOptions::Quality;
  using Balance = RawOptions::WhiteBalance;
  const struct {
    QLatin1StringView words;
    Quality quality;
    Balance balance;
  } cases[] = {{"-e -w"_L1, Quality::EmbeddedPreview, Balance::Camera},
               {"-h -a"_L1, Quality::HalfSize, Balance::Automatic},
               {"-a"_L1, Quality::Full, Balance::Automatic},
               {""_L1, Quality::Full, Balance::Camera}};
  for (const auto& c : cases) {
    const RawOptions options = ParseRawOptions(QString(c.words));
    EXPECT_TRUE(options.quality == c.quality && options.whiteBalance == c.balance);
  }
}

TEST(Codecs, RealFilesHaveTheSizesThatOtherReadersTell) {
  const struct {
    const char* file;
    const Codec* codec;
    QSize size;
    int dpi, bits;
  } cases[] = {{"gif/Issue_201.gif", &kGifCodec, {500, 375}, 0, 8},
               {"gif/f88b6907ee086c4c8ac4b8c395748c49.gif", &kGifCodec, {79, 68}, 0, 8},
               {"gif/pbar-ani-invalid-XMP.gif", &kGifCodec, {48, 22}, 0, 8},
               {"jp2/00r0_gray_l.jp2", &kJp2Codec, {6, 13}, 149, 8},
               {"jp2/16bit.cropped.jp2", &kJp2Codec, {64, 64}, 0, 16},
               {"jp2/Reagan.jp2", &kJp2Codec, {200, 130}, 0, 8},
               {"jp2/test-card-lossy-tiled.jp2", &kJp2Codec, {640, 480}, 72, 8},
               {"png/basi4a08.png", &kPngCodec, {32, 32}, 0, 8},
               {"png/cdhn2c08.png", &kPngCodec, {32, 8}, 0, 8},
               {"png/s40n3p04.png", &kPngCodec, {40, 40}, 0, 4},
               {"raw/CanonRaw.crw", &kRawCodec, {3088, 2056}, 0, 8},
               {"raw/canon_eos_6d.dng", &kRawCodec, {1224, 816}, 0, 8},
               {"tif/16bit.cropped.tif", &kTiffCodec, {64, 64}, 0, 16},
               {"tif/Issue_16.tif", &kTiffCodec, {728, 825}, 300, 8},
               {"tif/Rudless.tiff", &kTiffCodec, {734, 328}, 0, 8},
               {"tif/subsampled.tif", &kTiffCodec, {250, 325}, 0, 8},
               {"tif/tiff_strip_planar_raw.tif", &kTiffCodec, {278, 374}, 72, 8}};
  if (test::Photos("formats").isEmpty()) GTEST_SKIP();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file);
    const QString path = test::Photos("formats") + u'/' + QLatin1String(c.file);
    const QByteArray file = ReadAll(path);
    LoadOptions options;
    options.extension = QFileInfo(path).suffix().toLower();
    ASSERT_EQ(SniffCodec(Bytes(file), options.extension), c.codec);
    const auto facts = c.codec->readFacts(Bytes(file), options);
    ASSERT_TRUE(facts) << qPrintable(facts.Reason());
    EXPECT_EQ(QSize(facts->width, facts->height), c.size);
    EXPECT_EQ(qRound(facts->dpiX), c.dpi);
    EXPECT_EQ(facts->bitsPerSample, c.bits);
    if (c.codec == &kRawCodec) continue;
    const auto picture = c.codec->load(Bytes(file), options);
    ASSERT_TRUE(picture) << qPrintable(picture.Reason());
    EXPECT_EQ(picture->size(), c.size);
  }
  for (const char* name : {"formats/tif/Reagan.tiff", "formats/jp2/Reagan.jp2"}) {
    const QByteArray file = ReadAll(test::Photos(name));
    EXPECT_TRUE(SniffCodec(Bytes(file), {})->readFacts(Bytes(file), {})->iptc.startsWith("\x1C"));
  }
}

TEST(RawCodec, PreviewHalfAndFullOfOneFile) {
  const QByteArray file = ReadAll(test::Photos("formats/raw/canon_eos_6d.dng"));
  if (file.isEmpty()) GTEST_SKIP();
  const struct {
    const char16_t* words;
    QSize size;
  } cases[] = {{u"-e", {1024, 683}}, {u"-h", {612, 408}}, {u"-a", {1224, 816}}};
  std::vector<QImage> pictures;
  for (const auto& c : cases) {
    const auto picture = kRawCodec.load(Bytes(file), {.raw = ParseRawOptions(c.words)});
    ASSERT_TRUE(picture) << qPrintable(picture.Reason());
    EXPECT_EQ(picture->size(), c.size);
    pictures.push_back(picture->scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  }
  EXPECT_NE(pictures[1], pictures[2]) << "the two white balances differ";
  // An ordinary TIFF isn't taken for RAW, whatever its name.
  const QByteArray tiff = ReadAll(test::Photos("formats/tif/hopper.tif"));
  EXPECT_EQ(SniffCodec(Bytes(tiff), u"nef"_s), &kTiffCodec);
}

TEST(Codecs, ABoxIsFilledButNotOverfilled) {
  if (test::Photos("camera").isEmpty()) GTEST_SKIP();
  int seen = 0;
  for (const QString& path : FilesBelow(test::PhotosFolder())) {
    const QByteArray file = ReadAll(path);
    const QString extension = QFileInfo(path).suffix().toLower();
    const Codec* codec = SniffCodec(Bytes(file), extension);
    if (!codec || codec == &kRawCodec || path.contains("/broken/"_L1)) continue;
    const auto facts = codec->readFacts(Bytes(file), {});
    const auto picture = codec->load(Bytes(file), {.box = kThumbnailBox});
    if (!facts || !picture) continue;
    const QSize size(facts->width, facts->height), fit = FitInto(size, kThumbnailBox);
    EXPECT_GE(picture->width(), fit.width()) << qPrintable(path);
    EXPECT_GE(picture->height(), fit.height()) << qPrintable(path);
    EXPECT_LT(picture->width(), 4 * fit.width()) << qPrintable(path);
    EXPECT_EQ(FitThumbnail(*picture, kThumbnailBox, size).size(), fit) << qPrintable(path);
    ++seen;
  }
  EXPECT_GT(seen, 150);
}

TEST(Codecs, BrokenFilesAndTruncationsEndWithAReasonOrAPicture) {
  if (test::Photos("broken").isEmpty()) GTEST_SKIP();
  const auto tryAll = [](const QByteArray& bytes, const QString& extension) {
    LoadOptions options;
    options.extension = extension;
    options.colourManagement = true;
    const Codec* codec = SniffCodec(Bytes(bytes), extension);
    if (!codec) return;
    if (const auto facts = codec->readFacts(Bytes(bytes), options)) {
      EXPECT_TRUE(facts->width > 0 && facts->height > 0);
    } else {
      EXPECT_FALSE(facts.Reason().isEmpty());
    }
    const auto picture = codec->load(Bytes(bytes), options);
    EXPECT_NE(picture.Reason().isEmpty(), !picture || picture->isNull());
    const auto thumbnail = MakeThumbnail(Bytes(bytes), *codec, {}, options);
    EXPECT_NE(thumbnail.Reason().isEmpty(), !thumbnail || thumbnail->isEmpty());
  };
  for (const QString& path :
       FilesBelow(test::Photos("broken")) + FilesBelow(test::Photos("formats"))) {
    SCOPED_TRACE(qPrintable(path));
    const QByteArray file = ReadAll(path);
    const QString extension = QFileInfo(path).suffix().toLower();
    tryAll(file, extension);
#if defined(__SANITIZE_ADDRESS__)
    // The RAW library itself loses its JPEG decoder when lossy data end early.
    const auto notOurs = extension == u"dng" ? std::make_unique<__lsan::ScopedDisabler>() : nullptr;
#endif
    constexpr int kParts = 12;
    for (int part = 0; part < kParts && file.size() < 300'000; ++part) {
      tryAll(file.left(file.size() * part / kParts), extension);
    }
  }
}

TEST(RowSink, AveragesAnyOrderOfRowsAndRefusesExcess) {
  auto sink = RowSink::Create(8, 8, RowFormat::Rgba32, {2, 2});
  ASSERT_TRUE(sink);
  for (int y = 7; y >= 0; --y) {
    std::array<std::uint8_t, 32> row{};
    for (std::size_t x = 0; x < 8; ++x) {
      // Opaque red beside transparent green: the green must not show.
      row[x * 4] = x % 2 ? 0 : 200, row[x * 4 + 1] = x % 2 ? 255 : 0,
              row[x * 4 + 3] = x % 2 ? 0 : 255;
    }
    sink->PutRow(y, row.data());
  }
  const QImage picture = sink->Take();
  ASSERT_EQ(picture.size(), QSize(4, 4));
  EXPECT_EQ(picture.pixel(2, 1), qRgba(200, 0, 0, 128));

  EXPECT_FALSE(RowSink::Create(0, 5, RowFormat::Gray8, {}));
  EXPECT_FALSE(RowSink::Create(1 << 15, 1 << 14, RowFormat::Gray8, {200, 200})) << "2^29 pixels";
  EXPECT_FALSE(RowSink::Create(1 << 14, 1 << 14, RowFormat::Rgb24, {})) << "1 GB";
  EXPECT_TRUE(RowSink::Create(1 << 14, 1 << 14, RowFormat::Rgb24, {200, 200}));
  EXPECT_FALSE(RowSink::Create(1 << 27, 1, RowFormat::Gray8, {200, 200})) << "a row of 512 MB";
}

}  // namespace
}  // namespace zqm
