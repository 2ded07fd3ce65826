// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/terrain.h"

namespace zqm::demo {

Terrain::Terrain(int cells, float originX, float originZ, float extent,
                 const HeightFunction& height)
    : cells_(cells),
      originX_(originX),
      originZ_(originZ),
      step_(extent / static_cast<float>(cells - 1)),
      heights_(static_cast<std::size_t>(cells) * static_cast<std::size_t>(cells)) {
  auto cell = heights_.begin();
  for (int z = 0; z < cells_; ++z)
    for (int x = 0; x < cells_; ++x)
      *cell++ = height(originX_ + static_cast<float>(x) * step_,
                       originZ_ + static_cast<float>(z) * step_);
}

float Terrain::Sample(const std::vector<float>& grid, float x, float z) const {
  const float last = static_cast<float>(cells_) - 1.001F;
  const float fx = std::clamp((x - originX_) / step_, 0.0F, last);
  const float fz = std::clamp((z - originZ_) / step_, 0.0F, last);
  const auto ix = static_cast<std::size_t>(fx);
  const auto iz = static_cast<std::size_t>(fz);
  const float tx = fx - static_cast<float>(ix);
  const float tz = fz - static_cast<float>(iz);
  const float* cell = grid.data() + iz * static_cast<std::size_t>(cells_) + ix;
  return Lerp(Lerp(cell[0], cell[1], tx), Lerp(cell[cells_], cell[cells_ + 1], tx), tz);
}

Vec3 Terrain::Normal(float x, float z) const {
  return Unit({Height(x - step_, z) - Height(x + step_, z), 2 * step_,
               Height(x, z - step_) - Height(x, z + step_)});
}

// One sweep away from the sun, row by row or column by column: the shadow's ceiling over a cell is
// that over the place one step sunwards, lowered by the sun's slope, or the ground itself.
void Terrain::CastShadows(Direction sun, float softness) {
  const bool alongX = std::abs(sun.x) >= std::abs(sun.z);
  const float main = alongX ? sun.x : sun.z;
  const float side = (alongX ? sun.z : sun.x) / std::abs(main);
  const float drop = step_ * sun.y / std::abs(main);
  const auto index = [&](int line, int across) {
    return static_cast<std::size_t>(alongX ? across * cells_ + line : line * cells_ + across);
  };
  std::vector<float> ceiling(heights_);
  sunlight_.assign(heights_.size(), 1);
  const int towards = main > 0 ? 1 : -1;
  for (int i = 1; i < cells_; ++i) {
    const int line = main > 0 ? cells_ - 1 - i : i;
    for (int across = 0; across < cells_; ++across) {
      const float from =
          std::clamp(static_cast<float>(across) + side, 0.0F, static_cast<float>(cells_) - 1.01F);
      const int left = static_cast<int>(from);
      const float above =
          Lerp(ceiling[index(line + towards, left)], ceiling[index(line + towards, left + 1)],
               from - static_cast<float>(left)) -
          drop;
      const std::size_t here = index(line, across);
      ceiling[here] = std::max(heights_[here], above);
      sunlight_[here] = 1 - Smooth(0, softness, above - heights_[here]);
    }
  }
}

void DrawTerrain(Canvas& canvas, const Terrain& terrain, const View& view,
                 const std::function<Rgb(const GroundPoint&)>& material) {
  const int lastRow = canvas.Height() - 1;
  const auto row = [&](float height, float distance) {
    return canvas.Y(view.horizon - view.focal * (height - view.eye.y) / distance);
  };
  for (int x = 0; x < canvas.Width(); ++x) {
    const float slope = canvas.U(static_cast<float>(x)) / view.focal;
    const auto heightAt = [&](float distance) {
      return terrain.Height(view.eye.x + slope * distance, view.eye.z + distance);
    };
    float distance = view.farthest;
    float top = row(heightAt(distance), distance);
    const auto advance = [&](float to) {
      const Vec3 at{view.eye.x + slope * to, heightAt(to), view.eye.z + to};
      const float bottom = row(at.y, to);
      const float upper = std::exchange(top, bottom);
      if (bottom <= upper || upper > static_cast<float>(lastRow) || bottom < 0) return;
      const Rgb colour =
          material({at, terrain.Normal(at.x, at.z), to, terrain.Sunlight(at.x, at.z)});
      const int first = Floor(upper);
      if (first >= 0) {
        Rgb& edge = canvas.At(x, first);
        edge = Mix(edge, colour, 1 - (upper - static_cast<float>(first)));
      }
      const int last = std::min(Floor(bottom) + 1, lastRow);
      for (int y = std::max(first + 1, 0); y <= last; ++y)
        canvas.At(x, y) = colour;
    };
    while (distance > view.nearest) {
      const float farther = std::exchange(distance, distance / (1 + view.stepRatio));
      // A slope that faces the camera rises over many rows in one step: it is walked in smaller
      // ones, or its detail would come in blocks.
      const float rise = row(heightAt(distance), distance) - top;
      const int parts = std::clamp(Floor(rise * 0.8F), 1, 32);
      for (int part = 1; part <= parts; ++part)
        advance(Lerp(farther, distance, static_cast<float>(part) / static_cast<float>(parts)));
    }
  }
}

}  // namespace zqm::demo
