// SPDX-License-Identifier: GPL-3.0-or-later
#include <gif_lib.h>
#include <tiffio.h>

#include <QBuffer>
#include <QTemporaryDir>
#include <cmath>

#include "imaging/codecs/codecs.h"

namespace zqm {
namespace {

constexpr int kSide = 40;

/// A smooth pattern from 0 to 1, different in each channel and direction.
double Level(int x, int y, int channel) {
  const int steps[] = {x, y, kSide - 1 - x, 20};
  return std::clamp(steps[channel] / double(kSide - 1), 0.0, 1.0);
}

struct More {
  int format = SAMPLEFORMAT_UINT;
  bool planar = false, tiled = false;
  int extra = -1;
  int tolerance = 0;  // of 255
  const char* mode = "w";
  QImage::Format expected = QImage::Format_Invalid;
};

struct Tiff : More {
  Tiff(const char* named, int bitsPerSample, int samplesPerPixel, int meaning,
       int packing = COMPRESSION_NONE, const More& more = {})
      : More(more),
        name(named),
        bits(bitsPerSample),
        samples(samplesPerPixel),
        photometric(meaning),
        compression(packing) {}
  const char* name;
  int bits, samples, photometric, compression;
};

/// The raw value of a sample, as the file stores it.
double Stored(const Tiff& t, int x, int y, int channel) {
  const double most = std::pow(2.0, t.bits) - 1;
  if (t.photometric == PHOTOMETRIC_PALETTE) return (x + y) % int(most + 1);
  const double level = Level(x, y, channel);
  if (t.format == SAMPLEFORMAT_IEEEFP) return level;
  return std::round(level * most) - (t.format == SAMPLEFORMAT_INT ? (most + 1) / 2 : 0);
}

void PutSample(const Tiff& t, std::vector<std::uint8_t>& row, std::size_t index, double value) {
  if (t.format == SAMPLEFORMAT_IEEEFP) {
    const auto number = static_cast<float>(value);
    std::memcpy(row.data() + index * 4, &number, 4);
  } else if (t.bits >= 8) {
    const auto number = static_cast<std::int64_t>(value);
    std::memcpy(row.data() + index * static_cast<std::size_t>(t.bits / 8), &number,
                static_cast<std::size_t>(t.bits / 8));
  } else {
    const std::size_t bit = index * static_cast<std::size_t>(t.bits);
    row[bit / 8] = static_cast<std::uint8_t>(
        row[bit / 8] | static_cast<int>(value) << (8 - t.bits - static_cast<int>(bit % 8)));
  }
}

QByteArray Write(const Tiff& t) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("t.tif"));
  TIFF* tiff = TIFFOpen(path.toUtf8(), t.mode);
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, kSide);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, kSide);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, t.bits);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, t.samples);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, t.photometric);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, t.compression);
  TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, t.format);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, t.planar ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_BOTRIGHT);  // must not be applied
  TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_CENTIMETER);
  TIFFSetField(tiff, TIFFTAG_XRESOLUTION, 100.0);
  TIFFSetField(tiff, TIFFTAG_YRESOLUTION, 50.0);
  if (t.photometric == PHOTOMETRIC_YCBCR) {
    TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
  }
  if (t.extra >= 0) {
    const std::uint16_t kind = static_cast<std::uint16_t>(t.extra);
    TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &kind);
  }
  std::vector<std::uint16_t> map[3];
  for (int c = 0; c < 3; ++c) {
    for (int i = 0; i < 1 << std::min(t.bits, 8); ++i)
      map[c].push_back(static_cast<std::uint16_t>((i * 40 + c * 9000) & 0xFFFF));
  }
  if (t.photometric == PHOTOMETRIC_PALETTE) {
    TIFFSetField(tiff, TIFFTAG_COLORMAP, map[0].data(), map[1].data(), map[2].data());
  }
  constexpr int kTile = 16;
  TIFFSetField(tiff, t.tiled ? TIFFTAG_TILEWIDTH : TIFFTAG_ROWSPERSTRIP, t.tiled ? kTile : 16);
  if (t.tiled) TIFFSetField(tiff, TIFFTAG_TILELENGTH, kTile);
  const int block = t.tiled ? kTile : kSide, rows = t.tiled ? kTile : 1;
  const int inPixel = t.planar ? 1 : t.samples;
  for (int plane = 0; plane < (t.planar ? t.samples : 1); ++plane) {
    for (int top = 0; top < kSide; top += rows) {
      for (int left = 0; left < kSide; left += block) {
        std::vector<std::uint8_t> data(
            static_cast<std::size_t>(t.tiled ? TIFFTileSize(tiff) : TIFFScanlineSize(tiff)) + 8);
        for (int y = 0; y < rows; ++y) {
          for (int x = 0; x < block; ++x) {
            for (int c = 0; c < inPixel; ++c) {
              PutSample(t, data, static_cast<std::size_t>((y * block + x) * inPixel + c),
                        Stored(t, left + x, top + y, t.planar ? plane : c));
            }
          }
        }
        const auto sample = static_cast<std::uint16_t>(plane);
        if (t.tiled) {
          TIFFWriteTile(tiff, data.data(), static_cast<std::uint32_t>(left),
                        static_cast<std::uint32_t>(top), 0, sample);
        } else {
          TIFFWriteScanline(tiff, data.data(), static_cast<std::uint32_t>(top), sample);
        }
      }
    }
  }
  TIFFClose(tiff);
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What the pattern looks like, channel by channel, 0 to 255.
std::array<double, 4> Expected(const Tiff& t, int x, int y) {
  std::array<double, 4> rgba = {0, 0, 0, 255};
  const double black = 1 - Level(x, y, 3);
  for (int c = 0; c < 3; ++c) {
    const double level = Level(x, y, t.samples < 3 ? 0 : c);
    double v = level;
    if (t.photometric == PHOTOMETRIC_MINISWHITE) v = 1 - level;
    if (t.photometric == PHOTOMETRIC_SEPARATED) v = (1 - level) * black;
    if (t.bits < 8) v = std::round(v * ((1 << t.bits) - 1)) / ((1 << t.bits) - 1);
    if (t.photometric == PHOTOMETRIC_PALETTE) {
      v = (int(Stored(t, x, y, 0)) * 40 + c * 9000) / 256 / 255.0;
    }
    rgba[static_cast<std::size_t>(c)] = v * 255;
  }
  if (t.extra == EXTRASAMPLE_UNASSALPHA) rgba[3] = Level(x, y, t.samples == 2 ? 1 : 3) * 255;
  return rgba;
}

