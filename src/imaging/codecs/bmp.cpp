// SPDX-License-Identifier: GPL-3.0-or-later
// Windows and OS/2 bitmaps: a file header of 14 bytes, an information header whose length tells its
// kind, masks or a palette, and rows from the bottom up, padded to four bytes. Little-endian.
#include <bit>

#include "imaging/codecs/codecs.h"
#include "imaging/codecs/packed_rows.h"
#include "imaging/codecs/save_support.h"

namespace zqm {
namespace {

constexpr std::uint32_t kFileHeader = 14;
constexpr std::uint32_t kOldHeader =
    12;  // the first OS/2: sizes of 16 bits, palette of three bytes
constexpr std::uint32_t kPlainHeader = 40;
constexpr std::uint32_t kMasksAt = kFileHeader + 40;  // inside longer headers, after the plain one
constexpr std::uint32_t kAlphaHeader = 56;            // the first length that has an alpha mask

enum class Packing { Plain, Rle4, Rle8, Rle24, Masks, Unknown };

struct Header {
  std::uint32_t length = 0;
  std::int64_t width = 0, height = 0;
  bool topDown = false;
  int bits = 0;
  Packing packing = Packing::Plain;
  double dpiX = 0, dpiY = 0;
  std::array<std::uint32_t, 4> masks = {};  // red, green, blue, alpha
  std::uint64_t pixelsAt = 0;
  Palette palette{0};
};

/// OS/2's second header has any length from 16 to 64; three of these lengths are Windows' own.
bool IsSecondOs2(std::uint32_t length) {
  return length >= 16 && length <= 64 && length != kPlainHeader && length != 52 && length != 56;
}

bool IsKnownLength(std::uint32_t length) {
  return length == kOldHeader || (length >= 16 && length <= 64) || length == 108 || length == 124;
}

Packing PackingOf(std::uint32_t compression, bool os2) {
  switch (compression) {
    case 0:
      return Packing::Plain;
    case 1:
      return Packing::Rle8;
    case 2:
      return Packing::Rle4;
    case 3:  // OS/2's is a fax code
      return os2 ? Packing::Unknown : Packing::Masks;
    case 4:  // Windows' is a JPEG for printers
      return os2 ? Packing::Rle24 : Packing::Unknown;
    case 6:
      return Packing::Masks;
    default:
      return Packing::Unknown;
  }
}

void ReadPalette(ByteView file, std::uint32_t used, std::uint32_t maskBytes, Header& header) {
  const ByteReader in(file, false);
  const std::uint64_t start = std::uint64_t{kFileHeader} + header.length + maskBytes;
  const std::uint64_t entry = header.length == kOldHeader ? 3 : 4;
  std::uint64_t count = 0;
  if (header.bits >= 1 && header.bits <= 8) {
    const std::uint64_t most = std::uint64_t{1} << header.bits;
    count = used > 0 && used < most ? used : most;
  }
  header.pixelsAt = in.U32(10);
  if (header.pixelsAt < start || header.pixelsAt >= file.size()) {
    header.pixelsAt = start + count * entry;
  }
  count = std::min(count, (header.pixelsAt - start) / entry);
  header.palette = Palette(static_cast<std::size_t>(count));
  for (std::uint64_t i = 0; i < count; ++i) {
    const std::uint64_t at = start + i * entry;
    header.palette.Set(static_cast<std::size_t>(i), qRgb(in.U8(at + 2), in.U8(at + 1), in.U8(at)));
  }
}

Result<Header> ReadHeader(ByteView file) {
  Header header;
  header.length = ByteReader(file, false).U32(kFileHeader);
  // A short header lacks its last fields; they count as zero.
  const ByteView part = ByteReader(file, false).Part(kFileHeader, header.length);
  const ByteReader in(part, false);
  std::uint32_t used = 0, maskBytes = 0, compression = 0;
  if (header.length == kOldHeader) {
    header.width = in.U16(4);
    header.height = in.U16(6);
    header.bits = in.U16(10);
  } else {
    header.width = static_cast<std::int32_t>(in.U32(4));
    header.height = static_cast<std::int32_t>(in.U32(8));
    header.bits = in.U16(14);
    compression = in.U32(16);
    header.dpiX = std::max(0, static_cast<std::int32_t>(in.U32(24))) * kMetresPerInch;
    header.dpiY = std::max(0, static_cast<std::int32_t>(in.U32(28))) * kMetresPerInch;
    used = in.U32(32);
  }
  header.topDown = header.height < 0;
  header.height = std::abs(header.height);
  if (header.width <= 0 || header.height == 0 || header.height > INT_MAX) {
    return Failure{QStringView(kReasonNoImage).toString()};
  }
  header.packing = PackingOf(compression, IsSecondOs2(header.length));
  if (header.packing == Packing::Masks) {
    const bool alpha = compression == 6 || header.length >= kAlphaHeader;
    if (header.length == kPlainHeader) maskBytes = alpha ? 16 : 12;
    for (std::size_t i = 0; i < (alpha ? 4U : 3U); ++i) {
      header.masks[i] = ByteReader(file, false).U32(kMasksAt + i * 4);
    }
  } else if (header.bits == 16) {
    header.masks = {0x7C00, 0x03E0, 0x001F, 0};
  } else {
    header.masks = {0xFF0000, 0x00FF00, 0x0000FF, 0};
  }
  ReadPalette(file, used, maskBytes, header);
  return header;
}

bool CanRead(const Header& h) {
  switch (h.packing) {
    case Packing::Plain:
      return h.bits == 1 || h.bits == 2 || h.bits == 4 || h.bits == 8 || h.bits == 16 ||
             h.bits == 24 || h.bits == 32;
    case Packing::Rle4:
      return h.bits == 4;
    case Packing::Rle8:
      return h.bits == 8;
    case Packing::Rle24:
      return h.bits == 24;
    case Packing::Masks:
      return h.bits == 16 || h.bits == 32;
    case Packing::Unknown:
      break;
  }
  return false;
}

bool Sniff(ByteView file, const QString&) {
  return StartsWith(file, "BM") && IsKnownLength(ByteReader(file, false).U32(kFileHeader));
}

Result<PictureFacts> ReadFacts(ByteView file, const LoadOptions&) {
  const auto header = ReadHeader(file);
  if (!header) return Failure{header.Reason()};
  PictureFacts facts;
  facts.width = static_cast<int>(header->width);
  facts.height = static_cast<int>(header->height);
  facts.dpiX = header->dpiX;
  facts.dpiY = header->dpiY;
  const bool indexed = header->bits <= 8;
  facts.bitsPerSample = indexed ? header->bits : header->bits == 16 ? 5 : 8;
  facts.samplesPerPixel = indexed ? 1 : header->masks[3] != 0 ? 4 : 3;
  facts.colorMapCount = static_cast<int>(header->palette.Size());
  return facts;
}

/// The part of a pixel that a mask cuts out, as eight bits.
class MaskedSample {
 public:
  explicit MaskedSample(std::uint32_t mask) : mask_(mask) {
    if (mask == 0) return;
    const int low = std::countr_zero(mask);
    const int bits = std::bit_width(mask >> low);
    shift_ = low + std::max(0, bits - 8);
    const int most = (1 << std::min(bits, 8)) - 1;
    for (int i = 0; i <= most; ++i) {
      table_[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>((i * 255 + most / 2) / most);
    }
  }
  int operator()(std::uint32_t pixel) const { return table_[(pixel & mask_) >> shift_]; }

 private:
  std::uint32_t mask_;
  int shift_ = 0;
  std::array<std::uint8_t, 256> table_ = {};
};

/// The rows of a picture that isn't run-length coded.
class PlainRows {
 public:
  PlainRows(ByteView file, const Header& header)
      : in_(file, false),
        header_(header),
        red_(header.masks[0]),
        green_(header.masks[1]),
        blue_(header.masks[2]),
        alpha_(header.masks[3]),
        stride_(static_cast<std::uint64_t>((header.width * header.bits + 31) / 32 * 4)) {
    hasAlpha_ = header.masks[3] != 0 && AnyAlpha();
  }

