// SPDX-License-Identifier: GPL-3.0-or-later
#include <QPainter>
#include <QPainterPath>
#include <array>

#include "app/demo/scenes.h"
#include "app/demo/sky.h"
#include "app/demo/town.h"
#include "app/demo/water.h"

namespace zqm::demo {
namespace {

constexpr float kQuay = 0.575F;   // top of the quay wall
constexpr float kShore = 0.615F;  // the water's edge at its foot
constexpr std::array<Rgb, 9> kWalls = {{{0.44F, 0.14F, 0.10F},
                                        {0.62F, 0.42F, 0.19F},
                                        {0.66F, 0.61F, 0.52F},
                                        {0.19F, 0.27F, 0.34F},
                                        {0.52F, 0.29F, 0.18F},
                                        {0.72F, 0.69F, 0.63F},
                                        {0.26F, 0.32F, 0.25F},
                                        {0.58F, 0.39F, 0.33F},
                                        {0.36F, 0.095F, 0.085F}}};

std::vector<House> Street(float aspect) {
  std::vector<House> houses;
  Random random(21);
  float left = -0.5F * aspect - 0.03F;
  std::size_t colour = 0;
  while (left < 0.5F * aspect) {
    const float wide = random.Between(0.075F, 0.145F);
    const float tall = random.Between(0.115F, 0.20F);
    colour += 1 + static_cast<std::size_t>(random.Next() * 3);
    const Rgb roof =
        random.Next() < 0.6F ? Rgb{0.34F, 0.115F, 0.060F} : Rgb{0.115F, 0.115F, 0.125F};
    houses.push_back({left, left + wide, kQuay - tall, kQuay, random.Between(0.038F, 0.065F),
                      random.Next() < 0.35F, kWalls[colour % kWalls.size()], roof,
                      static_cast<std::uint32_t>(houses.size() + 5)});
    left += wide;
  }
  return houses;
}

Rgb HouseColour(const House& house, const HousePart& part, float u, float v) {
  const float weather = 1 + 0.10F * Fbm(u * 50, v * 50, 4, house.seed) -
                        0.18F * Smooth(0.75F, 1, part.y) * std::abs(Noise(u * 40, v * 15, 3));
  const Rgb sun{1.55F, 1.30F, 0.98F};
  const float eavesShadow = Smooth(house.eaves + 0.004F, house.eaves + 0.010F, v);
  switch (part.kind) {
    case HousePart::Kind::Roof: {
      const float tiles =
          0.85F + 0.22F * std::cos(part.y * 75) + 0.22F * Noise(u * 320, v * 320, house.seed);
      return house.roof * sun * (tiles * (house.ridgeAcross ? 0.85F : 1.0F));
    }
    case HousePart::Kind::Window: {
      const bool bar = std::abs(part.x - 0.5F) < 0.06F || std::abs(part.y - 0.4F) < 0.04F;
      if (bar) return {0.85F, 0.82F, 0.76F};
      const float curtain = Cell(part.column, part.floor, house.seed);
      const Rgb glass =
          Mix({0.055F, 0.075F, 0.10F}, {0.30F, 0.38F, 0.48F}, 0.7F * (1 - part.y) * curtain);
      return curtain > 0.7F && std::abs(part.x - 0.5F) > 0.26F ? Rgb{0.50F, 0.47F, 0.42F} : glass;
    }
    case HousePart::Kind::Frame:
      return Rgb{0.95F, 0.92F, 0.84F} * weather;
    case HousePart::Kind::Door:
      return (Cell(1, 2, house.seed) < 0.5F ? Rgb{0.08F, 0.16F, 0.12F} : Rgb{0.20F, 0.10F, 0.05F}) *
             weather;
    case HousePart::Kind::Wall:
    case HousePart::Kind::None:
      break;
  }
  return house.wall * sun * (weather * Lerp(0.42F, 0.80F, v < house.eaves ? 1.0F : eavesShadow));
}

struct Boat {
  float u, length, waterline;
  Rgb hull, cabin;
  bool sail;
};

class BoatPainter {
 public:
  BoatPainter(Canvas& canvas, const Boat& boat) : canvas_(canvas), boat_(boat) {}

