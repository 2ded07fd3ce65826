// SPDX-License-Identifier: GPL-3.0-or-later
// JPEG through the library's classic interface: the header's facts, scaled decoding, encoding to
// memory.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

// The library's header needs <cstdio> before it.
#include <jerror.h>
#include <jpeglib.h>

#include "imaging/codecs/codec_support.h"
#include "imaging/codecs/codecs.h"
#include "imaging/codecs/embedded_blocks.h"
#include "imaging/colour.h"
#include "imaging/jpeg_segments.h"
#include "imaging/raster.h"
#include "imaging/row_sink.h"
#include "imaging/thumbnail.h"

namespace zqm {
namespace {

constexpr std::string_view kResourceMark("Photoshop 3.0\0", 14);
constexpr std::string_view kProfileMark("ICC_PROFILE\0", 12);
constexpr unsigned kMostSegment = 0xFFFF;

/// A progressive file may rewrite the whole picture in each scan: few bytes, hours of work.
constexpr int kMostScans = 1000;
constexpr std::int64_t kMostScannedPixels = std::int64_t{1} << 33;

struct Errors {
  jpeg_error_mgr base;  // first: the library hands back a pointer to it
  ErrorTrap trap;
};

[[noreturn]] void OnError(j_common_ptr info) {
  auto* errors = reinterpret_cast<Errors*>(info->err);
  char message[JMSG_LENGTH_MAX];
  info->err->format_message(info, message);
  std::snprintf(errors->trap.message, sizeof errors->trap.message, "%s", message);
  std::longjmp(errors->trap.jump, 1);
}

/// Of all warnings the one that the file ends early: the library goes on in gray.
void OnMessage(j_common_ptr info, int level) {
  if (level < 0 && info->err->msg_code == JWRN_JPEG_EOF) ++info->err->num_warnings;
}

jpeg_error_mgr* SilentErrors(Errors& errors) {
  jpeg_error_mgr* base = jpeg_std_error(&errors.base);
  base->error_exit = OnError;
  base->emit_message = OnMessage;
  return base;
}

void OnProgress(j_common_ptr info) {
  if (!info->is_decompressor) return;
  const auto* in = reinterpret_cast<j_decompress_ptr>(info);
  const std::int64_t pixels = std::int64_t{in->image_width} * in->image_height;
  if (in->input_scan_number > kMostScans ||
      in->input_scan_number * pixels > std::max(kMostScannedPixels, pixels * 4)) {
    ERREXIT(info, JERR_CANT_SUSPEND);
  }
}

/// The decompressor with its header read. Nothing that the library allocates outlives it.
class Reader {
 public:
  explicit Reader(ByteView file) {
    info_.err = SilentErrors(errors_);
    ok_ = RunTrapped(errors_.trap, [&] {
      jpeg_create_decompress(&info_);
      progress_.progress_monitor = OnProgress;
      info_.progress = &progress_;
      info_.mem->max_memory_to_use = long{kMostDecoderBytes};
      jpeg_mem_src(&info_, file.data(), static_cast<unsigned long>(file.size()));
      jpeg_save_markers(&info_, JPEG_APP0 + 2, kMostSegment);
      jpeg_save_markers(&info_, JPEG_APP0 + 13, kMostSegment);
      jpeg_read_header(&info_, TRUE);
    });
  }
  ~Reader() { jpeg_destroy_decompress(&info_); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  bool Ok() const { return ok_; }
  const char* Message() const { return errors_.trap.message; }
  jpeg_decompress_struct& Info() { return info_; }
  template <class Body>
  bool Run(const Body& body) {
    return RunTrapped(errors_.trap, body);
  }

  /// The data of all saved segments of a kind, behind their mark and `skip` further bytes, joined.
  QByteArray Segments(int marker, std::string_view mark, std::size_t skip) const {
    QByteArray joined;
    for (const auto* m = info_.marker_list; m; m = m->next) {
      const ByteView data(m->data, m->data_length);
      if (m->marker != marker || !StartsWith(data, mark)) continue;
      if (data.size() > mark.size() + skip) joined += ToByteArray(data.subspan(mark.size() + skip));
    }
    return joined;
  }

 private:
  jpeg_decompress_struct info_{};
  jpeg_progress_mgr progress_{};
  Errors errors_{};
  bool ok_ = false;
};

/// Bytes of coefficients that a file of several scans keeps in memory.
std::int64_t CoefficientBytes(jpeg_decompress_struct& info) {
  if (!jpeg_has_multiple_scans(&info)) return 0;
  std::int64_t blocks = 0;
  for (int c = 0; c < info.num_components; ++c) {
    blocks += std::int64_t{info.comp_info[c].width_in_blocks} * info.comp_info[c].height_in_blocks;
  }
  return blocks * DCTSIZE2 * std::int64_t{sizeof(JCOEF)};
}

/// The smallest scale (in eighths) that doesn't fall below the fit into the box.
void ChooseScale(jpeg_decompress_struct& info, const QSize& box) {
  info.scale_denom = 8;
  info.scale_num = 8;
  if (box.isEmpty()) return;
  const QSize size(static_cast<int>(info.image_width), static_cast<int>(info.image_height));
  const QSize fit = FitInto(size, box);
  for (unsigned eighths = 1; eighths <= 8; ++eighths) {
    if ((size.width() * std::int64_t{eighths} + 7) / 8 >= fit.width() &&
        (size.height() * std::int64_t{eighths} + 7) / 8 >= fit.height()) {
      info.scale_num = eighths;
      return;
    }
  }
}

bool Sniff(ByteView file, const QString&) {
  return StartsWith(file, "\xFF\xD8\xFF");
}

Result<PictureFacts> ReadFacts(ByteView file, const LoadOptions&) {
  // What the library can't decode (12 bits, damage behind the frame header) has its size all the
  // same.
  Reader reader(file);
  const jpeg_decompress_struct& info = reader.Info();
  if (info.image_width == 0 || info.image_height == 0) {
    if (!reader.Ok()) return DecodeFailure(reader.Message());
    return Failure{QStringView(kReasonNoImage).toString()};
  }
  PictureFacts facts;
  facts.width = static_cast<int>(info.image_width);
  facts.height = static_cast<int>(info.image_height);
  facts.bitsPerSample = info.data_precision;
  facts.samplesPerPixel = info.num_components;
  // Unit 1 is dots per inch, 2 per centimetre; 0 gives a ratio only.
  const double unit = !info.saw_JFIF_marker    ? 0
                      : info.density_unit == 1 ? 1
                      : info.density_unit == 2 ? 2.54
                                               : 0;
  facts.dpiX = info.X_density * unit;
  facts.dpiY = info.Y_density * unit;
  facts.iptc = IptcFromResources(Bytes(reader.Segments(JPEG_APP0 + 13, kResourceMark, 0)));
  return facts;
}

Result<QImage> Load(ByteView file, const LoadOptions& options) {
  Reader reader(file);
  if (!reader.Ok()) return DecodeFailure(reader.Message());
  jpeg_decompress_struct& info = reader.Info();
  if (std::int64_t{info.image_width} * info.image_height > kMostPixels ||
      CoefficientBytes(info) > kMostDecoderBytes) {
    return Failure{QStringLiteral("The picture is too large")};
  }

  ChooseScale(info, options.box);
  info.dct_method = JDCT_ISLOW;
  if (!options.box.isEmpty()) info.do_fancy_upsampling = FALSE;
  const bool gray = info.jpeg_color_space == JCS_GRAYSCALE || info.num_components == 1;
  const bool cmyk = info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK;
  info.out_color_space = gray ? JCS_GRAYSCALE : cmyk ? JCS_CMYK : JCS_EXT_BGRX;
  if (!reader.Run([&] { jpeg_start_decompress(&info); })) return DecodeFailure(reader.Message());

  const RowFormat format = gray ? RowFormat::Gray8 : cmyk ? RowFormat::Rgb24 : RowFormat::Rgb32;
  auto sink = RowSink::Create(static_cast<int>(info.output_width),
                              static_cast<int>(info.output_height), format, options.box);
  if (!sink) return Failure{sink.Reason()};
  const QByteArray profile =
      options.colourManagement ? reader.Segments(JPEG_APP0 + 2, kProfileMark, 2) : QByteArray();
  const CmykConverter converter(cmyk ? Bytes(profile) : ByteView());
  const std::size_t rowBytes = std::size_t{info.output_width} * 4;
  std::vector<std::uint8_t> row(rowBytes), rgb(cmyk ? rowBytes : 0);
  JSAMPROW target = row.data();

  const bool complete = reader.Run([&] {
    while (info.output_scanline < info.output_height) {
      const int y = static_cast<int>(info.output_scanline);
      if (jpeg_read_scanlines(&info, &target, 1) != 1) return;
      if (cmyk) {
        // The one program that writes CMYK with a marker of its own stores no ink as 255.
        if (info.saw_Adobe_marker) {
          for (std::uint8_t& sample : row)
            sample = static_cast<std::uint8_t>(255 - sample);
        }
        converter.ConvertRow(row.data(), rgb.data(), sink->Width());
      }
      sink->PutRow(y, cmyk ? rgb.data() : row.data());
    }
  });
  if (!complete && !sink->HasRows()) return DecodeFailure(reader.Message());
  if (!complete || info.err->num_warnings > 0) options.TellIncomplete();
  return cmyk ? sink->Take() : ToSrgb(sink->Take(), Bytes(profile));
}

constexpr const char* kExtensions[] = {"jpg", "jpeg", "jpe"};

/// What the encoder allocates by malloc, freed whatever happens.
struct EncodedBytes {
  unsigned char* data = nullptr;
  unsigned long size = 0;
  EncodedBytes() = default;
  EncodedBytes(const EncodedBytes&) = delete;
  EncodedBytes& operator=(const EncodedBytes&) = delete;
  ~EncodedBytes() { std::free(data); }
};

constexpr J_COLOR_SPACE kColourSpaces[] = {JCS_RGB, JCS_GRAYSCALE, JCS_YCbCr, JCS_CMYK, JCS_YCCK};
constexpr J_DCT_METHOD kDctMethods[] = {JDCT_ISLOW, JDCT_IFAST, JDCT_FLOAT};

bool IsGray(const QImage& picture) {
  return picture.format() == QImage::Format_Grayscale8 ||
         picture.format() == QImage::Format_Grayscale16;
}

J_COLOR_SPACE ColourSpaceOf(const QImage& picture, const SaveOptions& options) {
  if (options.jpegColourSpace < 0) return IsGray(picture) ? JCS_GRAYSCALE : JCS_YCbCr;
  return kColourSpaces[static_cast<std::size_t>(options.jpegColourSpace)];
}

/// The ink as programs expect it in a JPEG, stored inverted: 255 is none.
void InvertedInk(const QRgb* row, JSAMPLE* out, int width) {
  for (int x = 0; x < width; ++x, out += 4) {
    const int rgb[] = {qRed(row[x]), qGreen(row[x]), qBlue(row[x])};
    const int white = *std::ranges::max_element(rgb);
    for (int c = 0; c < 3; ++c)
      out[c] = static_cast<JSAMPLE>(white == 0 ? 255 : (rgb[c] * 255 + white / 2) / white);
    out[3] = static_cast<JSAMPLE>(white);
  }
}

void SetUp(jpeg_compress_struct& info, J_COLOR_SPACE colours, const SaveOptions& options) {
  jpeg_set_defaults(&info);
  jpeg_set_colorspace(&info, colours);
  info.dct_method = kDctMethods[options.jpegDctMethod];
  info.smoothing_factor = options.jpegSmooth;
  info.optimize_coding = options.jpegOptimalHuffman ? TRUE : FALSE;
  jpeg_set_quality(&info, options.jpegQuality, TRUE);
  if (options.jpegProgressive) jpeg_simple_progression(&info);
  // The best quality keeps the colours of each pixel.
  if (options.jpegQuality < 100) return;
  info.comp_info[0].h_samp_factor = info.comp_info[0].v_samp_factor = 1;
  if (colours == JCS_YCCK) info.comp_info[3].h_samp_factor = info.comp_info[3].v_samp_factor = 1;
}

void SetDensity(jpeg_compress_struct& info, const FileBlocks& blocks) {
  if (blocks.dpiX <= 0 || blocks.dpiY <= 0) return;
  info.density_unit = 1;  // dots per inch
  info.X_density = static_cast<UINT16>(std::clamp(std::lround(blocks.dpiX), 1L, 0xFFFFL));
  info.Y_density = static_cast<UINT16>(std::clamp(std::lround(blocks.dpiY), 1L, 0xFFFFL));
}

Result<QByteArray> Compress(const QImage& picture, const SaveOptions& options,
                            const FileBlocks& blocks) {
  if (picture.width() > JPEG_MAX_DIMENSION || picture.height() > JPEG_MAX_DIMENSION)
    return Failure{QStringLiteral("File format cannot be written: the picture is too large")};
  const J_COLOR_SPACE colours = ColourSpaceOf(picture, options);
  // The library takes gray samples only for a gray file, colours for any.
  const bool grayRows = colours == JCS_GRAYSCALE;
  const QImage gray = colours == JCS_GRAYSCALE ? ConvertToGrey(picture) : picture;
  const QImage in =
      gray.convertToFormat(grayRows ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
  const bool ink = colours == JCS_CMYK || colours == JCS_YCCK;
  std::vector<JSAMPLE> inkRow(ink ? static_cast<std::size_t>(in.width()) * 4 : 0);
  EncodedBytes out;
  Errors errors{};
  jpeg_compress_struct info{};
  info.err = SilentErrors(errors);
  const bool done = RunTrapped(errors.trap, [&] {
    jpeg_create_compress(&info);
    jpeg_mem_dest(&info, &out.data, &out.size);
    info.image_width = static_cast<JDIMENSION>(in.width());
    info.image_height = static_cast<JDIMENSION>(in.height());
    info.input_components = grayRows ? 1 : 4;
    info.in_color_space = ink ? JCS_CMYK : grayRows ? JCS_GRAYSCALE : JCS_EXT_BGRX;
    SetUp(info, colours, options);
    SetDensity(info, blocks);
    jpeg_start_compress(&info, TRUE);
    while (info.next_scanline < info.image_height) {
      const uchar* line = in.constScanLine(static_cast<int>(info.next_scanline));
      if (ink) InvertedInk(reinterpret_cast<const QRgb*>(line), inkRow.data(), in.width());
      auto* row = ink ? inkRow.data() : const_cast<JSAMPROW>(line);
      jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
  });
  jpeg_destroy_compress(&info);
  if (!done)
    return Failure{QStringLiteral("File format cannot be written: ") +
                   QString::fromLatin1(errors.trap.message)};
  return QByteArray(reinterpret_cast<const char*>(out.data), static_cast<qsizetype>(out.size));
}

/// What no segment can hold isn't worth the picture: a packet of such a size is left out.
constexpr qsizetype kMostPacketBytes = 65000;

Result<QByteArray> Save(const QImage& picture, const SaveOptions& options,
                        const FileBlocks& blocks) {
  const Result<QByteArray> jpeg = Compress(picture, options, blocks);
  if (!jpeg) return jpeg;
  JpegChange change;
  if (!blocks.exif.isEmpty()) change.exif = blocks.exif;
  if (!blocks.iptc.isEmpty()) change.resources = WithIptcResource({}, blocks.iptc);
  if (!blocks.xmp.isEmpty() && blocks.xmp.size() <= kMostPacketBytes) change.xmp = blocks.xmp;
  const J_COLOR_SPACE colours = ColourSpaceOf(picture, options);
  const bool ink = colours == JCS_CMYK || colours == JCS_YCCK;
  const bool fits =
      !ink && (colours == JCS_GRAYSCALE ? DescribesGray : DescribesRgb)(Bytes(blocks.profile));
  if (fits) change.profile = blocks.profile;
  return WithBlocks(Bytes(*jpeg), change);
}

}  // namespace

constinit const Codec kJpegCodec{.name = "JPEG",
                                 .extensions = kExtensions,
                                 .fileType = 3,
                                 .typeText = "JPEG Bitmap (JPG)",
                                 .priority = 50,
                                 .sniff = Sniff,
                                 .readFacts = ReadFacts,
                                 .load = Load,
                                 .save = Save};

QByteArray EncodeJpeg(const QImage& picture, int quality) {
  if (picture.isNull()) return {};
  SaveOptions options;
  options.jpegQuality = quality;
  const Result<QByteArray> jpeg = Compress(picture, options, {});
  return jpeg ? *jpeg : QByteArray();
}

}  // namespace zqm
