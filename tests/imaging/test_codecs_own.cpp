// SPDX-License-Identifier: GPL-3.0-or-later
#include <QRandomGenerator>

#include "imaging/codecs/codecs.h"
#include "tests/support/photos.h"

namespace zqm {
namespace {

using namespace Qt::StringLiterals;

constexpr int kWidth = 13, kHeight = 6;

/// A file under construction.
class Out {
 public:
  Out& Le(std::initializer_list<std::int64_t> values, int size) { return Put(values, size, false); }
  Out& Be(std::initializer_list<std::int64_t> values, int size) { return Put(values, size, true); }
  Out& Raw(const QByteArray& more) {
    bytes.append(more);
    return *this;
  }
  QByteArray bytes;

 private:
  Out& Put(std::initializer_list<std::int64_t> values, int size, bool big) {
    for (const std::int64_t value : values) {
      for (int i = 0; i < size; ++i)
        bytes.append(char(value >> 8 * (big ? size - 1 - i : i)));
    }
    return *this;
  }
};

/// What the sample files show: true colours, grays, indices and where they are transparent.
QRgb ColourAt(int x, int y) {
  return qRgb(x * 20, y * 50, 255 - x * 15);
}
int IndexAt(int x, int y, int count) {
  return (x * 3 + y * 5 + x * y) % count;
}
QRgb PaletteColour(int index) {
  return qRgb(index * 37 % 256, 255 - index, index * 91 % 256);
}
int AlphaAt(int x, int y) {
  return (x * 19 + y * 7) % 256;
}

/// Indices of a row in 1 to 8 bits each.
QByteArray PackedRow(int y, int bits, int count, int shift = 0) {
  QByteArray row((kWidth * bits + 7) / 8, 0);
  for (int x = 0; x < kWidth; ++x) {
    const int sample = (IndexAt(x, y, count) >> shift) & ((1 << bits) - 1);
    row[x * bits / 8] = char(row[x * bits / 8] | sample << (8 - bits - x * bits % 8));
  }
  return row;
}

using Expected = std::function<QRgb(int, int)>;

QRgb Opaque(int x, int y) {
  return ColourAt(x, y);
}
QRgb WithAlpha(int x, int y) {
  return (ColourAt(x, y) & 0xFFFFFF) | QRgb(AlphaAt(x, y)) << 24;
}
Expected Indexed(int count) {
  return [=](int x, int y) { return PaletteColour(IndexAt(x, y, count)); };
}
Expected Bilevel(int white) {
  return [=](int x, int y) { return IndexAt(x, y, 2) == white ? 0xFFFFFFFF : 0xFF000000; };
}
QRgb AsGray(int x, int y) {
  const int g = qBlue(ColourAt(x, y));
  return qRgb(g, g, g);
}

/// Colours count as much as they show.
int Distance(QRgb a, QRgb b) {
  const int colours = std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                std::abs(qBlue(a) - qBlue(b))});
  return std::max(colours * qAlpha(b) / 255, std::abs(qAlpha(a) - qAlpha(b)));
}

QImage::Format FormatOf(bool gray, bool alpha, bool deep = false) {
  if (gray) return deep ? QImage::Format_Grayscale16 : QImage::Format_Grayscale8;
  if (alpha) return deep ? QImage::Format_RGBA64 : QImage::Format_ARGB32;
  return deep ? QImage::Format_RGBX64 : QImage::Format_RGB32;
}

/// Calls `packet(begin, end, same)` for runs of equal units, and for up to `plain` units between.
template <class Units, class Packet>
void ForEachRun(const Units& units, qsizetype most, qsizetype plain, const Packet& packet) {
  const auto size = std::ssize(units);
  for (qsizetype begin = 0, end; begin < size; begin = end) {
    for (end = begin + 1; end < size && end - begin < most && units[end] == units[begin];)
      ++end;
    const bool same = end - begin > 1;
    if (!same) end = std::min(begin + plain, size);
    packet(begin, end, same);
  }
}

QImage LoadAs(const Codec& codec, const QByteArray& file, const LoadOptions& options = {}) {
  EXPECT_EQ(SniffCodec(Bytes(file), options.extension), &codec);
  auto picture = codec.load(Bytes(file), options);
  EXPECT_TRUE(picture) << qPrintable(picture.Reason());
  return picture ? *picture : QImage();
}

void ExpectPicture(const Codec& codec, const QByteArray& file, const Expected& expected,
                   int tolerance = 0, QImage::Format format = QImage::Format_RGB32) {
  const QImage picture = LoadAs(codec, file);
  ASSERT_EQ(picture.size(), QSize(kWidth, kHeight));
  EXPECT_EQ(picture.format(), format);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const QRgb found = picture.pixelColor(x, y).rgba();
      ASSERT_LE(Distance(found, expected(x, y)), tolerance)
          << x << ' ' << y << std::hex << ' ' << found << ' ' << expected(x, y);
    }
  }
}

