// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace zqm {

/// Transitions through a picture's brightness. The old picture is black from `dark` on, or goes
/// into the new one directly.
struct Fade {
  bool throughBlack = false;
  double dark = 0.5;  ///< the progress at which all is black, above 0 and below 1
};

/// All pictures are RGB32 of one size.
void DrawFade(const Fade& fade, const QImage& from, const QImage& to, double progress, QImage& out);

}  // namespace zqm
