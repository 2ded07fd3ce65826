// SPDX-License-Identifier: GPL-3.0-or-later
// Writing TIFF: one page, strips, every compression and photometric that the library can write. The
// picture joins the EXIF block that goes along, which stays at its offsets, so that maker notes
// stay readable.
#include "imaging/codecs/tiff_save.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "imaging/codecs/codec_support.h"
#include "imaging/codecs/tiff_handle.h"
#include "imaging/colour.h"
#include "imaging/quantise.h"
#include "imaging/raster.h"
#include "imaging/tiff_editor.h"

namespace zqm {
namespace {

constexpr int kTagStripOffsets = 273, kTagStripCounts = 279;
constexpr std::int64_t kStripBytes = 256 << 10;
constexpr int kTagXmp = 700, kTagIptc = 33723, kTagProfile = 34675;
constexpr std::uint16_t kByte = 1, kUndefined = 7;

// ---- What is written ---------------------------------------------------------------------------

/// By the number of the save option; 0 where the library can't write.
constexpr std::uint16_t kCompressions[] = {COMPRESSION_NONE,
                                           COMPRESSION_CCITTRLE,
                                           COMPRESSION_CCITTFAX3,
                                           COMPRESSION_CCITTFAX3,
                                           COMPRESSION_CCITTFAX4,
                                           COMPRESSION_LZW,
                                           0,
                                           COMPRESSION_JPEG,
                                           COMPRESSION_PACKBITS,
                                           COMPRESSION_DEFLATE,
                                           COMPRESSION_ADOBE_DEFLATE,
                                           0};
constexpr int kFax3TwoDimensional = 3;

constexpr std::uint16_t kPhotometrics[] = {
    PHOTOMETRIC_MINISWHITE, PHOTOMETRIC_MINISBLACK, PHOTOMETRIC_RGB,   PHOTOMETRIC_PALETTE,
    PHOTOMETRIC_MASK,       PHOTOMETRIC_SEPARATED,  PHOTOMETRIC_YCBCR, PHOTOMETRIC_CIELAB};

bool IsFax(std::uint16_t compression) {
  return compression == COMPRESSION_CCITTRLE || compression == COMPRESSION_CCITTFAX3 ||
         compression == COMPRESSION_CCITTFAX4;
}

bool IsGray(const QImage& picture) {
  return picture.format() == QImage::Format_Grayscale8 ||
         picture.format() == QImage::Format_Grayscale16;
}

/// How the pixels lie in the file, and how a row gets there.
struct Layout {
  std::uint16_t compression = COMPRESSION_NONE;
  std::uint16_t photometric = PHOTOMETRIC_RGB;
  std::uint16_t bits = 8, samples = 3;
  bool alpha = false;
};

std::uint16_t PhotometricFor(const QImage& picture, const SaveOptions& options) {
  if (options.tiffPhotometric >= 0)
    return kPhotometrics[static_cast<std::size_t>(options.tiffPhotometric)];
  if (picture.format() == QImage::Format_Indexed8) return PHOTOMETRIC_PALETTE;
  return IsGray(picture) || picture.depth() == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB;
}

Layout LayoutFor(const QImage& picture, const SaveOptions& options) {
  Layout l;
  l.compression = kCompressions[static_cast<std::size_t>(options.tiffCompression)];
  l.photometric = PhotometricFor(picture, options);
  const bool bilevel = IsFax(l.compression) || l.photometric == PHOTOMETRIC_MASK ||
                       (picture.depth() == 1 && (l.photometric == PHOTOMETRIC_MINISBLACK ||
                                                 l.photometric == PHOTOMETRIC_MINISWHITE));
  if (bilevel) {
    // Fax knows no colours: white paper unless asked for black or a mask.
    if (l.photometric != PHOTOMETRIC_MINISBLACK && l.photometric != PHOTOMETRIC_MASK)
      l.photometric = PHOTOMETRIC_MINISWHITE;
    l.bits = l.samples = 1;
    return l;
  }
  const bool deep = picture.depth() >= 64 || picture.format() == QImage::Format_Grayscale16;
  const bool keepsDepth = l.photometric == PHOTOMETRIC_RGB ||
                          l.photometric == PHOTOMETRIC_MINISBLACK ||
                          l.photometric == PHOTOMETRIC_MINISWHITE;
  if (deep && keepsDepth && l.compression != COMPRESSION_JPEG) l.bits = 16;
  if (l.photometric == PHOTOMETRIC_MINISBLACK || l.photometric == PHOTOMETRIC_MINISWHITE ||
      l.photometric == PHOTOMETRIC_PALETTE)
    l.samples = 1;
  if (l.photometric == PHOTOMETRIC_SEPARATED) l.samples = 4;
  l.alpha = l.photometric == PHOTOMETRIC_RGB && picture.hasAlphaChannel() &&
            l.compression != COMPRESSION_JPEG;
  if (l.alpha) l.samples = 4;
  return l;
}

// ---- Rows --------------------------------------------------------------------------------------

QImage Gray(const QImage& picture) {
  return ConvertToGrey(RemoveAlphaChannel(picture));
}

/// The picture in the one format that its layout's rows are made from.
QImage Prepared(const QImage& picture, const Layout& l) {
  if (l.bits == 1)
    return Gray(picture)
        .convertToFormat(QImage::Format_Grayscale8)
        .convertToFormat(QImage::Format_Mono, Qt::ThresholdDither | Qt::AvoidDither);
  if (l.photometric == PHOTOMETRIC_PALETTE)
    return picture.format() == QImage::Format_Indexed8
               ? picture
               : Quantised(RemoveAlphaChannel(picture), 256);
  if (l.samples == 1)
    return Gray(picture).convertToFormat(l.bits == 16 ? QImage::Format_Grayscale16
                                                      : QImage::Format_Grayscale8);
  const QImage opaque = l.alpha ? picture : RemoveAlphaChannel(picture);
  if (l.bits == 16)
    return opaque.convertToFormat(l.alpha ? QImage::Format_RGBA64 : QImage::Format_RGBX64);
  return opaque.convertToFormat(l.alpha ? QImage::Format_RGBA8888 : QImage::Format_RGBX8888);
}

using Row = std::vector<std::uint8_t>;

void InkRow(const std::uint8_t* in, std::uint8_t* out, int width) {
  for (int x = 0; x < width; ++x, in += 4, out += 4) {
    const int white = std::max({in[0], in[1], in[2]});
    for (int c = 0; c < 3; ++c)
      out[c] = static_cast<std::uint8_t>(white == 0 ? 0 : 255 - (in[c] * 255 + white / 2) / white);
    out[3] = static_cast<std::uint8_t>(255 - white);
  }
}

/// ITU-R BT.601 over the full range, as in JFIF.
void YccRow(const std::uint8_t* in, std::uint8_t* out, int width) {
  const auto clamp = [](float v) {
    return static_cast<std::uint8_t>(std::clamp(std::lround(v), 0L, 255L));
  };
  for (int x = 0; x < width; ++x, in += 4, out += 3) {
    const float r = in[0], g = in[1], b = in[2];
    out[0] = clamp(0.299F * r + 0.587F * g + 0.114F * b);
    out[1] = clamp(128 - 0.168736F * r - 0.331264F * g + 0.5F * b);
    out[2] = clamp(128 + 0.5F * r - 0.418688F * g - 0.081312F * b);
  }
}

class RowMaker {
 public:
  RowMaker(const QImage& picture, const Layout& l) : picture_(picture), layout_(l) {
    row_.resize(static_cast<std::size_t>(picture.width()) * l.samples * (l.bits == 16 ? 2 : 1) + 8);
    // The toolkit's own bilevel pictures have either colour as 1.
    invert_ = l.bits == 1
                  ? (qGray(picture.color(0)) > 127) == (l.photometric != PHOTOMETRIC_MINISWHITE)
                  : l.photometric == PHOTOMETRIC_MINISWHITE;
  }

