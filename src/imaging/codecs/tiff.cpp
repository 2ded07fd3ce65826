// SPDX-License-Identifier: GPL-3.0-or-later
// The first page of a TIFF, pixels as stored: the orientation tag is not applied. Plain pixels
// (gray, RGB, palette, CMYK of any depth) are read scanline by scanline or tile row by tile row, so
// that memory stays small; the rest (YCbCr, CIELAB, LogLuv, old JPEG) goes through the library's
// own conversion to RGBA.
#include <bit>
#include <cmath>

#include "imaging/codecs/codec_support.h"
#include "imaging/codecs/codecs.h"
#include "imaging/codecs/embedded_blocks.h"
#include "imaging/codecs/tiff_handle.h"
#include "imaging/codecs/tiff_save.h"
#include "imaging/colour.h"
#include "imaging/row_sink.h"

namespace zqm {
namespace {

/// No strip, tile or table of a sane file is larger.
constexpr tmsize_t kMostChunkBytes = tmsize_t{256} << 20;

constexpr std::uint16_t kTagIptc = 33723;
constexpr std::uint16_t kTagResources = 34377;

/// The library's view of the bytes, and its first complaint.
struct Stream : TiffComplaint {
  explicit Stream(ByteView bytes) : file(bytes) {}
  ByteView file;
  toff_t at = 0;
};

Stream& StreamOf(thandle_t handle) {
  return *static_cast<Stream*>(handle);
}

tmsize_t ReadBytes(thandle_t handle, void* out, tmsize_t count) {
  Stream& s = StreamOf(handle);
  if (count <= 0 || s.at >= s.file.size()) return 0;
  const std::size_t taken =
      std::min<std::size_t>(static_cast<std::size_t>(count), s.file.size() - s.at);
  std::memcpy(out, s.file.data() + s.at, taken);
  s.at += taken;
  return static_cast<tmsize_t>(taken);
}

tmsize_t WriteNothing(thandle_t, void*, tmsize_t) {
  return 0;
}

toff_t Seek(thandle_t handle, toff_t offset, int whence) {
  Stream& s = StreamOf(handle);
  const toff_t base = whence == SEEK_CUR ? s.at : whence == SEEK_END ? s.file.size() : 0;
  return s.at = base + offset;
}

toff_t Size(thandle_t handle) {
  return StreamOf(handle).file.size();
}

int MapFile(thandle_t handle, void** base, toff_t* size) {
  Stream& s = StreamOf(handle);
  *base = const_cast<std::uint8_t*>(s.file.data());
  *size = s.file.size();
  return 1;
}
void UnmapNothing(thandle_t, void*, toff_t) {}

/// An open file; with its own handlers, so that nothing is shared between threads.
class Handle {
 public:
  explicit Handle(ByteView file) : stream_(std::make_unique<Stream>(file)) {
    const TiffOptions options = MakeTiffOptions(*stream_);
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), kMostChunkBytes);
    // Mapped: the library then works on these bytes without copying them.
    tiff_.reset(TIFFClientOpenExt("", "rM", stream_.get(), ReadBytes, WriteNothing, Seek,
                                  CloseNothing, Size, MapFile, UnmapNothing, options.get()));
  }

  TIFF* Get() const { return tiff_.get(); }
  const char* Message() const { return stream_->message; }

 private:
  std::unique_ptr<Stream> stream_;
  Tiff tiff_;
};

struct Layout {
  std::uint32_t width = 0, height = 0;
  std::uint16_t bits = 1, samples = 1, photometric = 0, compression = 1, planar = 1, format = 1;
  std::uint16_t alphaKind = EXTRASAMPLE_UNSPECIFIED;
  bool extraSample = false;
};

Layout ReadLayout(TIFF* tiff) {
  Layout l;
  TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &l.width);
  TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &l.height);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &l.bits);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &l.samples);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_COMPRESSION, &l.compression);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_PLANARCONFIG, &l.planar);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLEFORMAT, &l.format);
  if (!TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &l.photometric)) {
    l.photometric = l.samples >= 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK;
  }
  if (l.photometric == PHOTOMETRIC_MASK) l.photometric = PHOTOMETRIC_MINISBLACK;
  std::uint16_t extras = 0;
  std::uint16_t* kinds = nullptr;
  TIFFGetFieldDefaulted(tiff, TIFFTAG_EXTRASAMPLES, &extras, &kinds);
  if (extras > 0 && kinds) l.alphaKind = kinds[0];
  // JPEG inside TIFF is asked for RGB, so that its subsampling is the library's business.
  if (l.compression == COMPRESSION_JPEG && l.photometric == PHOTOMETRIC_YCBCR &&
      l.planar == PLANARCONFIG_CONTIG) {
    TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
    l.photometric = PHOTOMETRIC_RGB;
  }
  return l;
}