// BMP

struct Bmp {
  const char* name;
  int header, bits, compression = 0;
  std::array<std::uint32_t, 4> masks = {0xFF0000, 0xFF00, 0xFF, 0};
  bool topDown = false, alpha = false;
  int tolerance = 0;
};

std::uint32_t Masked(std::uint32_t mask, int value) {
  if (mask == 0) return 0;
  const int low = std::countr_zero(mask), bits = std::bit_width(mask >> low);
  return (std::uint32_t(value) << 24 >> (32 - bits) << low) & mask;
}

QByteArray MakeBmp(const Bmp& b) {
  Out out;
  const int entry = b.header == 12 ? 3 : 4, colours = b.bits <= 8 ? 1 << b.bits : 0;
  const int masks = b.compression == 0 || b.header > 40 ? 0 : b.compression == 6 ? 4 : 3;
  out.Raw("BM").Le({0, 0, 14 + b.header + masks * 4 + colours * entry, b.header}, 4);
  if (b.header == 12) {
    out.Le({kWidth, kHeight, 1, b.bits}, 2);
  } else {
    Out header;
    header.Le({kWidth, b.topDown ? -kHeight : kHeight}, 4).Le({1, b.bits}, 2);
    header.Le({b.compression, 0, 11811, 5906, 0, 0}, 4);
    if (b.header > 40) header.Le({b.masks[0], b.masks[1], b.masks[2], b.masks[3]}, 4);
    out.Raw(header.bytes.leftJustified(b.header - 4, '\0', true));
  }
  for (int i = 0; i < masks; ++i)
    out.Le({b.masks[std::size_t(i)]}, 4);
  for (int i = 0; i < colours; ++i) {
    const QRgb c = PaletteColour(i);
    out.Le({qBlue(c), qGreen(c), qRed(c)}, 1).Raw(QByteArray(entry - 3, '\0'));
  }
  for (int line = 0; line < kHeight; ++line) {
    const int y = b.topDown ? line : kHeight - 1 - line;
    Out row;
    if (b.bits <= 8) row.Raw(PackedRow(y, b.bits, colours));
    for (int x = 0; b.bits > 8 && x < kWidth; ++x) {
      const QRgb c = ColourAt(x, y);
      const std::uint32_t alpha = b.alpha ? Masked(b.masks[3], AlphaAt(x, y)) : 0;
      row.Le({Masked(b.masks[0], qRed(c)) | Masked(b.masks[1], qGreen(c)) |
              Masked(b.masks[2], qBlue(c)) | alpha},
             b.bits / 8);
    }
    while (row.bytes.size() % 4)
      row.bytes.append('\xEE');
    out.Raw(row.bytes);
  }
  return out.bytes;
}

TEST(BmpCodec, DepthsHeadersAndMasks) {
  const std::array<std::uint32_t, 4> m555 = {0x7C00, 0x3E0, 0x1F, 0}, m565 = {0xF800, 0x7E0, 31, 0};
  const std::array<std::uint32_t, 4> argb = {0xFF0000, 0xFF00, 0xFF, 0xFF000000};
  const std::array<std::uint32_t, 4> odd = {0x3FF00000, 0xFF00, 0xFF, 0};
  const Bmp cases[] = {
      {"1 bit", 40, 1},
      {"2 bits", 40, 2},
      {"4 bits, OS/2", 12, 4},
      {"8 bits", 40, 8},
      {"8 bits, OS/2", 12, 8},
      {"8 bits, OS/2 second, short", 16, 8},
      {"8 bits, OS/2 second", 64, 8},
      {"8 bits, top down", 40, 8, 0, {}, true},
      {"16 bits", 40, 16, 0, m555, false, false, 7},
      {"16 bits, masks", 40, 16, 3, m565, false, false, 7},
      {"24 bits", 40, 24},
      {"24 bits, OS/2", 12, 24},
      {"32 bits", 40, 32},
      {"32 bits, unused byte filled", 40, 32, 0, argb, false, true},
      {"32 bits, masks in V5", 124, 32, 3, argb, true, true},
      {"32 bits, masks in V3", 56, 32, 3, argb, false, true},
      {"32 bits, alpha masks behind", 40, 32, 6, argb, false, true},
      {"32 bits, alpha announced but empty", 108, 32, 3, argb, false, false},
      {"32 bits, ten bits of red", 52, 32, 3, odd},
  };
  for (const Bmp& b : cases) {
    SCOPED_TRACE(b.name);
    const QByteArray file = MakeBmp(b);
    const bool alpha = b.alpha && b.compression != 0;
    ExpectPicture(kBmpCodec, file,
                  b.bits <= 8 ? Indexed(1 << b.bits)
                  : alpha     ? WithAlpha
                              : Opaque,
                  b.tolerance, FormatOf(false, alpha));
    const auto facts = kBmpCodec.readFacts(Bytes(file), {});
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->colorMapCount, b.bits <= 8 ? 1 << b.bits : 0);
    EXPECT_NEAR(facts->dpiX, b.header >= 40 ? 300 : 0, 0.01);
    EXPECT_NEAR(facts->dpiY, b.header >= 40 ? 150 : 0, 0.02);
    QByteArray unplaced = file;  // some writers don't say where the pixels start
    unplaced.replace(10, 4, QByteArray(4, '\0'));
    EXPECT_EQ(LoadAs(kBmpCodec, unplaced), LoadAs(kBmpCodec, file));
  }
}

