// SPDX-License-Identifier: GPL-3.0-or-later
// Windows bitmaps, never compressed: colours in 24 bits, palettes and gray in 8, two colours in 1.
// The plain header of 40 bytes where it is enough; alpha and a profile need the fifth one.
#include "imaging/codecs/save_support.h"

namespace zqm {
namespace {

constexpr std::int64_t kFileHeader = 14;
constexpr std::int64_t kPlainHeader = 40;
constexpr std::int64_t kLongHeader = 124;
constexpr std::int64_t kMasksAt = 54, kProfilePlaceAt = 126;  // in files with the long header

struct Layout {
  int bits = 24;
  std::int64_t header = kPlainHeader;
  std::vector<QRgb> palette;
};

Layout ChooseLayout(const QImage& picture, bool profile) {
  Layout layout;
  if (picture.hasAlphaChannel()) {
    layout.bits = 32;
  } else if (picture.depth() <= 8 && !IsGray(picture)) {
    layout.bits = picture.depth();
    layout.palette = ColoursOf(picture);
  } else if (IsGray(picture)) {
    layout.bits = 8;
    for (int i = 0; i < 256; ++i)
      layout.palette.push_back(qRgb(i, i, i));
  }
  if (layout.bits == 32 || profile) layout.header = kLongHeader;
  return layout;
}

void WriteHeaders(ByteWriter& out, const QImage& picture, const Layout& layout,
                  const FileBlocks& blocks, std::int64_t pixelBytes) {
  constexpr int kPlain = 0, kMasks = 3;
  constexpr std::uint32_t kMostPerMetre = 0x7FFFFFFF;
  const auto colours = static_cast<std::int64_t>(layout.palette.size());
  const std::int64_t pixelsAt = kFileHeader + layout.header + colours * 4;
  const bool alpha = layout.bits == 32;
  out.Text("BM").U32(pixelsAt + pixelBytes + blocks.profile.size()).U32(0).U32(pixelsAt);
  out.U32(layout.header).U32(picture.width()).U32(picture.height()).U16(1).U16(layout.bits);
  out.U32(alpha ? kMasks : kPlain).U32(pixelBytes);
  out.U32(WholeNumber(blocks.dpiX / kMetresPerInch, kMostPerMetre));
  out.U32(WholeNumber(blocks.dpiY / kMetresPerInch, kMostPerMetre));
  out.U32(colours).U32(0);
  if (layout.header == kLongHeader) {
    // Behind the plain header: masks, the colour space with its end points and gammas, the intent
    // (pictures), the profile's place from the header's start and its length.
    out.Zeros(16);
    out.Text(blocks.profile.isEmpty() ? "BGRs" : "DEBM").Zeros(48).U32(4).Zeros(12);
    if (!blocks.profile.isEmpty()) {
      out.Set32(kProfilePlaceAt, pixelsAt - kFileHeader + pixelBytes);
      out.Set32(kProfilePlaceAt + 4, blocks.profile.size());
    }
    constexpr std::int64_t masks[] = {0xFF0000, 0xFF00, 0xFF, 0xFF000000};
    for (int i = 0; i < 4 && alpha; ++i)
      out.Set32(kMasksAt + 4 * i, masks[i]);
  }
  for (const QRgb colour : layout.palette)
    out.U8(qBlue(colour)).U8(qGreen(colour)).U8(qRed(colour)).U8(0);
}

RowFormat RowsFor(int bits) {
  return bits == 8 ? RowFormat::Gray8 : bits == 32 ? RowFormat::Rgba32 : RowFormat::Rgb24;
}

}  // namespace

Result<QByteArray> SaveBmp(const QImage& given, const SaveOptions&, const FileBlocks& blocks) {
  const auto writable = WritablePicture(given, kMostSide);
  if (!writable) return Failure{writable.Reason()};
  const QImage picture = WithoutClearPalette(*writable);
  const Layout layout = ChooseLayout(picture, !blocks.profile.isEmpty());
  const std::int64_t used = (std::int64_t{picture.width()} * layout.bits + 7) / 8;
  const std::int64_t stride = (used + 3) / 4 * 4;
  ByteWriter out(false);
  out.Reserve(kFileHeader + kLongHeader + 1024 + stride * picture.height() + blocks.profile.size());
  WriteHeaders(out, picture, layout, blocks, stride * picture.height());

  const bool indexed = !layout.palette.empty() && !IsGray(picture);
  RowSource rows(picture, RowsFor(layout.bits));
  std::vector<std::uint8_t> turned(layout.bits >= 24 ? static_cast<std::size_t>(used) : 0);
  for (int y = picture.height() - 1; y >= 0; --y) {
    const std::uint8_t* row = indexed ? picture.constScanLine(y) : rows.Bytes(y);
    if (!turned.empty()) {
      const std::size_t step = layout.bits / 8U;
      std::copy_n(row, turned.size(), turned.begin());
      for (std::size_t at = 0; at < turned.size(); at += step)
        std::swap(turned[at], turned[at + 2]);
      row = turned.data();
    }
    out.Raw(row, static_cast<std::size_t>(used)).Zeros(stride - used);
  }
  out.Raw(blocks.profile);
  return out.Take();
}

}  // namespace zqm