  /// Many writers announce an alpha channel and leave it empty: that is an opaque picture.
  bool HasAlpha() const { return hasAlpha_; }

  /// False when the file ends before the row does.
  bool Read(std::int64_t number, std::vector<QRgb>& row) const {
    const ByteView data = Data(number);
    if (data.empty()) return false;
    const std::uint8_t* in = data.data();
    if (header_.bits <= 8) {
      for (std::size_t x = 0; x < row.size(); ++x)
        row[x] = header_.palette.At(PackedSample(in, header_.bits, static_cast<std::int64_t>(x)));
    } else if (header_.bits == 24) {
      for (QRgb& pixel : row)
        pixel = qRgb(in[2], in[1], in[0]), in += 3;
    } else {
      const std::size_t step = static_cast<std::size_t>(header_.bits / 8);
      for (QRgb& pixel : row)
        pixel = Colour(Value(in, step)), in += step;
    }
    return true;
  }

 private:
  static std::uint32_t Value(const std::uint8_t* in, std::size_t bytes) {
    const std::uint32_t low = in[0] | std::uint32_t{in[1]} << 8;
    return bytes == 2 ? low : low | std::uint32_t{in[2]} << 16 | std::uint32_t{in[3]} << 24;
  }
  QRgb Colour(std::uint32_t v) const {
    return qRgba(red_(v), green_(v), blue_(v), hasAlpha_ ? alpha_(v) : 255);
  }
  ByteView Data(std::int64_t number) const {
    const auto needed = static_cast<std::uint64_t>((header_.width * header_.bits + 7) / 8);
    const ByteView data =
        in_.Part(header_.pixelsAt + static_cast<std::uint64_t>(number) * stride_, needed);
    return data.size() < needed ? ByteView() : data;
  }
  bool AnyAlpha() const {
    const auto step = static_cast<std::size_t>(header_.bits / 8);
    for (std::int64_t i = 0; i < header_.height; ++i) {
      const ByteView data = Data(i);
      if (data.empty()) return false;
      for (std::size_t at = 0; at < data.size(); at += step) {
        if (Value(data.data() + at, step) & header_.masks[3]) return true;
      }
    }
    return false;
  }

