// SPDX-License-Identifier: GPL-3.0-or-later
#include <QColorSpace>
#include <QtEndian>

#include "imaging/codecs/codecs.h"
#include "imaging/file_parameters.h"
#include "tests/support/sample_photo.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

struct Sample {
  const char* name;
  QImage picture;
};

/// Smooth parts, noise and long runs, with or without alpha.
QImage Drawn(QImage::Format format, int width, int height) {
  QImage picture(width, height, QImage::Format_RGBA64);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const bool flat = y % 3 == 0;
      const quint32 noise = flat ? 0 : (quint32(x) * 2654435761U ^ quint32(y) * 40503U) >> 24;
      const auto level = [](double part) { return quint16(std::clamp(part, 0.0, 1.0) * 65535); };
      picture.setPixelColor(x, y,
                            QColor(QRgba64::fromRgba64(
                                level(double(x) / width), level(flat ? 0.4 : double(y) / height),
                                quint16(noise * 251), level(flat ? 1 : (x * 7 + y) % 50 / 49.0))));
    }
  }
  const bool alpha = format == QImage::Format_ARGB32 || format == QImage::Format_RGBA64;
  if (!alpha) picture = picture.convertToFormat(QImage::Format_RGBX64);
  return picture.convertToFormat(format);
}

QImage Indexed(int width, int height, const QList<QRgb>& colours) {
  QImage picture(width, height, QImage::Format_Indexed8);
  picture.setColorTable(colours);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x)
      picture.setPixel(x, y, uint((x * 3 + y * y) % colours.size()));
  }
  return picture;
}

QImage Mono(QRgb zero, QRgb one) {
  QImage picture = Indexed(37, 11, {zero, one}).convertToFormat(QImage::Format_Mono);
  EXPECT_EQ(picture.format(), QImage::Format_Mono);
  return picture;
}

std::vector<Sample> Samples() {
  QList<QRgb> many;
  for (int i = 0; i < 200; ++i)
    many.append(qRgb(i, 255 - i, i * 7 % 256));
  return {
      {"one pixel", Drawn(QImage::Format_RGB32, 1, 1)},
      {"one column", Drawn(QImage::Format_RGB32, 1, 9)},
      {"RGB", Drawn(QImage::Format_RGB32, 13, 7)},
      {"RGB, long rows", Drawn(QImage::Format_RGB32, 301, 9)},
      {"gray", Drawn(QImage::Format_Grayscale8, 135, 6)},
      {"gray, 16 bits", Drawn(QImage::Format_Grayscale16, 21, 6)},
      {"RGB, 16 bits", Drawn(QImage::Format_RGBX64, 19, 8)},
      {"alpha", Drawn(QImage::Format_ARGB32, 15, 8)},
      {"alpha, 16 bits", Drawn(QImage::Format_RGBA64, 17, 8)},
      {"palette of 200", Indexed(31, 20, many)},
      {"palette of 3", Indexed(33, 5, {qRgb(1, 2, 3), qRgb(250, 0, 9), qRgb(7, 200, 7)})},
      {"palette with alpha",
       Indexed(9, 9, {qRgb(5, 6, 7), qRgba(90, 8, 8, 0), qRgba(9, 9, 99, 130)})},
      {"black and white", Mono(qRgb(0, 0, 0), qRgb(255, 255, 255))},
      {"white and black", Mono(qRgb(255, 255, 255), qRgb(0, 0, 0))},
      {"two colours", Mono(qRgb(200, 10, 10), qRgb(10, 10, 60))},
  };
}

struct Format {
  const Codec* codec;
  const char* extension;
  bool deep, alpha;  // whether it keeps 16 bits, whether alpha
  SaveOptions options = {};
};

std::vector<Format> Formats() {
  return {
      {&kBmpCodec, "bmp", false, true},
      {&kPcxCodec, "pcx", false, false},
      {&kPcxCodec, "pcx", false, false, {.pcxCompressed = false}},
      {&kTgaCodec, "tga", false, true},
      {&kTgaCodec, "tga", false, true, {.tgaCompressed = true}},
      {&kPngCodec, "png", true, true},
      {&kPngCodec, "png", true, true, {.pngFilter = 1, .pngCompression = 0}},
      {&kPngCodec, "png", true, true, {.pngFilter = 2, .pngCompression = 9, .pngInterlaced = true}},
      {&kPsdCodec, "psd", true, true},
      {&kJp2Codec, "jp2", true, true},
      {&kJ2kCodec, "j2k", true, false},
  };
}

