// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/quantise.h"

#include <libimagequant.h>

#include <array>
#include <memory>

#include "imaging/row_source.h"

namespace zqm {
namespace {

/// Numbers colours in the order in which they come.
class ColourNumbers {
 public:
  explicit ColourNumbers(int most) : most_(most) { slots_.fill(kFree); }

  /// The colour's number, or -1 when there are already as many as may be.
  int Of(QRgb colour) {
    if (last_ >= 0 && colour == lastColour_) return last_;
    std::size_t slot = (colour * 0x9E3779B1U) >> 22;
    while (slots_[slot] != kFree && colours_[slots_[slot]] != colour)
      slot = (slot + 1) % slots_.size();
    if (slots_[slot] == kFree) {
      if (colours_.size() == most_) return -1;
      slots_[slot] = static_cast<std::uint16_t>(colours_.size());
      colours_.append(colour);
    }
    lastColour_ = colour;
    return last_ = slots_[slot];
  }
  const QList<QRgb>& Colours() const { return colours_; }

 private:
  static constexpr std::uint16_t kFree = 0xFFFF;
  qsizetype most_;
  QList<QRgb> colours_;
  std::array<std::uint16_t, 1024> slots_;  // four times as many as colours at most
  QRgb lastColour_ = 0;
  int last_ = -1;
};

/// Nothing when the picture has more colours. `picture` is RGB32 or ARGB32.
std::optional<QImage> Exact(const QImage& picture, int colours) {
  QImage result(picture.size(), QImage::Format_Indexed8);
  if (result.isNull()) return result;
  ColourNumbers numbers(colours);
  const QRgb opaque = picture.hasAlphaChannel() ? 0 : 0xFF000000;
  for (int y = 0; y < picture.height(); ++y) {
    const auto* in = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    uchar* out = result.scanLine(y);
    for (int x = 0; x < picture.width(); ++x) {
      const int number = numbers.Of(in[x] | opaque);
      if (number < 0) return std::nullopt;
      out[x] = static_cast<uchar>(number);
    }
  }
  result.setColorTable(numbers.Colours());
  return result;
}

/// Called on several threads at a time.
void GetRow(liq_color* out, int y, int width, void* picture) {
  const QImage& from = *static_cast<const QImage*>(picture);
  const auto* in = reinterpret_cast<const QRgb*>(from.constScanLine(y));
  const bool opaque = !from.hasAlphaChannel();
  for (int x = 0; x < width; ++x) {
    out[x] = {static_cast<unsigned char>(qRed(in[x])), static_cast<unsigned char>(qGreen(in[x])),
              static_cast<unsigned char>(qBlue(in[x])),
              opaque ? static_cast<unsigned char>(255) : static_cast<unsigned char>(qAlpha(in[x]))};
  }
}

template <class Handle, void (*destroy)(Handle*)>
struct Destroy {
  void operator()(Handle* handle) const { destroy(handle); }
};
using Attributes = std::unique_ptr<liq_attr, Destroy<liq_attr, liq_attr_destroy>>;
using Source = std::unique_ptr<liq_image, Destroy<liq_image, liq_image_destroy>>;
using Chosen = std::unique_ptr<liq_result, Destroy<liq_result, liq_result_destroy>>;

QImage Reduced(QImage& picture, int colours) {
  constexpr double kUsualGamma = 0;
  const Attributes attributes(liq_attr_create());
  if (!attributes || liq_set_max_colors(attributes.get(), colours) != LIQ_OK) return {};
  const Source source(liq_image_create_custom(attributes.get(), GetRow, &picture, picture.width(),
                                              picture.height(), kUsualGamma));
  if (!source) return {};
  liq_result* chosen = nullptr;
  if (liq_image_quantize(source.get(), attributes.get(), &chosen) != LIQ_OK) return {};
  const Chosen owner(chosen);
  liq_set_dithering_level(chosen, 1.0F);

  QImage result(picture.size(), QImage::Format_Indexed8);
  if (result.isNull()) return {};
  std::vector<uchar*> rows;
  for (int y = 0; y < result.height(); ++y)
    rows.push_back(result.scanLine(y));
  if (liq_write_remapped_image_rows(chosen, source.get(), rows.data()) != LIQ_OK) return {};
  const liq_palette* palette = liq_get_palette(chosen);
  QList<QRgb> table;
  for (unsigned i = 0; i < palette->count; ++i) {
    const liq_color& c = palette->entries[i];
    table.append(qRgba(c.r, c.g, c.b, c.a));
  }
  result.setColorTable(table);
  return result;
}

}  // namespace

QImage Quantised(const QImage& picture, int colours) {
  if (picture.isNull()) return {};
  if (picture.format() == QImage::Format_Indexed8) {
    const std::vector<QRgb> table = ColoursOf(picture);
    if (table.size() <= static_cast<std::size_t>(colours)) {
      QImage same = picture;
      same.setColorTable(QList<QRgb>(table.begin(), table.end()));
      return same;
    }
  }
  const bool fits =
      picture.format() == QImage::Format_RGB32 || picture.format() == QImage::Format_ARGB32;
  QImage wide = fits ? picture
                     : picture.convertToFormat(picture.hasAlphaChannel() ? QImage::Format_ARGB32
                                                                         : QImage::Format_RGB32);
  if (wide.isNull()) return {};
  if (auto exact = Exact(wide, colours)) return *exact;
  return Reduced(wide, colours);
}

}  // namespace zqm
