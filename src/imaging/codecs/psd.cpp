// SPDX-License-Identifier: GPL-3.0-or-later
// PSD and its large form PSB: header, colour data, image resources, layers, and last the merged
// picture, plane by plane, plain or with packed runs. Big-endian. Only the merged picture is read.
#include <cmath>

#include "imaging/codecs/codecs.h"
#include "imaging/codecs/embedded_blocks.h"
#include "imaging/codecs/packed_rows.h"
#include "imaging/codecs/save_support.h"
#include "imaging/colour.h"

namespace zqm {
namespace {

constexpr std::uint64_t kHeaderBytes = 26;
constexpr std::uint16_t kResolutionResource = 0x03ED;
constexpr std::uint16_t kColourCountResource = 0x0416;
constexpr std::size_t kPaletteColours = 256;

enum class Mode { Bitmap = 0, Gray = 1, Indexed = 2, Rgb = 3, Cmyk = 4, Duotone = 8, Lab = 9 };

struct Header {
  bool large = false;  // PSB: longer lengths
  int channels = 0, depth = 0;
  std::int64_t width = 0, height = 0;
  Mode mode = Mode::Rgb;
  ByteView colours, resources;
  bool transparent = false;  // the first channel after the colours is the picture's transparency
  std::uint64_t pixelsAt = 0;