int ColourChannels(const Layout& l) {
  switch (l.photometric) {
    case PHOTOMETRIC_RGB:
    case PHOTOMETRIC_CIELAB:
      return 3;
    case PHOTOMETRIC_SEPARATED:
      return 4;
    default:
      return 1;
  }
}

/// Whether the samples can be read as they stand.
bool IsPlain(const Layout& l) {
  const bool photometric =
      l.photometric == PHOTOMETRIC_MINISWHITE || l.photometric == PHOTOMETRIC_MINISBLACK ||
      l.photometric == PHOTOMETRIC_RGB || l.photometric == PHOTOMETRIC_PALETTE ||
      l.photometric == PHOTOMETRIC_SEPARATED ||
      (l.photometric == PHOTOMETRIC_CIELAB && (l.bits == 8 || l.bits == 16));
  const bool depth =
      l.format == SAMPLEFORMAT_IEEEFP
          ? l.bits == 32 || l.bits == 64
          : l.bits >= 1 && l.bits <= (l.photometric == PHOTOMETRIC_PALETTE ? 16 : 32);
  return photometric && depth && l.compression != COMPRESSION_OJPEG &&
         l.samples >= ColourChannels(l) && l.format != SAMPLEFORMAT_COMPLEXINT &&
         l.format != SAMPLEFORMAT_COMPLEXIEEEFP;
}

std::uint16_t FromFloat(double value) {
  return static_cast<std::uint16_t>(
      std::lround(std::isnan(value) ? 0 : std::clamp(value, 0.0, 1.0) * 65535));
}

template <class T>
T At(const std::uint8_t* bytes, std::size_t index) {
  T value;
  std::memcpy(&value, bytes + index * sizeof(T), sizeof(T));
  return value;
}

/// `count` samples of a decoded line, 16 bits full scale; palette indices stay as they are.
void Unpack(const Layout& l, const std::uint8_t* in, std::size_t count, std::uint16_t* out) {
  const bool index = l.photometric == PHOTOMETRIC_PALETTE;
  const std::uint32_t sign = l.format == SAMPLEFORMAT_INT ? std::uint32_t{1} << (l.bits - 1) : 0;
  if (l.format == SAMPLEFORMAT_IEEEFP) {
    for (std::size_t i = 0; i < count; ++i) {
      out[i] = FromFloat(l.bits == 32 ? double{At<float>(in, i)} : At<double>(in, i));
    }
  } else if (l.bits == 8) {
    const unsigned scale = index ? 1 : 257;
    for (std::size_t i = 0; i < count; ++i) {
      out[i] = static_cast<std::uint16_t>((in[i] ^ sign) * scale);
    }
  } else if (l.bits == 16) {
    for (std::size_t i = 0; i < count; ++i) {
      out[i] = static_cast<std::uint16_t>(At<std::uint16_t>(in, i) ^ sign);
    }
  } else if (l.bits == 32) {
    for (std::size_t i = 0; i < count; ++i) {
      out[i] = static_cast<std::uint16_t>((At<std::uint32_t>(in, i) ^ sign) >> 16);
    }
  } else {
    const std::uint32_t most = (std::uint32_t{1} << l.bits) - 1;
    std::uint64_t held = 0;
    unsigned bits = 0;
    for (std::size_t i = 0; i < count; ++i) {
      for (; bits < l.bits; bits += 8)
        held = held << 8 | *in++;
      bits -= l.bits;
      const std::uint32_t value = (static_cast<std::uint32_t>(held >> bits) & most) ^ sign;
      out[i] = static_cast<std::uint16_t>(index ? value
                                                : (std::uint64_t{value} * 65535 + most / 2) / most);
    }
  }
}

