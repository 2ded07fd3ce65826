// SPDX-License-Identifier: GPL-3.0-or-later
#include <png.h>

#include <bit>
#include <cstdio>
#include <cstdlib>

#include "imaging/codecs/codec_support.h"
#include "imaging/codecs/codecs.h"
#include "imaging/codecs/embedded_blocks.h"
#include "imaging/codecs/save_support.h"
#include "imaging/row_sink.h"

namespace zqm {
namespace {

constexpr std::string_view kSignature("\x89PNG\r\n\x1A\n", 8);
constexpr png_alloc_size_t kMostChunkBytes = 16 << 20;
constexpr png_uint_32 kMostChunks = 1000;

[[noreturn]] void OnError(png_structp png, png_const_charp message) {
  auto* trap = static_cast<ErrorTrap*>(png_get_error_ptr(png));
  std::snprintf(trap->message, sizeof trap->message, "%s", message);
  std::longjmp(trap->jump, 1);
}

void OnWarning(png_structp, png_const_charp) {}

/// The library believes a chunk's length before it has seen its bytes; one row is the largest block
/// that it has a reason to ask for.
constexpr png_alloc_size_t kMostBlockBytes = 64 << 20;

png_voidp Allocate(png_structp, png_alloc_size_t size) {
  return size > kMostBlockBytes ? nullptr : std::malloc(size);
}
void Release(png_structp, png_voidp block) {
  std::free(block);
}

/// The reader with its header read, at the first picture data.
class Reader {
 public:
  explicit Reader(ByteView file) : rest_(file) {
    ok_ = RunTrapped(trap_,
                     [&] {
                       png_ = png_create_read_struct_2(PNG_LIBPNG_VER_STRING, &trap_, OnError,
                                                       OnWarning, nullptr, Allocate, Release);
                       if (!png_) return;
                       info_ = png_create_info_struct(png_);
                       if (!info_) return;
                       png_set_read_fn(png_, &rest_, ReadBytes);
                       png_set_user_limits(png_, 0x7FFFFFFF, 0x7FFFFFFF);
                       png_set_chunk_malloc_max(png_, kMostChunkBytes);
                       png_set_chunk_cache_max(png_, kMostChunks);
                       // Checksums of colour and text chunks don't cost the user the picture.
                       png_set_crc_action(png_, PNG_CRC_DEFAULT, PNG_CRC_WARN_DISCARD);
                       png_set_benign_errors(png_, 1);
                       png_read_info(png_, info_);
                     }) &&
          info_;
  }
  ~Reader() { png_destroy_read_struct(&png_, &info_, nullptr); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  bool Ok() const { return ok_; }
  const char* Message() const { return trap_.message; }
  png_structp Png() { return png_; }
  png_infop Info() { return info_; }
  template <class Body>
  bool Run(const Body& body) {
    return RunTrapped(trap_, body);
  }
  int Width() const { return static_cast<int>(png_get_image_width(png_, info_)); }
  int Height() const { return static_cast<int>(png_get_image_height(png_, info_)); }

 private:
  static void ReadBytes(png_structp png, png_bytep out, std::size_t count) {
    auto* rest = static_cast<ByteView*>(png_get_io_ptr(png));
    if (rest->empty()) png_error(png, "the file ends early");
    // Zeros behind the last bytes of a cut file: the rows in front of the cut still come.
    const std::size_t taken = std::min(count, rest->size());
    std::memcpy(out, rest->data(), taken);
    std::memset(out + taken, 0, count - taken);
    *rest = rest->subspan(taken);
  }

  ByteView rest_;
  ErrorTrap trap_;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
  bool ok_ = false;
};

/// The text is a line with a name, one with the length, then hexadecimal digits. Some writers wrap
/// the block in a list of image resources.
QByteArray IptcFromText(const png_text& text) {
  const QByteArray all(text.text, static_cast<qsizetype>(text.text_length));
  const qsizetype name = all.indexOf('\n', 1);
  const qsizetype length = name < 0 ? -1 : all.indexOf('\n', name + 1);
  if (length < 0) return {};
  const QByteArray block = QByteArray::fromHex(all.mid(length + 1));
  return block.startsWith("8BIM") ? IptcFromResources(Bytes(block)) : block;
}

bool Sniff(ByteView file, const QString&) {
  return StartsWith(file, kSignature);
}

Result<PictureFacts> ReadFacts(ByteView file, const LoadOptions&) {
  Reader reader(file);
  if (!reader.Ok()) return DecodeFailure(reader.Message());
  PictureFacts facts;
  facts.width = reader.Width();
  facts.height = reader.Height();
  facts.bitsPerSample = png_get_bit_depth(reader.Png(), reader.Info());
  facts.samplesPerPixel = png_get_channels(reader.Png(), reader.Info());
  png_uint_32 x = 0, y = 0;
  int unit = 0;
  if (png_get_pHYs(reader.Png(), reader.Info(), &x, &y, &unit) && unit == PNG_RESOLUTION_METER) {
    facts.dpiX = x * kMetresPerInch;
    facts.dpiY = y * kMetresPerInch;
  }
  png_colorp palette = nullptr;
  if (png_get_color_type(reader.Png(), reader.Info()) == PNG_COLOR_TYPE_PALETTE) {
    png_get_PLTE(reader.Png(), reader.Info(), &palette, &facts.colorMapCount);
  }
  png_textp texts = nullptr;
  int count = 0;
  png_get_text(reader.Png(), reader.Info(), &texts, &count);
  for (const png_text& text : std::span(texts, static_cast<std::size_t>(count))) {
    if (std::string_view(text.key) == "Raw profile type iptc") facts.iptc = IptcFromText(text);
  }
  return facts;
}

/// Everything as gray or RGB, with alpha where the file has any, 8 or 16 bits.
RowFormat ChooseFormat(Reader& reader) {
  png_structp png = reader.Png();
  const bool alpha = (png_get_color_type(png, reader.Info()) & PNG_COLOR_MASK_ALPHA) ||
                     png_get_valid(png, reader.Info(), PNG_INFO_tRNS);
  const bool gray = !(png_get_color_type(png, reader.Info()) & PNG_COLOR_MASK_COLOR);
  const bool deep = png_get_bit_depth(png, reader.Info()) == 16;
  png_set_expand(png);
  if (deep && std::endian::native == std::endian::little) png_set_swap(png);
  if (alpha) {
    if (gray) png_set_gray_to_rgb(png);
    return deep ? RowFormat::Rgba64 : RowFormat::Rgba32;
  }
  if (gray) return deep ? RowFormat::Gray16 : RowFormat::Gray8;
  return deep ? RowFormat::Rgb48 : RowFormat::Rgb24;
}

Result<QImage> Load(ByteView file, const LoadOptions& options) {
  Reader reader(file);
  if (!reader.Ok()) return DecodeFailure(reader.Message());
  const int width = reader.Width(), height = reader.Height();
  if (std::int64_t{width} * height > kMostPixels) {
    return Failure{QStringLiteral("The picture is too large")};
  }
  RowFormat format = RowFormat::Gray8;
  int passes = 1;
  std::size_t rowBytes = 0;
  if (!reader.Run([&] {
        passes = png_set_interlace_handling(reader.Png());
        format = ChooseFormat(reader);
        png_read_update_info(reader.Png(), reader.Info());
        rowBytes = png_get_rowbytes(reader.Png(), reader.Info());
      })) {
    return DecodeFailure(reader.Message());
  }
  auto sink = RowSink::Create(width, height, format, options.box);
  if (!sink) return Failure{sink.Reason()};

  // Interlaced pictures come in passes over the whole picture, others row by row.
  const std::size_t keptRows = passes > 1 ? static_cast<std::size_t>(height) : 1;
  const std::int64_t resultBytes = options.box.isEmpty() ? std::int64_t{width} * height * 4 : 0;
  if (static_cast<std::int64_t>(rowBytes * keptRows) + resultBytes > kMostDecoderBytes) {
    return Failure{QStringLiteral("The picture is too large")};
  }
  std::vector<png_byte> rows(rowBytes * keptRows);
  bool anyRow = false;
  const bool complete = reader.Run([&] {
    for (int pass = 0; pass < passes; ++pass) {
      for (int y = 0; y < height; ++y) {
        png_bytep row = rows.data() + (passes > 1 ? rowBytes * static_cast<std::size_t>(y) : 0);
        png_read_row(reader.Png(), row, nullptr);
        anyRow = true;
        if (passes == 1) sink->PutRow(y, row);
      }
    }
  });
  if (!complete && !anyRow) return DecodeFailure(reader.Message());
  if (!complete) options.TellIncomplete();
  for (int y = 0; passes > 1 && y < height; ++y) {
    sink->PutRow(y, rows.data() + rowBytes * static_cast<std::size_t>(y));
  }
  return sink->Take();
}

constexpr const char* kExtensions[] = {"png"};

}  // namespace

constinit const Codec kPngCodec{"PNG", kExtensions, 7,         "Portable Network Graphics (PNG)",
                                50,    Sniff,       ReadFacts, Load,
                                false, SavePng};

}  // namespace zqm