  void* Make(int y) {
    const std::uint8_t* in = picture_.constScanLine(y);
    const int width = picture_.width();
    const std::size_t bytes =
        layout_.bits == 1 ? (static_cast<std::size_t>(width) + 7) / 8
                          : static_cast<std::size_t>(width) * layout_.samples * (layout_.bits / 8);
    switch (layout_.photometric) {
      case PHOTOMETRIC_SEPARATED:
        InkRow(in, row_.data(), width);
        break;
      case PHOTOMETRIC_YCBCR:
        // Inside JPEG the library turns the colours itself.
        if (layout_.compression == COMPRESSION_JPEG)
          Pick<std::uint8_t>(in, width);
        else
          YccRow(in, row_.data(), width);
        break;
      case PHOTOMETRIC_CIELAB:
        lab_.ConvertRow(in, row_.data(), width);
        break;
      case PHOTOMETRIC_RGB:
        layout_.bits == 16 ? Pick<std::uint16_t>(in, width) : Pick<std::uint8_t>(in, width);
        break;
      default:
        std::transform(in, in + bytes, row_.begin(), [&](std::uint8_t b) {
          return static_cast<std::uint8_t>(invert_ ? 255 - b : b);
        });
    }
    return row_.data();
  }

 private:
  /// The samples that are stored of pixels of four.
  template <class Sample>
  void Pick(const std::uint8_t* in, int width) {
    const auto* from = reinterpret_cast<const Sample*>(in);
    auto* to = reinterpret_cast<Sample*>(row_.data());
    for (int x = 0; x < width; ++x, from += 4, to += layout_.samples)
      std::copy_n(from, layout_.samples, to);
  }