  void Draw() {
    const Rgb hull = boat_.hull;
    if (boat_.sail) {
      Line({0.04F, -0.10F}, {0.04F, -1.75F}, 0.016F, {0.62F, 0.55F, 0.46F});
      Line({0.04F, -0.36F}, {-0.42F, -0.34F}, 0.034F, {0.80F, 0.77F, 0.70F});
      Line({0.04F, -1.72F}, {0.50F, -0.20F}, 0.004F, {0.25F, 0.25F, 0.25F});
      Line({0.04F, -1.72F}, {-0.49F, -0.17F}, 0.004F, {0.25F, 0.25F, 0.25F});
      Line({0.04F, -1.1F}, {0.08F, -0.14F}, 0.003F, {0.25F, 0.25F, 0.25F});
    } else {
      Line({-0.10F, -0.2F}, {-0.10F, -0.85F}, 0.016F, {0.30F, 0.24F, 0.18F});
      Line({-0.10F, -0.80F}, {-0.46F, -0.24F}, 0.004F, {0.16F, 0.14F, 0.12F});
      Line({-0.10F, -0.80F}, {0.48F, -0.25F}, 0.004F, {0.16F, 0.14F, 0.12F});
    }
    const std::initializer_list<QPointF> cabin = {
        {-0.05, -0.16}, {-0.03, -0.42}, {0.22, -0.42}, {0.27, -0.16}};
    if (!boat_.sail) {
      Fill(cabin, [&](float, float) { return boat_.cabin; });
      Fill({{-0.06, -0.41}, {-0.05, -0.455}, {0.25, -0.455}, {0.25, -0.41}}, [](float, float) {
        return Rgb{0.30F, 0.12F, 0.08F};
      });
      for (const double x : {0.0, 0.10, 0.19})
        Fill({{x, -0.37}, {x + 0.06, -0.37}, {x + 0.06, -0.28}, {x, -0.28}}, [](float, float) {
          return Rgb{0.05F, 0.07F, 0.09F};
        });
    } else {
      Fill({{-0.18, -0.14}, {-0.14, -0.22}, {0.16, -0.22}, {0.24, -0.14}},
           [&](float, float) { return boat_.cabin; });
    }
    QPainterPath body(At({-0.47, -0.17}));
    body.quadTo(At({0.05, -0.08}), At({0.52, -0.25}));
    body.quadTo(At({0.44, -0.02}), At({0.36, 0.01}));
    body.lineTo(At({-0.42, 0.01}));
    body.closeSubpath();
    FillPath(body, [&](float, float v) {
      const float up = (boat_.waterline - v) / boat_.length;
      if (up < 0.025F) return Rgb{0.20F, 0.045F, 0.035F};
      if (up > 0.105F && up < 0.122F) return Rgb{0.85F, 0.82F, 0.75F};
      return hull * (0.75F + 2.2F * up);
    });
  }

 private:
  QPointF At(QPointF place) const {
    return {static_cast<double>(canvas_.X(boat_.u)) + place.x() * Length(),
            static_cast<double>(canvas_.Y(boat_.waterline)) + place.y() * Length()};
  }
  double Length() const { return static_cast<double>(boat_.length / canvas_.Pixel()); }
  template <class Shader>
  void FillPath(const QPainterPath& path, const Shader& shader) {
    QImage mask = canvas_.Mask();
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, Qt::white);
    painter.end();
    canvas_.Overlay(mask, shader);
  }
  template <class Shader>
  void Fill(std::initializer_list<QPointF> corners, const Shader& shader) {
    QPolygonF polygon;
    for (const QPointF& corner : corners)
      polygon << At(corner);
    QPainterPath path;
    path.addPolygon(polygon);
    FillPath(path, shader);
  }
  void Line(QPointF from, QPointF to, float wide, Rgb colour) {
    QPainterPath path(At(from));
    path.lineTo(At(to));
    QPainterPathStroker stroker;
    stroker.setWidth(std::max(static_cast<double>(wide) * Length(), 0.9));
    FillPath(stroker.createStroke(path), [&](float, float) { return colour; });
  }

  Canvas& canvas_;
  Boat boat_;
};

}  // namespace