  int Planes() const {  // those of the colours
    return mode == Mode::Cmyk ? 4 : mode == Mode::Rgb || mode == Mode::Lab ? 3 : 1;
  }
  bool HasAlpha() const { return mode == Mode::Rgb && channels > 3 && transparent; }
  std::size_t RowBytes() const { return static_cast<std::size_t>((width * depth + 7) / 8); }
};

/// A number of layers below zero says that the merged picture's first extra channel is its
/// transparency. With 16 bits the layers stand in a block of their own behind empty ones. A picture
/// without layers says it by an empty block "Mtrn", "Mt16" or "Mt32".
bool IsTransparent(ByteView layers, bool large) {
  const ByteReader in(layers, true);
  const auto negative = [&](std::uint64_t at) { return (in.U16(at) & 0x8000) != 0; };
  const std::uint64_t lengthBytes = large ? 8 : 4;
  if ((large ? in.U64(0) : in.U32(0)) > 0) return negative(lengthBytes);
  std::uint64_t at = lengthBytes + 4 + in.U32(lengthBytes);
  while (StartsWith(layers, "8BIM", at)) {
    const bool found = StartsWith(layers, "Lr16", at + 4);
    const std::uint64_t data = at + 8 + (large && found ? 8 : 4);
    if (found) return negative(data);
    if (StartsWith(layers, "Mt", at + 4)) return true;
    at = data + ((std::uint64_t{in.U32(at + 8)} + 3) & ~std::uint64_t{3});
  }
  return false;
}

Result<Header> ReadHeader(ByteView file) {
  const ByteReader in(file, true);
  Header header;
  header.large = in.U16(4) == 2;
  header.channels = in.U16(12);
  header.height = in.U32(14);
  header.width = in.U32(18);
  header.depth = in.U16(22);
  header.mode = Mode{in.U16(24)};
  if (header.width == 0 || header.height == 0 || header.width > INT_MAX ||
      header.height > INT_MAX) {
    return Failure{QStringView(kReasonNoImage).toString()};
  }
  std::uint64_t at = kHeaderBytes;
  const auto section = [&](bool wide) {
    const std::uint64_t length = wide ? in.U64(at) : in.U32(at);
    const ByteView part = in.Part(at + (wide ? 8 : 4), length);
    at = length > file.size() ? file.size() : at + (wide ? 8 : 4) + length;
    return part;
  };
  header.colours = section(false);
  header.resources = section(false);
  header.transparent = IsTransparent(section(header.large), header.large);
  header.pixelsAt = at;
  return header;
}

const char* WhyUnreadable(const Header& h) {
  const bool bitmap = h.mode == Mode::Bitmap;
  switch (h.mode) {
    case Mode::Bitmap:
    case Mode::Gray:
    case Mode::Indexed:
    case Mode::Rgb:
    case Mode::Cmyk:
    case Mode::Duotone:
    case Mode::Lab:
      break;
    default:
      return "unknown colour mode";
  }
  const bool deep = h.depth == 16 && !bitmap && h.mode != Mode::Indexed;
  if (!deep && h.depth != (bitmap ? 1 : 8)) return "unsupported bits per sample";
  return h.channels < h.Planes() ? "too few colour channels" : nullptr;
}

bool Sniff(ByteView file, const QString&) {
  const std::uint16_t version = ByteReader(file, true).U16(4);
  return StartsWith(file, "8BPS") && (version == 1 || version == 2);
}

Result<PictureFacts> ReadFacts(ByteView file, const LoadOptions&) {
  const auto header = ReadHeader(file);
  if (!header) return Failure{header.Reason()};
  PictureFacts facts;
  facts.width = static_cast<int>(header->width);
  facts.height = static_cast<int>(header->height);
  facts.bitsPerSample = header->depth;
  facts.samplesPerPixel = header->Planes() + (header->HasAlpha() ? 1 : 0);
  // 16.16 fixed point, dots per inch; the unit beside it only says how to show the number.
  const ByteReader resolution(FindResource(header->resources, kResolutionResource), true);
  facts.dpiX = resolution.U32(0) / 65536.0;
  facts.dpiY = resolution.U32(8) / 65536.0;
  if (header->mode == Mode::Indexed) {
    const ByteView count = FindResource(header->resources, kColourCountResource);
    facts.colorMapCount =
        count.size() < 2 ? static_cast<int>(kPaletteColours) : ByteReader(count, true).U16(0);
  }
  facts.iptc = IptcFromResources(header->resources);
  return facts;
}

/// Unpacks runs: a signed byte n, then n + 1 plain bytes, or one byte 1 - n times. False when the
/// row doesn't come out full.
bool UnpackRow(ByteView in, std::vector<std::uint8_t>& out) {
  std::size_t at = 0, filled = 0;
  while (filled < out.size() && at + 1 < in.size()) {
    const int n = static_cast<std::int8_t>(in[at++]);
    if (n == -128) continue;
    const std::size_t room = out.size() - filled;
    const std::size_t count = std::min<std::size_t>(n < 0 ? 1U - n : n + 1U, room);
    if (n < 0) {
      std::memset(out.data() + filled, in[at++], count);
    } else {
      if (in.size() - at < count) return false;
      std::memcpy(out.data() + filled, in.data() + at, count);
      at += count;
    }
    filled += count;
  }
  return filled == out.size();
}

/// The same row of each plane, from the top down.
class PlaneRows {
 public:
  PlaneRows(ByteView file, const Header& header, int planes)
      : in_(file, true),
        header_(header),
        packed_(in_.U16(header.pixelsAt) == 1),
        rows_(static_cast<std::size_t>(planes), std::vector<std::uint8_t>(header.RowBytes())) {
    const std::uint64_t data = header.pixelsAt + 2;
    const auto height = static_cast<std::uint64_t>(header.height);
    const std::uint64_t counts = height * static_cast<unsigned>(header.channels);
    std::uint64_t at = packed_ ? data + counts * CountBytes() : data;
    for (std::uint64_t plane = 0; plane < rows_.size(); ++plane) {
      starts_.push_back(at);
      if (!packed_) {
        at += height * header.RowBytes();
        continue;
      }
      for (std::uint64_t y = 0; y < height; ++y)
        at += PackedLength(plane, y);
    }
  }

  /// False when any plane has no complete row there; the next one may have.
  bool Next() {
    bool complete = true;
    for (std::size_t plane = 0; plane < rows_.size(); ++plane) {
      std::vector<std::uint8_t>& row = rows_[plane];
      const std::uint64_t length = packed_ ? PackedLength(plane, y_) : row.size();
      const ByteView part = in_.Part(starts_[plane], length);
      starts_[plane] += length;
      if (packed_) {
        complete &= UnpackRow(part, row);
      } else if (part.size() == row.size()) {
        std::memcpy(row.data(), part.data(), row.size());
      } else {
        complete = false;
      }
    }
    ++y_;
    return complete;
  }

  int Planes() const { return static_cast<int>(rows_.size()); }
  const std::uint8_t* Row(int plane) const { return rows_[static_cast<std::size_t>(plane)].data(); }

