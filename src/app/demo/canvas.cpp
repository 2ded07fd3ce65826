// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/canvas.h"

#include <array>

namespace zqm::demo {
namespace {

/// Linear light 0 to 1 to display values 0 to 255, by the sRGB curve (IEC 61966-2-1). Indexed by
/// the square root, which spends the entries where the eye does.
class DisplayCurve {
 public:
  DisplayCurve() {
    for (int i = 0; i <= kSteps; ++i) {
      const float root = static_cast<float>(i) / kSteps;
      const float x = root * root;
      values_[static_cast<std::size_t>(i)] =
          255 * (x <= 0.0031308F ? 12.92F * x : 1.055F * std::pow(x, 1 / 2.4F) - 0.055F);
    }
  }
  float operator()(float x) const {
    return values_[static_cast<std::size_t>(std::sqrt(Saturate(x)) * kSteps + 0.5F)];
  }

 private:
  static constexpr int kSteps = 8192;
  std::array<float, kSteps + 1> values_{};
};

/// The shoulder and toe of film. Source: K. Narkowicz's fit of the ACES curve (2016).
float Film(float x) {
  return x * (2.51F * x + 0.03F) / (x * (2.43F * x + 0.59F) + 0.14F);
}

/// Light that a lens spreads over a wide area: the picture at an eighth, blurred.
class Bloom {
 public:
  explicit Bloom(const Canvas& canvas)
      : width_(canvas.Width() / kStep + 1),
        height_(canvas.Height() / kStep + 1),
        light_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {
    for (int y = 0; y < canvas.Height(); ++y)
      for (int x = 0; x < canvas.Width(); ++x) {
        Rgb& sum = At(x / kStep, y / kStep);
        sum = sum + canvas.At(x, y) * (1.0F / (kStep * kStep));
      }
    const int radius = std::max(1, canvas.Height() / kStep / 24);
    for (int pass = 0; pass < 2; ++pass) {
      for (int y = 0; y < height_; ++y)
        BlurLine(y * width_, 1, width_, radius);
      for (int x = 0; x < width_; ++x)
        BlurLine(x, width_, height_, radius);
    }
  }

  Rgb Sample(int x, int y) const {
    const float fx = (static_cast<float>(x) + 0.5F) / kStep - 0.5F;
    const float fy = (static_cast<float>(y) + 0.5F) / kStep - 0.5F;
    const int ix = std::clamp(Floor(fx), 0, width_ - 2);
    const int iy = std::clamp(Floor(fy), 0, height_ - 2);
    const float tx = Saturate(fx - static_cast<float>(ix));
    const float ty = Saturate(fy - static_cast<float>(iy));
    return Mix(Mix(At(ix, iy), At(ix + 1, iy), tx), Mix(At(ix, iy + 1), At(ix + 1, iy + 1), tx),
               ty);
  }

 private:
  static constexpr int kStep = 8;

  Rgb& At(int x, int y) { return light_[static_cast<std::size_t>(y * width_ + x)]; }
  const Rgb& At(int x, int y) const { return light_[static_cast<std::size_t>(y * width_ + x)]; }

  void BlurLine(int first, int stride, int count, int radius) {
    std::vector<Rgb> line(static_cast<std::size_t>(count));
    const auto at = [&](int i) -> Rgb& {
      return light_[static_cast<std::size_t>(first + std::clamp(i, 0, count - 1) * stride)];
    };
    Rgb sum;
    for (int i = -radius; i <= radius; ++i)
      sum = sum + at(i);
    for (int i = 0; i < count; ++i) {
      line[static_cast<std::size_t>(i)] = sum * (1.0F / static_cast<float>(2 * radius + 1));
      sum = sum + at(i + radius + 1) + at(i - radius) * -1.0F;
    }
    for (int i = 0; i < count; ++i)
      at(i) = line[static_cast<std::size_t>(i)];
  }

