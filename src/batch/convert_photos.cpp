// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/convert_photos.h"

#include <algorithm>

#include "catalogue/like_pattern.h"
#include "imaging/raster.h"
#include "shell/files.h"
#include "shell/platform.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr ConvertFormat kFormats[] = {
    {u"BMP", u"BMP - Windows Bitmap", u"bmp", false, true},
    {u"GIF", u"GIF - CompuServe GIF", u"gif", false, true},
    {u"JPG", u"JPG - Jpeg Bitmap", u"jpg", false, true},
    {u"PCX", u"PCX - PaintBrush PCX", u"pcx", false, true},
    {u"PNG", u"PNG - Portable Network Graphics", u"png", true, true},
    {u"PSD", u"PSD - PSD", u"psd", true, true},
    {u"TGA", u"TGA - Targa Bitmap", u"tga", true, true},
    {u"TIF", u"TIF - Tag Image File Format", u"tif", true, true},
    {u"J2K", u"J2K - JPEG2000", u"j2k", false, false},
    {u"JP2", u"JP2 - JPEG2000 JP2 FILE", u"jp2", false, false},
};

struct GrayKey {
  const char16_t* format;
  const char16_t* key;
  const char16_t* number;
};
constexpr GrayKey kGrayKeys[] = {
    {u"JPG", u"JPEG_COLORSPACE", u"1"},        {u"TIF", u"TIFF_PHOTOMETINTERPRET", u"0"},
    {u"TIF", u"TIFF_PHOTOMETINTERPRET", u"1"}, {u"J2K", u"J2000_COLORSPACE", u"0"},
    {u"JP2", u"J2000_COLORSPACE", u"0"},
};

bool TurnsGray(const ConvertOptions& options) {
  return std::ranges::any_of(kGrayKeys, [&](const GrayKey& row) {
    const auto set = options.saveKeys.find(QString::fromUtf16(row.key));
    return QStringView(row.format) == QStringView(options.format->name) &&
           set != options.saveKeys.end() && set->second == QStringView(row.number);
  });
}

Outcome Prepare(Picture& picture, const ConvertOptions& options) {
  for (const auto& [key, number] : options.saveKeys)
    picture.SetIOProperty(key, number);
  if (TurnsGray(options)) picture.SetImage(ConvertToGrey(picture.Image()));
  if (!options.format->keepsAlpha && picture.Image().hasAlphaChannel())
    picture.SetImage(RemoveAlphaChannel(picture.Image()));
  return {};
}

}  // namespace

std::span<const ConvertFormat> ConvertFormats() {
  return kFormats;
}

const ConvertFormat* FindConvertFormat(QStringView name) {
  const auto* found = std::ranges::find_if(kFormats, [&](const ConvertFormat& format) {
    return name.compare(format.name, Qt::CaseInsensitive) == 0;
  });
  return found == std::end(kFormats) ? nullptr : found;
}

Outcome CheckConvert(const ConvertOptions& options) {
  if (!options.format) return Failure{QString::fromUtf16(convert_text::kNoFormat)};
  if (!options.besideSource && options.folder.isEmpty())
    return Failure{QString::fromUtf16(convert_text::kNoFolder)};
  return {};
}

PictureResult ConvertPhotos(const PictureRun& run, const QStringList& paths,
                            const ConvertOptions& options) {
  const QString extension = QString::fromUtf16(options.format->extension);
  const auto output = [&](const QString& path) {
    const QString folder = options.besideSource ? GetParentFolderName(path) : options.folder;
    return PathIn(folder, GetBaseName(path) + u'.' + extension);
  };
  const PictureMaker maker = [&](const QString& path) {
    return MakePicture(
        path, options.load, [&](Picture& picture) { return Prepare(picture, options); },
        [&](Picture& picture) -> Result<QByteArray> {
          const QString target = output(path);
          // Under another spelling too it would be gone.
          const bool overItself =
              FoldCase(path) == FoldCase(target) || platform::SameFile(path, target);
          if (overItself)
            if (const Outcome may = picture.MayBeWrittenOver(); !may) return Failure{may.Reason()};
          return picture.EncodeAs(extension);
        });
  };
  return WritePictures(run, paths, convert_text::kConvert, maker, output, options.output);
}

}  // namespace zqm