 private:
  std::uint64_t CountBytes() const { return header_.large ? 4 : 2; }
  std::uint64_t PackedLength(std::uint64_t plane, std::uint64_t y) const {
    const std::uint64_t number = plane * static_cast<std::uint64_t>(header_.height) + y;
    const std::uint64_t at = header_.pixelsAt + 2 + number * CountBytes();
    return header_.large ? in_.U32(at) : in_.U16(at);
  }

  ByteReader in_;
  const Header& header_;
  bool packed_;
  std::vector<std::vector<std::uint8_t>> rows_;
  std::vector<std::uint64_t> starts_;
  std::uint64_t y_ = 0;
};

/// CIE L*a*b* of white point D50 to sRGB. The matrix is sRGB's primaries adapted to D50 by the
/// Bradford method (IEC 61966-2-1).
class LabConverter {
 public:
  LabConverter() {
    for (std::size_t i = 0; i < tone_.size(); ++i) {
      const double v = static_cast<double>(i) / (tone_.size() - 1);
      const double s = v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1 / 2.4) - 0.055;
      tone_[i] = static_cast<std::uint8_t>(s * 255 + 0.5);
    }
  }

  /// `l` from 0 to 100, `a` and `b` around 0.
  void Convert(float l, float a, float b, std::uint8_t* rgb) const {
    const float fy = (l + 16) / 116;
    const float x = 0.96422F * Cube(fy + a / 500), y = Cube(fy), z = 0.82521F * Cube(fy - b / 200);
    rgb[0] = Tone(3.1338561F * x - 1.6168667F * y - 0.4906146F * z);
    rgb[1] = Tone(-0.9787684F * x + 1.9161415F * y + 0.0334540F * z);
    rgb[2] = Tone(0.0719453F * x - 0.2289914F * y + 1.4052427F * z);
  }

 private:
  static float Cube(float t) {
    return t > 6.0F / 29 ? t * t * t : (t - 4.0F / 29) * 3 * (6.0F / 29) * (6.0F / 29);
  }
  std::uint8_t Tone(float linear) const {
    const float most = static_cast<float>(tone_.size() - 1);
    return tone_[static_cast<std::size_t>(std::clamp(linear, 0.0F, 1.0F) * most + 0.5F)];
  }

  std::array<std::uint8_t, 16384> tone_;
};

/// Planes to rows of pixels.
class RowMaker {
 public:
  explicit RowMaker(const Header& header)
      : header_(header),
        width_(static_cast<std::size_t>(header.width)),
        samples_(width_ * 4 * (Deep() ? 2 : 1)) {
    if (header.mode == Mode::Cmyk) cmyk_.emplace(), inks_.resize(width_ * 4);
    if (header.mode == Mode::Lab) lab_ = std::make_unique<const LabConverter>();
    if (header.mode != Mode::Indexed) return;
    const ByteReader in(header.colours, true);
    for (std::size_t i = 0; i < kPaletteColours; ++i) {
      palette_.Set(i, qRgb(in.U8(i), in.U8(i + kPaletteColours), in.U8(i + 2 * kPaletteColours)));
    }
  }

  RowFormat Format() const {
    switch (header_.mode) {
      case Mode::Indexed:
        return RowFormat::Rgb32;
      case Mode::Rgb:
        if (header_.HasAlpha()) return Deep() ? RowFormat::Rgba64 : RowFormat::Rgba32;
        return Deep() ? RowFormat::Rgb48 : RowFormat::Rgb24;
      case Mode::Cmyk:
      case Mode::Lab:
        return RowFormat::Rgb24;
      default:
        return Deep() ? RowFormat::Gray16 : RowFormat::Gray8;
    }
  }

  const void* Make(const PlaneRows& planes) {
    switch (header_.mode) {
      case Mode::Bitmap:
        for (std::size_t x = 0; x < width_; ++x)
          samples_[x] = planes.Row(0)[x / 8] & (0x80 >> (x % 8)) ? 0 : 255;
        break;
      case Mode::Indexed:
        colours_.resize(width_);
        for (std::size_t x = 0; x < width_; ++x)
          colours_[x] = palette_.At(planes.Row(0)[x]);
        return colours_.data();
      case Mode::Cmyk:
        MakeCmyk(planes);
        break;
      case Mode::Lab:
        MakeLab(planes);
        break;
      default:
        Deep() ? Interleave<std::uint16_t>(planes) : Interleave<std::uint8_t>(planes);
    }
    return samples_.data();
  }

