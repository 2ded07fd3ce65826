// SPDX-License-Identifier: GPL-3.0-or-later
// Changes of tone and colour. All functions are pure and thread-safe; the result has a work format
// (pixel_formats.h): 16 bits stay, alpha stays, gray stays but where colour is put in. Amounts that
// change nothing give the pixels as they were; amounts out of range are clamped.
#pragma once

#include <QColor>
#include <QImage>

#include "imaging/effects/red_eyes.h"

namespace zqm {

/// The gray picture times `gain`, in the colour of a hue (degrees) at a saturation (percent).
QImage Sepia(const QImage& picture, double hue, double saturation, double gain);

/// Each -100 to 100. Brightness moves all samples, by the full scale at 100; contrast spreads them
/// from the middle, up to two levels at 100 and down to one gray at -100; saturation as below.
QImage AdjustBrightnessContrastSaturation(const QImage& picture, double brightness, double contrast,
                                          double saturation);

/// Hue turned by -180 to 180 degrees, saturation and lightness changed by -100 to 100 percent, in
/// the double cone of hue, saturation and lightness: lightness 100 is white, -100 black.
QImage AdjustHueSaturationLightness(const QImage& picture, double hue, double saturation,
                                    double lightness);

/// -100 to 100: the distance from gray of the same luma, -100 none, 100 doubled.
QImage AdjustSaturation(const QImage& picture, double saturation);

/// Unsharp masking: the difference to the mean of `neighbourhood` x `neighbourhood` pixels (odd, an
/// even number is the next one; 1 to 99) is added up to three times over. `intensity` is 0, which
/// does nothing, to 100. A picture of `scale` the size gets a neighbourhood as much smaller.
QImage Sharpen(const QImage& picture, double intensity, int neighbourhood = 3, double scale = 1);

/// Channels scaled so that `gray`, a colour that should have none, becomes gray of the same luma;
/// no channel by more than 4 or less than 1/4. Temperature and tint: effects/colour_balance.h.
QImage WhiteBalance(const QImage& picture, const QColor& gray);
/// The same by the picture's mean colour, transparent pixels left out.
QImage WhiteBalance(const QImage& picture);

}  // namespace zqm