TEST(TiffCodec, EveryLayoutGivesItsPixels) {
  constexpr auto kGray = PHOTOMETRIC_MINISBLACK, kRgb = PHOTOMETRIC_RGB;
  const Tiff tiffs[] = {
      {"gray", 8, 1, kGray, COMPRESSION_NONE, {.expected = QImage::Format_Grayscale8}},
      {"gray, white is zero, LZW", 8, 1, PHOTOMETRIC_MINISWHITE, COMPRESSION_LZW},
      {"fax", 1, 1, PHOTOMETRIC_MINISWHITE, COMPRESSION_CCITTFAX4},
      {"4 bits, tiles", 4, 1, kGray, COMPRESSION_PACKBITS, {.tiled = true}},
      {"2 bits, planes", 2, 3, kRgb, COMPRESSION_NONE, {.planar = true}},
      {"palette", 8, 1, PHOTOMETRIC_PALETTE, COMPRESSION_NONE, {.expected = QImage::Format_RGB32}},
      {"palette of 16, tiles", 4, 1, PHOTOMETRIC_PALETTE, COMPRESSION_NONE, {.tiled = true}},
      {"RGB, deflate", 8, 3, kRgb, COMPRESSION_ADOBE_DEFLATE, {.expected = QImage::Format_RGB32}},
      {"RGB, planes, LZW", 8, 3, kRgb, COMPRESSION_LZW, {.planar = true}},
      {"RGB, planes in tiles", 8, 3, kRgb, COMPRESSION_NONE, {.planar = true, .tiled = true}},
      {"16 bits, big-endian",
       16,
       3,
       kRgb,
       COMPRESSION_NONE,
       {.mode = "wb", .expected = QImage::Format_RGBX64}},
      {"16 bits gray, BigTIFF",
       16,
       1,
       kGray,
       COMPRESSION_NONE,
       {.mode = "w8", .expected = QImage::Format_Grayscale16}},
      {"16 bits with alpha, tiles",
       16,
       4,
       kRgb,
       COMPRESSION_NONE,
       {.tiled = true, .extra = EXTRASAMPLE_UNASSALPHA, .expected = QImage::Format_RGBA64}},
      {"gray with alpha",
       8,
       2,
       kGray,
       COMPRESSION_NONE,
       {.extra = EXTRASAMPLE_UNASSALPHA, .expected = QImage::Format_ARGB32}},
      {"32 bits", 32, 1, kGray},
      {"signed", 16, 1, kGray, COMPRESSION_NONE, {.format = SAMPLEFORMAT_INT}},
      {"float", 32, 3, kRgb, COMPRESSION_NONE, {.format = SAMPLEFORMAT_IEEEFP}},
      {"CMYK", 8, 4, PHOTOMETRIC_SEPARATED, COMPRESSION_NONE, {.tolerance = 1}},
      {"JPEG", 8, 3, PHOTOMETRIC_YCBCR, COMPRESSION_JPEG, {.tolerance = 16}},
      {"JPEG in tiles",
       8,
       3,
       PHOTOMETRIC_YCBCR,
       COMPRESSION_JPEG,
       {.tiled = true, .tolerance = 30}},
  };
  for (const Tiff& t : tiffs) {
    SCOPED_TRACE(t.name);
    const QByteArray file = Write(t);
    ASSERT_EQ(SniffCodec(Bytes(file), QStringLiteral("nef")), &kTiffCodec);
    const auto facts = kTiffCodec.readFacts(Bytes(file), {});
    ASSERT_TRUE(facts) << qPrintable(facts.Reason());
    EXPECT_EQ(QSize(facts->width, facts->height), QSize(kSide, kSide));
    EXPECT_NEAR(facts->dpiX, 254, 0.01);
    EXPECT_NEAR(facts->dpiY, 127, 0.01);
    EXPECT_EQ(facts->bitsPerSample, t.bits);
    EXPECT_EQ(facts->colorMapCount, t.photometric == PHOTOMETRIC_PALETTE ? 1 << t.bits : 0);
    const auto picture = kTiffCodec.load(Bytes(file), {});
    ASSERT_TRUE(picture) << qPrintable(picture.Reason());
    EXPECT_TRUE(t.expected == QImage::Format_Invalid || t.expected == picture->format());
    int wrong = 0;
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        const QColor colour = picture->pixelColor(x, y);
        const double got[] = {colour.redF() * 255, colour.greenF() * 255, colour.blueF() * 255,
                              colour.alphaF() * 255};
        const auto expected = Expected(t, x, y);
        for (std::size_t c = 0; c < 4; ++c)
          wrong += std::abs(got[c] - expected[c]) > t.tolerance + 1;
      }
    }
    EXPECT_EQ(wrong, 0);
    const auto small = kTiffCodec.load(Bytes(file), {.box = {10, 10}});
    ASSERT_TRUE(small);
    EXPECT_GE(small->width(), 10);
    EXPECT_LE(small->depth(), 32) << "8 bits a sample are enough for a box";
  }
}

