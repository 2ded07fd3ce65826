// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace zqm {

/// Finds pupils that a flash made red and makes them gray: spots of strong red, about as high as
/// wide and round enough. Skin, lips and whatever else is red stay, and so do glints in the eye.
/// Meant for a selection about one eye or a few; where most of it is strong red, all of that is
/// taken for the pupil. The result has a work format. Null when there is no memory.
QImage RemoveRedEyes(const QImage& picture);

}  // namespace zqm