TEST(BmpCodec, RunsJumpsAndEarlyEnds) {
  // Rows from the top; a digit is a palette index, "." black since no row came.
  const struct {
    const char* name;
    int compression, bits;
    QByteArray data;
    const char* rows;
  } cases[] = {
      {"runs and plain pixels", 1, 8, "04010000 0004 01020301 0000 0203020200 01",
       "3322 1231 1111"},
      {"odd plain run is padded", 1, 8, "0003 01020300 0101 0000 0001", "0000 0000 1231"},
      {"jump within and across rows", 1, 8, "0101 00020201 0102 0001", "0000 0002 1000"},
      {"run beyond the row is cut", 1, 8, "ff02 0000 0103 0001", "0000 3000 2222"},
      {"jump beyond the picture", 1, 8, "0403 0002ffff 0401 0001", "0000 0000 3333"},
      {"end of data after a row", 1, 8, "0402 0000 0201", ".... .... 2222"},
      {"nibbles", 2, 4, "0412 0000 0004 1230 0000 0332 01 20 0001", "3232 1230 1212"},
      {"three bytes a pixel", 4, 24, "04 010000 0000 0003 010000 020000 030000 ff 0001",
       "0000 1230 1111"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Out out;
    const int header = c.bits == 24 ? 64 : 40, entries = c.bits == 24 ? 0 : 4;
    out.Raw("BM").Le({0, 0, 14 + header + entries * 4, header, 4, 3}, 4).Le({1, c.bits}, 2);
    out.Le({c.compression, 0, 0, 0, entries, 0}, 4).Raw(QByteArray(header - 40, '\0'));
    for (int i = 0; i < entries; ++i)
      out.Le({i, i, i, 0}, 1);
    const QImage picture = LoadAs(kBmpCodec, out.Raw(QByteArray::fromHex(c.data)).bytes);
    QByteArray rows;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x)
        rows.append(char('0' + qBlue(picture.pixel(x, y))));
      rows.append(' ');
    }
    EXPECT_EQ(rows.trimmed(), QByteArray(c.rows).replace('.', '0'));
  }
}

// PCX

struct Pcx {
  int bits, planes;
  bool palette = true, runs = true, alpha = false;
};

QByteArray MakePcx(const Pcx& p) {
  Out lines;
  const int lineBytes = (kWidth * p.bits + 15) / 16 * 2,
            count = 1 << std::min(8, p.bits * p.planes);
  for (int y = 0; y < kHeight; ++y) {
    for (int plane = 0; plane < p.planes; ++plane) {
      QByteArray line = PackedRow(y, p.bits, count, p.bits * plane);
      for (int x = 0; p.bits == 8 && x < kWidth; ++x) {
        const QRgb c = ColourAt(x, y);
        const int samples[] = {qRed(c), qGreen(c), qBlue(c), p.alpha ? AlphaAt(x, y) : 0};
        if (p.planes >= 3) line[x] = char(samples[plane]);
        if (!p.palette && p.planes == 1) line[x] = char(qBlue(c));
      }
      lines.Raw(line.leftJustified(lineBytes, '\0'));
    }
  }
  QByteArray data;
  ForEachRun(lines.bytes, p.runs ? 63 : 1, 1, [&](qsizetype begin, qsizetype end, bool same) {
    const bool marked = p.runs && (same || uchar(lines.bytes[begin]) >= 0xC0);
    if (marked) data.append(char(0xC0 | (end - begin)));
    data.append(lines.bytes[begin]);
  });
  Out out;
  out.Le({10, 5, p.runs, p.bits}, 1).Le({7, 9, 7 + kWidth - 1, 9 + kHeight - 1, 300, 150}, 2);
  Out colours;
  for (int i = 0; i < 256; ++i) {
    const QRgb c = PaletteColour(i);
    colours.Le({qRed(c), qGreen(c), qBlue(c)}, 1);
  }
  out.Raw(colours.bytes.left(48)).Le({0, p.planes}, 1).Le({lineBytes, 1}, 2);
  out.Raw(QByteArray(58, '\0')).Raw(data);
  if (p.bits == 8 && p.planes == 1 && p.palette) out.Raw("\x0C").Raw(colours.bytes);
  return out.bytes;
}

