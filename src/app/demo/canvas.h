// SPDX-License-Identifier: GPL-3.0-or-later
// Linear light on a float canvas, and its development into a photograph.
#pragma once

#include <QImage>
#include <vector>

#include "app/demo/noise.h"

namespace zqm::demo {

/// Linear light, 1 about a white sheet of paper; more is allowed.
struct Rgb {
  float r = 0, g = 0, b = 0;
};
constexpr Rgb operator+(Rgb a, Rgb b) {
  return {a.r + b.r, a.g + b.g, a.b + b.b};
}
constexpr Rgb operator*(Rgb a, Rgb b) {
  return {a.r * b.r, a.g * b.g, a.b * b.b};
}
constexpr Rgb operator*(Rgb a, float k) {
  return {a.r * k, a.g * k, a.b * k};
}
constexpr Rgb operator*(float k, Rgb a) {
  return a * k;
}
inline Rgb Mix(Rgb a, Rgb b, float t) {
  return a + (b + a * -1.0F) * t;
}
constexpr float Luminance(Rgb c) {
  return 0.2126F * c.r + 0.7152F * c.g + 0.0722F * c.b;
}

/// How the finished light becomes a picture.
struct Grade {
  float exposure = 1;
  float contrast = 1;  ///< power about middle grey
  float saturation = 1;
  float vignette = 0.25F;  ///< share of light lost in the corners
  float grain = 0.012F;    ///< standard deviation in the mid tones, of full scale
  float bloom = 0.06F;     ///< share of light that the lens scatters widely
  Rgb shadows = {1, 1, 1}, highlights = {1, 1, 1};  ///< tints
};

/// A picture in the making. Shaders see `u` across, 0 in the middle, and `v` down, 0 at the top
/// to 1 at the bottom; both in units of the picture's height.
class Canvas {
 public:
  explicit Canvas(const QSize& size);

  int Width() const { return width_; }
  int Height() const { return height_; }
  float Aspect() const { return static_cast<float>(width_) / static_cast<float>(height_); }
  /// The side of a pixel in shader units.
  float Pixel() const { return 1.0F / static_cast<float>(height_); }
  Rgb& At(int x, int y) { return pixels_[Index(x, y)]; }
  const Rgb& At(int x, int y) const { return pixels_[Index(x, y)]; }
  float U(float x) const { return (x + 0.5F - 0.5F * static_cast<float>(width_)) * Pixel(); }
  float V(float y) const { return (y + 0.5F) * Pixel(); }
  float X(float u) const { return u / Pixel() + 0.5F * static_cast<float>(width_) - 0.5F; }
  float Y(float v) const { return v / Pixel() - 0.5F; }

  /// Sets every pixel to `shader(u, v)`.
  template <class Shader>
  void Shade(const Shader& shader) {
    for (int y = 0; y < height_; ++y)
      for (int x = 0; x < width_; ++x)
        At(x, y) = shader(U(static_cast<float>(x)), V(static_cast<float>(y)));
  }

  /// Lays `shader(u, v)` over the picture where the mask (Grayscale8, the canvas's size) is white.
  template <class Shader>
  void Overlay(const QImage& mask, const Shader& shader) {
    for (int y = 0; y < height_; ++y) {
      const uchar* line = mask.constScanLine(y);
      for (int x = 0; x < width_; ++x)
        if (line[x] != 0)
          At(x, y) = Mix(At(x, y), shader(U(static_cast<float>(x)), V(static_cast<float>(y))),
                         static_cast<float>(line[x]) / 255);
    }
  }

  /// A black mask of the canvas's size, for `Overlay`.
  QImage Mask() const;

  /// Adds a round light: falls off as a bell, `radius` (shader units) its standard deviation.
  void Glow(float u, float v, float radius, Rgb light);

  /// Lays a flat ellipse over the picture: radii in shader units along and across `angle`
  /// (radians), edges soft by a pixel or by `blur` of the radius.
  struct Ellipse {
    float u = 0, v = 0, along = 0.01F, across = 0.01F, angle = 0, blur = 0;
  };
  void Dab(const Ellipse& shape, Rgb colour, float opacity = 1);

  /// The light at a place, between pixels, clamped to the picture.
  Rgb Sample(float u, float v) const;

  /// The slight softness of a lens and its sensor's filter; hides hard pixel edges.
  void Soften();

  QImage Develop(const Grade& grade, std::uint32_t seed) const;

 private:
  std::size_t Index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
           static_cast<std::size_t>(x);
  }

  int width_, height_;
  std::vector<Rgb> pixels_;
};

}  // namespace zqm::demo
