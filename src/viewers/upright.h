// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QSize>

#include "imaging/file_parameters.h"

namespace zqm {

/// The orientation tag of a photo: 1 to 8, and 1 for a photo without one or with another value.
int OrientationTag(const FileParameters& parameters);

/// The picture turned and mirrored as the orientation tag (1 to 8) says, so that it stands as the
/// camera was held. Its format stays; other tags leave it alone. Pure and thread-safe.
QImage Upright(const QImage& picture, int tag);

/// The size that `Upright` gives to a picture of this one.
QSize UprightSize(const QSize& size, int tag);

}  // namespace zqm
