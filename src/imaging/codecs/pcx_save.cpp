// SPDX-License-Identifier: GPL-3.0-or-later
// PCX: three planes of 8 bits for colours, one of 8 bits with a palette, one of 1 bit for black and
// white. Runs never go on into the next plane or line, as most readers expect.
#include "imaging/codecs/save_support.h"

namespace zqm {
namespace {

constexpr int kMostWidth = 65534;  // a line's length is an even number of 16 bits
constexpr std::uint8_t kRun = 0xC0;
constexpr std::size_t kLongestRun = 63;

/// A count with the two highest bits set, then the byte; a lone byte below them stands for itself.
/// `out` has room for twice the line; returns the end.
std::uint8_t* PackRuns(ByteView line, std::uint8_t* out) {
  for (std::size_t at = 0; at < line.size();) {
    const std::uint8_t byte = line[at];
    const std::size_t most = std::min(line.size() - at, kLongestRun);
    std::size_t count = 1;
    while (count < most && line[at + count] == byte)
      ++count;
    if (count > 1 || byte >= kRun) *out++ = static_cast<std::uint8_t>(kRun | count);
    *out++ = byte;
    at += count;
  }
  return out;
}

struct Shape {
  int bits = 8, planes = 3;
  int lineBytes = 0;  // of one plane, even
  bool gray = false;
};

Shape ShapeOf(const QImage& picture) {
  Shape shape;
  if (picture.format() == QImage::Format_Mono) shape.bits = 1;
  shape.gray = IsGray(picture);
  if (picture.depth() <= 8 || shape.gray) shape.planes = 1;
  shape.lineBytes = ((picture.width() * shape.bits + 7) / 8 + 1) / 2 * 2;
  return shape;
}

void WriteHeader(ByteWriter& out, const QImage& picture, const Shape& shape, bool runs,
                 const FileBlocks& blocks) {
  constexpr int kMark = 0x0A, kVersion = 5, kColour = 1, kGray = 2;
  out.U8(kMark).U8(kVersion).U8(runs ? 1 : 0).U8(shape.bits);
  out.U16(0).U16(0).U16(picture.width() - 1).U16(picture.height() - 1);
  out.U16(WholeNumber(blocks.dpiX, 0xFFFF)).U16(WholeNumber(blocks.dpiY, 0xFFFF));
  // The small palette: black and white, for the readers that ask it for one bit.
  out.Zeros(3).Text("\xFF\xFF\xFF").Zeros(42);
  out.U8(0).U8(shape.planes).U16(shape.lineBytes).U16(shape.gray ? kGray : kColour);
  out.Zeros(58);
}

/// The lines of all planes of a row, one behind the other.
class PlaneLines {
 public:
  PlaneLines(const QImage& picture, const Shape& shape)
      : picture_(picture),
        shape_(shape),
        rows_(picture, shape.gray ? RowFormat::Gray8 : RowFormat::Rgb24),
        flip_(WhiteBit(picture).value_or(1) == 0),
        planes_(static_cast<std::size_t>(shape.planes * shape.lineBytes)) {}

  const std::vector<std::uint8_t>& Line(int y) {
    const auto width = static_cast<std::size_t>(picture_.width());
    if (shape_.planes == 3) {
      const std::uint8_t* in = rows_.Bytes(y);
      const auto line = static_cast<std::size_t>(shape_.lineBytes);
      for (std::size_t x = 0; x < width; ++x, in += 3) {
        planes_[x] = in[0], planes_[x + line] = in[1], planes_[x + 2 * line] = in[2];
      }
    } else {
      const std::uint8_t* in = shape_.gray ? rows_.Bytes(y) : picture_.constScanLine(y);
      std::copy_n(in, shape_.bits == 1 ? (width + 7) / 8 : width, planes_.begin());
      for (std::uint8_t& byte : planes_)
        byte = static_cast<std::uint8_t>(flip_ ? ~byte : byte);
    }
    return planes_;
  }

 private:
  const QImage& picture_;
  const Shape& shape_;
  RowSource rows_;
  bool flip_;
  std::vector<std::uint8_t> planes_;
};

void WritePalette(ByteWriter& out, const QImage& picture, bool gray) {
  constexpr int kPaletteMark = 0x0C;
  out.U8(kPaletteMark);
  std::vector<QRgb> colours = gray ? std::vector<QRgb>() : ColoursOf(picture);
  for (int i = static_cast<int>(colours.size()); i < 256; ++i)
    colours.push_back(gray ? qRgb(i, i, i) : qRgb(0, 0, 0));
  for (const QRgb colour : colours)
    out.U8(qRed(colour)).U8(qGreen(colour)).U8(qBlue(colour));
}

}  // namespace

Result<QByteArray> SavePcx(const QImage& given, const SaveOptions& options,
                           const FileBlocks& blocks) {
  const auto writable = WritablePicture(given, kMostWidth);
  if (!writable) return Failure{writable.Reason()};
  const QImage picture = WhiteBit(*writable) ? *writable : WithoutMono(*writable);
  const Shape shape = ShapeOf(picture);
  ByteWriter out(false);
  WriteHeader(out, picture, shape, options.pcxCompressed, blocks);
  PlaneLines lines(picture, shape);
  const auto lineBytes = static_cast<std::size_t>(shape.lineBytes);
  std::vector<std::uint8_t> packed(lineBytes * 2);
  for (int y = 0; y < picture.height(); ++y) {
    const std::vector<std::uint8_t>& planes = lines.Line(y);
    if (!options.pcxCompressed) out.Raw(planes.data(), planes.size());
    for (std::size_t at = 0; options.pcxCompressed && at < planes.size(); at += lineBytes) {
      const std::uint8_t* end = PackRuns({planes.data() + at, lineBytes}, packed.data());
      out.Raw(packed.data(), static_cast<std::size_t>(end - packed.data()));
    }
  }
  if (shape.bits == 8 && shape.planes == 1) WritePalette(out, picture, shape.gray);
  return out.Take();
}

}  // namespace zqm