/// Turns unpacked pixels into rows of the picture.
class RowMaker {
 public:
  RowMaker(const Layout& l, TIFF* tiff, ByteView profile, bool useAlpha)
      : layout_(l), colours_(ColourChannels(l)), cmyk_(profile) {
    TIFFGetField(tiff, TIFFTAG_COLORMAP, &palette_[0], &palette_[1], &palette_[2]);
    alpha_ = useAlpha && l.photometric != PHOTOMETRIC_PALETTE &&
             l.photometric != PHOTOMETRIC_SEPARATED && !IsLab() &&
             (l.samples == colours_ + 1 ||
              (l.samples > colours_ && l.alphaKind != EXTRASAMPLE_UNSPECIFIED));
    deep_ = l.bits > 8;
    width_ = l.width;
    row_.resize(width_ * 4);
    bytes_.resize(width_ * 4);
  }

  /// Samples of a pixel that matter, from the first on.
  std::uint16_t Needed() const { return static_cast<std::uint16_t>(colours_ + (alpha_ ? 1 : 0)); }

  RowFormat Format() const {
    if (alpha_) return deep_ ? RowFormat::Rgba64 : RowFormat::Rgba32;
    if (layout_.photometric == PHOTOMETRIC_RGB) return deep_ ? RowFormat::Rgb48 : RowFormat::Rgb24;
    if (colours_ == 1 && !IsPalette()) return deep_ ? RowFormat::Gray16 : RowFormat::Gray8;
    return RowFormat::Rgb24;
  }
  bool NeedsPalette() const { return IsPalette() && !palette_[0]; }

  /// The row for pixels of `stride` samples each.
  const void* Make(const std::uint16_t* pixels, std::size_t stride) {
    if (IsPalette()) return FromPalette(pixels, stride);
    if (layout_.photometric == PHOTOMETRIC_SEPARATED) return FromCmyk(pixels, stride);
    if (IsLab()) return FromLab(pixels, stride);
    const bool invert = layout_.photometric == PHOTOMETRIC_MINISWHITE;
    const std::size_t channels = alpha_ ? 4 : static_cast<std::size_t>(colours_);
    for (std::size_t x = 0; x < width_; ++x, pixels += stride) {
      std::uint16_t* out = row_.data() + x * channels;
      for (std::size_t c = 0; c < std::min<std::size_t>(channels, 3); ++c) {
        const std::uint16_t v = pixels[colours_ == 1 ? 0 : c];
        out[c] = invert ? static_cast<std::uint16_t>(65535 - v) : v;
      }
      if (alpha_) PutAlpha(out, pixels[colours_]);
    }
    if (deep_) return row_.data();
    for (std::size_t i = 0; i < width_ * channels; ++i) {
      bytes_[i] = static_cast<std::uint8_t>(row_[i] >> 8);
    }
    return bytes_.data();
  }

  /// Behind a last sample that says nothing of itself, all zero, the picture must not vanish.
  bool AlphaIsDoubtful() const {
    return alpha_ && layout_.alphaKind == EXTRASAMPLE_UNSPECIFIED && !sawAlpha_;
  }

 private:
  bool IsLab() const { return layout_.photometric == PHOTOMETRIC_CIELAB; }
  bool IsPalette() const { return layout_.photometric == PHOTOMETRIC_PALETTE; }

  void PutAlpha(std::uint16_t* out, std::uint16_t alpha) {
    sawAlpha_ = sawAlpha_ || alpha != 0;
    out[3] = alpha;
    if (layout_.alphaKind != EXTRASAMPLE_ASSOCALPHA || alpha == 0) return;
    for (int c = 0; c < 3; ++c) {
      out[c] = static_cast<std::uint16_t>(std::min(65535U, out[c] * 65535U / alpha));
    }
  }

  const void* FromPalette(const std::uint16_t* pixels, std::size_t stride) {
    const std::uint32_t most = (std::uint32_t{1} << layout_.bits) - 1;
    for (std::size_t x = 0; x < width_; ++x, pixels += stride) {
      for (std::size_t c = 0; c < 3; ++c) {
        bytes_[x * 3 + c] = static_cast<std::uint8_t>(palette_[c][*pixels & most] >> 8);
      }
    }
    return bytes_.data();
  }

  const void* FromLab(const std::uint16_t* pixels, std::size_t stride) {
    ink_.resize(width_ * 3);
    for (std::size_t x = 0; x < width_; ++x, pixels += stride) {
      for (std::size_t c = 0; c < 3; ++c)
        ink_[x * 3 + c] = static_cast<std::uint8_t>(pixels[c] >> 8);
    }
    lab_.ConvertRow(ink_.data(), bytes_.data(), static_cast<int>(width_));
    return bytes_.data();
  }

