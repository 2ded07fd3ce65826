// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/row_source.h"

#include <cstring>

namespace zqm {
namespace {

bool IsDeep(RowFormat format) {
  return format == RowFormat::Gray16 || format == RowFormat::Rgb48 || format == RowFormat::Rgba64;
}

bool IsDirect(QImage::Format have, RowFormat want) {
  switch (want) {
    case RowFormat::Gray8:
      return have == QImage::Format_Grayscale8;
    case RowFormat::Gray16:
      return have == QImage::Format_Grayscale16;
    case RowFormat::Rgb32:
      return have == QImage::Format_RGB32 || have == QImage::Format_ARGB32;
    case RowFormat::Rgba64:
      return have == QImage::Format_RGBA64;
    default:
      return false;
  }
}

std::size_t PixelBytes(RowFormat format) {
  switch (format) {
    case RowFormat::Gray8:
      return 1;
    case RowFormat::Gray16:
      return 2;
    case RowFormat::Rgb24:
      return 3;
    case RowFormat::Rgb48:
      return 6;
    case RowFormat::Rgba64:
      return 8;
    default:
      return 4;
  }
}

/// ITU-R BT.601; gray stays as it is.
template <class Sample>
Sample Luma(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
  return static_cast<Sample>((299 * red + 587 * green + 114 * blue + 500) / 1000);
}

template <class Pixel>
Pixel Gray(std::uint16_t value);
template <>
QRgb Gray<QRgb>(std::uint16_t value) {
  const int v = static_cast<int>((value * 255U + 32895U) >> 16);
  return qRgb(v, v, v);
}
template <>
QRgba64 Gray<QRgba64>(std::uint16_t value) {
  return QRgba64::fromRgba64(value, value, value, 0xFFFF);
}

void From(QRgb in, QRgb& out) {
  out = in;
}
void From(QRgb in, QRgba64& out) {
  out = QRgba64::fromArgb32(in);
}
void From(QRgba64 in, QRgb& out) {
  out = in.toArgb32();
}
void From(QRgba64 in, QRgba64& out) {
  out = in;
}

}  // namespace

RowSource::RowSource(const QImage& picture, RowFormat format)
    : picture_(picture),
      format_(format),
      direct_(IsDirect(picture.format(), format)),
      opaque_(!picture.hasAlphaChannel()) {
  if (direct_) return;
  const auto width = static_cast<std::size_t>(picture.width());
  row_.resize(width * PixelBytes(format));
  IsDeep(format) ? deepPixels_.resize(width) : pixels_.resize(width);
  if (picture.format() == QImage::Format_Indexed8 || picture.format() == QImage::Format_Mono) {
    colours_ = ColoursOf(picture);
  }
}

template <class Pixel>
const Pixel* RowSource::Pixels(int y, std::vector<Pixel>& scratch) {
  const uchar* line = picture_.constScanLine(y);
  const auto fill = [&](const auto* in) {
    for (Pixel& pixel : scratch)
      From(*in++, pixel);
  };
  switch (picture_.format()) {
    case QImage::Format_Grayscale8:
      for (Pixel& pixel : scratch)
        pixel = Gray<Pixel>(static_cast<std::uint16_t>(*line++ * 257));
      break;
    case QImage::Format_Grayscale16:
      for (const auto* in = reinterpret_cast<const quint16*>(line); Pixel & pixel : scratch)
        pixel = Gray<Pixel>(*in++);
      break;
    case QImage::Format_Indexed8:
      for (Pixel& pixel : scratch)
        From(colours_[*line++], pixel);
      break;
    case QImage::Format_Mono:
      for (std::size_t x = 0; x < scratch.size(); ++x)
        From(colours_[(line[x / 8] >> (7 - x % 8)) & 1], scratch[x]);
      break;
    case QImage::Format_RGBX64:
    case QImage::Format_RGBA64:
      fill(reinterpret_cast<const QRgba64*>(line));
      break;
    default:
      fill(reinterpret_cast<const QRgb*>(line));
  }
  return scratch.data();
}

const void* RowSource::Row(int y) {
  if (direct_) return picture_.constScanLine(y);
  if (IsDeep(format_)) {
    Pack(Pixels(y, deepPixels_));
  } else if (picture_.depth() == 32) {
    Pack(reinterpret_cast<const QRgb*>(picture_.constScanLine(y)));
  } else {
    Pack(Pixels(y, pixels_));
  }
  return row_.data();
}

void RowSource::Pack(const QRgb* pixels) {
  std::uint8_t* out = row_.data();
  const std::span<const QRgb> all(pixels, static_cast<std::size_t>(picture_.width()));
  const auto byte = [](int v) { return static_cast<std::uint8_t>(v); };
  switch (format_) {
    case RowFormat::Gray8:
      for (const QRgb p : all) {
        *out++ = Luma<std::uint8_t>(std::uint32_t(qRed(p)), std::uint32_t(qGreen(p)),
                                    std::uint32_t(qBlue(p)));
      }
      return;
    case RowFormat::Rgb24:
      for (const QRgb p : all) {
        out[0] = byte(qRed(p)), out[1] = byte(qGreen(p)), out[2] = byte(qBlue(p)), out += 3;
      }
      return;
    case RowFormat::Rgb32:
      std::memcpy(out, pixels, all.size_bytes());
      return;
    default:
      for (const QRgb p : all) {
        out[0] = byte(qRed(p)), out[1] = byte(qGreen(p)), out[2] = byte(qBlue(p));
        out[3] = opaque_ ? std::uint8_t{255} : byte(qAlpha(p)), out += 4;
      }
  }
}

void RowSource::Pack(const QRgba64* pixels) {
  auto* out = reinterpret_cast<std::uint16_t*>(row_.data());
  const std::span<const QRgba64> all(pixels, static_cast<std::size_t>(picture_.width()));
  switch (format_) {
    case RowFormat::Gray16:
      for (const QRgba64 p : all)
        *out++ = Luma<std::uint16_t>(p.red(), p.green(), p.blue());
      return;
    case RowFormat::Rgb48:
      for (const QRgba64 p : all) {
        out[0] = p.red(), out[1] = p.green(), out[2] = p.blue(), out += 3;
      }
      return;
    default:
      for (const QRgba64 p : all) {
        out[0] = p.red(), out[1] = p.green(), out[2] = p.blue();
        out[3] = opaque_ ? std::uint16_t{0xFFFF} : p.alpha(), out += 4;
      }
  }
}

std::vector<QRgb> ColoursOf(const QImage& picture) {
  const bool mono = picture.format() == QImage::Format_Mono;
  const auto table = picture.colorTable();
  const auto told = std::min<qsizetype>(table.size(), mono ? 2 : 256);
  std::vector<QRgb> colours(table.begin(), table.begin() + told);
  std::size_t used = mono ? 2 : 1;
  for (int y = 0; !mono && y < picture.height(); ++y) {
    const std::span row(picture.constScanLine(y), static_cast<std::size_t>(picture.width()));
    used = std::max(used, std::size_t{*std::ranges::max_element(row)} + 1);
  }
  if (colours.size() < used) colours.resize(used, qRgb(0, 0, 0));
  return colours;
}

}  // namespace zqm