 private:
  bool Deep() const { return header_.depth == 16; }
  static std::uint32_t Sample16(const std::uint8_t* row, std::size_t x) {
    return std::uint32_t{row[x * 2]} << 8 | row[x * 2 + 1];
  }

  template <class Sample>
  void Interleave(const PlaneRows& planes) {
    const auto count = static_cast<std::size_t>(planes.Planes());
    auto* out = reinterpret_cast<Sample*>(samples_.data());
    for (std::size_t plane = 0; plane < count; ++plane) {
      const std::uint8_t* row = planes.Row(static_cast<int>(plane));
      for (std::size_t x = 0; x < width_; ++x)
        out[x * count + plane] =
            static_cast<Sample>(sizeof(Sample) == 2 ? Sample16(row, x) : row[x]);
    }
    if (count == 4) RemoveWhite(out);
  }

  /// The merged picture is stored as it looks on white.
  template <class Sample>
  void RemoveWhite(Sample* pixel) const {
    constexpr std::int64_t most = std::numeric_limits<Sample>::max();
    for (std::size_t x = 0; x < width_; ++x, pixel += 4) {
      const std::int64_t alpha = pixel[3];
      for (int c = 0; c < 3 && alpha > 0 && alpha < most; ++c) {
        const std::int64_t value = most - ((most - pixel[c]) * most + alpha / 2) / alpha;
        pixel[c] = static_cast<Sample>(std::max<std::int64_t>(0, value));
      }
    }
  }

  void MakeCmyk(const PlaneRows& planes) {
    const std::size_t step = Deep() ? 2 : 1;
    for (int plane = 0; plane < 4; ++plane) {
      const std::uint8_t* row = planes.Row(plane);
      for (std::size_t x = 0; x < width_; ++x)  // stored inverted: zero is full ink
        inks_[x * 4 + static_cast<std::size_t>(plane)] = 255 - row[x * step];
    }
    cmyk_->ConvertRow(inks_.data(), samples_.data(), static_cast<int>(width_));
  }

  void MakeLab(const PlaneRows& planes) {
    const auto value = [&](int plane, std::size_t x) {
      const std::uint8_t* row = planes.Row(plane);
      return static_cast<float>(Deep() ? Sample16(row, x) : row[x]);
    };
    const float lightness = 100.0F / (Deep() ? 65535 : 255), part = Deep() ? 1.0F / 256 : 1.0F;
    for (std::size_t x = 0; x < width_; ++x) {
      lab_->Convert(value(0, x) * lightness, value(1, x) * part - 128, value(2, x) * part - 128,
                    &samples_[x * 3]);
    }
  }

  const Header& header_;
  std::size_t width_;
  std::vector<std::uint8_t> samples_;
  std::vector<std::uint8_t> inks_;
  std::vector<QRgb> colours_;
  Palette palette_;
  std::optional<CmykConverter> cmyk_;
  std::unique_ptr<const LabConverter> lab_;
};

Result<QImage> Load(ByteView file, const LoadOptions& options) {
  const auto header = ReadHeader(file);
  if (!header) return Failure{header.Reason()};
  if (const char* why = WhyUnreadable(*header)) return DecodeFailure(why);
  if (header->pixelsAt + 2 >= file.size()) return DecodeFailure("no merged picture");
  if (ByteReader(file, true).U16(header->pixelsAt) > 1) return DecodeFailure("unknown compression");
  const auto height = static_cast<int>(header->height);
  const bool tooLarge = header->width > kMostSide || height > kMostSide;
  if (tooLarge) return Failure{QStringLiteral("The picture is too large")};

  RowMaker maker(*header);
  auto sink = RowSink::Create(static_cast<int>(header->width), height, maker.Format(), options.box);
  if (!sink) return Failure{sink.Reason()};
  PlaneRows planes(file, *header, header->Planes() + (header->HasAlpha() ? 1 : 0));
  for (int y = 0; y < height; ++y) {
    if (planes.Next()) sink->PutRow(y, maker.Make(planes));
  }
  return TakePicture(*sink, options);
}

constexpr const char* kExtensions[] = {"psd"};

}  // namespace

constinit const Codec kPsdCodec{
    "PSD", kExtensions, 24, "Photoshop Document (PSD)", 50, Sniff, ReadFacts, Load, false, SavePsd};

}  // namespace zqm