TEST(TiffCodec, AnUndeclaredEmptyAlphaHidesNothing) {
  QByteArray file =
      Write({"", 8, 4, PHOTOMETRIC_RGB, COMPRESSION_NONE, {.extra = EXTRASAMPLE_UNSPECIFIED}});
  QByteArray pixels = file.mid(8, kSide * kSide * 4);
  for (qsizetype i = 3; i < pixels.size(); i += 4)
    pixels[i] = 0;
  file.replace(8, pixels.size(), pixels);
  const auto picture = kTiffCodec.load(Bytes(file), {.box = {10, 10}});
  ASSERT_TRUE(picture);
  EXPECT_FALSE(picture->hasAlphaChannel());
  EXPECT_GT(qRed(picture->pixel(picture->width() - 2, 5)), 180);
}

TEST(PngCodec, EveryKindGivesItsPixelsDensityAndIptc) {
  for (const QImage::Format format :
       {QImage::Format_Mono, QImage::Format_Indexed8, QImage::Format_Grayscale8,
        QImage::Format_Grayscale16, QImage::Format_RGB32, QImage::Format_ARGB32,
        QImage::Format_RGBX64, QImage::Format_RGBA64}) {
    QImage drawn(kSide, kSide, QImage::Format_RGBA64);
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        drawn.setPixelColor(x, y,
                            QColor::fromRgbF(float(Level(x, y, 0)), float(Level(x, y, 1)), 0.5F,
                                             float(0.2 + 0.8 * Level(x, y, 2))));
      }
    }
    drawn = drawn.convertToFormat(format);
    drawn.setDotsPerMeterX(3937);
    drawn.setDotsPerMeterY(7874);
    drawn.setText(QStringLiteral("Raw profile type iptc"),
                  QStringLiteral("\niptc\n       6\n1c02500001\n41\n"));
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    drawn.save(&buffer, "PNG");
    const QByteArray file = buffer.data();
    const auto facts = kPngCodec.readFacts(Bytes(file), {});
    ASSERT_TRUE(facts);
    EXPECT_NEAR(facts->dpiX, 100, 0.01);
    EXPECT_NEAR(facts->dpiY, 200, 0.01);
    EXPECT_EQ(facts->iptc, QByteArray("\x1C\x02\x50\x00\x01\x41", 6));
    const auto picture = kPngCodec.load(Bytes(file), {});
    ASSERT_TRUE(picture);
    const QImage::Format wide = QImage::Format_RGBA64;
    EXPECT_EQ(picture->convertToFormat(wide), drawn.convertToFormat(wide)) << format;
    const qsizetype data = file.indexOf("IDAT");
    const auto part = kPngCodec.load(Bytes(file.left(data + (file.size() - data) / 2)), {});
    ASSERT_TRUE(part) << "rows that came are kept";
    EXPECT_EQ(part->pixel(5, 0), picture->pixel(5, 0));
  }
}