QByteArray Save(const Codec& codec, const QImage& picture, const SaveOptions& options = {},
                const FileBlocks& blocks = {}) {
  const auto file = codec.save(picture, options, blocks);
  EXPECT_TRUE(file) << codec.name << ": " << qPrintable(file.Reason());
  return file ? *file : QByteArray();
}

QImage Load(const Codec& codec, const QByteArray& file) {
  const auto picture = codec.load(Bytes(file), {});
  EXPECT_TRUE(picture) << codec.name << ": " << qPrintable(picture.Reason());
  return picture ? *picture : QImage();
}

/// What a pixel looks like on white is what counts where colours were stored so.
std::array<double, 4> Channels(QRgba64 c, bool onWhite, bool alpha) {
  const double a = alpha ? c.alpha() / 65535.0 : 1;
  std::array<double, 4> all = {double(c.red()), double(c.green()), double(c.blue()), a * 65535};
  for (std::size_t i = 0; i < 3 && onWhite; ++i)
    all[i] = 65535 - (65535 - all[i]) * a;
  return all;
}

double MostDifference(const QImage& a, const QImage& b, bool onWhite, bool alpha) {
  if (a.size() != b.size()) return 1e9;
  const QImage first = a.convertToFormat(QImage::Format_RGBA64);
  const QImage second = b.convertToFormat(QImage::Format_RGBA64);
  double most = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const auto p = Channels(first.pixelColor(x, y).rgba64(), onWhite, alpha);
      const auto q = Channels(second.pixelColor(x, y).rgba64(), onWhite, alpha);
      for (std::size_t c = 0; c < 4; ++c)
        most = std::max(most, std::abs(p[c] - q[c]));
    }
  }
  return most;
}

constexpr double kHalfLevel = 129, kLevel = 257;  // of 8 bits, in 16

TEST(SavedFormats, GiveTheirPixelsBack) {
  for (const Format& format : Formats()) {
    for (const Sample& sample : Samples()) {
      SCOPED_TRACE(std::string(format.extension) + ", " + sample.name);
      const QByteArray file = Save(*format.codec, sample.picture, format.options);
      ASSERT_EQ(SniffCodec(Bytes(file), QLatin1String(format.extension)), format.codec);
      const QImage loaded = Load(*format.codec, file);
      const bool deep =
          sample.picture.depth() == 64 || sample.picture.format() == QImage::Format_Grayscale16;
      const bool alpha = sample.picture.hasAlphaChannel() && format.alpha;
      const bool onWhite = alpha && format.codec == &kPsdCodec;
      const double allowed = deep      ? (!format.deep ? kHalfLevel
                                          : onWhite    ? 2
                                                       : 0)
                             : onWhite ? kLevel
                                       : 0;
      EXPECT_EQ(loaded.hasAlphaChannel(), alpha);
      EXPECT_LE(MostDifference(sample.picture, loaded, onWhite, alpha), allowed);
      EXPECT_EQ(Save(*format.codec, sample.picture, format.options), file) << "the same every time";
    }
  }
}

