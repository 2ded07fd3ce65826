// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace zqm {

/// Grain of brightness and blotches of colour taken out, edges kept; each 0, which changes nothing,
/// to 100. Colour does nothing to a gray picture. `scale` as in PartView.
QImage ReduceNoise(const QImage& picture, double grain, double colour, double scale = 1);

}  // namespace zqm
