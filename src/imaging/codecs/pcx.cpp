// SPDX-License-Identifier: GPL-3.0-or-later
// PCX: a header of 128 bytes, then lines of one or several colour planes, mostly run-length coded,
// then the palette of 256-colour pictures. Little-endian.
#include "imaging/codecs/codecs.h"
#include "imaging/codecs/packed_rows.h"
#include "imaging/codecs/save_support.h"

namespace zqm {
namespace {

constexpr std::uint64_t kHeaderBytes = 128;
constexpr std::uint64_t kSmallPaletteAt = 16;
constexpr std::uint64_t kLargePaletteBytes = 768;
constexpr std::uint8_t kLargePaletteMark = 0x0C;

struct Header {
  int bits = 0, planes = 0, lineBytes = 0;  // a line of one plane
  int width = 0, height = 0;
  bool runs = false;
  double dpiX = 0, dpiY = 0;

  bool IsTrueColour() const { return bits == 8 && planes >= 3; }
};

bool IsKnownLayout(int bits, int planes) {
  if (bits == 8) return planes == 1 || planes == 3 || planes == 4;
  return (bits == 1 || bits == 2 || bits == 4) && planes >= 1 && bits * planes <= 4;
}

std::optional<Header> ReadHeader(ByteView file) {
  const ByteReader in(file, false);
  const std::uint8_t version = in.U8(1), coding = in.U8(2);
  if (file.size() < kHeaderBytes || in.U8(0) != 0x0A || version > 5 || version == 1 || coding > 1) {
    return std::nullopt;
  }
  Header header;
  header.bits = in.U8(3);
  header.planes = in.U8(65);
  header.lineBytes = in.U16(66);
  header.runs = coding == 1;
  if (!IsKnownLayout(header.bits, header.planes)) return std::nullopt;
  // The window can claim more than a line holds.
  header.width = std::min(in.U16(8) - in.U16(4) + 1, header.lineBytes * 8 / header.bits);
  header.height = in.U16(10) - in.U16(6) + 1;
  header.dpiX = in.U16(12);
  header.dpiY = in.U16(14);
  if (header.width <= 0 || header.height <= 0) return std::nullopt;
  return header;
}

/// Lines of all planes, one plane after the other. A run may go on into the next line.
class Lines {
 public:
  Lines(ByteView file, const Header& header)
      : rest_(file.subspan(kHeaderBytes)),
        runs_(header.runs),
        line_(static_cast<std::size_t>(header.lineBytes * header.planes)) {}

  /// False when the file ends before the line does.
  bool Next() {
    for (std::uint8_t& byte : line_) {
      if (left_ == 0 && !NextRun()) return false;
      --left_;
      byte = value_;
    }
    return true;
  }
  const std::uint8_t* Data() const { return line_.data(); }

 private:
  bool NextRun() {
    do {
      if (rest_.empty()) return false;
      value_ = Take();
      left_ = 1;
      if (runs_ && value_ >= 0xC0) {
        left_ = value_ & 0x3F;
        if (rest_.empty()) return false;
        value_ = Take();
      }
    } while (left_ == 0);
    return true;
  }
  std::uint8_t Take() {
    const std::uint8_t byte = rest_.front();
    rest_ = rest_.subspan(1);
    return byte;
  }