  ByteReader in_;
  const Header& header_;
  MaskedSample red_, green_, blue_, alpha_;
  std::uint64_t stride_;
  bool hasAlpha_ = false;
};

/// Pairs of a count and a pixel, and escapes: end of line, end of picture, a jump, plain pixels.
/// What is jumped over shows the first colour of the palette.
class RleReader {
 public:
  RleReader(ByteView file, const Header& header, RowSink& sink)
      : in_(file, false),
        end_(file.size()),
        header_(header),
        sink_(sink),
        at_(header.pixelsAt),
        background_(header.palette.At(0)),
        row_(static_cast<std::size_t>(header.width), background_) {}

  void Read() {
    while (line_ < header_.height && at_ + 2 <= end_) {
      const std::uint8_t count = in_.U8(at_), second = in_.U8(at_ + 1);
      if (count > 0) {
        PutRun(count);
      } else if (second >= 3) {
        at_ += 2;
        PutPlain(second);
      } else {
        at_ += 2;
        if (second == 1) return Finish();
        second == 0 ? NextLine(0) : Jump();
      }
    }
    // The file ends here, or the last line had no end of its own.
    if (line_ < header_.height && x_ >= row_.size()) NextLine(0);
  }

 private:
  void Put(QRgb colour) {
    if (x_ < row_.size()) row_[x_++] = colour;
  }
  QRgb Indexed(std::uint64_t at, int number) const {
    const std::uint8_t byte = in_.U8(at);
    if (header_.bits == 8) return header_.palette.At(byte);
    return header_.palette.At(number % 2 == 0 ? byte >> 4 : byte & 15);
  }
  QRgb TrueColour(std::uint64_t at) const {
    return qRgb(in_.U8(at + 2), in_.U8(at + 1), in_.U8(at));
  }

