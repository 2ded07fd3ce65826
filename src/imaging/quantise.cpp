// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/quantise.h"

#include <libimagequant.h>

#include <memory>

namespace zqm {
namespace {

template <auto Destroy>
struct Destroyer {
  template <class T>
  void operator()(T* object) const {
    Destroy(object);
  }
};
using Attributes = std::unique_ptr<liq_attr, Destroyer<liq_attr_destroy>>;
using Pixels = std::unique_ptr<liq_image, Destroyer<liq_image_destroy>>;
using Found = std::unique_ptr<liq_result, Destroyer<liq_result_destroy>>;

}  // namespace

QImage Quantised(const QImage& picture, int colours) {
  const QImage in = picture.convertToFormat(QImage::Format_RGBA8888);
  const Attributes attributes(liq_attr_create());
  if (!attributes || in.isNull()) return {};
  liq_set_max_colors(attributes.get(), colours);
  std::vector<void*> rows;
  for (int y = 0; y < in.height(); ++y)
    rows.push_back(const_cast<uchar*>(in.constScanLine(y)));
  const Pixels pixels(
      liq_image_create_rgba_rows(attributes.get(), rows.data(), in.width(), in.height(), 0));
  liq_result* raw = nullptr;
  if (!pixels || liq_image_quantize(pixels.get(), attributes.get(), &raw) != LIQ_OK) return {};
  const Found found(raw);
  QImage out(in.size(), QImage::Format_Indexed8);
  if (out.isNull()) return {};
  std::vector<uchar*> outRows;
  for (int y = 0; y < out.height(); ++y)
    outRows.push_back(out.scanLine(y));
  if (liq_write_remapped_image_rows(found.get(), pixels.get(), outRows.data()) != LIQ_OK) return {};
  const liq_palette* palette = liq_get_palette(found.get());
  QList<QRgb> table;
  for (unsigned i = 0; i < palette->count; ++i) {
    const liq_color& c = palette->entries[i];
    table.append(qRgba(c.r, c.g, c.b, c.a));
  }
  out.setColorTable(table);
  return out;
}

}  // namespace zqm
