// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/upright.h"

#include <array>

#include "imaging/rotate.h"

namespace zqm {
namespace {

/// First mirrored from left to right, then turned.
struct Way {
  bool mirrored;
  int degrees;  // counter-clockwise
};
constexpr std::array<Way, 8> kWays = {{
    {false, 0},
    {true, 0},
    {false, 180},
    {true, 180},
    {true, 90},
    {false, 270},
    {true, 270},
    {false, 90},
}};

bool IsTag(int tag) {
  return tag >= 1 && tag <= static_cast<int>(kWays.size());
}

const Way& WayOf(int tag) {
  return kWays[IsTag(tag) ? static_cast<std::size_t>(tag - 1) : 0];
}

}  // namespace

int OrientationTag(const FileParameters& parameters) {
  const int tag = parameters.GetIOProperty(u"EXIF_Orientation").toInt();
  return IsTag(tag) ? tag : 1;
}

QImage Upright(const QImage& picture, int tag) {
  const Way& way = WayOf(tag);
  const QImage seen = way.mirrored ? Flipped(picture, FlipDirection::Horizontal) : picture;
  return way.degrees == 0 ? seen : Rotated(seen, way.degrees, false);
}

QSize UprightSize(const QSize& size, int tag) {
  return WayOf(tag).degrees % 180 == 0 ? size : size.transposed();
}

}  // namespace zqm
