// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace zqm {

/// The picture as Indexed8 in at most `colours` colours, 2 to 256, alpha among them. Colours stay
/// exactly as they are (in 8 bits) where the picture has no more than that; else they are chosen
/// for the picture and dithered. Null where memory is short.
QImage Quantised(const QImage& picture, int colours);

}  // namespace zqm