QImage DrawHarbour(const QSize& size) {
  Canvas canvas(size);
  const ClearSky sky{{0.12F, 0.27F, 0.58F},
                     {0.32F, 0.48F, 0.72F},
                     {0.78F, 0.80F, 0.80F},
                     0.5F,
                     0.55F,
                     -0.9F,
                     0.1F,
                     {0.7F, 0.5F, 0.3F},
                     0.5F};
  const CloudDeck clouds{0.52F, 0.42F, 0.72F, 0.06F, 0.30F, 8, 19, -0.10F, 0.05F};
  const std::vector<House> houses = Street(canvas.Aspect());
  const Skyline hill(canvas.Aspect(), canvas.Width() * 2, [](float u) {
    return 0.325F - 0.16F * Fbm(u * 1.1F + 3, 2, 6, 9, 0.42F) + 0.06F * Smooth(-0.2F, 0.75F, u) -
           0.004F * std::abs(Noise(u * 120, 1, 4));
  });
  canvas.Shade([&](float u, float v) {
    if (v > kShore) return Rgb{};
    Rgb light = sky(u, v);
    const CloudDeck::Cloud cloud = clouds.At(u, v);
    light = Mix(light, Mix({0.50F, 0.53F, 0.60F}, {1.5F, 1.38F, 1.22F}, cloud.light),
                0.92F * cloud.density);
    if (v > hill(u)) {
      const float wood = Fbm(u * 34, v * 60, 6, 61);
      const float meadow = Smooth(0.05F, 0.2F, Fbm(u * 4, v * 9, 4, 63));
      light = Mix(Mix(Rgb{0.055F, 0.085F, 0.035F} * (1 + 1.0F * wood),
                      Rgb{0.20F, 0.24F, 0.085F} * (1 + 0.25F * wood), meadow),
                  {0.50F, 0.60F, 0.72F}, 0.30F);
    }
    for (const House& house : houses) {
      const HousePart part = PartAt(house, u, v);
      if (part.kind != HousePart::Kind::None) light = HouseColour(house, part, u, v);
    }
    if (v > kQuay) {
      const float down = (v - kQuay) / (kShore - kQuay);
      const float course = down * 4;
      const float shift = static_cast<float>(Floor(course)) * 0.37F;
      const float block = u * 34 + shift;
      const float joint =
          std::min({1.0F, std::abs(course - static_cast<float>(Floor(course + 0.5F))) * 9,
                    std::abs(block - static_cast<float>(Floor(block + 0.5F))) * 14});
      const Rgb stone = Rgb{0.36F, 0.32F, 0.27F} *
                        (0.55F + 0.35F * joint + 0.35F * Cell(Floor(block), Floor(course), 4) +
                         0.2F * Fbm(u * 90, v * 90, 4, 5));
      light = Mix(stone, {0.050F, 0.065F, 0.030F},
                  Smooth(0.62F, 0.90F, down + 0.10F * Noise(u * 40, 2, 6)));
      if (down < 0.10F) light = Rgb{0.62F, 0.57F, 0.50F};
    }
    return light;
  });
  Random random(8);
  for (int i = 0; i < 26; ++i) {  // people on the quay
    const float u = random.Between(-0.5F, 0.5F) * canvas.Aspect();
    const Rgb coat{random.Between(0.03F, 0.5F), random.Between(0.03F, 0.3F),
                   random.Between(0.04F, 0.4F)};
    canvas.Dab({u, kQuay - 0.0115F, 0.0030F, 0.0085F}, coat);
    canvas.Dab({u, kQuay - 0.0215F, 0.0023F, 0.0026F}, {0.42F, 0.26F, 0.19F});
  }
  const Boat boats[] = {
      {-0.56F, 0.22F, kShore + 0.006F, {0.10F, 0.22F, 0.42F}, {0.80F, 0.78F, 0.72F}, false},
      {-0.27F, 0.17F, kShore + 0.004F, {0.82F, 0.80F, 0.76F}, {0.70F, 0.66F, 0.58F}, true},
      {-0.03F, 0.21F, kShore + 0.006F, {0.46F, 0.07F, 0.05F}, {0.84F, 0.80F, 0.70F}, false},
      {0.22F, 0.18F, kShore + 0.004F, {0.055F, 0.075F, 0.12F}, {0.75F, 0.70F, 0.60F}, true},
      {0.50F, 0.24F, kShore + 0.006F, {0.08F, 0.27F, 0.18F}, {0.85F, 0.74F, 0.42F}, false}};
  for (const Boat& boat : boats)
    BoatPainter(canvas, boat).Draw();
  DrawWater(canvas, {.shore = kShore + 0.006F,
                     .roughness = 0.055F,
                     .scale = 4.2F,
                     .smear = 0.02F,
                     .rays = 3,
                     .deep = {0.020F, 0.060F, 0.070F},
                     .nearShine = 0.50F,
                     .farShine = 0.80F,
                     .seed = 51});
  canvas.Soften();
  return canvas.Develop({.exposure = 0.95F,
                         .contrast = 1.08F,
                         .saturation = 1.08F,
                         .vignette = 0.25F,
                         .grain = 0.008F,
                         .bloom = 0.05F},
                        10);
}

}  // namespace zqm::demo
