// SPDX-License-Identifier: GPL-3.0-or-later
// PSD with the merged picture only, in packed rows, plane by plane. Big-endian.
#include "imaging/codecs/save_support.h"

namespace zqm {
namespace {

constexpr int kMostSidePsd = 30000;

enum class Mode { Bitmap = 0, Gray = 1, Indexed = 2, Rgb = 3 };

struct Shape {
  Mode mode = Mode::Rgb;
  int depth = 8, planes = 3;
  bool alpha = false;
};

Shape ShapeOf(const QImage& picture) {
  switch (picture.format()) {
    case QImage::Format_Mono:
      return {Mode::Bitmap, 1, 1, false};
    case QImage::Format_Indexed8:
      return {Mode::Indexed, 8, 1, false};
    case QImage::Format_Grayscale8:
      return {Mode::Gray, 8, 1, false};
    case QImage::Format_Grayscale16:
      return {Mode::Gray, 16, 1, false};
    default:
      return {Mode::Rgb, picture.depth() == 64 ? 16 : 8, picture.hasAlphaChannel() ? 4 : 3,
              picture.hasAlphaChannel()};
  }
}

/// Runs as a signed byte n tells them: n + 1 plain bytes, or one byte 1 - n times. Two equal bytes
/// in the middle of plain ones are no run, since that saves nothing. `out` has room for twice the
/// row; returns the end.
std::uint8_t* PackRow(ByteView row, std::uint8_t* out) {
  constexpr std::size_t kMost = 128;
  const auto runAt = [&](std::size_t at) {
    std::size_t count = 1;
    const std::size_t most = std::min(row.size() - at, kMost);
    while (count < most && row[at + count] == row[at])
      ++count;
    return count;
  };
  for (std::size_t at = 0; at < row.size();) {
    if (const std::size_t run = runAt(at); run > 1) {
      *out++ = static_cast<std::uint8_t>(257 - run);
      *out++ = row[at];
      at += run;
      continue;
    }
    std::size_t plain = 1;
    while (plain < kMost && at + plain < row.size() && runAt(at + plain) < 3)
      ++plain;
    *out++ = static_cast<std::uint8_t>(plain - 1);
    out = std::copy_n(row.data() + at, plain, out);
    at += plain;
  }
  return out;
}

/// The colour as it looks on white, the way a merged picture is stored.
template <class Sample>
Sample OnWhite(Sample colour, Sample alpha) {
  constexpr std::uint64_t most = std::numeric_limits<Sample>::max();
  return static_cast<Sample>(most - ((most - colour) * alpha + most / 2) / most);
}

/// The rows of one plane after the other.
class PlaneRows {
 public:
  PlaneRows(const QImage& picture, const Shape& shape)
      : picture_(picture),
        shape_(shape),
        rows_(picture, FormatFor(shape)),
        flip_(WhiteBit(picture).value_or(0) == 1),
        row_(static_cast<std::size_t>((picture.width() * shape.depth + 7) / 8)) {}

  ByteView Row(std::size_t plane, int y) {
    const auto channels = static_cast<std::size_t>(shape_.planes);
    if (shape_.mode == Mode::Bitmap || shape_.mode == Mode::Indexed) {
      const std::uint8_t* in = picture_.constScanLine(y);  // black is 1 in bitmaps
      for (std::size_t i = 0; i < row_.size(); ++i)
        row_[i] = static_cast<std::uint8_t>(flip_ ? ~in[i] : in[i]);
    } else if (shape_.depth == 8) {
      const std::uint8_t* in = rows_.Bytes(y);
      for (std::size_t x = 0; x < row_.size(); ++x, in += channels)
        row_[x] = Sample(in, plane);
    } else {
      const auto* in = static_cast<const std::uint16_t*>(rows_.Row(y));
      for (std::size_t x = 0; x < row_.size(); x += 2, in += channels) {
        const std::uint16_t value = Sample(in, plane);
        row_[x] = static_cast<std::uint8_t>(value >> 8);
        row_[x + 1] = static_cast<std::uint8_t>(value);
      }
    }
    return row_;
  }

 private:
  static RowFormat FormatFor(const Shape& shape) {
    const bool deep = shape.depth == 16;
    if (shape.mode != Mode::Rgb) return deep ? RowFormat::Gray16 : RowFormat::Gray8;
    if (shape.alpha) return deep ? RowFormat::Rgba64 : RowFormat::Rgba32;
    return deep ? RowFormat::Rgb48 : RowFormat::Rgb24;
  }
  template <class T>
  T Sample(const T* pixel, std::size_t plane) const {
    return shape_.alpha && plane < 3 ? OnWhite(pixel[plane], pixel[3]) : pixel[plane];
  }

