// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/transitions/wipe_order.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace zqm {
namespace {

constexpr float kPi = std::numbers::pi_v<float>;

/// What follows the point of a number that isn't negative.
float Fraction(float number) {
  return number - static_cast<float>(static_cast<int>(number));
}

/// The angle of a direction, -pi to pi, true to 1e-5 and several times as fast as the exact one
/// (M. Abramowitz, I. Stegun, "Handbook of Mathematical Functions", 4.4.49).
float Angle(float y, float x) {
  const float flat = std::abs(x);
  const float steep = std::abs(y);
  const float most = std::max(flat, steep);
  if (most == 0) return 0;
  const float ratio = std::min(flat, steep) / most;
  const float square = ratio * ratio;
  const float powers = 0.1801410F + square * (-0.0851330F + square * 0.0208351F);
  float angle = ratio * (0.9998660F + square * (-0.3302995F + square * powers));
  if (steep > flat) angle = kPi / 2 - angle;
  if (x < 0) angle = kPi - angle;
  return y < 0 ? -angle : angle;
}

/// A pixel as the origin sees it: the way from there and the place across it, each 0 to 1.
struct Place {
  float way, across;
};

Place SeenFrom(Origin o, float u, float v) {
  switch (o) {
    case Origin::Right:
      return {1 - u, v};
    case Origin::Top:
      return {v, u};
    case Origin::Bottom:
      return {1 - v, u};
    case Origin::TopRight:
      return {1 - u, v};
    case Origin::BottomLeft:
      return {u, 1 - v};
    case Origin::BottomRight:
      return {1 - u, 1 - v};
    case Origin::Centre:
    case Origin::Edges:
      return {std::abs(2 * u - 1), std::abs(2 * v - 1)};
    case Origin::Horizon:
      return {std::abs(2 * v - 1), u};
    case Origin::VerticalCentre:
      return {std::abs(2 * u - 1), v};
    case Origin::Sides:
      return {1 - std::abs(2 * u - 1), v};
    default:
      return {u, v};
  }
}

struct Seen {
  Place place;
  float u, v;
  const Wipe& wipe;
  float width, height;  // pixels
};

float Anywhere(const Seen&) {
  return 0;
}

float Straight(const Seen& s) {
  return IsCorner(s.wipe.origin) ? (s.place.way + s.place.across) / 2 : s.place.way;
}

float Rectangle(const Seen& s) {
  const float way = std::max(s.place.way, s.place.across);
  return s.wipe.origin == Origin::Edges ? 1 - way : way;
}

float Round(const Seen& s) {
  const float x = s.place.way * s.width;
  const float y = s.place.across * s.height;
  const float way = std::sqrt((x * x + y * y) / (s.width * s.width + s.height * s.height));
  return s.wipe.origin == Origin::Edges ? 1 - way : way;
}

float Curved(const Seen& s) {
  constexpr float kBulge = 0.5F;
  const float off = 2 * s.place.across - 1;
  return (s.place.way + kBulge * off * off) / (1 + kBulge);
}

/// Clockwise from straight up, 0 to 1.
float TurnAboutCentre(const Seen& s) {
  const float turn = Angle((s.u - 0.5F) * s.width, (0.5F - s.v) * s.height) / (2 * kPi);
  return turn < 0 ? turn + 1 : turn;
}

float Clockwise(const Seen& s) {
  return TurnAboutCentre(s);
}

float CounterClockwise(const Seen& s) {
  return 1 - TurnAboutCentre(s);
}

float Fan(const Seen& s) {
  const bool upright = s.wipe.origin == Origin::Left || s.wipe.origin == Origin::Right;
  const float length = upright ? s.width : s.height;
  const float breadth = upright ? s.height : s.width;
  return Angle(s.place.way * length, (0.5F - s.place.across) * breadth) / kPi;
}

float Starburst(const Seen& s) {
  constexpr float kRays = 12;
  constexpr float kValley = 0.45F;  // where rays part, as a share of their length
  const float ray = std::abs(2 * Fraction(TurnAboutCentre(s) * kRays) - 1);
  const float x = s.place.way * s.width;
  const float y = s.place.across * s.height;
  const float way = std::sqrt((x * x + y * y) / (s.width * s.width + s.height * s.height));
  return way * kValley / (kValley + (1 - kValley) * ray * ray);
}

float Blinds(const Seen& s) {
  constexpr float kSlats = 12;
  return Fraction(s.place.way * kSlats);
}

float UnevenBlinds(const Seen& s) {
  // The ends of the slats.
  constexpr std::array kEnds{.05F, .17F, .2F, .31F, .37F, .52F, .58F, .61F, .74F, .78F, .93F, 1.F};
  const auto* const end = std::upper_bound(kEnds.begin(), kEnds.end() - 1, s.place.way);
  const float begin = end == kEnds.begin() ? 0 : *(end - 1);
  return (s.place.way - begin) / (*end - begin);
}

using Order = float (*)(const Seen&);
// As WipeShape has them.
constexpr Order kOrders[] = {Anywhere,         Straight, Rectangle, Round,  Curved,      Clockwise,
                             CounterClockwise, Fan,      Starburst, Blinds, UnevenBlinds};

}  // namespace

float WipeOrder(const Wipe& wipe, float u, float v, const QSize& screen) {
  const Seen seen{
      SeenFrom(wipe.origin, u, v),        u, v, wipe, static_cast<float>(screen.width()),
      static_cast<float>(screen.height())};
  return kOrders[static_cast<int>(wipe.shape)](seen);
}

float TeethAt(const Wipe& wipe, Ragged teeth, float u, float v) {
  constexpr float kTeeth = 10;
  const Place place = SeenFrom(wipe.origin, u, v);
  const float along =
      IsCorner(wipe.origin) ? (place.across - place.way + 1) / 2 * 1.5F : place.across;
  const float phase = Fraction(along * kTeeth);
  return teeth == Ragged::TriangularTeeth ? std::abs(2 * phase - 1) : phase < 0.5F ? 0.0F : 1.0F;
}

float Chance(quint32 x, quint32 y, quint32 seed) {
  // One round of multiplying and shifting for each number leaves no pattern that the eye finds.
  quint32 bits = seed;
  for (const quint32 number : {x, y}) {
    bits = (bits + number + 0x9e3779b9U) * 0x85ebca6bU;
    bits = (bits ^ bits >> 15) * 0xc2b2ae35U;
    bits ^= bits >> 13;
  }
  bits = (bits ^ bits >> 16) * 0x27d4eb2fU;
  bits ^= bits >> 15;
  return static_cast<float>(bits >> 8) * (1.0F / (1 << 24));
}

}  // namespace zqm