  int width_, height_;
  std::vector<Rgb> light_;
};

}  // namespace

Canvas::Canvas(const QSize& size)
    : width_(size.width()),
      height_(size.height()),
      pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {}

QImage Canvas::Mask() const {
  QImage mask(width_, height_, QImage::Format_Grayscale8);
  mask.fill(0);
  return mask;
}

void Canvas::Glow(float u, float v, float radius, Rgb light) {
  const float sigma = std::max(radius / Pixel(), 0.4F);
  const float cx = X(u);
  const float cy = Y(v);
  const float reach = sigma * 3.3F;
  const int top = std::max(0, Floor(cy - reach));
  const int bottom = std::min(height_ - 1, Floor(cy + reach) + 1);
  const int left = std::max(0, Floor(cx - reach));
  const int right = std::min(width_ - 1, Floor(cx + reach) + 1);
  for (int y = top; y <= bottom; ++y)
    for (int x = left; x <= right; ++x) {
      const float dx = (static_cast<float>(x) - cx) / sigma;
      const float dy = (static_cast<float>(y) - cy) / sigma;
      At(x, y) = At(x, y) + light * std::exp(-0.5F * (dx * dx + dy * dy));
    }
}

void Canvas::Dab(const Ellipse& shape, Rgb colour, float opacity) {
  const float reach = std::max(shape.along, shape.across) + 2 * Pixel();
  const int top = std::max(0, Floor(Y(shape.v - reach)));
  const int bottom = std::min(height_ - 1, Floor(Y(shape.v + reach)) + 1);
  const int left = std::max(0, Floor(X(shape.u - reach)));
  const int right = std::min(width_ - 1, Floor(X(shape.u + reach)) + 1);
  const float cosine = std::cos(shape.angle);
  const float sine = std::sin(shape.angle);
  const float edge =
      std::max(shape.blur, Pixel() / std::max(std::min(shape.along, shape.across), Pixel()));
  for (int y = top; y <= bottom; ++y)
    for (int x = left; x <= right; ++x) {
      const float du = U(static_cast<float>(x)) - shape.u;
      const float dv = V(static_cast<float>(y)) - shape.v;
      const float a = (du * cosine + dv * sine) / shape.along;
      const float b = (dv * cosine - du * sine) / shape.across;
      const float off = std::sqrt(a * a + b * b);
      if (off < 1 + edge)
        At(x, y) = Mix(At(x, y), colour, opacity * Smooth(1 + 0.5F * edge, 1 - edge, off));
    }
}

Rgb Canvas::Sample(float u, float v) const {
  const float fx = std::clamp(X(u), 0.0F, static_cast<float>(width_) - 1.001F);
  const float fy = std::clamp(Y(v), 0.0F, static_cast<float>(height_) - 1.001F);
  const int ix = static_cast<int>(fx);
  const int iy = static_cast<int>(fy);
  const float tx = fx - static_cast<float>(ix);
  return Mix(Mix(At(ix, iy), At(ix + 1, iy), tx), Mix(At(ix, iy + 1), At(ix + 1, iy + 1), tx),
             fy - static_cast<float>(iy));
}

void Canvas::Soften() {
  std::vector<Rgb> above(pixels_.begin(), pixels_.begin() + width_);
  std::vector<Rgb> line(above);
  for (int y = 0; y < height_; ++y) {
    const int below = std::min(y + 1, height_ - 1);
    for (int x = 0; x < width_; ++x)
      line[static_cast<std::size_t>(x)] =
          0.25F * (above[static_cast<std::size_t>(x)] + At(x, below)) + 0.5F * At(x, y);
    std::copy_n(pixels_.begin() + static_cast<std::ptrdiff_t>(Index(0, y)), width_, above.begin());
    for (int x = 0; x < width_; ++x)
      At(x, y) = 0.25F * (line[static_cast<std::size_t>(std::max(x - 1, 0))] +
                          line[static_cast<std::size_t>(std::min(x + 1, width_ - 1))]) +
                 0.5F * line[static_cast<std::size_t>(x)];
  }
}

QImage Canvas::Develop(const Grade& grade, std::uint32_t seed) const {
  static const DisplayCurve curve;
  const Bloom bloom(*this);
  QImage image(width_, height_, QImage::Format_RGB32);
  const float corner = 1 / (Aspect() * Aspect() * 0.25F + 0.25F);
  for (int y = 0; y < height_; ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    const float dv = V(static_cast<float>(y)) - 0.5F;
    for (int x = 0; x < width_; ++x) {
      const float du = U(static_cast<float>(x));
      const float off = (du * du + dv * dv) * corner;
      Rgb c = Mix(At(x, y), bloom.Sample(x, y), grade.bloom) *
              (grade.exposure * (1 - grade.vignette * off * (0.4F + 0.6F * off)));
      const float light = Luminance(c);
      if (grade.contrast != 1 && light > 1e-6F) c = c * std::pow(light / 0.18F, grade.contrast - 1);
      c = c * Mix(grade.shadows, grade.highlights, Smooth(0, 0.6F, light));
      const float grey = Luminance(c);
      c = Mix({grey, grey, grey}, c, grade.saturation);
      const std::uint32_t bits = Hash(x, y, seed);
      const auto noise = [bits](int shift) {
        // Two bytes' sum stands in for a bell; the grain of the colours is partly shared.
        return static_cast<float>((bits >> shift & 0xFF) + (bits & 0xFF)) / 255.0F - 1;
      };
      const auto develop = [&](float linear, int shift) {
        const float value = curve(Film(std::max(linear, 0.0F) * 0.6F));
        const float strength = grade.grain * 255 * 2.4F * (1 - 0.6F * value / 255);
        // At least a dither: smooth skies would show steps.
        return std::clamp(static_cast<int>(value + noise(shift) * std::max(strength, 0.7F) + 0.5F),
                          0, 255);
      };
      line[x] = qRgb(develop(c.r, 8), develop(c.g, 16), develop(c.b, 24));
    }
  }
  return image;
}

}  // namespace zqm::demo