TEST(PcxCodec, BitsAndPlanes) {
  // clang-format off
  const Pcx cases[] = {{1, 1}, {1, 2}, {1, 3}, {1, 4}, {2, 1}, {4, 1}, {8, 1}, {8, 1, false},
                       {8, 3}, {8, 3, true, false}, {8, 4}, {8, 4, true, true, true}};
  // clang-format on
  for (const Pcx& p : cases) {
    SCOPED_TRACE(testing::Message() << p.bits << " bits, " << p.planes << " planes");
    const QByteArray file = MakePcx(p);
    const bool gray = p.bits == 8 && !p.palette;
    Expected expected = Indexed(1 << std::min(8, p.bits * p.planes));
    if (p.bits * p.planes == 1) expected = Bilevel(1);
    if (gray) expected = AsGray;
    if (p.planes >= 3 && p.bits == 8) expected = p.alpha ? WithAlpha : Opaque;
    ExpectPicture(kPcxCodec, file, expected, 0, FormatOf(gray, p.alpha));
    const auto facts = kPcxCodec.readFacts(Bytes(file), {});
    EXPECT_EQ(QPointF(facts->dpiX, facts->dpiY), QPointF(300, 150));
  }
  // A window that claims more than its lines hold.
  QByteArray file = MakePcx({8, 3});
  file[9] = 0x10;
  EXPECT_EQ(LoadAs(kPcxCodec, file).width(), 14);
}

TEST(PcxCodec, ColoursOfOldGraphicsCards) {
  const struct {
    int version, background, choice, green;
    QRgb first, second;
  } cases[] = {{3, 0x10, 0x00, 0, qRgb(0, 0, 0xAA), qRgb(0, 0xAA, 0)},
               {3, 0x00, 0x60, 0, qRgb(0, 0, 0), qRgb(0x55, 0xFF, 0xFF)},
               {5, 0x3E, 0xF0, 0, qRgb(0, 0xAA, 0xAA), qRgb(0, 0xAA, 0xAA)},
               {5, 0x00, 0xF0, 255, qRgb(0, 0, 0), qRgb(0x55, 0xFF, 0x55)}};
  for (const auto& c : cases) {
    QByteArray file = MakePcx({2, 1});
    file[1] = char(c.version);
    file.replace(16, 48, QByteArray(48, '\0'));
    file[16] = char(c.background), file[19] = char(c.choice), file[20] = char(c.green);
    const QImage picture = LoadAs(kPcxCodec, file);
    EXPECT_EQ(picture.pixel(0, 0), c.first);
    EXPECT_EQ(picture.pixel(0, 1), c.second);
  }
}

// TGA

struct Tga {
  int type, bits, alphaBits = 0, mapBits = 0;
  int origin = 0;  // 1 right to left, 2 from the top
  bool fillAlpha = true;
  int tolerance = 0;
};

QByteArray TgaPixel(QRgb c, int alpha, int bits) {
  if (bits > 16) return Out().Le({qBlue(c), qGreen(c), qRed(c), alpha}, 1).bytes.left(bits / 8);
  return Out()
      .Le({qRed(c) >> 3 << 10 | qGreen(c) >> 3 << 5 | qBlue(c) >> 3 | alpha >> 7 << 15}, 2)
      .bytes;
}

QByteArray MakeTga(const Tga& t) {
  const bool mapped = t.mapBits > 0, runs = t.type & 8;
  Out out;
  out.Le({4, mapped, t.type}, 1).Le({mapped ? 3 : 0, mapped ? 16 : 0}, 2).Le({t.mapBits}, 1);
  out.Le({0, 0, kWidth, kHeight}, 2).Le({t.bits, t.origin << 4 | t.alphaBits}, 1).Raw("text");
  for (int i = 0; mapped && i < 16; ++i)
    out.Raw(TgaPixel(PaletteColour(i), 255, t.mapBits));
  QList<QByteArray> pixels;
  for (int line = 0; line < kHeight; ++line) {
    for (int column = 0; column < kWidth; ++column) {
      const int x = t.origin & 1 ? kWidth - 1 - column : column;
      const int y = t.origin & 2 ? line : kHeight - 1 - line;
      const int alpha = t.fillAlpha ? AlphaAt(x, y) : 0;
      const int type = t.type & 7;
      pixels.push_back(type == 1 ? Out().Le({IndexAt(x, y, 16) + 3}, t.bits / 8).bytes
                       : type == 2
                           ? TgaPixel(ColourAt(x, y), alpha, t.bits)
                           : Out().Le({qBlue(ColourAt(x, y)), alpha}, 1).bytes.left(t.bits / 8));
    }
  }
  ForEachRun(pixels, runs ? 128 : 1, 5, [&](qsizetype begin, qsizetype end, bool same) {
    if (runs) out.Le({(same ? 0x80 : 0) | int(end - begin - 1)}, 1);
    for (qsizetype i = begin; i < (same ? begin + 1 : end); ++i)
      out.Raw(pixels[i]);
  });
  return out.bytes;
}