  const QImage& picture_;
  Layout layout_;
  Row row_;
  bool invert_ = false;
  LabWriter lab_;
};

// ---- The library -------------------------------------------------------------------------------

struct Stream : TiffComplaint {
  QByteArray bytes;
  toff_t at = 0;
};

Stream& StreamOf(thandle_t handle) {
  return *static_cast<Stream*>(handle);
}

tmsize_t ReadBytes(thandle_t handle, void* out, tmsize_t count) {
  Stream& s = StreamOf(handle);
  const auto size = static_cast<toff_t>(s.bytes.size());
  if (count <= 0 || s.at >= size) return 0;
  const auto taken = std::min<toff_t>(static_cast<toff_t>(count), size - s.at);
  std::memcpy(out, s.bytes.constData() + s.at, taken);
  s.at += taken;
  return static_cast<tmsize_t>(taken);
}

tmsize_t WriteBytes(thandle_t handle, void* in, tmsize_t count) {
  Stream& s = StreamOf(handle);
  const toff_t end = s.at + static_cast<toff_t>(count);
  if (static_cast<toff_t>(s.bytes.size()) < end) s.bytes.resize(static_cast<qsizetype>(end));
  std::memcpy(s.bytes.data() + s.at, in, static_cast<std::size_t>(count));
  s.at = end;
  return count;
}

toff_t Seek(thandle_t handle, toff_t offset, int whence) {
  Stream& s = StreamOf(handle);
  const toff_t base = whence == SEEK_CUR   ? s.at
                      : whence == SEEK_END ? static_cast<toff_t>(s.bytes.size())
                                           : 0;
  return s.at = base + offset;
}

toff_t Size(thandle_t handle) {
  return static_cast<toff_t>(StreamOf(handle).bytes.size());
}

Tiff OpenForWriting(Stream& stream, bool bigEndian) {
  const TiffOptions options = MakeTiffOptions(stream);
  return Tiff(TIFFClientOpenExt("", bigEndian ? "wb" : "wl", &stream, ReadBytes, WriteBytes, Seek,
                                CloseNothing, Size, nullptr, nullptr, options.get()));
}

void SetPalette(TIFF* tiff, const QImage& picture) {
  std::array<std::vector<std::uint16_t>, 3> map;
  for (auto& channel : map)
    channel.resize(256);
  const QList<QRgb> colours = picture.colorTable();
  for (std::size_t i = 0; i < std::min<std::size_t>(256, static_cast<std::size_t>(colours.size()));
       ++i) {
    const QRgb colour = colours[static_cast<qsizetype>(i)];
    map[0][i] = static_cast<std::uint16_t>(qRed(colour) * 257);
    map[1][i] = static_cast<std::uint16_t>(qGreen(colour) * 257);
    map[2][i] = static_cast<std::uint16_t>(qBlue(colour) * 257);
  }
  TIFFSetField(tiff, TIFFTAG_COLORMAP, map[0].data(), map[1].data(), map[2].data());
}

bool SetFields(TIFF* tiff, const QImage& picture, const Layout& l, const SaveOptions& options,
               const FileBlocks& blocks) {
  bool set = TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, picture.width()) == 1 &&
             TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, picture.height()) == 1 &&
             TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, l.bits) == 1 &&
             TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, l.samples) == 1 &&
             TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == 1 &&
             TIFFSetField(tiff, TIFFTAG_COMPRESSION, l.compression) == 1 &&
             TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, l.photometric) == 1;
  if (!set) return false;
  if (options.tiffCompression == kFax3TwoDimensional)
    TIFFSetField(tiff, TIFFTAG_GROUP3OPTIONS, GROUP3OPT_2DENCODING);
  if (l.compression == COMPRESSION_JPEG) {
    TIFFSetField(tiff, TIFFTAG_JPEGQUALITY, options.tiffJpegQuality);
    if (l.photometric == PHOTOMETRIC_YCBCR)
      TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
  }
  if (l.photometric == PHOTOMETRIC_YCBCR && l.compression != COMPRESSION_JPEG) {
    float reference[] = {0, 255, 128, 255, 128, 255};
    TIFFSetField(tiff, TIFFTAG_YCBCRSUBSAMPLING, 1, 1);
    TIFFSetField(tiff, TIFFTAG_REFERENCEBLACKWHITE, reference);
  }
  if (l.photometric == PHOTOMETRIC_PALETTE) SetPalette(tiff, picture);
  std::uint16_t kind = EXTRASAMPLE_UNASSALPHA;
  if (l.alpha) TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &kind);
  if (l.photometric == PHOTOMETRIC_SEPARATED) TIFFSetField(tiff, TIFFTAG_INKSET, INKSET_CMYK);
  if (blocks.dpiX > 0 && blocks.dpiY > 0) {
    TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(tiff, TIFFTAG_XRESOLUTION, blocks.dpiX);
    TIFFSetField(tiff, TIFFTAG_YRESOLUTION, blocks.dpiY);
  }
  // Whole blocks of JPEG.
  const std::int64_t rowBytes = std::max<std::int64_t>(1, TIFFScanlineSize64(tiff));
  const auto rows = std::max<std::int64_t>(16, kStripBytes / rowBytes / 16 * 16);
  TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, static_cast<std::uint32_t>(rows));
  return true;
}

