// SPDX-License-Identifier: GPL-3.0-or-later
// Colours made fewer, alpha taken away, a result kept to a selection. All functions are pure and
// thread-safe, and give a null picture for a null one.
#pragma once

#include <QImage>

namespace zqm {

/// Luma of ITU-R BT.601. Grayscale8, Grayscale16 for 16 bits; with alpha, colours of equal samples
/// in the format that was.
QImage ConvertToGrey(const QImage& picture);

/// Format_Mono, 0 black and 1 white, at the threshold that parts the levels best (N. Otsu, "A
/// Threshold Selection Method from Gray-Level Histograms", 1979). Alpha is laid on white first.
QImage ConvertToBlackWhite(const QImage& picture);

enum class PaletteMethod { Ordered = 0, Threshold = 1 };

/// Indexed8 with at most `colours` (2 to 256, others are clamped) of the picture's own; alpha
/// stays. Ordered hides the steps between colours in a pattern of 8 x 8, Threshold takes the
/// nearest colour. Null when there is no memory for it.
QImage ConvertToPalette(const QImage& picture, int colours, PaletteMethod method);

/// Whether any pixel isn't opaque: an alpha channel that is full everywhere doesn't count.
bool HasAlphaChannel(const QImage& picture);

enum class AlphaRemoval {
  Merge,  // what is transparent shows white
  Drop,   // the colours come out as they stand
};

/// The opaque picture; 16 bits stay. One without alpha comes back unchanged.
QImage RemoveAlphaChannel(const QImage& picture, AlphaRemoval removal = AlphaRemoval::Merge);

/// `after` where `selection` (Grayscale8) is 255, `before` where it is 0, mixed between. All three
/// have one size; the result has the format of `after`. A null selection takes everything.
QImage WithinSelection(const QImage& before, const QImage& after, const QImage& selection);

}  // namespace zqm