TEST(SavedFormats, TellTheirFacts) {
  const QRgb opaque = qRgb(0, 0, 0);
  const QList<QRgb> five = {opaque, opaque | 1, opaque | 2, opaque | 3, opaque | 4};
  const QImage gray16 = Drawn(QImage::Format_Grayscale16, 21, 6),
               rgb = Drawn(QImage::Format_RGB32, 21, 6);
  const QImage palette = Indexed(21, 6, five);
  const QImage mono = Mono(qRgb(0, 0, 0), qRgb(255, 255, 255)).copy(0, 0, 21, 6);
  const struct {
    const Codec& codec;
    const QImage& picture;
    bool density;
    int bits, samples, colours;
  } cases[] = {
      {kBmpCodec, rgb, true, 8, 3, 0},       {kBmpCodec, palette, true, 8, 1, 5},
      {kBmpCodec, mono, true, 1, 1, 2},      {kBmpCodec, gray16, true, 8, 1, 256},
      {kGifCodec, palette, false, 8, 1, 8},  {kPcxCodec, rgb, true, 8, 3, 0},
      {kPcxCodec, palette, true, 8, 1, 256}, {kPcxCodec, mono, true, 1, 1, 2},
      {kPngCodec, rgb, true, 8, 3, 0},       {kPngCodec, palette, true, 4, 1, 5},
      {kPngCodec, mono, true, 1, 1, 0},      {kPngCodec, gray16, true, 16, 1, 0},
      {kPsdCodec, rgb, true, 8, 3, 0},       {kPsdCodec, palette, true, 8, 1, 5},
      {kPsdCodec, mono, true, 1, 1, 0},      {kPsdCodec, gray16, true, 16, 1, 0},
      {kTgaCodec, palette, false, 8, 1, 5},  {kTgaCodec, gray16, false, 8, 1, 0},
      {kJp2Codec, rgb, true, 8, 3, 0},       {kJp2Codec, gray16, true, 16, 1, 0},
      {kJ2kCodec, gray16, false, 16, 1, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.codec.name) + " " + std::to_string(c.picture.format()));
    const QByteArray file = Save(c.codec, c.picture, {}, {.dpiX = 300, .dpiY = 96});
    const auto facts = c.codec.readFacts(Bytes(file), {});
    ASSERT_TRUE(facts);
    EXPECT_EQ(QSize(facts->width, facts->height), QSize(21, 6));
    EXPECT_NEAR(facts->dpiX, c.density ? 300 : 0, 0.02);
    EXPECT_NEAR(facts->dpiY, c.density ? 96 : 0, 0.02);
    EXPECT_EQ(facts->bitsPerSample, c.bits);
    EXPECT_EQ(facts->samplesPerPixel, c.samples);
    EXPECT_EQ(facts->colorMapCount, c.colours);
  }
}

FileBlocks SampleBlocks() {
  const QByteArray jpeg =
      test::SampleJpeg(16, 12, {{u"EXIF_Make", u"Maker"}, {u"EXIF_Model", u"Model 1"}});
  FileBlocks blocks;
  blocks.exif = FileParameters::Read(Bytes(jpeg), kJpegCodec, {}, u"a.jpg"_s).Exif().EncodeExif();
  IptcList iptc;
  iptc.Add(2, 120, u"Grüße aus Graz"_s);
  iptc.Add(2, 25, u"one"_s);
  iptc.Add(2, 25, u"two"_s);
  blocks.iptc = iptc.ToBlock();
  blocks.xmp =
      "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?><x:xmpmeta "
      "xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
      "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">"
      "<rdf:Description xmlns:dc=\"http://purl.org/dc/elements/1.1/\" dc:format=\"f\xC3\xBCr "
      "alle\"/>"
      "</rdf:RDF></x:xmpmeta><?xpacket end=\"w\"?>";
  blocks.profile = QColorSpace(QColorSpace::AdobeRgb).iccProfile();
  return blocks;
}

TEST(SavedFormats, CarryTheirBlocks) {
  const FileBlocks blocks = SampleBlocks();
  for (const Codec* codec : {&kPngCodec, &kPsdCodec, &kJp2Codec}) {
    SCOPED_TRACE(codec->name);
    const QByteArray file = Save(*codec, Drawn(QImage::Format_RGB32, 21, 6), {}, blocks);
    const auto facts = codec->readFacts(Bytes(file), {});
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->iptc, blocks.iptc);
    const auto parameters = FileParameters::Read(Bytes(file), *codec, *facts, u"a"_s);
    EXPECT_EQ(parameters.GetIOProperty(u"EXIF_Model"), u"Model 1"_s);
    EXPECT_EQ(parameters.Iptc().Count(), IptcList::Parse(Bytes(blocks.iptc)).Count());
    EXPECT_TRUE(parameters.GetIOProperty(u"XMP_Info").contains(u"für alle"_s));
    EXPECT_FALSE(Load(*codec, file).isNull());
  }
}

