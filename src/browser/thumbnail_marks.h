// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include "imaging/thumbnail_list.h"

namespace zqm {

/// How a thumbnail is marked: by the row's `Flag` ("Flagged", "Rejected", "Unflagged"; any other,
/// as right after cataloguing, has a look of its own), or as a photo without a row.
ThumbnailLook CataloguedLook(const QString& flag);
ThumbnailLook UncataloguedLook();

}  // namespace zqm
