// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/raster.h"

#include <libimagequant.h>

#include <cmath>
#include <opencv2/imgproc.hpp>

#include "imaging/cv_view.h"
#include "imaging/map_pixels.h"
#include "imaging/pixel_formats.h"

namespace zqm {
namespace {

struct Release {
  void operator()(liq_attr* p) const { liq_attr_destroy(p); }
  void operator()(liq_image* p) const { liq_image_destroy(p); }
  void operator()(liq_result* p) const { liq_result_destroy(p); }
};
template <class T>
using Owned = std::unique_ptr<T, Release>;

Owned<liq_image> PixelsFor(liq_attr* attr, const QImage& rgba) {
  return Owned<liq_image>(
      liq_image_create_rgba(attr, rgba.constBits(), rgba.width(), rgba.height(), 0));
}

/// The mean distance of a palette's colours to their nearest neighbours, a channel.
double Spacing(const liq_palette& palette) {
  double total = 0;
  for (unsigned i = 0; i < palette.count; ++i) {
    double nearest = 3 * 255.0 * 255.0;
    for (unsigned j = 0; j < palette.count; ++j) {
      const liq_color &a = palette.entries[i], &b = palette.entries[j];
      const auto square = [](int d) { return double(d) * d; };
      if (i != j)
        nearest = std::min(nearest, square(a.r - b.r) + square(a.g - b.g) + square(a.b - b.b));
    }
    total += std::sqrt(nearest / 3);
  }
  return palette.count > 1 ? total / palette.count : 0;
}

/// B. Bayer's matrix: the bits of x ^ y and y, the lowest first, make the threshold.
int BayerThreshold(int x, int y) {
  int threshold = 0;
  for (int bit = 0; bit < 3; ++bit) {
    threshold = threshold * 4 + (((x ^ y) >> bit & 1) * 2 + (y >> bit & 1));
  }
  return threshold;
}

/// Every colour moved by up to half the spacing, by the pattern.
void AddPattern(QImage& rgba, double spacing) {
  constexpr int kSide = 8;
  int moves[kSide][kSide];
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      const double share = (BayerThreshold(x, y) + 0.5) / (kSide * kSide) - 0.5;
      moves[y][x] = static_cast<int>(std::lround(share * spacing));
    }
  }
  for (int y = 0; y < rgba.height(); ++y) {
    uchar* pixel = rgba.scanLine(y);
    for (int x = 0; x < rgba.width(); ++x, pixel += 4) {
      for (int c = 0; c < 3; ++c)
        pixel[c] = static_cast<uchar>(std::clamp(pixel[c] + moves[y % kSide][x % kSide], 0, 255));
    }
  }
}

QImage Remapped(liq_attr* attr, liq_result* result, const QImage& rgba) {
  const Owned<liq_image> pixels = PixelsFor(attr, rgba);
  QImage out(rgba.size(), QImage::Format_Indexed8);
  if (!pixels || out.isNull()) return {};
  std::vector<uchar*> rows(static_cast<std::size_t>(out.height()));
  for (int y = 0; y < out.height(); ++y)
    rows[static_cast<std::size_t>(y)] = out.scanLine(y);
  liq_set_dithering_level(result, 0);
  if (liq_write_remapped_image_rows(result, pixels.get(), rows.data()) != LIQ_OK) return {};
  const liq_palette* palette = liq_get_palette(result);
  QList<QRgb> table;
  for (unsigned i = 0; i < palette->count; ++i) {
    const liq_color& colour = palette->entries[i];
    table.push_back(colour.a ? qRgba(colour.r, colour.g, colour.b, colour.a) : 0);
  }
  out.setColorTable(table);
  return out;
}

}  // namespace

QImage ConvertToGrey(const QImage& picture) {
  const QImage in = InWorkFormat(picture);
  if (in.isNull() || IsGray(in)) return in;
  const QImage out = MapPixels(in, [](Rgb& c) { c.red = c.green = c.blue = Luma(c); });
  return in.hasAlphaChannel() ? out : GrayOfEqualSamples(out);
}

