// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

#include "imaging/transitions/origin.h"

namespace zqm {

/// The new picture lies rolled up at a side and rolls over the old one; its back is seen on the
/// roll.
struct Unroll {
  Origin origin = Origin::Left;  ///< a side
};

/// All pictures are RGB32 of one size.
void DrawUnroll(const Unroll& unroll, const QImage& from, const QImage& to, double progress,
                QImage& out);

}  // namespace zqm
