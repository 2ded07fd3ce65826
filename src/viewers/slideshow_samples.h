// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QSize>

namespace zqm {

enum class SlideSample { Dusk, Noon };

/// A drawn landscape of this size (pixels), RGB32, so that a transition has something to show.
QImage DrawSlideSample(SlideSample sample, const QSize& size);

}  // namespace zqm
