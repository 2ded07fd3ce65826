// SPDX-License-Identifier: GPL-3.0-or-later
#include "watermark/stamp_photos.h"

#include <QSet>
#include <utility>

#include "batch/resize_photos.h"
#include "imaging/object_painter.h"
#include "shell/platform.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Each file once, under the first path that leads to it: what is painted twice is darker.
QStringList EachOnce(const QStringList& paths) {
  QStringList once;
  QSet<QString> files;
  for (const QString& path : paths) {
    const QString file = platform::ResolveLinks(path);
    if (files.contains(file)) continue;
    files.insert(file);
    once.append(path);
  }
  return once;
}

Outcome Stamp(Picture& picture, const VectorObjects& objects) {
  SetBestQuality(picture);
  picture.SetIOProperty(u"EXIF_Software", u"Zolmira QM"_s);
  // The only one that holds the pixels, so that they aren't copied.
  QImage image = picture.Image();
  picture.SetImage({});
  const QImage stamped = Merged(std::move(image), objects);
  if (stamped.isNull()) return Failure{u"The picture is too large"_s};
  picture.SetImage(stamped);
  return {};
}

MadePicture MakeStamped(const QString& path, const VectorObjects& objects,
                        const PictureSettings& load) {
  Picture picture;
  picture.SetSettings(load);
  Outcome made = picture.LoadFromFile(path);
  if (made) made = picture.MayBeWrittenOver();
  if (made) made = Stamp(picture, objects);
  if (!made) return {Failure{made.Reason()}, {}};
  return {picture.EncodeOver(), {}};
}

}  // namespace

PictureResult StampPhotos(const PictureRun& run, const QStringList& paths,
                          const VectorObjects& objects, const PictureSettings& load) {
  return ReplacePictures({run.catalogue, nullptr, run.observer, run.show}, EachOnce(paths),
                         stamp_text::kStamp,
                         [&](const QString& path) { return MakeStamped(path, objects, load); },
                         SaveFailures::Listed, {});
}

}  // namespace zqm