  const void* FromCmyk(const std::uint16_t* pixels, std::size_t stride) {
    ink_.resize(width_ * 4);
    for (std::size_t x = 0; x < width_; ++x, pixels += stride) {
      for (std::size_t c = 0; c < 4; ++c)
        ink_[x * 4 + c] = static_cast<std::uint8_t>(pixels[c] >> 8);
    }
    cmyk_.ConvertRow(ink_.data(), bytes_.data(), static_cast<int>(width_));
    return bytes_.data();
  }

  Layout layout_;
  int colours_;
  CmykConverter cmyk_;
  LabReader lab_;
  std::uint16_t* palette_[3] = {};  // owned by the library
  bool alpha_ = false, deep_ = false, sawAlpha_ = false;
  std::size_t width_ = 0;
  std::vector<std::uint16_t> row_;
  std::vector<std::uint8_t> bytes_, ink_;
};

/// Separate planes are read side by side, each through a handle of its own: every strip is then
/// decoded once, front to back.
bool ReadScanlines(ByteView file, const Handle& first, const Layout& l, RowMaker& maker,
                   RowSink& sink) {
  const bool planes = l.planar == PLANARCONFIG_SEPARATE && l.samples > 1;
  const std::uint16_t needed = maker.Needed();
  std::vector<Handle> others;
  for (int i = 1; planes && i < needed; ++i)
    others.emplace_back(file);
  const tmsize_t lineBytes = TIFFScanlineSize(first.Get());
  const std::size_t lineSamples = std::size_t{l.width} * (planes ? 1 : l.samples);
  if (lineBytes <= 0 || lineBytes > kMostChunkBytes ||
      static_cast<std::size_t>(lineBytes) < (lineSamples * l.bits + 7) / 8) {
    return false;
  }
  std::vector<std::uint8_t> line(static_cast<std::size_t>(lineBytes));
  std::vector<std::uint16_t> samples(lineSamples), pixels(planes ? lineSamples * needed : 0);
  std::uint32_t stripRows = l.height;
  TIFFGetFieldDefaulted(first.Get(), TIFFTAG_ROWSPERSTRIP, &stripRows);
  stripRows = std::clamp<std::uint32_t>(stripRows, 1, l.height);

  bool any = false;
  for (std::uint32_t y = 0; y < l.height; ++y) {
    bool whole = true;
    for (std::uint16_t s = 0; whole && s < (planes ? needed : 1); ++s) {
      TIFF* tiff = s == 0 ? first.Get() : others[s - 1U].Get();
      whole = tiff && TIFFReadScanline(tiff, line.data(), y, s) >= 0;
      if (!whole) break;
      Unpack(l, line.data(), lineSamples, samples.data());
      for (std::size_t x = 0; planes && x < lineSamples; ++x)
        pixels[x * needed + s] = samples[x];
    }
    if (!whole) {
      // The rest of a damaged strip is lost, the next one may be whole.
      y = (y / stripRows + 1) * stripRows - 1;
      continue;
    }
    any = true;
    sink.PutRow(static_cast<int>(y),
                planes ? maker.Make(pixels.data(), needed) : maker.Make(samples.data(), l.samples));
  }
  return any;
}

