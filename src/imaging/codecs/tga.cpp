// SPDX-License-Identifier: GPL-3.0-or-later
// Targa: a header of 18 bytes, a free text, a colour map, pixels; since version 2.0 a footer with a
// mark. Little-endian. The header has no mark, so the sniffing is strict.
#include "imaging/codecs/codecs.h"
#include "imaging/codecs/packed_rows.h"
#include "imaging/codecs/save_support.h"

namespace zqm {
namespace {

constexpr std::uint64_t kHeaderBytes = 18;
constexpr std::string_view kFooterMark("TRUEVISION-XFILE.\0", 18);

struct Header {
  enum class Kind { Indexed = 1, Colour = 2, Gray = 3 };
  Kind kind = Kind::Colour;
  bool runs = false;
  int mapFirst = 0, mapCount = 0, mapBits = 0;
  int width = 0, height = 0;
  int bits = 0, alphaBits = 0;
  bool rightToLeft = false, topDown = false;
  std::uint64_t mapAt = 0, pixelsAt = 0;

  std::size_t PixelBytes() const { return static_cast<std::size_t>((bits + 7) / 8); }
};

bool IsColourDepth(int bits) {
  return bits == 15 || bits == 16 || bits == 24 || bits == 32;
}

bool IsKnownDepth(const Header& h) {
  return h.kind == Header::Kind::Colour ? IsColourDepth(h.bits) : h.bits == 8 || h.bits == 16;
}

/// Nothing where a field has a value that no writer gives.
std::optional<Header> ReadHeader(ByteView file) {
  const ByteReader in(file, false);
  const int mapType = in.U8(1), type = in.U8(2), flags = in.U8(17);
  const int kind = type & ~8;
  if (file.size() <= kHeaderBytes || mapType > 1 || kind < 1 || kind > 3) return std::nullopt;
  Header header;
  header.kind = Header::Kind{kind};
  header.runs = type & 8;
  header.mapFirst = in.U16(3);
  header.mapCount = in.U16(5);
  header.mapBits = in.U8(7);
  header.width = in.U16(12);
  header.height = in.U16(14);
  header.bits = in.U8(16);
  header.alphaBits = flags & 15;
  header.rightToLeft = flags & 16;
  header.topDown = flags & 32;
  const bool interleaved = flags & 0xC0;
  if (header.width == 0 || header.height == 0 || interleaved || header.alphaBits > 8 ||
      !IsKnownDepth(header)) {
    return std::nullopt;
  }
  if (mapType == 1 && !(header.mapCount > 0 && IsColourDepth(header.mapBits))) return std::nullopt;
  if (mapType == 0 && header.kind == Header::Kind::Indexed) return std::nullopt;
  header.mapAt = kHeaderBytes + in.U8(0);
  header.pixelsAt = header.mapAt;
  if (mapType == 1) {
    header.pixelsAt += static_cast<std::uint64_t>(header.mapCount) * ((header.mapBits + 7U) / 8);
  }
  return header;
}

/// The pixels' bytes in the order of the file. A run may go on into the next row.
class PixelRows {
 public:
  PixelRows(ByteView file, const Header& header)
      : rest_(file.subspan(std::min<std::size_t>(header.pixelsAt, file.size()))),
        runs_(header.runs),
        pixelBytes_(header.PixelBytes()),
        row_(static_cast<std::size_t>(header.width) * pixelBytes_) {}

  /// False when the file ends before the row does.
  bool Next() {
    for (std::size_t at = 0; at < row_.size();) {
      if (left_ == 0 && !NextPacket()) return false;
      const std::size_t count = std::min(left_, (row_.size() - at) / pixelBytes_);
      const std::size_t bytes = count * pixelBytes_;
      if (rest_.size() < (repeats_ ? pixelBytes_ : bytes)) return false;
      if (repeats_) {
        for (std::size_t i = 0; i < count; ++i)
          std::memcpy(row_.data() + at + i * pixelBytes_, rest_.data(), pixelBytes_);
      } else {
        std::memcpy(row_.data() + at, rest_.data(), bytes);
        rest_ = rest_.subspan(bytes);
      }
      at += bytes;
      left_ -= count;
      if (repeats_ && left_ == 0) rest_ = rest_.subspan(pixelBytes_);
    }
    return true;
  }
  const std::uint8_t* Pixel(std::size_t x) const { return row_.data() + x * pixelBytes_; }

 private:
  bool NextPacket() {
    if (rest_.empty()) return false;
    if (!runs_) {
      repeats_ = false;
      left_ = row_.size() / pixelBytes_;
      return true;
    }
    repeats_ = rest_.front() & 0x80;
    left_ = (rest_.front() & 0x7FU) + 1U;
    rest_ = rest_.subspan(1);
    return true;
  }