TEST(TgaCodec, TypesDepthsAndOrigins) {
  // clang-format off
  const Tga cases[] = {
      {1, 8, 0, 24}, {9, 8, 0, 32}, {1, 16, 0, 24}, {1, 8, 0, 16, 0, true, 7},
      {2, 24}, {10, 24, 0, 0, 2}, {2, 24, 0, 0, 1}, {10, 24, 0, 0, 3}, {2, 24, 0, 16},
      {2, 32, 8}, {10, 32, 0}, {2, 32, 8, 0, 0, false},
      {2, 15, 0, 0, 0, true, 7}, {10, 16, 0, 0, 0, true, 7},
      {3, 8}, {11, 8, 0, 0, 3}, {11, 16, 8}};
  // clang-format on
  for (const Tga& t : cases) {
    SCOPED_TRACE(testing::Message() << "type " << t.type << ", " << t.bits << " bits, origin "
                                    << t.origin << ", alpha " << t.alphaBits);
    const int type = t.type & 7;
    const bool gray = type == 3 && t.bits == 8;
    const bool alpha = t.fillAlpha && (t.bits == 32 || (type == 3 && t.bits == 16));
    const Expected colour = type == 1 ? Indexed(16) : type == 3 ? AsGray : Opaque;
    ExpectPicture(
        kTgaCodec, MakeTga(t),
        [&](int x, int y) {
          return (colour(x, y) & 0xFFFFFF) | QRgb(alpha ? AlphaAt(x, y) : 255) << 24;
        },
        t.tolerance, FormatOf(gray, alpha));
  }
  ExpectPicture(
      kTgaCodec, MakeTga({2, 16, 1}),
      [](int x, int y) {
        return (ColourAt(x, y) & 0xFFFFFF) | (AlphaAt(x, y) >= 128 ? 0xFF000000 : 0);
      },
      7, QImage::Format_ARGB32);
}

TEST(TgaCodec, RunsGoOnIntoTheNextRow) {
  QByteArray file = MakeTga({11, 8}).left(22);
  file.append(char(0x80 | 19)).append('\x55').append(char(0x80 | (kWidth * kHeight - 21)));
  const QImage picture = LoadAs(kTgaCodec, file.append('\x77'));
  for (const int i : {0, 12, 13, 19, 20, 77}) {  // counted from the lower left
    EXPECT_EQ(qGray(picture.pixel(i % kWidth, kHeight - 1 - i / kWidth)), i < 20 ? 0x55 : 0x77);
  }
}

TEST(TgaCodec, OnlyItsOwnFilesAreClaimed) {
  const auto claims = [](const QByteArray& file, const QString& extension = {}) {
    return kTgaCodec.sniff(Bytes(file), extension);
  };
  const QByteArray good = MakeTga({10, 24}), cut = good.chopped(8);
  EXPECT_TRUE(claims(good) && claims(cut, u"tga"_s));
  EXPECT_FALSE(claims(cut)) << "a part without a footer could be anything";
  EXPECT_TRUE(claims(cut + QByteArray(8, '\0') + QByteArray("TRUEVISION-XFILE.", 18)));
  const struct {
    int at;
    char value;
  } wrong[] = {{1, 2}, {2, 0}, {2, 4}, {2, 12}, {2, 9}, {12, 0}, {16, 17}, {16, 0}, {17, '\x80'}};
  for (const auto& w : wrong) {
    QByteArray file = good;
    file[w.at] = w.value;
    EXPECT_FALSE(claims(file, u"tga"_s)) << w.at << ' ' << int(w.value);
  }
  QRandomGenerator random(7);
  for (int i = 0; i < 20'000; ++i) {
    std::array<quint32, 64> words;
    random.fillRange(words.data(), std::ssize(words));
    // Bytes that pass more often than chance would have it.
    QByteArray file(reinterpret_cast<const char*>(words.data()), sizeof words);
    file[1] = char(i % 2), file[2] = char(i % 4);
    EXPECT_FALSE(claims(file)) << file.left(18).toHex().constData();
  }
}

// PSD

constexpr char kIptc[] = "1c02780003616263";

struct Psd {
  const char* name;
  int mode, depth, channels;
  bool packed = false, large = false;
  int layers = 0;  // their number as stored; below zero the first extra channel is transparency
  int tolerance = 0;
};

