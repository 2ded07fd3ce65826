// SPDX-License-Identifier: GPL-3.0-or-later
#include <png.h>

#include <bit>
#include <cstdio>

#include "imaging/codecs/save_support.h"

namespace zqm {
namespace {

[[noreturn]] void OnError(png_structp png, png_const_charp message) {
  auto* trap = static_cast<ErrorTrap*>(png_get_error_ptr(png));
  std::snprintf(trap->message, sizeof trap->message, "%s", message);
  std::longjmp(trap->jump, 1);
}
void OnWarning(png_structp, png_const_charp) {}

void AppendBytes(png_structp png, png_bytep data, std::size_t size) {
  static_cast<QByteArray*>(png_get_io_ptr(png))
      ->append(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}
void Flush(png_structp) {}

/// The block in a list of image resources, in hexadecimal digits behind its name and length: so all
/// programs write it that take IPTC along in this format.
QByteArray IptcText(const QByteArray& iptc) {
  constexpr qsizetype kDigitsInLine = 72;
  ByteWriter resources(true);
  AppendResource(resources, 0x0404, iptc);
  const QByteArray block = resources.Take(), digits = block.toHex();
  QByteArray text = "\niptc\n" + QByteArray::number(block.size()).rightJustified(8) + '\n';
  for (qsizetype at = 0; at < digits.size(); at += kDigitsInLine)
    text += digits.mid(at, kDigitsInLine) + '\n';
  return text;
}

/// What the header says and which rows go in.
struct Layout {
  int type = PNG_COLOR_TYPE_RGB;
  int bits = 8;
  std::vector<png_color> palette;
  std::vector<png_byte> alphas;                      // of the palette
  std::optional<RowFormat> rows = RowFormat::Rgb24;  // nothing for the picture's own
  bool flip = false;
};

Layout PaletteLayout(const QImage& picture) {
  Layout layout{.type = PNG_COLOR_TYPE_PALETTE, .rows = std::nullopt};
  const auto white = WhiteBit(picture);
  if (white) {
    layout.type = PNG_COLOR_TYPE_GRAY;
    layout.flip = *white == 0;
  }
  const auto colours = ColoursOf(picture);
  const int indexBits = std::bit_width(colours.size() - 1);
  layout.bits = picture.depth() == 1 ? 1 : static_cast<int>(std::bit_ceil(unsigned(indexBits)));
  for (const QRgb c : colours) {
    layout.palette.push_back({static_cast<png_byte>(qRed(c)), static_cast<png_byte>(qGreen(c)),
                              static_cast<png_byte>(qBlue(c))});
    if (picture.hasAlphaChannel()) layout.alphas.push_back(static_cast<png_byte>(qAlpha(c)));
  }
  return layout;
}

Layout LayoutOf(const QImage& picture) {
  switch (picture.format()) {
    case QImage::Format_Mono:
    case QImage::Format_Indexed8:
      return PaletteLayout(picture);
    case QImage::Format_Grayscale8:
      return {.type = PNG_COLOR_TYPE_GRAY, .rows = RowFormat::Gray8};
    case QImage::Format_Grayscale16:
      return {.type = PNG_COLOR_TYPE_GRAY, .bits = 16, .rows = RowFormat::Gray16};
    case QImage::Format_ARGB32:
      return {.type = PNG_COLOR_TYPE_RGB_ALPHA, .rows = RowFormat::Rgba32};
    case QImage::Format_RGBX64:
      return {.bits = 16, .rows = RowFormat::Rgb48};
    case QImage::Format_RGBA64:
      return {.type = PNG_COLOR_TYPE_RGB_ALPHA, .bits = 16, .rows = RowFormat::Rgba64};
    default:
      return {};
  }
}

class Writer {
 public:
  explicit Writer(QByteArray& out) {
    ok_ = RunTrapped(trap_,
                     [&] {
                       png_ = png_create_write_struct(PNG_LIBPNG_VER_STRING, &trap_, OnError,
                                                      OnWarning);
                       if (!png_) return;
                       info_ = png_create_info_struct(png_);
                       if (!info_) return;
                       png_set_write_fn(png_, &out, AppendBytes, Flush);
                       png_set_user_limits(png_, 0x7FFFFFFF, 0x7FFFFFFF);
                       png_set_compression_buffer_size(png_, 1 << 16);
                       // A profile or block that is refused is left out.
                       png_set_benign_errors(png_, 1);
                     }) &&
          info_;
  }
  ~Writer() { png_destroy_write_struct(&png_, &info_); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  bool Ok() const { return ok_; }
  const char* Message() const { return trap_.message; }
  png_structp Png() { return png_; }
  png_infop Info() { return info_; }
  template <class Body>
  bool Run(const Body& body) {
    return RunTrapped(trap_, body);
  }

 private:
  ErrorTrap trap_;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
  bool ok_ = false;
};

void SetHeader(Writer& writer, const QImage& picture, const SaveOptions& options,
               const Layout& layout) {
  constexpr int kFilters[] = {PNG_FILTER_NONE, PNG_FILTER_SUB, PNG_FILTER_PAETH};
  png_structp png = writer.Png();
  png_set_IHDR(png, writer.Info(), static_cast<png_uint_32>(picture.width()),
               static_cast<png_uint_32>(picture.height()), layout.bits, layout.type,
               options.pngInterlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_set_compression_level(png, std::clamp(options.pngCompression, 0, 9));
  png_set_filter(png, PNG_FILTER_TYPE_BASE, kFilters[std::clamp(options.pngFilter, 0, 2)]);
  if (layout.type != PNG_COLOR_TYPE_PALETTE) return;
  png_set_PLTE(png, writer.Info(), layout.palette.data(), static_cast<int>(layout.palette.size()));
  if (layout.alphas.empty()) return;
  png_set_tRNS(png, writer.Info(), layout.alphas.data(), static_cast<int>(layout.alphas.size()),
               nullptr);
}

/// The texts outlive the call.
void SetBlocks(Writer& writer, const FileBlocks& blocks, QByteArray& xmp, QByteArray& iptc) {
  png_structp png = writer.Png();
  const auto x = WholeNumber(blocks.dpiX / kMetresPerInch, PNG_UINT_31_MAX);
  const auto y = WholeNumber(blocks.dpiY / kMetresPerInch, PNG_UINT_31_MAX);
  if (x > 0 && y > 0) png_set_pHYs(png, writer.Info(), x, y, PNG_RESOLUTION_METER);
  if (!blocks.profile.isEmpty()) {
    png_set_iCCP(png, writer.Info(), "ICC profile", PNG_COMPRESSION_TYPE_BASE,
                 reinterpret_cast<png_const_bytep>(blocks.profile.constData()),
                 static_cast<png_uint_32>(blocks.profile.size()));
  }
  char none[] = "", xmpKey[] = "XML:com.adobe.xmp", iptcKey[] = "Raw profile type iptc";
  png_text text{};
  if (!blocks.xmp.isEmpty()) {
    text.compression = PNG_ITXT_COMPRESSION_NONE;
    text.key = xmpKey;
    text.text = xmp.data();
    text.lang = text.lang_key = none;
    png_set_text(png, writer.Info(), &text, 1);
  }
  if (!blocks.iptc.isEmpty()) {
    text = {};
    text.compression = PNG_TEXT_COMPRESSION_zTXt;
    text.key = iptcKey;
    text.text = iptc.data();
    png_set_text(png, writer.Info(), &text, 1);
  }
}

}  // namespace

Result<QByteArray> SavePng(const QImage& given, const SaveOptions& options,
                           const FileBlocks& blocks) {
  const auto writable = WritablePicture(given, kMostSide);
  if (!writable) return Failure{writable.Reason()};
  const QImage& picture = *writable;
  const Layout layout = LayoutOf(picture);
  QByteArray out, xmp = blocks.xmp, iptc = IptcText(blocks.iptc);
  Writer writer(out);
  if (!writer.Ok()) return WriteFailure(writer.Message());
  RowSource rows(picture, layout.rows.value_or(RowFormat::Gray8));
  const bool written = writer.Run([&] {
    png_structp png = writer.Png();
    SetHeader(writer, picture, options, layout);
    SetBlocks(writer, blocks, xmp, iptc);
    png_write_info(png, writer.Info());
    // The library itself puts this chunk behind the picture, where some readers don't look.
    if (!blocks.exif.isEmpty()) {
      png_write_chunk(png, reinterpret_cast<png_const_bytep>("eXIf"), Bytes(blocks.exif).data(),
                      Bytes(blocks.exif).size());
    }
    if (layout.bits < 8 && picture.depth() == 8) png_set_packing(png);
    if (layout.flip) png_set_invert_mono(png);
    if (layout.bits == 16 && std::endian::native == std::endian::little) png_set_swap(png);
    const int passes = png_set_interlace_handling(png);
    for (int pass = 0; pass < passes; ++pass) {
      for (int y = 0; y < picture.height(); ++y)
        png_write_row(png, layout.rows ? rows.Bytes(y) : picture.constScanLine(y));
    }
    png_write_end(png, nullptr);
  });
  if (!written) return WriteFailure(writer.Message());
  return out;
}

}  // namespace zqm