  ByteView rest_;
  bool runs_;
  std::vector<std::uint8_t> line_;
  std::uint8_t value_ = 0;
  int left_ = 0;
};

/// Old two-bit pictures hold no colours but the settings of a graphics card: the background in the
/// first byte's high half, the choice of the other colours in the fourth byte's highest bits. Later
/// writers tell the choice by the second entry's green and blue.
void SetCardColours(ByteView file, Palette& palette) {
  const ByteReader in(file, false);
  const std::uint8_t choice = in.U8(kSmallPaletteAt + 3);
  const std::uint8_t green = in.U8(kSmallPaletteAt + 4), blue = in.U8(kSmallPaletteAt + 5);
  const bool later = in.U8(1) == 5 && in.U16(68) == 1;
  const bool cold = later ? green <= blue : choice & 0x40;
  const bool bright = later ? std::max(green, blue) > 200 : choice & 0x20;
  const auto colour = [](int number) {
    const int level = number & 8 ? 0x55 : 0;
    const auto part = [&](int bit) { return (number & bit ? 0xAA : 0) + level; };
    // The card shows its dark yellow as brown.
    return number == 6 ? qRgb(0xAA, 0x55, 0) : qRgb(part(4), part(2), part(1));
  };
  palette.Set(0, colour(in.U8(kSmallPaletteAt) >> 4));
  for (int i = 1; i < 4; ++i) {
    palette.Set(static_cast<std::size_t>(i), colour(i * 2 + (cold ? 1 : 0) + (bright ? 8 : 0)));
  }
}

Palette ReadPalette(ByteView file, const Header& header) {
  const ByteReader in(file, false);
  Palette palette;
  const auto setFrom = [&](std::uint64_t at, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i, at += 3)
      palette.Set(i, qRgb(in.U8(at), in.U8(at + 1), in.U8(at + 2)));
  };
  if (header.bits == 8) {
    setFrom(file.size() - kLargePaletteBytes, 256);
    return palette;
  }
  if (header.bits * header.planes == 1) {
    palette.Set(1, qRgb(255, 255, 255));
    return palette;
  }
  setFrom(kSmallPaletteAt, 16);
  const bool twoColoursOnly = palette.At(2) == palette.At(3) && palette.At(2) == qRgb(0, 0, 0);
  if (header.bits == 2 && header.planes == 1 && twoColoursOnly) {
    SetCardColours(file, palette);
  }
  return palette;
}

bool HasLargePalette(ByteView file) {
  return file.size() > kHeaderBytes + kLargePaletteBytes &&
         file[file.size() - kLargePaletteBytes - 1] == kLargePaletteMark;
}

bool IsGray(ByteView file, const Header& header) {
  return header.bits == 8 && header.planes == 1 && !HasLargePalette(file);
}

bool Sniff(ByteView file, const QString&) {
  return ReadHeader(file).has_value();
}

Result<PictureFacts> ReadFacts(ByteView file, const LoadOptions&) {
  const auto header = ReadHeader(file);
  if (!header) return Failure{QStringView(kReasonNoImage).toString()};
  PictureFacts facts;
  facts.width = header->width;
  facts.height = header->height;
  facts.dpiX = header->dpiX;
  facts.dpiY = header->dpiY;
  const bool indexed = !header->IsTrueColour();
  facts.bitsPerSample = indexed ? header->bits * header->planes : 8;
  facts.samplesPerPixel = indexed ? 1 : header->planes;
  if (indexed && !IsGray(file, *header)) facts.colorMapCount = 1 << facts.bitsPerSample;
  return facts;
}

/// A fourth plane that is empty throughout was never meant as transparency.
bool AnyAlpha(ByteView file, const Header& header) {
  Lines lines(file, header);
  const auto line = static_cast<std::size_t>(header.lineBytes);
  for (int y = 0; y < header.height && lines.Next(); ++y) {
    const ByteView alpha(lines.Data() + 3 * line, static_cast<std::size_t>(header.width));
    if (std::ranges::any_of(alpha, [](std::uint8_t a) { return a != 0; })) return true;
  }
  return false;
}

Result<QImage> Load(ByteView file, const LoadOptions& options) {
  const auto header = ReadHeader(file);
  if (!header) return Failure{QStringView(kReasonNoImage).toString()};
  const bool gray = IsGray(file, *header);
  const bool alpha = header->planes == 4 && header->IsTrueColour() && AnyAlpha(file, *header);
  auto sink = RowSink::Create(header->width, header->height,
                              gray    ? RowFormat::Gray8
                              : alpha ? RowFormat::Rgba32
                                      : RowFormat::Rgb32,
                              options.box);
  if (!sink) return Failure{sink.Reason()};

  const Palette palette = gray || header->IsTrueColour() ? Palette() : ReadPalette(file, *header);
  Lines lines(file, *header);
  std::vector<QRgb> row(static_cast<std::size_t>(header->width));
  for (int y = 0; y < header->height && lines.Next(); ++y) {
    const std::uint8_t* in = lines.Data();
    if (gray) {
      sink->PutRow(y, in);
      continue;
    }
    const auto plane = static_cast<std::size_t>(header->lineBytes);
    for (std::size_t x = 0; x < row.size(); ++x) {
      if (header->IsTrueColour()) {
        row[x] = qRgba(in[x], in[x + plane], in[x + 2 * plane], alpha ? in[x + 3 * plane] : 255);
        continue;
      }
      std::size_t index = 0;
      for (int p = header->planes - 1; p >= 0; --p) {
        index = index << header->bits | PackedSample(in + plane * static_cast<std::size_t>(p),
                                                     header->bits, static_cast<std::int64_t>(x));
      }
      row[x] = palette.At(index);
    }
    PutArgbRow(*sink, y, row, alpha);
  }
  return TakePicture(*sink, options);
}

constexpr const char* kExtensions[] = {"pcx"};

}  // namespace

// The mark is one byte, so formats with a longer one go first.
constinit const Codec kPcxCodec{
    "PCX", kExtensions, 4, "PaintBrush (PCX)", 10, Sniff, ReadFacts, Load, false, SavePcx};

}  // namespace zqm