  void PutRun(int count) {
    const bool colour = header_.bits == 24;
    for (int i = 0; i < count; ++i)
      Put(colour ? TrueColour(at_ + 1) : Indexed(at_ + 1, i));
    at_ += colour ? 4 : 2;
  }
  void PutPlain(int count) {
    const int bytes = (count * header_.bits + 7) / 8;
    for (int i = 0; i < count && at_ + static_cast<unsigned>(i * header_.bits / 8) < end_; ++i) {
      const std::uint64_t at = at_ + static_cast<unsigned>(i * header_.bits / 8);
      Put(header_.bits == 24 ? TrueColour(at) : Indexed(at, i));
    }
    at_ += static_cast<unsigned>(bytes + bytes % 2);
  }
  void Jump() {
    const std::size_t x = x_ + in_.U8(at_);
    const int lines = in_.U8(at_ + 1);
    at_ += 2;
    x_ = std::min(x, row_.size());
    for (int i = 0; i < lines && line_ < header_.height; ++i)
      NextLine(x_);
  }
  void NextLine(std::size_t x) {
    const auto y = static_cast<int>(header_.topDown ? line_ : header_.height - 1 - line_);
    PutArgbRow(sink_, y, row_, false);
    std::ranges::fill(row_, background_);
    x_ = x;
    ++line_;
  }
  void Finish() {
    while (line_ < header_.height)
      NextLine(0);
  }

  ByteReader in_;
  std::uint64_t end_;
  const Header& header_;
  RowSink& sink_;
  std::uint64_t at_;
  QRgb background_;
  std::vector<QRgb> row_;
  std::size_t x_ = 0;
  std::int64_t line_ = 0;
};

Result<RowSink> CreateSink(const Header& header, RowFormat format, const LoadOptions& options) {
  return RowSink::Create(static_cast<int>(header.width), static_cast<int>(header.height), format,
                         options.box);
}

Result<QImage> LoadPlain(ByteView file, const Header& header, const LoadOptions& options) {
  const PlainRows rows(file, header);
  const bool alpha = rows.HasAlpha();
  auto sink = CreateSink(header, alpha ? RowFormat::Rgba32 : RowFormat::Rgb32, options);
  if (!sink) return Failure{sink.Reason()};
  std::vector<QRgb> row(static_cast<std::size_t>(header.width));
  for (std::int64_t i = 0; i < header.height && rows.Read(i, row); ++i) {
    PutArgbRow(*sink, static_cast<int>(header.topDown ? i : header.height - 1 - i), row, alpha);
  }
  return TakePicture(*sink, options);
}

Result<QImage> Load(ByteView file, const LoadOptions& options) {
  const auto header = ReadHeader(file);
  if (!header) return Failure{header.Reason()};
  if (!CanRead(*header)) return DecodeFailure("unknown depth or compression");
  const bool plain = header->packing == Packing::Plain || header->packing == Packing::Masks;
  if (plain) return LoadPlain(file, *header, options);
  auto sink = CreateSink(*header, RowFormat::Rgb32, options);
  if (!sink) return Failure{sink.Reason()};
  RleReader(file, *header, *sink).Read();
  return TakePicture(*sink, options);
}

constexpr const char* kExtensions[] = {"bmp", "dib"};

}  // namespace

constinit const Codec kBmpCodec{
    "BMP", kExtensions, 5, "Windows Bitmap (BMP)", 50, Sniff, ReadFacts, Load, false, SaveBmp};

}  // namespace zqm
