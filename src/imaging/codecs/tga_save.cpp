// SPDX-License-Identifier: GPL-3.0-or-later
// Targa 2.0, from the top left: colours in 24 bits or, with alpha, 32, gray and palettes in 8. The
// format holds neither a density nor metadata.
#include "imaging/codecs/save_support.h"

namespace zqm {
namespace {

constexpr int kMostSide16 = 65535;
constexpr int kIndexed = 1, kColour = 2, kGray = 3, kRuns = 8;  // kinds of pixels
constexpr int kFromTop = 0x20;
constexpr std::size_t kLongestPacket = 128;

/// Packets of repeated or plain pixels, none over the end of a row. `out` has room for a byte more
/// a pixel; returns the end.
std::uint8_t* PackRow(const std::uint8_t* row, std::size_t count, std::size_t bytes,
                      std::uint8_t* out) {
  const auto same = [&](std::size_t a, std::size_t b) {
    return std::memcmp(row + a * bytes, row + b * bytes, bytes) == 0;
  };
  for (std::size_t at = 0; at < count;) {
    const std::size_t most = std::min(count - at, kLongestPacket);
    std::size_t run = 1;
    while (run < most && same(at, at + run))
      ++run;
    if (run > 1) {
      *out++ = static_cast<std::uint8_t>(0x80 | (run - 1));
      out = std::copy_n(row + at * bytes, bytes, out);
      at += run;
      continue;
    }
    std::size_t plain = 1;
    while (plain < most && !(at + plain + 1 < count && same(at + plain, at + plain + 1)))
      ++plain;
    *out++ = static_cast<std::uint8_t>(plain - 1);
    out = std::copy_n(row + at * bytes, plain * bytes, out);
    at += plain;
  }
  return out;
}

struct Shape {
  int kind = kColour;
  int bits = 24, mapBits = 0;
  std::vector<QRgb> map;
  bool alpha = false;
};

Shape ShapeOf(const QImage& picture) {
  Shape shape;
  shape.alpha = picture.hasAlphaChannel();
  if (picture.format() == QImage::Format_Indexed8) {
    shape.kind = kIndexed;
    shape.bits = 8;
    shape.map = ColoursOf(picture);
    shape.mapBits = shape.alpha ? 32 : 24;
  } else if (IsGray(picture)) {
    shape.kind = kGray;
    shape.bits = 8;
  } else if (shape.alpha) {
    shape.bits = 32;
  }
  return shape;
}

void WriteHeader(ByteWriter& out, const QImage& picture, const Shape& shape, bool runs) {
  const bool mapped = shape.kind == kIndexed;
  out.U8(0).U8(mapped ? 1 : 0).U8(runs ? shape.kind | kRuns : shape.kind);
  out.U16(0).U16(static_cast<std::int64_t>(shape.map.size())).U8(shape.mapBits);
  out.U16(0).U16(0).U16(picture.width()).U16(picture.height()).U8(shape.bits);
  out.U8(kFromTop | (shape.bits == 32 ? 8 : 0));
  for (const QRgb colour : shape.map) {
    out.U8(qBlue(colour)).U8(qGreen(colour)).U8(qRed(colour));
    if (shape.mapBits == 32) out.U8(qAlpha(colour));
  }
}

/// The extension area is only there to say that the alpha is meant as such.
void WriteTail(ByteWriter& out, bool alpha) {
  constexpr int kExtensionBytes = 495, kMeaningAt = 494, kUsefulAlpha = 3;
  const std::int64_t extensionAt = alpha ? out.Size() : 0;
  if (alpha) out.U16(kExtensionBytes).Zeros(kMeaningAt - 2).U8(kUsefulAlpha);
  out.U32(extensionAt).U32(0).Text("TRUEVISION-XFILE.").U8(0);
}

}  // namespace

Result<QByteArray> SaveTga(const QImage& given, const SaveOptions& options, const FileBlocks&) {
  const auto writable = WritablePicture(given, kMostSide16);
  if (!writable) return Failure{writable.Reason()};
  const QImage picture = WithoutMono(*writable);
  const Shape shape = ShapeOf(picture);
  const auto width = static_cast<std::size_t>(picture.width());
  const std::size_t bytes = shape.bits / 8U;
  ByteWriter out(false);
  WriteHeader(out, picture, shape, options.tgaCompressed);

  RowSource rows(picture, shape.kind == kGray ? RowFormat::Gray8
                          : bytes == 4        ? RowFormat::Rgba32
                                              : RowFormat::Rgb24);
  std::vector<std::uint8_t> row(width * bytes), packed(width * (bytes + 1));
  for (int y = 0; y < picture.height(); ++y) {
    std::copy_n(shape.kind == kIndexed ? picture.constScanLine(y) : rows.Bytes(y), row.size(),
                row.begin());
    for (std::size_t at = 0; shape.kind == kColour && at < row.size(); at += bytes)
      std::swap(row[at], row[at + 2]);
    if (options.tgaCompressed) {
      const std::uint8_t* end = PackRow(row.data(), width, bytes, packed.data());
      out.Raw(packed.data(), static_cast<std::size_t>(end - packed.data()));
    } else {
      out.Raw(row.data(), row.size());
    }
  }
  WriteTail(out, shape.alpha);
  return out.Take();
}

}  // namespace zqm