QImage ConvertToBlackWhite(const QImage& picture) {
  const QImage gray =
      ConvertToGrey(RemoveAlphaChannel(picture)).convertToFormat(QImage::Format_Grayscale8);
  if (gray.isNull()) return {};
  cv::Mat levels = CvView(gray);
  double low = 0;
  double high = 0;
  cv::minMaxLoc(levels, &low, &high);
  cv::Mat parted;
  // A picture of one level has nothing to part.
  const int kind = low == high ? cv::THRESH_BINARY : cv::THRESH_BINARY | cv::THRESH_OTSU;
  cv::threshold(levels, parted, 127, 255, kind);
  QImage out(gray.size(), QImage::Format_Mono);
  if (out.isNull()) return {};
  out.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
  out.fill(0);
  for (int y = 0; y < out.height(); ++y) {
    const uchar* from = parted.ptr(y);
    uchar* to = out.scanLine(y);
    for (int x = 0; x < out.width(); ++x) {
      if (from[x]) to[x / 8] = static_cast<uchar>(to[x / 8] | 0x80 >> x % 8);
    }
  }
  return out;
}

QImage ConvertToPalette(const QImage& picture, int colours, PaletteMethod method) {
  QImage rgba = picture.convertToFormat(QImage::Format_RGBA8888);
  const Owned<liq_attr> attr(liq_attr_create());
  if (rgba.isNull() || !attr) return {};
  liq_set_max_colors(attr.get(), std::clamp(colours, 2, 256));
  const Owned<liq_image> pixels = PixelsFor(attr.get(), rgba);
  if (!pixels) return {};
  liq_result* made = nullptr;
  const liq_error error = liq_image_quantize(pixels.get(), attr.get(), &made);
  const Owned<liq_result> result(made);
  if (error != LIQ_OK) return {};
  if (method == PaletteMethod::Ordered) AddPattern(rgba, Spacing(*liq_get_palette(result.get())));
  return Remapped(attr.get(), result.get(), rgba);
}

bool HasAlphaChannel(const QImage& picture) {
  if (!picture.hasAlphaChannel()) return false;
  const QImage in = InWorkFormat(picture);
  for (int y = 0; y < in.height(); ++y) {
    const uchar* row = in.constScanLine(y);
    const auto opaque = [](const auto* pixels, int width) {
      return std::all_of(pixels, pixels + width, [](auto pixel) {
        if constexpr (std::is_same_v<decltype(pixel), QRgba64>)
          return pixel.alpha() == 65535;
        else
          return qAlpha(pixel) == 255;
      });
    };
    if (IsDeep(in) ? !opaque(reinterpret_cast<const QRgba64*>(row), in.width())
                   : !opaque(reinterpret_cast<const QRgb*>(row), in.width()))
      return true;
  }
  return false;
}

QImage RemoveAlphaChannel(const QImage& picture, AlphaRemoval removal) {
  if (!picture.hasAlphaChannel()) return picture;
  QImage out = InWorkFormat(picture);
  if (removal == AlphaRemoval::Merge) {
    out = MapPixelsWithAlpha(std::move(out), [](Rgb& c, float& alpha) {
      c.red = 1 + (c.red - 1) * alpha;
      c.green = 1 + (c.green - 1) * alpha;
      c.blue = 1 + (c.blue - 1) * alpha;
      alpha = 1;
    });
  } else {
    out = MapPixelsWithAlpha(std::move(out), [](Rgb&, float& alpha) { alpha = 1; });
  }
  // Nothing is multiplied by what is 1 everywhere.
  out.reinterpretAsFormat(IsDeep(out) ? QImage::Format_RGBX64 : QImage::Format_RGB32);
  return out;
}

QImage WithinSelection(const QImage& before, const QImage& after, const QImage& selection) {
  if (selection.isNull() || before.size() != after.size() || after.size() != selection.size())
    return after;
  QImage out = InWorkFormat(after);
  const QImage under = before.convertToFormat(out.format());
  const QImage mask = selection.convertToFormat(QImage::Format_Grayscale8);
  const int channels = IsGray(out) ? 1 : 4;
  const auto mix = [&](auto sample, int y) {
    using Sample = decltype(sample);
    const auto* from = reinterpret_cast<const Sample*>(under.constScanLine(y));
    auto* to = reinterpret_cast<Sample*>(out.scanLine(y));
    const uchar* share = mask.constScanLine(y);
    for (int i = 0; i < out.width() * channels; ++i) {
      const int s = share[i / channels];
      to[i] = static_cast<Sample>((to[i] * s + from[i] * (255 - s) + 127) / 255);
    }
  };
  for (int y = 0; y < out.height(); ++y) {
    if (IsDeep(out))
      mix(std::uint16_t{}, y);
    else
      mix(std::uint8_t{}, y);
  }
  return out;
}

}  // namespace zqm
