// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <span>

#include "batch/picture_work.h"

namespace zqm {

/// A way to turn or mirror photos.
struct Turn {
  int index;  ///< of `mnurotate`
  const char16_t* caption;
  const char16_t* word;  ///< on the command line
  const char16_t* waitText;
  int degrees;    ///< counter-clockwise; 0 for a flip
  bool vertical;  ///< of a flip
};
std::span<const Turn> Turns();

/// Turns each photo in its place, at the best quality of its format; the orientation tag stays as
/// it is. Rows stay too. Reasons: "File is offline or missing", or why a photo can't be loaded or
/// saved.
PictureResult RotatePhotos(const PictureRun& run, const QStringList& paths, const Turn& turn,
                           const PictureSettings& load);

namespace rotate_text {
inline constexpr char16_t kFailures[] = u"The following photos could not be rotated/flipped:";
}

}  // namespace zqm
