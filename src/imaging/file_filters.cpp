// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/file_filters.h"

#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

struct FilterRow {
  const char16_t* description;
  const char16_t* pattern;
  const char16_t* amongAll;  ///< in the line of all formats
  bool writable;
};

// TIFF files are "*.tif" in their own line and "*.tiff" among all: people who are used to these
// lists find what they expect.
constexpr FilterRow kRows[] = {
    {u"JPEG Bitmap (JPG)", u"*.jpg", u"*.jpg", true},
    {u"CompuServe Bitmap (GIF)", u"*.gif", u"*.gif", true},
    {u"TIFF Bitmap (TIF)", u"*.tif", u"*.tiff", true},
    {u"PaintBrush (PCX)", u"*.pcx", u"*.pcx", true},
    {u"Windows Bitmap (BMP)", u"*.bmp", u"*.bmp", true},
    {u"Portable Network Graphics (PNG)", u"*.png", u"*.png", true},
    {u"Targa Bitmap (TGA)", u"*.tga", u"*.tga", true},
    {u"JPEG2000 File (JP2)", u"*.jp2", u"*.jp2", true},
    {u"JPEG2000 Code Stream (J2K)", u"*.j2k", u"*.j2k", true},
    {u"Photoshop Document (PSD)", u"*.psd", u"*.psd", true},
    {u"Camera RAW (CRW)", u"*.crw", u"*.crw", false},
    {u"Camera RAW (CR2)", u"*.cr2", u"*.cr2", false},
    {u"Camera RAW (NEF)", u"*.nef", u"*.nef", false},
    {u"Camera RAW (RAW)", u"*.raw", u"*.raw", false},
    {u"Camera RAW (PEF)", u"*.pef", u"*.pef", false},
    {u"Camera RAW (RAF)", u"*.raf", u"*.raf", false},
    {u"Camera RAW (X3F)", u"*.x3f", u"*.x3f", false},
    {u"Camera RAW (BAY)", u"*.bay", u"*.bay", false},
    {u"Camera RAW (ORF)", u"*.orf", u"*.orf", false},
    {u"Camera RAW (SRF)", u"*.srf", u"*.srf", false},
    {u"Camera RAW (MRW)", u"*.mrw", u"*.mrw", false},
    {u"Camera RAW (DCR)", u"*.dcr", u"*.dcr", false},
    {u"Camera RAW (SR2)", u"*.sr2", u"*.sr2", false},
};

QString Line(const FilterRow& row) {
  return u"%1 (%2)"_s.arg(QString::fromUtf16(row.description), QString::fromUtf16(row.pattern));
}

}  // namespace

QStringList OpenPictureFilters() {
  QStringList all, lines;
  for (const FilterRow& row : kRows) {
    all.append(QString::fromUtf16(row.amongAll));
    lines.append(Line(row));
  }
  return QStringList{u"All Supported Formats (%1)"_s.arg(all.join(u' '))} + lines;
}

QStringList SavePictureFilters() {
  QStringList lines;
  for (const FilterRow& row : kRows)
    if (row.writable) lines.append(Line(row));
  return lines;
}

QString WithSaveExtension(const QString& path) {
  if (!GetExtensionName(path).isEmpty()) return path;
  return path + (path.endsWith(u'.') ? u"jpg"_s : u".jpg"_s);
}

}  // namespace zqm