/// One sample of eight bits, as if on white where the picture has transparency.
int PsdSample(const Psd& p, int x, int y, int channel) {
  const QRgb c = ColourAt(x, y);
  const int rgb[] = {qRed(c), qGreen(c), qBlue(c), AlphaAt(x, y)};
  if (p.mode == 2) return IndexAt(x, y, 256);
  if (p.mode == 4) return channel > 2 ? 255 : rgb[channel];
  if (p.mode != 3) return qBlue(c);
  if (p.layers >= 0 || channel > 2) return rgb[std::min(channel, 3)];
  return qRound(255 - (255 - rgb[channel]) * AlphaAt(x, y) / 255.0);
}

QByteArray Resource(int number, const QByteArray& data) {
  Out out;
  out.Raw("8BIM").Be({number}, 2).Be({1, 'n'}, 1).Be({data.size()}, 4).Raw(data);
  return data.size() % 2 ? out.bytes + '\0' : out.bytes;
}

QByteArray MakePsd(const Psd& p) {
  const int word = p.large ? 8 : 4;
  Out out;
  out.Raw("8BPS").Be({p.large ? 2 : 1, 0, 0, 0, p.channels}, 2).Be({kHeight, kWidth}, 4);
  out.Be({p.depth, p.mode}, 2);
  Out colours;
  for (int c = 0; p.mode == 2 && c < 3; ++c) {
    for (int i = 0; i < 256; ++i)
      colours.Be({PaletteColour(i) >> (16 - 8 * c)}, 1);
  }
  Out density;
  density.Be({300 << 16}, 4).Be({2, 2}, 2).Be({150 << 16}, 4).Be({2, 2}, 2);
  const QByteArray resources = Resource(0x0404, QByteArray::fromHex(kIptc)) +
                               Resource(0x0409, "odd") + Resource(0x03ED, density.bytes);
  out.Be({colours.bytes.size()}, 4).Raw(colours.bytes).Be({resources.size()}, 4).Raw(resources);
  Out layers;
  if (p.layers != 0 && p.depth == 16) {
    layers.Be({0}, word).Be({0}, 4).Raw("8BIMLMsk").Be({3}, 4).Raw("abcd");
    layers.Raw("8BIMLr16").Be({2}, word).Be({p.layers}, 2);
  } else if (p.layers != 0) {
    layers.Be({2}, word).Be({p.layers}, 2);
  }
  out.Be({layers.bytes.size()}, word).Raw(layers.bytes).Be({p.packed}, 2);
  Out lengths, data;
  for (int channel = 0; channel < p.channels; ++channel) {
    for (int y = 0; y < kHeight; ++y) {
      Out row;
      if (p.depth == 1) row.Raw(PackedRow(y, 1, 2));
      for (int x = 0; p.depth > 1 && x < kWidth; ++x)
        row.Be({PsdSample(p, x, y, channel) * (p.depth == 16 ? 257 : 1)}, p.depth / 8);
      Out runs;
      ForEachRun(row.bytes, 128, 3, [&](qsizetype begin, qsizetype end, bool same) {
        runs.Be({-128, same ? 1 - (end - begin) : end - begin - 1}, 1);
        runs.Raw(row.bytes.mid(begin, same ? 1 : end - begin));
      });
      lengths.Be({runs.bytes.size()}, p.large ? 4 : 2);
      data.Raw(p.packed ? runs.bytes : row.bytes);
    }
  }
  return (p.packed ? out.Raw(lengths.bytes) : out).Raw(data.bytes).bytes;
}

TEST(PsdCodec, ModesDepthsAndPacking) {
  const Psd cases[] = {{"bitmap", 0, 1, 1},
                       {"bitmap, packed", 0, 1, 1, true},
                       {"gray", 1, 8, 1},
                       {"gray, 16 bits", 1, 16, 2, true},
                       {"duotone", 8, 8, 1},
                       {"indexed", 2, 8, 1, true},
                       {"colours", 3, 8, 3, true},
                       {"colours, 16 bits, large form", 3, 16, 3, true, true},
                       {"a mask isn't transparency", 3, 8, 4, false, false, 2},
                       {"a mask without layers", 3, 8, 5, true},
                       {"transparency", 3, 8, 4, true, false, -1, 1},
                       {"transparency, 16 bits", 3, 16, 4, true, false, -2, 1},
                       {"transparency, large form", 3, 16, 5, true, true, -1, 1},
                       {"inks", 4, 8, 4, true},
                       {"inks, 16 bits", 4, 16, 5}};
  for (const Psd& p : cases) {
    SCOPED_TRACE(p.name);
    const QByteArray file = MakePsd(p);
    const bool alpha = p.layers < 0, deep = p.depth == 16 && p.mode != 4;
    Expected expected = p.mode == 2 ? Indexed(256) : p.mode >= 3 && p.mode <= 4 ? Opaque : AsGray;
    if (alpha) expected = WithAlpha;
    if (p.depth == 1) expected = Bilevel(0);
    const bool gray = p.mode <= 1 || p.mode == 8;
    ExpectPicture(kPsdCodec, file, expected, p.tolerance, FormatOf(gray, alpha, deep));
    const auto facts = kPsdCodec.readFacts(Bytes(file), {});
    ASSERT_TRUE(facts);
    EXPECT_EQ(QPointF(facts->dpiX, facts->dpiY), QPointF(300, 150));
    EXPECT_EQ(facts->iptc, QByteArray::fromHex(kIptc));
    EXPECT_EQ(facts->bitsPerSample, p.depth);
  }
}