bool ReadTiles(TIFF* tiff, const Layout& l, RowMaker& maker, RowSink& sink,
               const LoadOptions& options) {
  std::uint32_t tileWidth = 0, tileHeight = 0;
  TIFFGetField(tiff, TIFFTAG_TILEWIDTH, &tileWidth);
  TIFFGetField(tiff, TIFFTAG_TILELENGTH, &tileHeight);
  const bool planes = l.planar == PLANARCONFIG_SEPARATE && l.samples > 1;
  const std::size_t perPixel = planes ? 1 : l.samples;
  const std::size_t needed = maker.Needed();
  const tmsize_t tileBytes = TIFFTileSize(tiff);
  const tmsize_t lineBytes = TIFFTileRowSize(tiff);
  const std::uint64_t bandRows = std::min(tileHeight, l.height);
  const std::uint64_t band = bandRows * l.width * needed;
  if (tileWidth == 0 || tileHeight == 0 || tileBytes <= 0 || tileBytes > kMostChunkBytes ||
      lineBytes <= 0 || tileBytes / lineBytes < static_cast<tmsize_t>(tileHeight) ||
      static_cast<std::uint64_t>(lineBytes) <
          (std::uint64_t{tileWidth} * perPixel * l.bits + 7) / 8 ||
      band * 2 > static_cast<std::uint64_t>(kMostChunkBytes)) {
    return false;
  }
  std::vector<std::uint8_t> tile(static_cast<std::size_t>(tileBytes));
  std::vector<std::uint16_t> pixels(band), samples(tileWidth * perPixel);
  bool any = false;
  for (std::uint32_t top = 0; top < l.height; top += tileHeight) {
    std::ranges::fill(pixels, std::uint16_t{0});
    const std::uint32_t rows = std::min(tileHeight, l.height - top);
    for (std::uint32_t left = 0; left < l.width; left += tileWidth) {
      const std::size_t columns = std::min(tileWidth, l.width - left);
      for (std::uint16_t s = 0; s < (planes ? needed : 1); ++s) {
        if (TIFFReadTile(tiff, tile.data(), left, top, 0, s) < 0) {
          options.TellIncomplete();
          continue;
        }
        any = true;
        for (std::uint32_t y = 0; y < rows; ++y) {
          Unpack(l, tile.data() + static_cast<std::size_t>(lineBytes) * y, columns * perPixel,
                 samples.data());
          std::uint16_t* out = pixels.data() + (std::size_t{y} * l.width + left) * needed;
          for (std::size_t x = 0; x < columns; ++x, out += needed) {
            for (std::size_t c = 0; c < (planes ? 1 : needed); ++c) {
              out[planes ? s : c] = samples[x * perPixel + c];
            }
          }
        }
      }
    }
    for (std::uint32_t y = 0; y < rows; ++y) {
      sink.PutRow(static_cast<int>(top + y),
                  maker.Make(pixels.data() + std::size_t{y} * l.width * needed, needed));
    }
    if (top > l.height - std::min(tileHeight, l.height)) break;  // no wrap beyond 2^32
  }
  return any;
}

ByteView Profile(TIFF* tiff) {
  std::uint32_t size = 0;
  void* data = nullptr;
  if (!TIFFGetField(tiff, TIFFTAG_ICCPROFILE, &size, &data) || !data) return {};
  return {static_cast<const std::uint8_t*>(data), size};
}

Result<QImage> LoadOpaque(ByteView file, const LoadOptions& options);

Result<QImage> LoadPlain(ByteView file, const Handle& handle, const Layout& l,
                         const LoadOptions& options, bool useAlpha = true) {
  const ByteView profile = options.colourManagement ? Profile(handle.Get()) : ByteView();
  RowMaker maker(l, handle.Get(), profile, useAlpha);
  if (maker.NeedsPalette()) return DecodeFailure("no palette");
  auto sink = RowSink::Create(static_cast<int>(l.width), static_cast<int>(l.height), maker.Format(),
                              options.box);
  if (!sink) return Failure{sink.Reason()};
  const bool any = TIFFIsTiled(handle.Get()) ? ReadTiles(handle.Get(), l, maker, *sink, options)
                                             : ReadScanlines(file, handle, l, maker, *sink);
  if (!any) return DecodeFailure(handle.Message());
  if (!sink->IsWhole()) options.TellIncomplete();
  if (maker.AlphaIsDoubtful()) return LoadOpaque(file, options);
  QImage picture = sink->Take();
  return l.photometric == PHOTOMETRIC_SEPARATED ? picture : ToSrgb(std::move(picture), profile);
}

/// Once more from the start, the sample behind the colours ignored.
Result<QImage> LoadOpaque(ByteView file, const LoadOptions& options) {
  const Handle handle(file);
  if (!handle.Get()) return DecodeFailure(handle.Message());
  return LoadPlain(file, handle, ReadLayout(handle.Get()), options, false);
}