TEST(SavedFormats, CarryTheProfileOfTheirPixels) {
  const FileBlocks blocks{.profile = SampleBlocks().profile};
  const QImage rgb = Drawn(QImage::Format_RGB32, 21, 6),
               gray = Drawn(QImage::Format_Grayscale8, 9, 9);
  const QImage png = QImage::fromData(Save(kPngCodec, rgb, {}, blocks), "PNG");
  EXPECT_EQ(png.colorSpace(), QColorSpace(QColorSpace::AdobeRgb));
  const QByteArray bmp = Save(kBmpCodec, rgb, {}, blocks);
  const auto profileAt = 14 + qFromLittleEndian<quint32>(bmp.constData() + 126);
  EXPECT_EQ(bmp.mid(profileAt), blocks.profile);
  EXPECT_EQ(Load(kBmpCodec, bmp), rgb);
  EXPECT_TRUE(Save(kPsdCodec, rgb, {}, blocks).contains(blocks.profile));
  EXPECT_TRUE(Save(kJp2Codec, rgb, {}, blocks).contains(blocks.profile));
  // One that is of other pixels, or is none, is left out, and the picture is there all the same.
  EXPECT_EQ(Save(kJp2Codec, gray, {}, blocks), Save(kJp2Codec, gray));
  EXPECT_EQ(Load(kPngCodec, Save(kPngCodec, gray, {}, blocks)), gray);
  EXPECT_EQ(Load(kPngCodec, Save(kPngCodec, rgb, {}, {.profile = "no profile"})), rgb);
}

/// The picture data of a PNG, unpacked.
QByteArray PngRows(const QByteArray& file) {
  QByteArray packed(4, '\0');
  for (qsizetype at = 8; at + 12 <= file.size();) {
    const auto length = qFromBigEndian<quint32>(file.constData() + at);
    if (file.mid(at + 4, 4) == "IDAT") packed += file.mid(at + 8, length);
    at += 12 + length;
  }
  packed[2] = 0x40;  // room for 16 KB
  return qUncompress(packed);
}

TEST(SavedFormats, FollowTheirOptions) {
  const QImage rgb = Drawn(QImage::Format_RGB32, 40, 30),
               gray = Drawn(QImage::Format_Grayscale8, 40, 30);
  for (int filter = 0; filter < 3; ++filter) {
    const int numbers[] = {0, 1, 4};
    const QByteArray rows = PngRows(Save(kPngCodec, rgb, {.pngFilter = filter}));
    ASSERT_EQ(rows.size(), 30 * (1 + 40 * 3));
    EXPECT_EQ(rows[1 + 40 * 3], numbers[filter]);
  }
  EXPECT_EQ(Save(kPngCodec, rgb, {.pngInterlaced = false})[28], 0);
  EXPECT_EQ(Save(kPngCodec, rgb, {.pngInterlaced = true})[28], 1);
  EXPECT_GT(Save(kPngCodec, rgb, {.pngCompression = 0}).size(), 30 * 40 * 3);
  EXPECT_LT(Save(kPngCodec, rgb, {.pngCompression = 9}).size(), 30 * 40 * 3);

  const QImage palette = Indexed(40, 30, {qRgb(1, 2, 3), qRgb(4, 5, 6)});
  EXPECT_EQ(Save(kTgaCodec, palette)[2], 1);
  EXPECT_EQ(Save(kTgaCodec, rgb)[2], 2);
  EXPECT_EQ(Save(kTgaCodec, gray)[2], 3);
  EXPECT_EQ(Save(kTgaCodec, rgb, {.tgaCompressed = true})[2], 10);
  EXPECT_EQ(Save(kTgaCodec, gray, {.tgaCompressed = true})[2], 11);
  const QByteArray clear = Save(kTgaCodec, Drawn(QImage::Format_ARGB32, 5, 5));
  EXPECT_EQ(clear[17], 0x28) << "from the top, eight bits of alpha";
  EXPECT_EQ(clear[clear.size() - 27], 3) << "useful alpha";

  EXPECT_EQ(Save(kPcxCodec, rgb, {.pcxCompressed = true})[2], 1);
  EXPECT_EQ(Save(kPcxCodec, rgb, {.pcxCompressed = false})[2], 0);
  EXPECT_EQ(Save(kPcxCodec, rgb, {.pcxCompressed = false}).size(), 128 + 40 * 3 * 30);
}