TEST(PsdCodec, LabColours) {
  const struct {
    double l, a, b;
    QRgb colour;
  } cases[] = {{100, 0, 0, qRgb(255, 255, 255)},        {0, 0, 0, qRgb(0, 0, 0)},
               {53.59, 0, 0, qRgb(128, 128, 128)},      {54.29, 80.81, 69.89, qRgb(255, 0, 0)},
               {87.82, -79.29, 80.99, qRgb(0, 255, 0)}, {29.57, 68.30, -112.03, qRgb(0, 0, 255)}};
  for (const int depth : {8, 16}) {
    for (const auto& c : cases) {
      QByteArray file = MakePsd({"", 9, depth, 3});
      const int bytes = depth / 8, plane = kWidth * kHeight * bytes;
      const int most = depth == 8 ? 255 : 65535, unit = depth == 8 ? 1 : 256;
      file.chop(3 * plane);
      for (const double v : {c.l * most / 100, (c.a + 128) * unit, (c.b + 128) * unit}) {
        for (int i = 0; i < kWidth * kHeight; ++i)
          file.append(Out().Be({qRound(v)}, bytes).bytes);
      }
      // The steps of eight bits are coarse where the transfer curve is steep.
      const QRgb found = LoadAs(kPsdCodec, file).pixel(4, 3);
      EXPECT_LE(Distance(found, c.colour), depth == 8 ? 12 : 2) << std::hex << found << c.colour;
    }
  }
}

TEST(PsdCodec, WhatItCannotShowHasFactsAndAReason) {
  for (const Psd& p : {Psd{"float", 3, 32, 3},
                       {"odd", 1, 1, 1},
                       {"mode", 7, 8, 3},
                       {"mode", 900, 8, 3},
                       {"channels", 3, 8, 2},
                       {"deep index", 2, 16, 1}}) {
    const QByteArray file = MakePsd(p);
    EXPECT_TRUE(kPsdCodec.readFacts(Bytes(file), {})) << p.name;
    EXPECT_FALSE(kPsdCodec.load(Bytes(file), {})) << p.name << ' ' << p.mode;
  }
}

// All four

TEST(OwnCodecs, EveryTruncationIsAReasonOrThePartThatCame) {
  const struct {
    const char* name;
    const Codec& codec;
    QByteArray file;
    bool planes = false;
  } cases[] = {{"BMP", kBmpCodec, MakeBmp({"", 40, 24})},
               {"BMP, V5", kBmpCodec,
                MakeBmp({"", 124, 32, 3, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}, false, true})},
               {"PCX", kPcxCodec, MakePcx({8, 3})},
               {"TGA", kTgaCodec, MakeTga({2, 24})},
               {"TGA, runs", kTgaCodec, MakeTga({9, 8, 0, 24})},
               {"PSD", kPsdCodec, MakePsd({"", 3, 8, 3, true}), true},
               {"PSD, deep", kPsdCodec, MakePsd({"", 3, 16, 4, false, false, -1}), true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const QImage whole = LoadAs(c.codec, c.file);
    int parts = 0;
    for (qsizetype size = 0; size < c.file.size(); ++size) {
      // A copy of its own, so that a read past the end is seen.
      const std::vector<std::uint8_t> part(c.file.begin(), c.file.begin() + size);
      if (!c.codec.sniff(part, u"tga"_s)) continue;
      (void)c.codec.readFacts(part, {});
      const auto picture = c.codec.load(part, {});
      ASSERT_EQ(picture.Reason().isEmpty(), bool(picture));
      if (!picture) continue;
      ++parts;
      // Each row is the whole picture's, or hasn't come.
      ASSERT_EQ(picture->size(), whole.size());
      for (int y = 0; y < kHeight; ++y) {
        const QImage row = picture->copy(0, y, kWidth, 1);
        QImage empty(row.size(), row.format());
        empty.fill(row.hasAlphaChannel() ? Qt::transparent : Qt::black);
        ASSERT_TRUE(row == whole.copy(0, y, kWidth, 1) || row == empty) << size << ' ' << y;
      }
    }
    EXPECT_GT(parts, c.planes ? 0 : 5 * kWidth / 2) << "the first row is enough";
  }
}

