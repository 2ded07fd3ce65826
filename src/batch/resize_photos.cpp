// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/resize_photos.h"

#include <cmath>

#include "batch/convert_photos.h"
#include "cataloguing/replaced_photos.h"
#include "imaging/tonal.h"
#include "shell/files.h"
#include "shell/platform.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kSharpenWidth = 3;

QSize TargetSize(const QSize& picture, const ResizeOptions& options) {
  const double width = PositiveNumber(options.width).value_or(1);
  const double height = PositiveNumber(options.height).value_or(1);
  if (options.autoWidth)
    return {WholePixels(height * picture.width() / picture.height()), WholePixels(height)};
  if (options.autoHeight)
    return {WholePixels(width), WholePixels(width * picture.height() / picture.width())};
  return {WholePixels(width), WholePixels(height)};
}

Outcome Change(Picture& picture, const ResizeOptions& options) {
  SetBestQuality(picture);
  QImage image =
      Resample(picture.Image(), TargetSize(picture.Image().size(), options), options.filter);
  if (image.isNull()) return Failure{u"The picture is too large"_s};
  if (options.sharpen > 0) image = Sharpen(image, options.sharpen, kSharpenWidth);
  picture.SetImage(image);
  const QString dpi = QString::number(WholePixels(PositiveNumber(options.dpi).value_or(1)));
  picture.SetIOProperty(u"DPIX", dpi);
  picture.SetIOProperty(u"DPIY", dpi);
  return {};
}

}  // namespace

int WholePixels(double number) {
  return static_cast<int>(std::clamp(std::round(number), 1.0, double{1 << 28}));
}

void SetBestQuality(Picture& picture) {
  for (const char16_t* key :
       {u"TIFF_COMPRESSION", u"PCX_COMPRESSION", u"BMP_COMPRESSION", u"PNG_COMPRESSION"})
    picture.SetIOProperty(key, u"0"_s);
  for (const char16_t* key : {u"TIFF_JPEGQUALITY", u"JPEG_QUALITY"})
    picture.SetIOProperty(key, u"100"_s);
}

Outcome CheckResize(const ResizeOptions& options) {
  const auto refuse = [](const char16_t* text) { return Failure{QString::fromUtf16(text)}; };
  if (!options.autoWidth && !PositiveNumber(options.width))
    return refuse(resize_text::kInvalidWidth);
  if (!options.autoHeight && !PositiveNumber(options.height))
    return refuse(resize_text::kInvalidHeight);
  if (!PositiveNumber(options.dpi)) return refuse(resize_text::kInvalidDpi);
  if (!options.inPlace && options.folder.isEmpty()) return refuse(convert_text::kNoFolder);
  return {};
}

PictureResult ResizePhotos(const PictureRun& run, const QStringList& paths,
                           const ResizeOptions& options) {
  const auto change = [&](Picture& picture) { return Change(picture, options); };
  if (options.inPlace) {
    return ReplacePictures(
        run, paths, resize_text::kResize,
        [&](const QString& path) {
          return MakePicture(path, options.load, change,
                             [](Picture& picture) { return picture.EncodeOver(); });
        },
        SaveFailures::ToldApart,
        [&](const QString& path) {
          return FollowPicture(run.catalogue, path, options.output.read);
        });
  }
  const auto output = [&](const QString& path) {
    return PathIn(options.folder, GetFileName(path));
  };
  return WritePictures(
      run, paths, resize_text::kResize,
      [&](const QString& path) {
        return MakePicture(path, options.load, change, [&](Picture& picture) {
          // Under the same name in the same folder it is a change of the photo itself.
          return platform::SameFile(path, output(path))
                     ? picture.EncodeOver()
                     : picture.EncodeAs(GetExtensionName(path).toLower());
        });
      },
      output, options.output);
}

}  // namespace zqm
