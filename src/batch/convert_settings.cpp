// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/convert_settings.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr SettingChoice kJpegColours[] = {
    {u"RGB", u"0"}, {u"B/W", u"1"}, {u"YCbCr", u"2"}, {u"CMYK", u"3"}, {u"YCbCrK", u"4"}};
constexpr SettingChoice kDctMethods[] = {{u"ISLOW", u"0"}, {u"IFAST", u"1"}, {u"FLOAT", u"2"}};
constexpr SettingChoice kPngFilters[] = {{u"NONE", u"0"}, {u"SUB", u"1"}, {u"PAETH", u"2"}};
constexpr SettingChoice kPngLevels[] = {{u"None", u"0"}, {u"1", u"1"},  {u"2", u"2"}, {u"3", u"3"},
                                        {u"4", u"4"},    {u"5", u"5"},  {u"6", u"6"}, {u"7", u"7"},
                                        {u"8", u"8"},    {u"Max", u"9"}};
constexpr SettingChoice kTiffCompressions[] = {{u"UNCOMPRESSED", u"0"},
                                               {u"CCITT1D", u"1"},
                                               {u"G3FAX1D", u"2"},
                                               {u"G3FAX2D", u"3"},
                                               {u"G4FAX", u"4"},
                                               {u"LZW", u"5"},
                                               {u"OLDJPEG", u"6"},
                                               {u"JPEG", u"7"},
                                               {u"PACKBITS", u"8"},
                                               {u"ZIP (non standard)", u"9"},
                                               {u"Adobe Deflate (non standard)", u"10"},
                                               {u"UNKNOWN", u"11"}};
constexpr SettingChoice kTiffColours[] = {
    {u"WHITEISZERO", u"0"}, {u"BLACKISZERO", u"1"}, {u"RGB", u"2"},   {u"RGBPALETTE", u"3"},
    {u"TRANSPMASK", u"4"},  {u"CMYK", u"5"},        {u"YCBCR", u"6"}, {u"CIELAB", u"7"}};
constexpr SettingChoice kJ2000Colours[] = {
    {u"Gray scale", u"0"}, {u"RGB (24bit)", u"1"}, {u"YCbCr", u"2"}};

constexpr int kRateScale = 1000;
constexpr char16_t kRate[] = u"J2000_RATE";

constexpr ConvertSetting kSettings[] = {
    {u"JPG", u"Quality:", u"JPEG_QUALITY", SettingKind::Slider, {}, 80, 100, 1},
    {u"JPG", u"Optimal Huffman:", u"JPEG_OPTIMALHUFFMAN", SettingKind::Switch, {}, 0, 1},
    {u"JPG", u"Progressive:", u"JPEG_PROGRESSIVE", SettingKind::Switch, {}, 0, 1},
    {u"JPG", u"Photometric", u"JPEG_COLORSPACE", SettingKind::Choice, kJpegColours, 2, 0},
    {u"JPG", u"DCT Method", u"JPEG_DCTMETHOD", SettingKind::Choice, kDctMethods, 0, 0},
    {u"JPG", u"Smoothing Factor", u"JPEG_SMOOTH", SettingKind::Number, {}, 0, 100},
    {u"PNG", u"Filter", u"PNG_FILTER", SettingKind::Choice, kPngFilters, 0, 0},
    {u"PNG", u"Compression", u"PNG_COMPRESSION", SettingKind::Choice, kPngLevels, 5, 0},
    {u"PNG", u"Interlaced", u"PNG_INTERLACED", SettingKind::Switch, {}, 0, 1},
    {u"TGA",
     u"Compress using Run Length Encoding (RLE)",
     u"TGA_COMPRESSED",
     SettingKind::Switch,
     {},
     0,
     1},
    {u"TIF", u"Compression", u"TIFF_COMPRESSION", SettingKind::Choice, kTiffCompressions, 0, 0},
    {u"TIF", u"Photometric", u"TIFF_PHOTOMETINTERPRET", SettingKind::Choice, kTiffColours, 2, 0},
    {u"J2K JP2", u"Rate", kRate, SettingKind::Slider, {}, kRateScale, kRateScale, 1},
    {u"J2K JP2", u"Photometric", u"J2000_COLORSPACE", SettingKind::Choice, kJ2000Colours, 1, 0},
};

}  // namespace

std::span<const ConvertSetting> ConvertSettings() {
  return kSettings;
}

bool Concerns(const ConvertSetting& setting, QStringView format) {
  return QString::fromUtf16(setting.formats).split(u' ').contains(format);
}

QString KeyValue(const ConvertSetting& setting, int value) {
  if (setting.kind == SettingKind::Choice)
    return QString::fromUtf16(setting.choices[static_cast<std::size_t>(value)].number);
  if (QStringView(setting.key) == QStringView(kRate))
    return QString::number(double(value) / kRateScale);
  return QString::number(value);
}

}  // namespace zqm