TEST(OwnCodecs, SizesBeyondReasonAreRefusedAtOnce) {
  QByteArray bmp = MakeBmp({"", 40, 8}), psd = MakePsd({"", 3, 8, 3, true});
  bmp.replace(18, 8, Out().Le({0x7FFFFFFF, 0x7FFFFFFF}, 4).bytes);
  psd.replace(14, 8, Out().Be({0x7FFFFFFF, 0x7FFFFFFF}, 4).bytes);
  EXPECT_FALSE(kBmpCodec.load(Bytes(bmp), {}));
  EXPECT_FALSE(kPsdCodec.load(Bytes(psd), {}));
  for (const std::int64_t height : {0LL, -0x80000000LL}) {
    bmp.replace(22, 4, Out().Le({height}, 4).bytes);
    EXPECT_EQ(kBmpCodec.readFacts(Bytes(bmp), {}).Reason(), kReasonNoImage);
  }
}

TEST(OwnCodecs, RealFiles) {
  const struct {
    const char* file;
    const Codec& codec;
    QSize size;
    int dpi, map;
    QPoint at;
    QRgb colour;
  } cases[] = {
      {"formats/bmp/pal4rle.bmp", kBmpCodec, {127, 64}, 72, 12, {20, 5}, 0xFFFF8000},
      {"formats/bmp/pal8os2.bmp", kBmpCodec, {127, 64}, 0, 256, {90, 10}, 0xFFFFD5FF},
      {"formats/bmp/pal8topdown.bmp", kBmpCodec, {127, 64}, 72, 252, {20, 5}, 0xFFFFAA99},
      {"formats/bmp/rgb16-565.bmp", kBmpCodec, {127, 64}, 72, 0, {100, 50}, 0xFF6B6D73},
      {"formats/bmp/rgb32bf.bmp", kBmpCodec, {127, 64}, 72, 0, {12, 8}, 0xFFDF6363},
      {"broken/rletopdown.bmp", kBmpCodec, {127, 64}, 72, 252, {100, 6}, 0xFF99AA99},
      {"formats/pcx/CGA_TST1.PCX", kPcxCodec, {320, 200}, 320, 4, {160, 190}, 0xFF00AAAA},
      {"formats/pcx/lena3.pcx", kPcxCodec, {512, 512}, 512, 16, {200, 300}, 0xFFA03F45},
      {"formats/pcx/lena6.pcx", kPcxCodec, {512, 512}, 512, 8, {260, 250}, 0xFFC0447E},
      {"formats/pcx/lena8.pcx", kPcxCodec, {512, 512}, 512, 4, {100, 400}, 0xFF64325A},
      {"formats/pcx/SWPIC2.PCX", kPcxCodec, {640, 400}, 640, 256, {400, 300}, 0xFF181418},
      {"formats/tga/simple_backpack_0.tga", kTgaCodec, {128, 128}, 0, 0, {64, 64}, 0xFFBA00FF},
      {"formats/tga/200x32_rgba_bl_raw.tga", kTgaCodec, {200, 32}, 0, 0, {60, 3}, 0xFFEDA72E},
      {"formats/tga/POOL_4.TGA", kTgaCodec, {200, 200}, 0, 0, {100, 90}, 0xFFFFFFFF},
      {"formats/psd/hopper_merged.psd", kPsdCodec, {128, 128}, 96, 0, {60, 60}, 0xFFE89C82},
      {"formats/psd/exiv2-photoshop.psd", kPsdCodec, {150, 91}, 72, 0, {70, 40}, 0xFF668C1F},
      {"formats/psd/8x4x8bit-Grayscale.psd", kPsdCodec, {8, 4}, 300, 0, {3, 2}, 0xFFFFFFFF},
  };
  if (test::Photos("formats").isEmpty()) GTEST_SKIP();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file);
    QFile file(test::Photos(c.file));
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    const QByteArray bytes = file.readAll();
    const auto facts = c.codec.readFacts(Bytes(bytes), {});
    ASSERT_TRUE(facts) << qPrintable(facts.Reason());
    EXPECT_EQ(QSize(facts->width, facts->height), c.size);
    EXPECT_EQ(qRound(facts->dpiX), c.dpi);
    EXPECT_EQ(facts->colorMapCount, c.map);
    const QImage picture = LoadAs(c.codec, bytes);
    ASSERT_EQ(picture.size(), c.size);
    EXPECT_LE(Distance(picture.pixel(c.at), c.colour), 1) << std::hex << picture.pixel(c.at);
  }
}

}  // namespace
}  // namespace zqm