  const QImage& picture_;
  const Shape& shape_;
  RowSource rows_;
  bool flip_;
  std::vector<std::uint8_t> row_;
};

void WritePalette(ByteWriter& out, const std::vector<QRgb>& colours) {
  std::array<std::array<std::uint8_t, 256>, 3> planes{};
  for (std::size_t i = 0; i < colours.size(); ++i) {
    planes[0][i] = static_cast<std::uint8_t>(qRed(colours[i]));
    planes[1][i] = static_cast<std::uint8_t>(qGreen(colours[i]));
    planes[2][i] = static_cast<std::uint8_t>(qBlue(colours[i]));
  }
  out.U32(sizeof planes).Raw(planes.data(), sizeof planes);
}

void WriteResources(ByteWriter& out, const FileBlocks& blocks, std::size_t colours) {
  const qsizetype lengthAt = out.Size();
  out.U32(0);
  if (blocks.dpiX > 0 && blocks.dpiY > 0) {
    constexpr int kPerInch = 1, kInches = 1;
    ByteWriter resolution(true);
    for (const double dpi : {blocks.dpiX, blocks.dpiY})
      resolution.U32(WholeNumber(dpi * 65536, 0xFFFFFFFF)).U16(kPerInch).U16(kInches);
    AppendResource(out, 0x03ED, resolution.Take());
  }
  const std::pair<int, const QByteArray&> parts[] = {
      {0x0404, blocks.iptc}, {0x040F, blocks.profile}, {0x0422, blocks.exif}, {0x0424, blocks.xmp}};
  for (const auto& [number, part] : parts) {
    if (!part.isEmpty()) AppendResource(out, number, part);
  }
  if (colours > 0) {
    ByteWriter count(true);
    count.U16(static_cast<std::int64_t>(colours));
    AppendResource(out, 0x0416, count.Take());
  }
  out.Set32(lengthAt, out.Size() - lengthAt - 4);
}

/// No layers; with alpha an empty block that calls the fourth plane the picture's transparency.
void WriteLayers(ByteWriter& out, const Shape& shape) {
  if (!shape.alpha) {
    out.U32(0);
    return;
  }
  constexpr int kBlockBytes = 12;
  out.U32(8 + kBlockBytes).U32(0).U32(0);
  out.Text("8BIM").Text(shape.depth == 16 ? "Mt16" : "Mtrn").U32(0);
}

}  // namespace

Result<QByteArray> SavePsd(const QImage& given, const SaveOptions&, const FileBlocks& blocks) {
  const auto writable = WritablePicture(given, kMostSidePsd);
  if (!writable) return Failure{writable.Reason()};
  QImage picture = WithoutClearPalette(*writable);
  if (!WhiteBit(picture)) picture = WithoutMono(picture);
  const Shape shape = ShapeOf(picture);
  ByteWriter out(true);
  out.Text("8BPS").U16(1).Zeros(6).U16(shape.planes).U32(picture.height()).U32(picture.width());
  out.U16(shape.depth).U16(static_cast<int>(shape.mode));
  const std::vector<QRgb> colours =
      shape.mode == Mode::Indexed ? ColoursOf(picture) : std::vector<QRgb>();
  colours.empty() ? void(out.U32(0)) : WritePalette(out, colours);
  WriteResources(out, blocks, colours.size());
  WriteLayers(out, shape);

  constexpr int kPackedRows = 1;
  out.U16(kPackedRows);
  qsizetype countAt = out.Size();
  out.Zeros(qsizetype{2} * shape.planes * picture.height());
  PlaneRows rows(picture, shape);
  std::vector<std::uint8_t> packed(static_cast<std::size_t>(picture.width()) * 4);
  for (int plane = 0; plane < shape.planes; ++plane) {
    for (int y = 0; y < picture.height(); ++y, countAt += 2) {
      const std::uint8_t* end =
          PackRow(rows.Row(static_cast<std::size_t>(plane), y), packed.data());
      out.Raw(packed.data(), static_cast<std::size_t>(end - packed.data()));
      out.Set16(countAt, end - packed.data());
    }
  }
  return out.Take();
}

}  // namespace zqm
