// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/transitions/fade.h"

#include <cmath>
#include <vector>

#include "imaging/transitions/pixel_mix.h"

namespace zqm {
namespace {

void DrawDimmed(const QImage& picture, double light, QImage& out) {
  const std::vector<QRgb> black(static_cast<std::size_t>(out.width()), 0xff000000);
  const int weight = static_cast<int>(std::lround(light * 256));
  for (int y = 0; y < out.height(); ++y)
    MixRow(black.data(), Row(picture, y), out.width(), weight, Row(out, y));
}

}  // namespace

void DrawFade(const Fade& fade, const QImage& from, const QImage& to, double progress,
              QImage& out) {
  if (!fade.throughBlack)
    MixPictures(from, to, static_cast<int>(std::lround(progress * 256)), out);
  else if (progress < fade.dark)
    DrawDimmed(from, 1 - progress / fade.dark, out);
  else
    DrawDimmed(to, (progress - fade.dark) / (1 - fade.dark), out);
}

}  // namespace zqm
