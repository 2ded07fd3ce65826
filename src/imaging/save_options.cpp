// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/save_options.h"

#include <variant>

#include "shell/text.h"

namespace zqm {
namespace {

struct SaveKey {
  const char16_t* key;
  std::variant<int SaveOptions::*, bool SaveOptions::*, double SaveOptions::*> option;
  double least, most;
};

constexpr SaveKey kSaveKeys[] = {
    {u"JPEG_QUALITY", &SaveOptions::jpegQuality, 1, 100},
    {u"JPEG_DCTMETHOD", &SaveOptions::jpegDctMethod, 0, 2},
    {u"JPEG_SMOOTH", &SaveOptions::jpegSmooth, 0, 100},
    {u"JPEG_COLORSPACE", &SaveOptions::jpegColourSpace, 0, 4},
    {u"JPEG_OPTIMALHUFFMAN", &SaveOptions::jpegOptimalHuffman, 0, 1},
    {u"JPEG_PROGRESSIVE", &SaveOptions::jpegProgressive, 0, 1},
    {u"TIFF_COMPRESSION", &SaveOptions::tiffCompression, 0, 11},
    {u"TIFF_PHOTOMETINTERPRET", &SaveOptions::tiffPhotometric, 0, 7},
    {u"TIFF_JPEGQUALITY", &SaveOptions::tiffJpegQuality, 1, 100},
    {u"PNG_FILTER", &SaveOptions::pngFilter, 0, 2},
    {u"PNG_COMPRESSION", &SaveOptions::pngCompression, 0, 9},
    {u"PNG_INTERLACED", &SaveOptions::pngInterlaced, 0, 1},
    {u"TGA_COMPRESSED", &SaveOptions::tgaCompressed, 0, 1},
    {u"PCX_COMPRESSION", &SaveOptions::pcxCompressed, 0, 1},
    // Uncompressed is all that there is of this one.
    {u"BMP_COMPRESSION", &SaveOptions::bmpCompression, 0, 0},
    {u"J2000_RATE", &SaveOptions::j2000Rate, 0.001, 1},
    {u"J2000_COLORSPACE", &SaveOptions::j2000ColourSpace, 0, 2},
};

}  // namespace

SaveOptions ReadSaveOptions(const FileParameters& parameters) {
  SaveOptions options;
  for (const SaveKey& row : kSaveKeys) {
    bool isNumber = false;
    const double number = parameters.GetIOProperty(row.key).trimmed().toDouble(&isNumber);
    if (!isNumber) continue;
    const double value = std::clamp(number, row.least, row.most);
    std::visit(
        [&](auto member) {
          auto& option = options.*member;
          option = static_cast<std::remove_reference_t<decltype(option)>>(value);
        },
        row.option);
  }
  return options;
}

bool IsSaveKey(QStringView key) {
  return std::ranges::any_of(kSaveKeys, [&](const SaveKey& row) {
    return key.compare(row.key, Qt::CaseInsensitive) == 0;
  });
}

}  // namespace zqm
