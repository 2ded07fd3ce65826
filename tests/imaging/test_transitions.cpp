// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <limits>
#include <set>

#include "imaging/transitions.h"
#include "tests/support/noise.h"

namespace zqm {
namespace {

using namespace Qt::Literals::StringLiterals;

QImage Plain(const QSize& size, QRgb colour) {
  QImage picture(size, QImage::Format_RGB32);
  picture.fill(colour);
  return picture;
}

/// Two pictures without two areas alike.
struct Pair {
  explicit Pair(const QSize& size) : from(test::Noise(size, QImage::Format_RGB32)), to(from) {
    to.invertPixels();
    to = to.mirrored();
  }
  QImage from, to;
};

/// How much of a picture between black and white has turned white, 0 to 1.
double Turned(const QImage& picture) {
  double sum = 0;
  for (int y = 0; y < picture.height(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    for (int x = 0; x < picture.width(); ++x)
      sum += qGreen(row[x]);
  }
  return sum / 255 / (picture.width() * picture.height());
}

QImage Frame(const Transition& transition, const QImage& from, const QImage& to, double progress) {
  QImage out;
  Blend(transition, from, to, progress, out);
  return out;
}

TEST(Transitions, ListReadsAsItShould) {
  ASSERT_EQ(Transitions().size(), 164U);
  std::set<QString> names;
  int number = 0;
  for (const Transition& t : Transitions()) {
    EXPECT_EQ(t.number, number);
    const QString start = QString::number(number) + (number == 26 ? u" : "_s : u": "_s);
    EXPECT_TRUE(t.entry.startsWith(start)) << t.entry.data();
    const QString name = QString(t.entry).mid(start.size());
    EXPECT_EQ(name, name.simplified());
    EXPECT_TRUE(names.insert(name).second) << t.entry.data();
    ++number;
  }
  const std::map<int, QLatin1StringView> told = {
      {0, "0: No effect"_L1},
      {4, "4: Fade Out then In"_L1},
      {6, "6: Wipe Left to Right 2"_L1},
      {12, "12: Wipe Bottom to Top 2"_L1},
      {25, "25: Random Points"_L1},
      {26, "26 : Random Boxes"_L1},
      {30, "30: Expand In to Center"_L1},
      {48, "48: Expand from Vertical Center"_L1},
      {55, "55: Wipe from Vertical Center"_L1},
      {59, "59: Build up from Bottom"_L1},
      {73, "73: Shrink to Center"_L1},
      {80, "80: Curved Wipe from Bottom"_L1},
      {110, "110: Triangular Shred from Bottom Right"_L1},
      {139, "139: Starburst"_L1},
      {141, "141: Rotational Star"_L1},
      {145, "145: Speckled Wipe from Bottom"_L1},
      {154, "154: Horizontal Blinds"_L1},
      {163, "163: Rectangles from the Bottom"_L1},
  };
  for (const auto& [at, entry] : told)
    EXPECT_EQ(TransitionAt(at).entry, entry);
  for (const int none : {-1, 164, 32767, -32768})
    EXPECT_EQ(TransitionAt(none).number, 0);
}

TEST(Transitions, BeginAndEndExactly) {
  const QSize sizes[] = {{1, 1}, {2, 1}, {1, 3}, {67, 41}, {300, 2}};
  for (const QSize& size : sizes) {
    const Pair pair(size);
    for (const Transition& t : Transitions()) {
      const TransitionFrames frames(t, size);
      QImage out;
      for (const double begin : {0.0, -1.0}) {
        frames.Draw(pair.from, pair.to, begin, out);
        EXPECT_EQ(out, pair.from) << t.entry.data();
      }
      for (const double end : {1.0, 7.0, std::numeric_limits<double>::quiet_NaN()}) {
        frames.Draw(pair.from, pair.to, end, out);
        EXPECT_EQ(out, pair.to) << t.entry.data();
      }
    }
  }
}

TEST(Transitions, NearlyBegunAndNearlyEndedDrawWholePictures) {
  constexpr double kLittle = 1e-9;
  const QSize sizes[] = {{1, 1}, {67, 41}, {300, 2}, {33, 97}};
  for (const QSize& size : sizes) {
    const Pair pair(size);
    for (const Transition& t : Transitions().subspan(1)) {
      EXPECT_EQ(Frame(t, pair.from, pair.to, kLittle), pair.from) << t.entry.data();
      EXPECT_EQ(Frame(t, pair.from, pair.to, 1 - kLittle), pair.to) << t.entry.data();
    }
  }
}

TEST(Transitions, PaintEveryPixelAtAnySize) {
  const QSize sizes[] = {{1, 1}, {2, 1}, {1, 3}, {67, 41}, {64, 129}, {300, 2}};
  const double moments[] = {1e-9, 0.01, 0.2, 0.37, 0.5, 0.71, 0.97, 1 - 1e-9};
  for (const QSize& size : sizes) {
    const Pair pair(size);
    for (const Transition& t : Transitions()) {
      const TransitionFrames frames(t, size);
      QImage onBlack = Plain(size, 0);
      QImage onWhite = Plain(size, 0xffffffff);
      for (const double progress : moments) {
        frames.Draw(pair.from, pair.to, progress, onBlack);
        frames.Draw(pair.from, pair.to, progress, onWhite);
        ASSERT_EQ(onBlack.size(), size);
        ASSERT_EQ(onBlack, onWhite) << t.entry.data() << " at " << progress;
        onBlack.fill(0u);
        onWhite.fill(0xffffffff);
      }
    }
  }
}

TEST(Transitions, AreTheSameEachTimeAndInAnyOrder) {
  const Pair pair({97, 61});
  for (const Transition& t : Transitions()) {
    const TransitionFrames once(t, pair.from.size());
    QImage later;
    QImage out;
    once.Draw(pair.from, pair.to, 0.8, later);
    once.Draw(pair.from, pair.to, 0.3, out);
    EXPECT_EQ(out, Frame(t, pair.from, pair.to, 0.3)) << t.entry.data();
    EXPECT_EQ(later, Frame(t, pair.from, pair.to, 0.8)) << t.entry.data();
  }
}

TEST(Transitions, NoTwoAreAlike) {
  const Pair pair({160, 90});
  const double moments[] = {0.25, 0.5, 0.75};
  std::vector<std::array<QImage, 3>> all;
  for (const Transition& t : Transitions()) {
    std::array<QImage, 3> frames;
    for (std::size_t i = 0; i < frames.size(); ++i)
      frames[i] = Frame(t, pair.from, pair.to, moments[i]);
    for (std::size_t other = 0; other < all.size(); ++other) {
      EXPECT_NE(all[other], frames)
          << t.entry.data() << " and " << Transitions()[other].entry.data();
    }
    all.push_back(frames);
  }
}

TEST(Transitions, RevealsTurnEachPixelOnce) {
  const QSize size(120, 70);
  const QImage black = Plain(size, 0xff000000);
  const QImage white = Plain(size, 0xffffffff);
  for (const Transition& t : Transitions()) {
    if (!std::holds_alternative<Reveal>(t.effect)) continue;
    const TransitionFrames frames(t, size);
    QImage before = black;
    QImage now;
    for (int step = 1; step < 40; ++step) {
      frames.Draw(black, white, step / 40.0, now);
      for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
          ASSERT_GE(qGreen(now.pixel(x, y)), qGreen(before.pixel(x, y))) << t.entry.data();
      }
      before = now.copy();
    }
    const double half = Turned(Frame(t, black, white, 0.5));
    EXPECT_GT(half, 0.15) << t.entry.data();
    EXPECT_LT(half, 0.9) << t.entry.data();
  }
}

TEST(Transitions, MixedPixelsOfEqualPicturesStayAsTheyAre) {
  const QImage picture = Pair({120, 70}).from;
  for (const Transition& t : Transitions()) {
    if (!std::holds_alternative<Reveal>(t.effect) && t.number != 1) continue;
    for (const double progress : {0.1, 0.5, 0.83})
      EXPECT_EQ(Frame(t, picture, picture, progress), picture) << t.entry.data();
  }
}

TEST(Transitions, NothingJumps) {
  const QSize size(160, 90);
  const QImage black = Plain(size, 0xff000000);
  const QImage white = Plain(size, 0xffffffff);
  for (const Transition& t : Transitions().subspan(1)) {
    const TransitionFrames frames(t, size);
    double before = 0;
    QImage out;
    for (int step = 1; step <= 100; ++step) {
      frames.Draw(black, white, step / 100.0, out);
      const double now = Turned(out);
      EXPECT_LT(std::abs(now - before), 0.08) << t.entry.data() << " at " << step;
      before = now;
    }
  }
}

TEST(Transitions, GoTheWayOfTheirNames) {
  struct Seen {
    int number;
    double progress;
    QPointF fresh, old;  // shares of width and height where the new and the old picture are seen
  };
  const Seen cases[] = {
      {5, 0.3, {0.1, 0.5}, {0.9, 0.5}},      {7, 0.3, {0.9, 0.5}, {0.1, 0.5}},
      {9, 0.3, {0.5, 0.1}, {0.5, 0.9}},      {11, 0.3, {0.5, 0.9}, {0.5, 0.1}},
      {13, 0.3, {0.1, 0.1}, {0.9, 0.9}},     {16, 0.3, {0.9, 0.9}, {0.1, 0.1}},
      {17, 0.3, {0.1, 0.5}, {0.9, 0.5}},     {20, 0.3, {0.5, 0.9}, {0.5, 0.1}},
      {21, 0.3, {0.1, 0.5}, {0.9, 0.5}},     {24, 0.3, {0.5, 0.9}, {0.5, 0.1}},
      {27, 0.3, {0.5, 0.5}, {0.05, 0.05}},   {28, 0.3, {0.05, 0.5}, {0.5, 0.5}},
      {29, 0.3, {0.5, 0.5}, {0.05, 0.05}},   {30, 0.3, {0.05, 0.5}, {0.5, 0.5}},
      {33, 0.3, {0.9, 0.5}, {0.1, 0.5}},     {43, 0.3, {0.1, 0.9}, {0.9, 0.1}},
      {47, 0.3, {0.1, 0.5}, {0.5, 0.1}},     {48, 0.3, {0.5, 0.1}, {0.1, 0.5}},
      {50, 0.3, {0.9, 0.1}, {0.1, 0.1}},     {53, 0.3, {0.1, 0.5}, {0.5, 0.1}},
      {54, 0.3, {0.05, 0.5}, {0.5, 0.5}},    {55, 0.3, {0.5, 0.1}, {0.1, 0.5}},
      {56, 0.85, {0.1, 0.5}, {0.97, 0.5}},   {59, 0.85, {0.5, 0.9}, {0.5, 0.03}},
      {60, 0.5, {0.1, 0.5}, {0.9, 0.5}},     {61, 0.5, {0.9, 0.5}, {0.1, 0.5}},
      {62, 0.5, {0.5, 0.1}, {0.5, 0.9}},     {63, 0.5, {0.5, 0.9}, {0.5, 0.1}},
      {68, 0.3, {0.05, 0.5}, {0.5, 0.5}},    {71, 0.7, {0.9, 0.1}, {0.1, 0.9}},
      {73, 0.7, {0.1, 0.1}, {0.5, 0.5}},     {74, 0.3, {0.05, 0.05}, {0.5, 0.5}},
      {75, 0.3, {0.5, 0.5}, {0.05, 0.05}},   {76, 0.3, {0.25, 0.25}, {0.5, 0.5}},
      {78, 0.3, {0.95, 0.5}, {0.95, 0.05}},  {81, 0.3, {0.05, 0.05}, {0.05, 0.95}},
      {89, 0.4, {0.1, 0.5}, {0.5, 0.05}},    {95, 0.3, {0.05, 0.5}, {0.9, 0.5}},
      {110, 0.3, {0.98, 0.98}, {0.1, 0.1}},  {112, 0.3, {0.9, 0.1}, {0.1, 0.1}},
      {115, 0.3, {0.5, 0.5}, {0.05, 0.5}},   {116, 0.3, {0.02, 0.02}, {0.5, 0.5}},
      {133, 0.3, {0.1, 0.9}, {0.9, 0.1}},    {135, 0.2, {0.7, 0.3}, {0.3, 0.3}},
      {136, 0.2, {0.3, 0.3}, {0.7, 0.3}},    {140, 0.3, {0.5, 0.5}, {0.05, 0.05}},
      {141, 0.2, {0.5, 0.5}, {0.05, 0.05}},  {143, 0.3, {0.98, 0.5}, {0.1, 0.5}},
      {147, 0.3, {0.9, 0.5}, {0.1, 0.5}},    {153, 0.3, {0.5, 0.9}, {0.5, 0.1}},
      {154, 0.5, {0.5, 0.252}, {0.5, 0.33}}, {155, 0.5, {0.252, 0.5}, {0.33, 0.5}},
      {160, 0.4, {0.02, 0.5}, {0.9, 0.5}},   {163, 0.4, {0.5, 0.98}, {0.5, 0.1}},
  };
  const QSize size(400, 225);
  const QImage black = Plain(size, 0xff000000);
  const QImage white = Plain(size, 0xffffffff);
  const auto at = [&](const QPointF& share) {
    return QPoint(static_cast<int>(share.x() * size.width()),
                  static_cast<int>(share.y() * size.height()));
  };
  for (const Seen& seen : cases) {
    const Transition& t = TransitionAt(seen.number);
    const QImage frame = Frame(t, black, white, seen.progress);
    EXPECT_EQ(frame.pixel(at(seen.fresh)), 0xffffffff) << t.entry.data();
    EXPECT_EQ(frame.pixel(at(seen.old)), 0xff000000) << t.entry.data();
  }
}

TEST(Transitions, PicturesKeepTheirPixelsWhileTheyMove) {
  // Where a point of the new or the old picture lies at a share of the way.
  struct Moved {
    int number;
    bool ofNew;
    QPoint pixel, lies;
  };
  const Moved cases[] = {
      {17, false, {10, 30}, {30, 30}},  // the old one a quarter of 80 to the right
      {17, true, {70, 30}, {10, 30}},   {22, false, {70, 30}, {50, 30}},
      {64, true, {70, 30}, {10, 30}},   {67, true, {30, 5}, {30, 50}},
      {146, false, {20, 30}, {30, 30}},  // at half the speed
      {150, true, {70, 30}, {10, 30}},
  };
  const Pair pair({80, 60});
  for (const Moved& moved : cases) {
    const Transition& t = TransitionAt(moved.number);
    const QImage frame = Frame(t, pair.from, pair.to, 0.25);
    const QImage& picture = moved.ofNew ? pair.to : pair.from;
    EXPECT_EQ(frame.pixel(moved.lies), picture.pixel(moved.pixel)) << t.entry.data();
  }
}

TEST(Transitions, FadesGoThroughBlack) {
  const QSize size(8, 8);
  const QImage white = Plain(size, 0xffffffff);
  const std::map<int, double> dark = {{2, 0.85}, {3, 0.15}, {4, 0.5}};
  for (const auto& [number, progress] : dark)
    EXPECT_EQ(Frame(TransitionAt(number), white, white, progress), Plain(size, 0xff000000));
  EXPECT_EQ(qRed(Frame(TransitionAt(1), Plain(size, 0xff000000), white, 0.5).pixel(0, 0)), 127);
}

TEST(Transitions, ChanceIsSpreadEvenly) {
  const QSize size(400, 400);
  const QImage black = Plain(size, 0xff000000);
  const QImage white = Plain(size, 0xffffffff);
  for (const double progress : {0.1, 0.5, 0.9}) {
    const QImage frame = Frame(TransitionAt(25), black, white, progress);
    for (int y = 0; y < 400; y += 100) {
      for (int x = 0; x < 400; x += 100)
        EXPECT_NEAR(Turned(frame.copy(x, y, 100, 100)), progress, 0.025) << x << ", " << y;
    }
  }
}

TEST(Transitions, PicturesThatDoNotFitAreShownAtOnce) {
  const Pair pair({40, 30});
  const QImage gray = pair.from.convertToFormat(QImage::Format_Grayscale8);
  for (const int number : {1, 5, 17, 60, 140}) {
    const TransitionFrames frames(TransitionAt(number), pair.from.size());
    QImage out;
    for (const QImage& from : {QImage(), gray, pair.from.scaled(20, 30)}) {
      frames.Draw(from, pair.to, 0.5, out);
      EXPECT_EQ(out, pair.to);
      frames.Draw(pair.from, from, 0.5, out);
      EXPECT_EQ(out, from);
    }
    TransitionFrames(TransitionAt(number), QSize()).Draw(pair.from, pair.to, 0.5, out);
    EXPECT_EQ(out, pair.to);
  }
}

}  // namespace
}  // namespace zqm
