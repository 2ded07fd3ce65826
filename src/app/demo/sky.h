// SPDX-License-Identifier: GPL-3.0-or-later
// Skies: the light of clear air, and decks of cloud seen in perspective.
#pragma once

#include "app/demo/canvas.h"

namespace zqm::demo {

/// Clear air: a gradient from the horizon up, brighter and warmer about the sun.
struct ClearSky {
  Rgb zenith, middle, horizon;
  float horizonV = 0.7F;  ///< where the gradient starts
  float height = 0.7F;    ///< how far up it reaches
  float sunU = 0, sunV = 0.5F;
  Rgb glow;  ///< added about the sun
  float glowSize = 0.3F;

  Rgb operator()(float u, float v) const {
    const float up = Saturate((horizonV - v) / height);
    const Rgb air = up < 0.35F ? Mix(horizon, middle, Smooth(0, 0.35F, up))
                               : Mix(middle, zenith, Smooth(0.2F, 1.1F, up));
    const float du = u - sunU;
    const float dv = (v - sunV) * 1.5F;
    const float off = std::sqrt(du * du + dv * dv) / glowSize;
    return air + glow * (std::exp(-off * 1.6F) + 0.5F * std::exp(-off * off * 14));
  }
};

/// A deck of clouds over flat ground. `horizonV` is where it would vanish, a little below the
/// visible horizon, so that it never gets infinitely fine.
struct CloudDeck {
  float horizonV = 0.7F;
  float scaleU = 1, scaleV = 1;  ///< features a unit of the deck, across and away
  float cover = 0.1F;            ///< the noise level where cloud begins: lower is more cloud
  float softness = 0.5F;
  int octaves = 7;
  std::uint32_t seed = 1;
  float lightU = 0, lightV = -0.2F;  ///< towards the light, in features

  struct Cloud {
    float density = 0;  ///< 0 to 1
    float light = 1;    ///< how much light reaches it, 0 to 1
  };

  Cloud At(float u, float v) const {
    const float distance = 1 / std::max(horizonV - v, 0.004F);
    const float x = u * distance * scaleU;
    const float y = distance * scaleV;
    const float density = Density(x, y, octaves);
    if (density <= 0) return {};
    const float towards = Density(x + lightU, y + lightV, octaves - 2) +
                          0.6F * Density(x + 2.2F * lightU, y + 2.2F * lightV, 3);
    return {density, std::exp(-1.5F * towards) * (1 - 0.35F * density)};
  }

 private:
  float Density(float x, float y, int detail) const {
    const float warp = 0.35F * Noise(x * 0.6F + 7, y * 0.6F, seed + 90);
    const float field = Fbm(x + warp, y - warp, detail, seed, 0.52F);
    return Smooth(cover, cover + softness, field);
  }
};

/// A line of hills or trees: heights above a base, worked out once, read at any place.
class Skyline {
 public:
  template <class Function>
  Skyline(float aspect, int samples, const Function& height)
      : left_(-0.6F * aspect), scale_(static_cast<float>(samples - 1) / (1.2F * aspect)) {
    heights_.reserve(static_cast<std::size_t>(samples));
    for (int i = 0; i < samples; ++i)
      heights_.push_back(height(left_ + static_cast<float>(i) / scale_));
  }
  float operator()(float u) const {
    const float at =
        std::clamp((u - left_) * scale_, 0.0F, static_cast<float>(heights_.size()) - 1.001F);
    const auto index = static_cast<std::size_t>(at);
    return Lerp(heights_[index], heights_[index + 1], at - static_cast<float>(index));
  }

 private:
  float left_, scale_;
  std::vector<float> heights_;
};

}  // namespace zqm::demo
