// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/row_sink.h"

#include <cstring>

#include "imaging/codec.h"

namespace zqm {
namespace {

constexpr std::int64_t kMostResultBytes = std::int64_t{800} << 20;

/// Sums of colour times alpha over a block stay within 32 bits up to this factor.
constexpr int kMostFactor = 256;

/// The reduction leaves twice the fit, so that the final resampling decides the sharpness.
constexpr int kSpare = 2;

bool HasAlpha(RowFormat format) {
  return format == RowFormat::Rgba32 || format == RowFormat::Rgba64;
}

bool IsGray(RowFormat format) {
  return format == RowFormat::Gray8 || format == RowFormat::Gray16;
}

bool IsDeep(RowFormat format) {
  return format == RowFormat::Gray16 || format == RowFormat::Rgb48 || format == RowFormat::Rgba64;
}

int ChooseFactor(const QSize& size, const QSize& box) {
  if (box.isEmpty()) return 1;
  const QSize fit = FitInto(size, box);
  const int factor = std::min(size.width() / fit.width(), size.height() / fit.height()) / kSpare;
  return std::clamp(factor, 1, kMostFactor);
}

QImage::Format ResultFormat(RowFormat format, bool deep) {
  if (IsGray(format)) return deep ? QImage::Format_Grayscale16 : QImage::Format_Grayscale8;
  if (HasAlpha(format)) return deep ? QImage::Format_RGBA64 : QImage::Format_ARGB32;
  return deep ? QImage::Format_RGBX64 : QImage::Format_RGB32;
}

/// Any row as 8-bit gray (one byte a pixel) or RGBA (four).
void ToBytes(RowFormat format, const void* row, int width, std::uint8_t* out) {
  const auto* in8 = static_cast<const std::uint8_t*>(row);
  const auto* in16 = static_cast<const std::uint16_t*>(row);
  const auto high = [](std::uint16_t v) {
    return static_cast<std::uint8_t>((v * 255U + 32895U) >> 16);
  };
  const auto n = static_cast<std::size_t>(width);
  switch (format) {
    case RowFormat::Gray8:
      std::memcpy(out, in8, n);
      return;
    case RowFormat::Rgba32:
      std::memcpy(out, in8, n * 4);
      return;
    case RowFormat::Gray16:
      for (std::size_t i = 0; i < n; ++i)
        out[i] = high(in16[i]);
      return;
    case RowFormat::Rgba64:
      for (std::size_t i = 0; i < n * 4; ++i)
        out[i] = high(in16[i]);
      return;
    case RowFormat::Rgb24:
      for (std::size_t i = 0; i < n; ++i, in8 += 3, out += 4) {
        out[0] = in8[0], out[1] = in8[1], out[2] = in8[2], out[3] = 255;
      }
      return;
    case RowFormat::Rgb48:
      for (std::size_t i = 0; i < n; ++i, in16 += 3, out += 4) {
        out[0] = high(in16[0]), out[1] = high(in16[1]), out[2] = high(in16[2]), out[3] = 255;
      }
      return;
    case RowFormat::Rgb32:
      for (const QRgb* in = static_cast<const QRgb*>(row); const QRgb p : std::span(in, n)) {
        out[0] = static_cast<std::uint8_t>(qRed(p)), out[1] = static_cast<std::uint8_t>(qGreen(p));
        out[2] = static_cast<std::uint8_t>(qBlue(p)), out[3] = 255, out += 4;
      }
      return;
  }
}

/// A row that keeps its depth, into the picture's own layout.
void CopyDeep(RowFormat format, const void* row, int width, void* out) {
  const auto n = static_cast<std::size_t>(width);
  if (format != RowFormat::Rgb48) {
    std::memcpy(out, row, n * (format == RowFormat::Gray16 ? 2 : 8));
    return;
  }
  const auto* in = static_cast<const std::uint16_t*>(row);
  auto* to = static_cast<std::uint16_t*>(out);
  for (std::size_t i = 0; i < n; ++i, in += 3, to += 4) {
    to[0] = in[0], to[1] = in[1], to[2] = in[2], to[3] = 0xffff;
  }
}

}  // namespace

QSize FitInto(const QSize& picture, const QSize& box) {
  if (picture.width() <= box.width() && picture.height() <= box.height()) return picture;
  const double scale =
      std::min(double(box.width()) / picture.width(), double(box.height()) / picture.height());
  return {std::clamp(qRound(picture.width() * scale), 1, std::max(1, box.width())),
          std::clamp(qRound(picture.height() * scale), 1, std::max(1, box.height()))};
}

Result<RowSink> RowSink::Create(int width, int height, RowFormat format, const QSize& box) {
  if (width <= 0 || height <= 0) return Failure{QStringView(kReasonNoImage).toString()};
  const Failure tooLarge{QStringLiteral("The picture is too large")};
  if (width > kMostSide || height > kMostSide || std::int64_t{width} * height > kMostPixels) {
    return tooLarge;
  }

  RowSink sink;
  sink.width_ = width;
  sink.height_ = height;
  sink.format_ = format;
  sink.factor_ = ChooseFactor({width, height}, box);
  sink.deep_ = IsDeep(format) && box.isEmpty();
  const QSize out((width + sink.factor_ - 1) / sink.factor_,
                  (height + sink.factor_ - 1) / sink.factor_);
  const std::int64_t pixels = std::int64_t{out.width()} * out.height();
  const std::int64_t perPixel = (sink.deep_ ? 2 : 1) * (IsGray(format) ? 1 : 4);
  const std::int64_t sums = sink.factor_ > 1 ? 4 * std::int64_t{sizeof(std::uint32_t)} : 0;
  if (pixels * (perPixel + sums) > kMostResultBytes) return tooLarge;

  sink.image_ = QImage(out, ResultFormat(format, sink.deep_));
  if (sink.image_.isNull()) return tooLarge;
  sink.image_.fill(HasAlpha(format) ? Qt::transparent : Qt::black);
  if (!sink.deep_) sink.pixels_.resize(static_cast<std::size_t>(width) * 4);
  if (sink.factor_ > 1) {
    sink.sums_.resize(static_cast<std::size_t>(pixels) * 4);
    sink.rowsIn_.resize(static_cast<std::size_t>(out.height()));
  }
  sink.pass_ = std::make_unique<ProgressPass>(height);
  return sink;
}

void RowSink::PutRow(int y, const void* row) {
  if (y < 0 || y >= height_) return;
  ++rows_;
  pass_->Done(1);
  if (factor_ == 1) {
    uchar* line = image_.scanLine(y);
    if (deep_) return CopyDeep(format_, row, width_, line);
    if (format_ == RowFormat::Gray8 || format_ == RowFormat::Gray16) {
      return ToBytes(format_, row, width_, line);
    }
    if (format_ == RowFormat::Rgb32) {
      std::memcpy(line, row, static_cast<std::size_t>(width_) * 4);
      return;
    }
    ToBytes(format_, row, width_, pixels_.data());
    auto* out = reinterpret_cast<QRgb*>(line);
    const std::uint8_t* in = pixels_.data();
    for (int x = 0; x < width_; ++x, in += 4)
      out[x] = qRgba(in[0], in[1], in[2], in[3]);
    return;
  }

  ToBytes(format_, row, width_, pixels_.data());
  const int outY = y / factor_;
  ++rowsIn_[static_cast<std::size_t>(outY)];
  std::uint32_t* sums = sums_.data() + static_cast<std::size_t>(outY) * image_.width() * 4;
  const std::uint8_t* in = pixels_.data();
  for (int x = 0; x < width_; sums += 4) {
    const int end = std::min(x + factor_, width_);
    if (IsGray(format_)) {
      for (; x < end; ++x)
        sums[0] += *in++;
    } else if (!HasAlpha(format_)) {
      for (; x < end; ++x, in += 4)
        sums[0] += in[0], sums[1] += in[1], sums[2] += in[2];
    } else {
      for (; x < end; ++x, in += 4) {
        for (int c = 0; c < 3; ++c)
          sums[c] += std::uint32_t{in[c]} * in[3];
        sums[3] += in[3];
      }
    }
  }
}

QImage RowSink::Take() {
  if (factor_ == 1) return std::move(image_);
  const auto mean = [](std::uint32_t sum, std::uint32_t count) {
    return count ? static_cast<int>((sum + std::uint64_t{count} / 2) / count) : 0;
  };
  for (int y = 0; y < image_.height(); ++y) {
    const std::uint32_t* sums = sums_.data() + static_cast<std::size_t>(y) * image_.width() * 4;
    uchar* line = image_.scanLine(y);
    for (int x = 0; x < image_.width(); ++x, sums += 4) {
      const int columns = std::min(factor_, width_ - x * factor_);
      const auto count = static_cast<std::uint32_t>(columns) * rowsIn_[static_cast<std::size_t>(y)];
      if (IsGray(format_)) {
        line[x] = static_cast<uchar>(mean(sums[0], count));
      } else if (auto* out = reinterpret_cast<QRgb*>(line); !HasAlpha(format_)) {
        out[x] = qRgb(mean(sums[0], count), mean(sums[1], count), mean(sums[2], count));
      } else {
        out[x] = qRgba(mean(sums[0], sums[3]), mean(sums[1], sums[3]), mean(sums[2], sums[3]),
                       mean(sums[3], count));
      }
    }
  }
  sums_ = {};
  return std::move(image_);
}

}  // namespace zqm