struct GifFrame {
  int screenWidth, screenHeight, left, top, width, height;
  bool interlaced;
  int transparent;
};

QByteArray WriteGif(const GifFrame& f) {
  QByteArray out;
  const auto write = [](GifFileType* gif, const GifByteType* bytes, int count) {
    static_cast<QByteArray*>(gif->UserData)->append(reinterpret_cast<const char*>(bytes), count);
    return count;
  };
  GifFileType* gif = EGifOpen(&out, write, nullptr);
  ColorMapObject* map = GifMakeMapObject(64, nullptr);
  for (int i = 0; i < 64; ++i)
    map->Colors[i] = {static_cast<GifByteType>(i * 4), 7, 9};
  EGifSetGifVersion(gif, true);
  EGifPutScreenDesc(gif, f.screenWidth, f.screenHeight, 6, 0, nullptr);
  const GraphicsControlBlock control = {0, false, 0, f.transparent};
  GifByteType block[4];
  EGifGCBToExtension(&control, block);
  EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, 4, block);
  EGifPutImageDesc(gif, f.left, f.top, f.width, f.height, f.interlaced, map);
  const auto putRow = [&](int y) {
    std::vector<GifPixelType> row(static_cast<std::size_t>(f.width), static_cast<GifPixelType>(y));
    EGifPutLine(gif, row.data(), f.width);
  };
  if (f.interlaced) {
    for (const auto& [first, step] : {std::pair(0, 8), {4, 8}, {2, 4}, {1, 2}}) {
      for (int y = first; y < f.height; y += step)
        putRow(y);
    }
  } else {
    for (int y = 0; y < f.height; ++y)
      putRow(y);
  }
  GifFreeMapObject(map);
  EGifCloseFile(gif, nullptr);
  return out;
}

TEST(GifCodec, TheFrameStandsOnItsScreen) {
  const GifFrame frames[] = {{20, 30, 0, 0, 20, 30, false, -1},
                             {20, 30, 0, 0, 20, 30, true, -1},
                             {20, 30, 5, 6, 10, 12, true, 3},
                             {20, 30, 15, 25, 40, 40, false, 2},    // reaches beyond the screen
                             {20, 30, 50, 60, 10, 10, false, -1}};  // lies beyond it
  for (const GifFrame& f : frames) {
    const auto picture = kGifCodec.load(Bytes(WriteGif(f)), {});
    ASSERT_TRUE(picture);
    ASSERT_EQ(picture->size(), QSize(f.screenWidth, f.screenHeight));
    for (int y = 0; y < f.screenHeight; ++y) {
      for (int x = 0; x < f.screenWidth; ++x) {
        const bool inside = QRect(f.left, f.top, f.width, f.height).contains(x, y);
        const int index = inside ? y - f.top : f.transparent;
        const QRgb expected = !inside || index == f.transparent ? 0 : qRgb(index * 4, 7, 9);
        ASSERT_EQ(picture->pixel(x, y), expected) << x << "," << y;
      }
    }
  }
  QByteArray bomb = WriteGif(frames[0]).replace(6, 4, "\xFF\xFF\xFF\xFF");
  EXPECT_EQ(kGifCodec.readFacts(Bytes(bomb), {})->width, 65535);
  EXPECT_FALSE(kGifCodec.load(Bytes(bomb), {}));
}

}  // namespace
}  // namespace zqm
