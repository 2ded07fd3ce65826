// SPDX-License-Identifier: GPL-3.0-or-later
#include "watermark/stamp_photos.h"

#include "batch/resize_photos.h"
#include "imaging/object_painter.h"

using namespace Qt::StringLiterals;

namespace zqm {

PictureResult StampPhotos(const PictureRun& run, const QStringList& paths,
                          const VectorObjects& objects, const PictureSettings& load) {
  const auto stamp = [&objects](Picture& picture) -> Outcome {
    SetBestQuality(picture);
    const QImage stamped = Merged(picture.Image(), objects);
    if (stamped.isNull()) return Failure{u"The picture is too large"_s};
    picture.SetImage(stamped);
    return {};
  };
  const PictureMaker maker = [&](const QString& path) {
    return MakePicture(path, load, stamp, [](Picture& picture) { return picture.EncodeOver(); });
  };
  return ReplacePictures({run.catalogue, nullptr, run.observer, run.show}, paths,
                         stamp_text::kStamp, maker, SaveFailures::Listed, {});
}

}  // namespace zqm
