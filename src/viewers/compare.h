// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <vector>

#include "metadata/photo_info.h"

namespace zqm {

/// A line of two photos' information side by side.
struct ComparedLine {
  QString caption;
  QString left, right;

  bool Differs() const { return left != right; }
};

/// What is said of at least one of two photos, in the order of the panels: file, EXIF, GPS, IPTC.
/// Captions that stand on several pages name theirs.
std::vector<ComparedLine> CompareInfo(const PhotoInfo& left, const PhotoInfo& right);

/// Where a viewer of `count` photos goes from `position` by steps of `step` (1 or -1) when it
/// mustn't show the photo at `taken`; `position` if there is none in that direction.
int StepAround(int position, int step, int taken, int count);

}  // namespace zqm