Result<QImage> LoadConverted(const Handle& handle, const Layout& l, const LoadOptions& options) {
  if (std::int64_t{l.width} * l.height * 4 > kMostDecoderBytes / 2) {
    return Failure{QStringLiteral("The picture is too large")};
  }
  char message[1024] = {};
  TIFFRGBAImage converter{};
  if (!TIFFRGBAImageOK(handle.Get(), message) ||
      !TIFFRGBAImageBegin(&converter, handle.Get(), 0, message)) {
    return DecodeFailure(message);
  }
  const std::unique_ptr<TIFFRGBAImage, decltype(&TIFFRGBAImageEnd)> end(&converter,
                                                                        TIFFRGBAImageEnd);
  // Equal orientations: the rows come as stored, the first one first.
  converter.orientation = converter.req_orientation = ORIENTATION_TOPLEFT;
  std::vector<std::uint32_t> raster(std::size_t{l.width} * l.height);
  if (!TIFFRGBAImageGet(&converter, raster.data(), l.width, l.height)) {
    if (std::ranges::all_of(raster, [](std::uint32_t p) { return p == 0; }))
      return DecodeFailure(handle.Message());
    options.TellIncomplete();
  }
  auto sink = RowSink::Create(static_cast<int>(l.width), static_cast<int>(l.height),
                              RowFormat::Rgb32, options.box);
  if (!sink) return Failure{sink.Reason()};
  std::vector<QRgb> row(l.width);
  for (std::uint32_t y = 0; y < l.height; ++y) {
    const std::uint32_t* in = raster.data() + std::size_t{y} * l.width;
    std::ranges::transform(std::span(in, l.width), row.begin(), [](std::uint32_t p) {
      return qRgb(static_cast<int>(TIFFGetR(p)), static_cast<int>(TIFFGetG(p)),
                  static_cast<int>(TIFFGetB(p)));
    });
    sink->PutRow(static_cast<int>(y), row.data());
  }
  return sink->Take();
}

bool Sniff(ByteView file, const QString&) {
  using namespace std::string_view_literals;
  return StartsWith(file, "II*\0"sv) || StartsWith(file, "MM\0*"sv) ||
         StartsWith(file, "II+\0"sv) || StartsWith(file, "MM\0+"sv);
}

Failure OpenFailure(const Handle& handle) {
  return DecodeFailure(handle.Message());
}

Result<PictureFacts> ReadFacts(ByteView file, const LoadOptions&) {
  const Handle handle(file);
  if (!handle.Get()) return OpenFailure(handle);
  const Layout l = ReadLayout(handle.Get());
  if (l.width == 0 || l.height == 0 || l.width > 0x7FFFFFFF || l.height > 0x7FFFFFFF) {
    return Failure{QStringView(kReasonNoImage).toString()};
  }
  PictureFacts facts;
  facts.width = static_cast<int>(l.width);
  facts.height = static_cast<int>(l.height);
  facts.bitsPerSample = l.bits;
  facts.samplesPerPixel = l.samples;
  if (l.photometric == PHOTOMETRIC_PALETTE && l.bits <= 16) facts.colorMapCount = 1 << l.bits;
  float x = 0, y = 0;
  std::uint16_t unit = RESUNIT_INCH;
  TIFFGetFieldDefaulted(handle.Get(), TIFFTAG_RESOLUTIONUNIT, &unit);
  if (unit != RESUNIT_NONE && TIFFGetField(handle.Get(), TIFFTAG_XRESOLUTION, &x)) {
    if (!TIFFGetField(handle.Get(), TIFFTAG_YRESOLUTION, &y)) y = x;
    const double perInch = unit == RESUNIT_CENTIMETER ? 2.54 : 1;
    facts.dpiX = std::isfinite(x) ? x * perInch : 0;
    facts.dpiY = std::isfinite(y) ? y * perInch : 0;
  }
  // By our own look at the directory: the library would swap a block stored as LONGs.
  if (const auto directory = ReadTiffDirectory(file)) {
    if (const TiffEntry* iptc = directory->Find(kTagIptc)) facts.iptc = ToByteArray(iptc->data);
    const TiffEntry* resources = directory->Find(kTagResources);
    if (facts.iptc.isEmpty() && resources) facts.iptc = IptcFromResources(resources->data);
  }
  return facts;
}

Result<QImage> Load(ByteView file, const LoadOptions& options) {
  const Handle handle(file);
  if (!handle.Get()) return OpenFailure(handle);
  const Layout l = ReadLayout(handle.Get());
  if (l.width > kMostSide || l.height > kMostSide ||
      std::int64_t{l.width} * l.height > kMostPixels) {
    return Failure{QStringLiteral("The picture is too large")};
  }
  return IsPlain(l) ? LoadPlain(file, handle, l, options) : LoadConverted(handle, l, options);
}

constexpr const char* kExtensions[] = {"tif", "tiff"};

}  // namespace

constinit const Codec kTiffCodec{.name = "TIFF",
                                 .extensions = kExtensions,
                                 .fileType = 1,
                                 .typeText = "TIFF Bitmap (TIF)",
                                 .priority = 40,
                                 .sniff = Sniff,
                                 .readFacts = ReadFacts,
                                 .load = Load,
                                 .save = SaveTiff};

}  // namespace zqm
