// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/rotate_photos.h"

#include "batch/resize_photos.h"
#include "imaging/rotate.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr char16_t kRotating[] = u"Rotating selected image(s). Please wait...";
constexpr char16_t kFlipping[] = u"Flipping selected image(s). Please wait...";

constexpr Turn kTurns[] = {
    {1, u"Rotate Clockwise (90°)", u"cw", kRotating, -90, false},
    {2, u"Rotate Counter Clockwise (90°)", u"ccw", kRotating, 90, false},
    {3, u"Rotate 180°", u"180", kRotating, 180, false},
    {4, u"Flip Vertical", u"flip-v", kFlipping, 0, true},
    {5, u"Flip Horizontal", u"flip-h", kFlipping, 0, false},
};

}  // namespace

std::span<const Turn> Turns() {
  return kTurns;
}

PictureResult RotatePhotos(const PictureRun& run, const QStringList& paths, const Turn& turn,
                           const PictureSettings& load) {
  const auto change = [&](Picture& picture) -> Outcome {
    SetBestQuality(picture);
    const QImage turned = turn.degrees != 0
                              ? Rotated(picture.Image(), turn.degrees, false)
                              : Flipped(picture.Image(), turn.vertical ? FlipDirection::Vertical
                                                                       : FlipDirection::Horizontal);
    if (turned.isNull()) return Failure{u"The picture is too large"_s};
    picture.SetImage(turned);
    return {};
  };
  return ReplacePictures(run, paths, {turn.waitText, rotate_text::kFailures, u""},
                         [&](const QString& path) {
                           return MakePicture(path, load, change, [](Picture& picture) {
                             return picture.EncodeOver();
                           });
                         },
                         SaveFailures::Listed, {});
}

}  // namespace zqm