TEST(SavedFormats, JpegTwoThousandFollowsRateAndColourSpace) {
  const QImage rgb = Drawn(QImage::Format_RGB32, 200, 160),
               deep = Drawn(QImage::Format_RGBX64, 60, 50);
  const auto transform = [](const QByteArray& file) {
    const qsizetype style = file.indexOf("\xFF\x52");
    return std::pair<int, int>(file[style + 8], file[style + 13]);  // of components, of wavelets
  };
  using Pair = std::pair<int, int>;
  EXPECT_EQ(transform(Save(kJ2kCodec, rgb)), Pair(1, 1));
  EXPECT_EQ(transform(Save(kJ2kCodec, rgb, {.j2000Rate = 0.2})), Pair(1, 0));
  EXPECT_EQ(transform(Save(kJp2Codec, rgb, {.j2000ColourSpace = 2})), Pair(0, 1));
  for (const double rate : {0.5, 0.1, 0.01}) {
    const QByteArray file = Save(kJ2kCodec, rgb, {.j2000Rate = rate});
    EXPECT_LT(file.size(), rgb.width() * rgb.height() * 3 * rate * 1.05 + 200) << rate;
    EXPECT_LT(
        MostDifference(
            Load(kJ2kCodec, file).scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
            rgb.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation), false, false),
        8 * kLevel);
  }
  const auto space = [](const QByteArray& file) {
    const qsizetype colour = file.indexOf("colr");
    return qFromBigEndian<quint32>(file.constData() + colour + 7);
  };
  EXPECT_EQ(space(Save(kJp2Codec, rgb, {.j2000ColourSpace = 0})), 17U);
  EXPECT_EQ(space(Save(kJp2Codec, rgb, {.j2000ColourSpace = 1})), 16U);
  const QByteArray ycc = Save(kJp2Codec, rgb, {.j2000ColourSpace = 2});
  EXPECT_EQ(space(ycc), 18U);
  EXPECT_LE(MostDifference(Load(kJp2Codec, ycc), rgb, false, false), 2 * kLevel) << "rounding only";
  EXPECT_LE(MostDifference(Load(kJp2Codec, Save(kJp2Codec, deep, {.j2000ColourSpace = 2})), deep,
                           false, false),
            3);
  QImage even(8, 8, QImage::Format_RGB32);
  even.fill(qRgb(100, 100, 100));
  EXPECT_EQ(Load(kJp2Codec, Save(kJp2Codec, even, {.j2000ColourSpace = 2})), even)
      << "gray has no tint";
  const QImage gray = Load(kJ2kCodec, Save(kJ2kCodec, rgb, {.j2000ColourSpace = 0}));
  EXPECT_EQ(gray.format(), QImage::Format_Grayscale8);
  EXPECT_NEAR(qRed(gray.pixel(100, 0)),
              0.299 * qRed(rgb.pixel(100, 0)) + 0.587 * qGreen(rgb.pixel(100, 0)), 1);
}

TEST(SavedFormats, PicturesOfSeveralTilesAreWhole) {
  QImage picture(20000, 900, QImage::Format_Grayscale8);
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x)
      picture.scanLine(y)[x] = static_cast<uchar>(x / 100 + y / 20);
  }
  EXPECT_EQ(Load(kJ2kCodec, Save(kJ2kCodec, picture)), picture);
}

TEST(SavedFormats, GifHoldsColoursTransparencyAndXmp) {
  for (const Sample& sample : Samples()) {
    SCOPED_TRACE(sample.name);
    QImage wanted = sample.picture.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < wanted.height(); ++y) {
      for (int x = 0; x < wanted.width(); ++x) {
        const QRgb p = wanted.pixel(x, y);
        wanted.setPixel(x, y, qAlpha(p) < 128 ? 0 : p | 0xFF000000);
      }
    }
    const QByteArray file = Save(kGifCodec, sample.picture);
    const QImage loaded = Load(kGifCodec, file).convertToFormat(QImage::Format_ARGB32);
    const int allowed = wanted.width() > 256 ? 40 : 0;
    EXPECT_LE(MostDifference(loaded, wanted, false, true), allowed * kLevel);
    EXPECT_EQ(Save(kGifCodec, sample.picture), file) << "the same every time";
    const FileBlocks blocks{.xmp = SampleBlocks().xmp};
    const QByteArray withXmp = Save(kGifCodec, sample.picture, {}, blocks);
    EXPECT_TRUE(withXmp.contains("XMP DataXMP" + blocks.xmp));
    EXPECT_EQ(Load(kGifCodec, withXmp), Load(kGifCodec, file)) << "the packet is skipped";
  }
}

