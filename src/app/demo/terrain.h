// SPDX-License-Identifier: GPL-3.0-or-later
// A landscape of heights with its shadows, seen from a point of view.
#pragma once

#include <functional>

#include "app/demo/canvas.h"

namespace zqm::demo {

struct Vec3 {
  float x = 0, y = 0, z = 0;
};
inline float Dot(Vec3 a, Vec3 b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vec3 Unit(Vec3 a) {
  const float scale = 1 / std::sqrt(Dot(a, a));
  return {a.x * scale, a.y * scale, a.z * scale};
}

/// Where the light comes from: a unit vector, x to the right, y up, z away from the camera.
using Direction = Vec3;

/// Heights on a square of the ground. Units are the scene's own (metres, say).
class Terrain {
 public:
  using HeightFunction = std::function<float(float x, float z)>;
  /// `cells` a side, the square `origin` to `origin + extent` in x and z.
  Terrain(int cells, float originX, float originZ, float extent, const HeightFunction& height);

  float Height(float x, float z) const { return Sample(heights_, x, z); }
  Vec3 Normal(float x, float z) const;

  /// Works out what lies in the shadow of the ground; `softness` in units of height.
  void CastShadows(Direction sun, float softness);
  /// 0 in full shadow to 1 in the sun.
  float Sunlight(float x, float z) const { return sunlight_.empty() ? 1 : Sample(sunlight_, x, z); }

 private:
  float Sample(const std::vector<float>& grid, float x, float z) const;

  int cells_;
  float originX_, originZ_, step_;
  std::vector<float> heights_, sunlight_;
};

/// A camera at a point, looking along z without tilt: a rising lens instead, `horizon` is the v
/// where it sees level ground at infinity. `focal` is in picture heights.
struct View {
  Vec3 eye;
  float horizon = 0.5F, focal = 1.2F;
  float nearest = 1, farthest = 1000;
  float stepRatio = 0.003F;  ///< growth of distance from one sample to the next
};

struct GroundPoint {
  Vec3 at, normal;
  float distance = 0;
  float sunlight = 1;
};

/// Draws the ground over what the canvas holds, from far to near.
void DrawTerrain(Canvas& canvas, const Terrain& terrain, const View& view,
                 const std::function<Rgb(const GroundPoint&)>& material);

}  // namespace zqm::demo