  ByteView rest_;
  bool runs_;
  std::size_t pixelBytes_;
  std::vector<std::uint8_t> row_;
  std::size_t left_ = 0;
  bool repeats_ = false;
};

/// What only a real file of this format has, when neither its name nor a footer speaks for it: no
/// colour map fields without a map, and pixels for all of its size.
bool IsComplete(ByteView file, const Header& header) {
  const ByteReader in(file, false);
  if (in.U8(1) == 0 && (header.mapFirst || header.mapCount || header.mapBits)) return false;
  PixelRows rows(file, header);
  for (int y = 0; y < header.height; ++y) {
    if (!rows.Next()) return false;
  }
  return true;
}

bool Sniff(ByteView file, const QString& extension) {
  const auto header = ReadHeader(file);
  if (!header || header->pixelsAt >= file.size()) return false;
  if (extension == QLatin1String("tga")) return true;
  const bool footer = file.size() >= kFooterMark.size() &&
                      StartsWith(file, kFooterMark, file.size() - kFooterMark.size());
  return footer || IsComplete(file, *header);
}

Result<PictureFacts> ReadFacts(ByteView file, const LoadOptions&) {
  const auto header = ReadHeader(file);
  if (!header) return Failure{QStringView(kReasonNoImage).toString()};
  PictureFacts facts;
  facts.width = header->width;
  facts.height = header->height;
  switch (header->kind) {
    case Header::Kind::Indexed:
      facts.bitsPerSample = header->bits;
      facts.samplesPerPixel = 1;
      facts.colorMapCount = header->mapCount;
      break;
    case Header::Kind::Gray:
      facts.samplesPerPixel = header->bits / 8;
      break;
    case Header::Kind::Colour:
      facts.bitsPerSample = header->bits <= 16 ? 5 : 8;
      facts.samplesPerPixel = header->bits == 32 ? 4 : 3;
      break;
  }
  return facts;
}

/// A pixel of 15 to 32 bits with its alpha. One bit of alpha counts only where it is announced.
QRgb TrueColour(const std::uint8_t* in, int bits, int alphaBits) {
  if (bits > 16) return qRgba(in[2], in[1], in[0], bits == 32 ? in[3] : 255);
  const unsigned value = in[0] | unsigned{in[1]} << 8;
  const bool clear = bits == 16 && alphaBits == 1 && !(value & 0x8000);
  return qRgba(FiveBits(value, 10), FiveBits(value, 5), FiveBits(value, 0), clear ? 0 : 255);
}

Palette ReadPalette(ByteView file, const Header& header) {
  const ByteReader in(file, false);
  Palette palette(static_cast<std::size_t>(header.mapFirst + header.mapCount));
  const auto bytes = static_cast<std::uint64_t>((header.mapBits + 7) / 8);
  for (int i = 0; i < header.mapCount; ++i) {
    const ByteView entry = in.Part(header.mapAt + static_cast<std::uint64_t>(i) * bytes, bytes);
    if (entry.size() < bytes) break;
    palette.Set(static_cast<std::size_t>(header.mapFirst + i),
                TrueColour(entry.data(), header.mapBits, 0));
  }
  return palette;
}

/// Rows brought to colours, in the file's order.
class ColourRows {
 public:
  ColourRows(ByteView file, const Header& header)
      : header_(header),
        rows_(file, header),
        palette_(header.kind == Header::Kind::Indexed ? ReadPalette(file, header) : Palette(0)) {}

  bool Next(std::vector<QRgb>& row) {
    if (!rows_.Next()) return false;
    for (std::size_t x = 0; x < row.size(); ++x)
      row[x] = Colour(rows_.Pixel(x));
    if (header_.rightToLeft) std::ranges::reverse(row);
    return true;
  }

 private:
  QRgb Colour(const std::uint8_t* in) const {
    if (header_.kind == Header::Kind::Colour)
      return TrueColour(in, header_.bits, header_.alphaBits);
    if (header_.kind == Header::Kind::Gray) {
      return qRgba(in[0], in[0], in[0], header_.bits == 16 ? in[1] : 255);
    }
    return palette_.At(header_.bits == 16 ? in[0] | std::size_t{in[1]} << 8 : in[0]);
  }

  Header header_;
  PixelRows rows_;
  Palette palette_;
};

/// Alpha counts as such where it differs from opaque, unless it is empty throughout. Files with
/// real alpha that announce none are common, as are files with an unused fourth byte.
bool UsesAlpha(ByteView file, const Header& header) {
  ColourRows rows(file, header);
  std::vector<QRgb> row(static_cast<std::size_t>(header.width));
  bool clear = false, filled = false;
  for (int y = 0; y < header.height && !(clear && filled) && rows.Next(row); ++y) {
    for (const QRgb pixel : row) {
      clear |= qAlpha(pixel) < 255;
      filled |= qAlpha(pixel) > 0;
    }
  }
  return clear && filled;
}

Result<QImage> Load(ByteView file, const LoadOptions& options) {
  const auto header = ReadHeader(file);
  if (!header) return Failure{QStringView(kReasonNoImage).toString()};
  const bool gray = header->kind == Header::Kind::Gray && header->bits == 8;
  const bool alpha = !gray && UsesAlpha(file, *header);
  auto sink = RowSink::Create(header->width, header->height,
                              gray    ? RowFormat::Gray8
                              : alpha ? RowFormat::Rgba32
                                      : RowFormat::Rgb32,
                              options.box);
  if (!sink) return Failure{sink.Reason()};

  ColourRows rows(file, *header);
  std::vector<QRgb> row(static_cast<std::size_t>(header->width));
  std::vector<std::uint8_t> grays(gray ? row.size() : 0);
  for (int i = 0; i < header->height && rows.Next(row); ++i) {
    const int y = header->topDown ? i : header->height - 1 - i;
    if (!gray) {
      if (!alpha) std::ranges::for_each(row, [](QRgb& pixel) { pixel |= 0xFF000000; });
      PutArgbRow(*sink, y, row, alpha);
      continue;
    }
    std::ranges::transform(row, grays.begin(),
                           [](QRgb pixel) { return static_cast<std::uint8_t>(qRed(pixel)); });
    sink->PutRow(y, grays.data());
  }
  return TakePicture(*sink, options);
}

constexpr const char* kExtensions[] = {"tga"};

}  // namespace

// Without a mark of its own it goes after all others.
constinit const Codec kTgaCodec{
    "TGA", kExtensions, 9, "Targa Bitmap (TGA)", 0, Sniff, ReadFacts, Load, false, SaveTga};

}  // namespace zqm
