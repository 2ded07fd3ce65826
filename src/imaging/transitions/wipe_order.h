// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>

#include "imaging/transitions/reveal.h"

namespace zqm {

/// A pixel's moment from 0 to 1. `u` and `v` are shares of width and height.
float WipeOrder(const Wipe& wipe, float u, float v, const QSize& screen);

/// The height of teeth at a pixel, 0 to 1, along the edge of a wipe.
float TeethAt(const Wipe& wipe, Ragged teeth, float u, float v);

/// 0 to 1, evenly spread and the same for the same numbers.
float Chance(quint32 x, quint32 y, quint32 seed);

}  // namespace zqm