Failure Unwritable(const Stream& stream) {
  QString reason = QString::fromUtf16(kReasonNotWritable);
  if (stream.message[0] != 0) reason += QStringLiteral(": ") + QString::fromLatin1(stream.message);
  return {reason};
}

Result<QByteArray> WritePage(const QImage& picture, const Layout& l, const SaveOptions& options,
                             const FileBlocks& blocks, bool bigEndian) {
  Stream stream;
  {
    const Tiff tiff = OpenForWriting(stream, bigEndian);
    if (!tiff || !SetFields(tiff.get(), picture, l, options, blocks)) return Unwritable(stream);
    RowMaker maker(picture, l);
    for (int y = 0; y < picture.height(); ++y)
      if (TIFFWriteScanline(tiff.get(), maker.Make(y), static_cast<std::uint32_t>(y), 0) < 0)
        return Unwritable(stream);
    if (TIFFFlush(tiff.get()) != 1) return Unwritable(stream);
  }
  return stream.bytes;
}

// ---- The file ----------------------------------------------------------------------------------

bool ProfileFits(const Layout& l, const QByteArray& profile) {
  const bool gray =
      l.photometric == PHOTOMETRIC_MINISBLACK || l.photometric == PHOTOMETRIC_MINISWHITE;
  const bool rgb = l.photometric == PHOTOMETRIC_RGB || l.photometric == PHOTOMETRIC_PALETTE ||
                   l.photometric == PHOTOMETRIC_YCBCR;
  return l.bits > 1 &&
         ((gray && DescribesGray(Bytes(profile))) || (rgb && DescribesRgb(Bytes(profile))));
}

void SetBlock(TiffEditor& editor, int tag, std::uint16_t type, const QByteArray& bytes) {
  if (bytes.isEmpty()) return;
  editor.Set({ExifGroup::Image, tag}, {type, static_cast<std::uint32_t>(bytes.size()), bytes});
}

/// The page's directory and strips join the block, at its end.
std::optional<QByteArray> Join(TiffEditor block, const QByteArray& page) {
  auto source = TiffEditor::Open(page);
  const auto offsets = source ? source->Get({ExifGroup::Image, kTagStripOffsets}) : std::nullopt;
  const auto counts = source ? source->Get({ExifGroup::Image, kTagStripCounts}) : std::nullopt;
  if (!offsets || !counts) return std::nullopt;
  block.DropFollowing();
  QByteArray moved;
  for (std::uint32_t i = 0; i < offsets->count; ++i) {
    const ByteReader in(Bytes(page), false);
    const ByteView strip = in.Part(source->Number(*offsets, i), source->Number(*counts, i));
    moved += block.Long(block.Append(strip)).bytes;
  }
  for (const int tag : source->Tags(ExifGroup::Image))
    if (tag != kTagStripOffsets)
      block.Set({ExifGroup::Image, tag}, *source->Get({ExifGroup::Image, tag}));
  constexpr std::uint16_t kLong = 4;
  block.Set({ExifGroup::Image, kTagStripOffsets}, {kLong, offsets->count, moved});
  const QByteArray file = block.Take();
  return file.isEmpty() ? std::nullopt : std::optional(file);
}

}  // namespace

Result<QByteArray> SaveTiff(const QImage& picture, const SaveOptions& options,
                            const FileBlocks& blocks) {
  const Layout l = LayoutFor(picture, options);
  if (l.compression == 0) return Failure{QString::fromUtf16(kReasonNotWritable)};
  auto block = blocks.exif.isEmpty() ? std::nullopt : TiffEditor::Open(blocks.exif);
  if (!block) block = TiffEditor::Empty();
  const QImage prepared = Prepared(picture, l);
  const Result<QByteArray> page = WritePage(prepared, l, options, blocks, block->BigEndian());
  if (!page) return page;
  SetBlock(*block, kTagXmp, kByte, blocks.xmp);
  SetBlock(*block, kTagIptc, kUndefined, blocks.iptc);
  if (ProfileFits(l, blocks.profile)) SetBlock(*block, kTagProfile, kUndefined, blocks.profile);
  const auto file = Join(std::move(*block), *page);
  if (!file)
    return Failure{QStringLiteral("File format cannot be written: the picture is too large")};
  return *file;
}

}  // namespace zqm