TEST(SavedFormats, OtherPixelFormatsAreBroughtToTheNearest) {
  constexpr auto kClear = QImage::Format_RGBA64, kOpaque = QImage::Format_RGBX64;
  const struct {
    QImage::Format format, drawnAs;
    double allowed;  // colours that were multiplied by alpha come back rounded
  } cases[] = {{QImage::Format_RGB888, kOpaque, 0},
               {QImage::Format_RGB16, kOpaque, 0},
               {QImage::Format_BGR30, kOpaque, 0},
               {QImage::Format_MonoLSB, kOpaque, 0},
               {QImage::Format_RGBA8888, kClear, 0},
               {QImage::Format_ARGB32_Premultiplied, kClear, kHalfLevel},
               {QImage::Format_RGBA64_Premultiplied, kClear, 0}};
  for (const auto& c : cases) {
    const QImage picture = Drawn(c.drawnAs, 20, 9).convertToFormat(c.format);
    const QImage loaded = Load(kPngCodec, Save(kPngCodec, picture));
    EXPECT_LE(MostDifference(loaded, picture, false, true), c.allowed) << c.format;
  }
}

TEST(SavedFormats, ColoursThatNoPaletteTellsAreBlack) {
  std::vector<Format> formats = Formats();
  formats.push_back({&kGifCodec, "gif", false, false});
  for (const Format& format : formats) {
    QImage picture(5, 3, QImage::Format_Indexed8);
    picture.setColorTable({qRgb(200, 0, 0)});
    picture.fill(0);
    picture.setPixel(1, 1, 0);
    picture.scanLine(1)[2] = 250;
    const QImage loaded = Load(*format.codec, Save(*format.codec, picture, format.options));
    EXPECT_EQ(loaded.pixel(1, 1), qRgb(200, 0, 0)) << format.extension;
    EXPECT_EQ(loaded.pixel(2, 1), qRgb(0, 0, 0)) << format.extension;
    QImage bits(5, 3, QImage::Format_Mono);
    bits.setColorTable({});
    bits.fill(1);
    EXPECT_EQ(Load(*format.codec, Save(*format.codec, bits, format.options)).size(), bits.size())
        << format.extension;
  }
}

TEST(SavedFormats, WhatAHeaderCannotHoldIsRefused) {
  const struct {
    const Codec& codec;
    int most;
  } cases[] = {{kGifCodec, 65535}, {kPcxCodec, 65534}, {kTgaCodec, 65535}, {kPsdCodec, 30000}};
  for (const auto& c : cases) {
    for (const bool wide : {true, false}) {
      QImage fits(wide ? c.most : 1, wide ? 1 : c.most, QImage::Format_Grayscale8);
      fits.fill(77);
      EXPECT_EQ(Load(c.codec, Save(c.codec, fits)).size(), fits.size()) << c.codec.name;
      const QImage tooLarge = fits.scaled(wide ? c.most + 1 : 1, wide ? 1 : c.most + 1);
      const auto refused = c.codec.save(tooLarge, {}, {});
      ASSERT_FALSE(refused) << c.codec.name;
      EXPECT_TRUE(refused.Reason().startsWith(QStringView(kReasonNotWritable)));
    }
  }
  for (const Format& format : Formats())
    EXPECT_FALSE(format.codec->save(QImage(), {}, {})) << format.extension;
}

TEST(SavedFormats, CutFilesHarmNobody) {
  const FileBlocks blocks = SampleBlocks();
  for (const Format& format : Formats()) {
    const QImage picture = Drawn(QImage::Format_ARGB32, 15, 8);
    const QByteArray file = Save(*format.codec, picture, format.options, blocks);
    for (qsizetype length = 0; length < file.size(); length += file.size() / 300 + 1) {
      // A copy of its own length, so that a sanitizer sees what is read behind the end.
      const QByteArray cut(file.constData(), length);
      const auto facts = format.codec->readFacts(Bytes(cut), {});
      const auto loaded = format.codec->load(Bytes(cut), {});
      if (loaded) {
        EXPECT_TRUE(facts) << format.extension << " " << length;
        EXPECT_EQ(loaded->size(), picture.size()) << format.extension << " " << length;
      }
    }
  }
}

}  // namespace
}  // namespace zqm
