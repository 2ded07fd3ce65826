// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "imaging/effects/blur.h"
#include "imaging/effects/bump_map.h"
#include "imaging/effects/colour_balance.h"
#include "imaging/effects/histogram.h"
#include "imaging/effects/lens.h"
#include "imaging/effects/morph.h"
#include "imaging/effects/noise.h"
#include "imaging/effects/red_eyes.h"
#include "imaging/effects/user_filter.h"
#include "imaging/effects/wave.h"
#include "imaging/pixel_formats.h"
#include "imaging/resample.h"
#include "imaging/tonal.h"
#include "tests/support/noise.h"

namespace zqm {
namespace {

using test::Noise;

constexpr QImage::Format kFormats[] = {QImage::Format_Mono,       QImage::Format_Indexed8,
                                       QImage::Format_Grayscale8, QImage::Format_Grayscale16,
                                       QImage::Format_RGB32,      QImage::Format_ARGB32,
                                       QImage::Format_RGBX64,     QImage::Format_RGBA64};

struct Effect {
  const char* name;
  PartChange work;
  bool movesPixels = false;  // and alpha with them
};

const LensSettings kLens{{0.4, 0.6}, 80, 70};

const FilterMatrix& Preset(QStringView name) {
  const auto presets = FilterPresets();
  const auto found = std::ranges::find(presets, name, &FilterPreset::name);
  EXPECT_NE(found, presets.end());
  return found->matrix;
}

Effect Morphing(const char* name, MorphOperation operation, bool round = true) {
  return {name, [=](const QImage& p, const PartView& v) {
            return Morph(p, {operation, 6, round}, v.scale);
          }};
}

/// Every effect with settings that show.
std::vector<Effect> Strong() {
  std::vector<Effect> effects = {
      {"fine blur", [](const QImage& p, const PartView& v) { return Blur(p, 5, v.scale); }},
      {"wide blur", [](const QImage& p, const PartView& v) { return Blur(p, 20, v.scale); }},
      {"sharpen", [](const QImage& p, const PartView& v) { return Sharpen(p, 40, 15, v.scale); }},
      {"noise", [](const QImage& p, const PartView& v) { return ReduceNoise(p, 90, 90, v.scale); }},
      {"bump map",
       [](const QImage& p, const PartView& v) {
         return BumpMap(p, {60, 135, 40, 6}, v.scale);
       }},
      {"lens", [](const QImage& p, const PartView& v) { return Lens(p, kLens, v); }, true},
      {"wave",
       [](const QImage& p, const PartView& v) {
         return Wave(p, {13, 120, 30, WaveDirection::Both}, v);
       },
       true},
      Morphing("erode", MorphOperation::Erode),
      Morphing("close", MorphOperation::Close, false),
      Morphing("gradient", MorphOperation::Gradient),
  };
  for (const FilterPreset& preset : FilterPresets().subspan(1)) {
    effects.push_back({"user filter", [&](const QImage& p, const PartView& v) {
                         return UserFilter(p, preset.matrix, v.scale);
                       }});
  }
  return effects;
}

TEST(Effects, NeutralSettingsChangeNothing) {
  const Effect neutral[] = {
      {"blur", [](const QImage& p, const PartView&) { return Blur(p, 0); }},
      {"noise", [](const QImage& p, const PartView&) { return ReduceNoise(p, 0, 0); }},
      {"user filter", [](const QImage& p, const PartView&) { return UserFilter(p, {}); }},
      {"thrice by three",
       [](const QImage& p, const PartView&) {
         return UserFilter(p, {FilterMatrix::Only(3), 3});
       }},
      {"bump map", [](const QImage& p, const PartView&) { return BumpMap(p, {}); }},
      {"lens", [](const QImage& p, const PartView& v) { return Lens(p, {}, v); }},
      {"wave", [](const QImage& p, const PartView& v) { return Wave(p, {}, v); }},
      {"morph", [](const QImage& p, const PartView&) { return Morph(p, {}); }},
      {"gradient",
       [](const QImage& p, const PartView&) { return Morph(p, {MorphOperation::Gradient}); }},
      {"balance", [](const QImage& p, const PartView&) { return TemperatureTint(p, 0, 0); }},
      {"gray is neutral",
       [](const QImage& p, const PartView&) { return BalanceColours(p, {QColor(90, 90, 90)}); }},
  };
  for (const QImage::Format format : kFormats) {
    for (const QSize& size : {QSize(1, 1), QSize(40, 30)}) {
      const QImage in = Noise(size, format);
      for (const Effect& effect : neutral)
        EXPECT_EQ(effect.work(in, {}), InWorkFormat(in)) << effect.name << " " << format;
    }
  }
}

TEST(Effects, SurviveGarbage) {
  const QImage in = Noise({40, 30}, QImage::Format_ARGB32);
  for (const double number :
       {std::nan(""), 1e300, -1e300, std::numeric_limits<double>::infinity()}) {
    for (const QImage& out :
         {Blur(in, number), Sharpen(in, number, 9), ReduceNoise(in, number, number),
          BumpMap(in, {50, number, number, number}), BumpMap(in, {number, 135, 45, 1}),
          Lens(in, {{number, 0.5}, number, 50}), Lens(in, {{0.5, 0.5}, 50, number}),
          Wave(in, {10, number, number}), Wave(in, {number, 50, 0}),
          TemperatureTint(in, number, number)})
      EXPECT_EQ(out.size(), in.size()) << number;
  }
}

TEST(Effects, WorkOnEveryFormatAndSizeAndLeaveAlphaAlone) {
  for (const Effect& effect : Strong()) {
    EXPECT_TRUE(effect.work({}, {}).isNull()) << effect.name;
    for (const QImage::Format format : kFormats) {
      for (const QSize& size : {QSize(1, 1), QSize(1, 37), QSize(53, 2), QSize(70, 50)}) {
        const QImage in = Noise(size, format);
        const QImage out = effect.work(in, {});
        ASSERT_EQ(out.size(), size) << effect.name;
        EXPECT_EQ(out.format(), InWorkFormat(in).format()) << effect.name;
        // Black and white has no room for some.
        if (size.width() == 70 && format != QImage::Format_Mono) {
          EXPECT_NE(out, InWorkFormat(in)) << effect.name << " " << format;
        }
        if (effect.movesPixels || !in.hasAlphaChannel()) continue;
        int changed = 0;
        for (int y = 0; y < size.height(); ++y) {
          for (int x = 0; x < size.width(); ++x)
            changed +=
                out.pixelColor(x, y).rgba64().alpha() != in.pixelColor(x, y).rgba64().alpha();
        }
        EXPECT_EQ(changed, 0) << effect.name << " " << format;
      }
    }
  }
}

/// Soft hills and a few hard shapes, as photos have.
QImage Scene(const QSize& size) {
  QImage scene(size, QImage::Format_RGB32);
  for (int y = 0; y < size.height(); ++y) {
    for (int x = 0; x < size.width(); ++x) {
      const auto hill = [&](double length) {
        return static_cast<int>(60 * std::sin(x / length) * std::cos(y / (length * 1.3)));
      };
      const bool disc = std::hypot(x - 300, y - 250) < 120;
      scene.setPixel(x, y, qRgb(128 + hill(70) + (disc ? 60 : 0), 128 + hill(50), 110 + hill(90)));
    }
  }
  return scene;
}

double MeanDifference(const QImage& a, const QImage& b) {
  double sum = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x)
      sum += std::abs(qGreen(a.pixel(x, y)) - qGreen(b.pixel(x, y))) +
             std::abs(qRed(a.pixel(x, y)) - qRed(b.pixel(x, y)));
  }
  return sum / (2.0 * a.width() * a.height());
}

TEST(Effects, ShowNoSeamsBetweenTheBandsOfLargePictures) {
  // Rows from the midst of a large picture are the same when little is around them.
  for (const auto format : {QImage::Format_RGB32, QImage::Format_RGBA64}) {
    const QImage noise = Noise({1900, 1000}, format);
    const QImage scene = Scene(noise.size()).convertToFormat(format);
    for (const Effect& effect : Strong()) {
      // The library places moved pixels to a 32nd, which in noise shows.
      const QImage& large = effect.movesPixels ? scene : noise;
      const int margin = effect.movesPixels ? LensReach(kLens, large.size()) + 3 : 60;
      const QRect told(0, 480, 1900, 200);
      const QRect rows = told.adjusted(0, -margin, 0, margin);
      const QImage whole = effect.work(large, {}).copy(told);
      const QImage part = effect.work(large.copy(rows), {1, rows.topLeft(), large.size()})
                              .copy(told.translated(-rows.topLeft()));
      if (effect.movesPixels)
        EXPECT_LT(MeanDifference(whole, part), 0.05) << effect.name;
      else
        EXPECT_EQ(whole, part) << effect.name;
    }
  }
}

TEST(Effects, ShowOnASmallPictureWhatTheyDoToTheFullOne) {
  const QImage full = Scene({1200, 900});
  constexpr double kScale = 0.25;
  const auto smaller = [&](const QImage& p) {
    return Resample(p, p.size() * kScale, ResampleFilter::Triangle);
  };
  const QImage small = smaller(full);
  for (const Effect& effect : Strong()) {
    const QImage wanted = smaller(effect.work(full, {}));
    const double off = MeanDifference(effect.work(small, {kScale, {}, {}}), wanted);
    const double unscaled = MeanDifference(effect.work(small, {}), wanted);
    EXPECT_LT(off, 1.2) << effect.name;
    EXPECT_LE(off, unscaled + 0.05) << effect.name;
  }
}

TEST(UserFilter, WeighsNeighboursAsTheyAreLaidOut) {
  QImage dot(9, 9, QImage::Format_Grayscale8);
  dot.fill(0);
  dot.setPixelColor(4, 4, QColor(100, 100, 100));
  FilterMatrix matrix{FilterMatrix::Only(0), 2, 10};
  matrix.weights[0] = 3;                 // two up, two to the left
  matrix.weights[matrix.kMiddle] = -10;  // ends at black
  const QImage out = UserFilter(dot, matrix);
  EXPECT_EQ(out.constScanLine(6)[6], 160);
  EXPECT_EQ(out.constScanLine(4)[4], 0);
  EXPECT_EQ(out.constScanLine(0)[0], 10);
  EXPECT_EQ(matrix.KeepingDivisor(), 1);
  EXPECT_EQ(Preset(u"Blur").KeepingDivisor(), 256);
  const QImage negative = UserFilter(dot, Preset(u"Negative"));
  EXPECT_EQ(negative.constScanLine(4)[4], 155);
  EXPECT_EQ(negative.constScanLine(0)[0], 255);
  QImage deep(3, 3, QImage::Format_Grayscale16);
  deep.fill(0);
  reinterpret_cast<quint16*>(deep.scanLine(1))[1] = 1000;
  EXPECT_EQ(
      reinterpret_cast<const quint16*>(UserFilter(deep, Preset(u"Negative")).constScanLine(1))[1],
      64535);
}

TEST(UserFilter, HiddenColoursDontCountAndBiasFollowsAlpha) {
  QImage in(9, 1, QImage::Format_ARGB32);
  in.fill(qRgba(80, 80, 80, 128));
  in.setPixel(8, 0, qRgba(0, 255, 0, 0));
  const QImage soft = UserFilter(in, Preset(u"Soften"));
  for (const int x : {2, 7})
    EXPECT_EQ(qRed(soft.pixel(x, 0)), qGreen(soft.pixel(x, 0))) << x;
  FilterMatrix lighter{FilterMatrix::Only(1), 1, 40};
  EXPECT_NEAR(qRed(UserFilter(in, lighter).pixel(2, 0)), 120, 1);
}

TEST(Blur, SpreadsADotEvenlyAndLosesNothing) {
  for (const double radius : {3.0, 12.0}) {
    QImage dot(61, 61, QImage::Format_Grayscale16);
    dot.fill(0);
    dot.setPixelColor(30, 30, Qt::white);
    const QImage out = Blur(dot, radius);
    const auto at = [&](int x, int y) {
      return static_cast<int>(reinterpret_cast<const quint16*>(out.constScanLine(y))[x]);
    };
    double sum = 0, spread = 0;
    for (int y = 0; y < 61; ++y) {
      for (int x = 0; x < 61; ++x) {
        sum += at(x, y);
        spread += at(x, y) * (x - 30.0) * (x - 30.0);
      }
    }
    EXPECT_NEAR(sum, 65535, 65535 * 0.03) << radius;
    EXPECT_NEAR(std::sqrt(spread / sum), radius / 2, radius / 2 * 0.06) << radius;
    EXPECT_EQ(at(30 - 2, 30), at(30 + 2, 30));
    EXPECT_EQ(at(30 - 2, 30), at(30, 30 + 2));
  }
}

TEST(Morph, TakesTheExtremesAboutAPixel) {
  QImage dots(31, 31, QImage::Format_RGB32);
  dots.fill(qRgb(100, 100, 100));
  dots.setPixel(10, 15, qRgb(200, 100, 100));
  dots.setPixel(22, 15, qRgb(0, 100, 100));
  const auto reds = [](const QImage& p, int level) {
    int count = 0;
    for (int y = 0; y < p.height(); ++y) {
      for (int x = 0; x < p.width(); ++x)
        count += qRed(p.pixel(x, y)) == level;
    }
    return count;
  };
  struct Case {
    MorphSettings settings;
    int light, dark, level;  // pixels of both, and what the rest is
  };
  constexpr int kOctagon = 21;  // five by five without its corners
  for (const Case& c : {Case{{MorphOperation::Dilate, 2, false}, 25, 0, 100},
                        {{MorphOperation::Dilate, 2, true}, kOctagon, 0, 100},
                        {{MorphOperation::Erode, 2, true}, 0, kOctagon, 100},
                        {{MorphOperation::Open, 1, true}, 0, 1, 100},
                        {{MorphOperation::Close, 1, true}, 1, 0, 100}}) {
    const QImage out = Morph(dots, c.settings);
    EXPECT_EQ(reds(out, 200), c.light);
    EXPECT_EQ(reds(out, 0), c.dark);
    EXPECT_EQ(reds(out, c.level), 31 * 31 - c.light - c.dark);
    EXPECT_EQ(qGreen(out.pixel(10, 15)), 100) << "channels are apart";
  }
  EXPECT_EQ(reds(Morph(dots, {MorphOperation::Gradient, 2, true}), 100), 2 * kOctagon);
  EXPECT_EQ(reds(Morph(dots, {MorphOperation::TopHat, 1, true}), 100), 1);
  EXPECT_EQ(Morph(dots, {MorphOperation::BlackHat, 1, true}).pixel(22, 15), qRgb(100, 0, 0));
}

TEST(Morph, TransparentPixelsDontCount) {
  for (const MorphOperation operation : {MorphOperation::Erode, MorphOperation::Dilate}) {
    QImage in(9, 9, QImage::Format_ARGB32);
    in.fill(qRgba(90, 90, 90, 255));
    in.setPixel(4, 4,
                operation == MorphOperation::Erode ? qRgba(0, 0, 0, 0) : qRgba(255, 255, 255, 0));
    const QImage out = Morph(in, {operation, 2, false});
    EXPECT_EQ(out.pixel(5, 5), qRgba(90, 90, 90, 255));
    EXPECT_EQ(qAlpha(out.pixel(4, 4)), 0);
  }
}

/// Its red and green tell a pixel's place, eight levels a pixel.
QImage Places(const QSize& size) {
  QImage places(size, QImage::Format_RGBX64);
  for (int y = 0; y < size.height(); ++y) {
    auto* row = reinterpret_cast<QRgba64*>(places.scanLine(y));
    for (int x = 0; x < size.width(); ++x)
      row[x] = QRgba64::fromRgba64(static_cast<quint16>(x * 256), static_cast<quint16>(y * 256), 0,
                                   65535);
  }
  return places;
}

QPointF PlaceOf(const QImage& picture, int x, int y) {
  const QRgba64 pixel = reinterpret_cast<const QRgba64*>(picture.constScanLine(y))[x];
  return {pixel.red() / 256.0, pixel.green() / 256.0};
}

TEST(Wave, MovesRowsAndColumnsByTheSine) {
  const QImage in = Places({80, 60});
  const QImage sideways = Wave(in, {4, 16, 0, WaveDirection::Sideways});
  const QImage upAndDown = Wave(in, {4, 16, 90, WaveDirection::UpAndDown});
  for (const auto& [at, moved] : {std::pair(16, 0), {20, 4}, {24, 0}, {28, -4}}) {
    EXPECT_NEAR(PlaceOf(sideways, 40, at).x(), 40 + moved, 0.05) << at;
    EXPECT_NEAR(PlaceOf(sideways, 40, at).y(), at, 0.05);
    // A quarter of the wave on.
    EXPECT_NEAR(PlaceOf(upAndDown, at - 4, 30).y(), 30 + moved, 0.05) << at;
  }
  EXPECT_NEAR(PlaceOf(sideways, 79, 20).x(), 75, 0.05) << "mirrored at the edge";
  EXPECT_NEAR(PlaceOf(sideways, 1, 28).x(), 3, 0.05) << "mirrored at the edge";
}

TEST(Lens, MagnifiesItsMiddleAndLeavesWhatIsOutside) {
  const QImage in = Places({120, 100});
  for (const double strength : {100.0, 50.0, -60.0}) {
    const LensSettings settings{{0.5, 0.5}, 60, strength};
    const QImage out = Lens(in, settings);
    EXPECT_NEAR(PlaceOf(out, 60, 50).x(), 60, 0.6);
    const double step = PlaceOf(out, 61, 50).x() - PlaceOf(out, 59, 50).x();
    const double bend = strength > 0 ? strength * 0.8 / 100 : strength / 100;
    EXPECT_NEAR(step, 2 * (1 - bend), 0.1) << strength;
    int outside = 0;
    double last = -1;
    for (int x = 0; x < 120; ++x) {
      const double from = PlaceOf(out, x, 50).x();
      EXPECT_GE(from, last) << "seen twice at " << x;
      last = from;
      EXPECT_LE(std::abs(from - x), LensReach(settings, in.size()));
      outside += std::abs(x - 59.5) > 31 && from == x;
    }
    EXPECT_EQ(outside, 120 - 62);
  }
}

TEST(BumpMap, LightsSlopesThatFaceTheLight) {
  QImage ridge(60, 20, QImage::Format_Grayscale8);
  for (int y = 0; y < 20; ++y) {
    for (int x = 0; x < 60; ++x)
      ridge.scanLine(y)[x] =
          static_cast<uchar>(100 + (x < 20 || x >= 40 ? 0 : 10 - std::abs(x - 30)));
  }
  const auto level = [](const QImage& p, int x) {
    return static_cast<int>(p.constScanLine(10)[x]);
  };
  const QImage fromLeft = BumpMap(ridge, {50, 180, 30, 0});
  EXPECT_EQ(level(fromLeft, 5), 100) << "even ground";
  EXPECT_GT(level(fromLeft, 25), level(ridge, 25) + 5);
  EXPECT_LT(level(fromLeft, 35), level(ridge, 35) - 5);
  const QImage fromRight = BumpMap(ridge, {50, 0, 30, 0});
  EXPECT_EQ(level(fromRight, 35), level(fromLeft, 25));
  const QImage fromTop = BumpMap(ridge, {50, 90, 30, 0});
  EXPECT_LE(level(fromTop, 25), level(ridge, 25)) << "no slope that way";
}

TEST(ReduceNoise, EvensGrainAndKeepsEdges) {
  struct Case {
    QImage::Format format;
    double grain, colour;
  };
  for (const Case& c : {Case{QImage::Format_Grayscale8, 60, 0},
                        {QImage::Format_Grayscale16, 60, 0},
                        {QImage::Format_RGB32, 60, 60},
                        {QImage::Format_RGBX64, 60, 60}}) {
    QImage in(80, 60, QImage::Format_RGBX64);
    const QImage noise = Noise(in.size(), QImage::Format_RGBX64);
    for (int y = 0; y < 60; ++y) {
      for (int x = 0; x < 80; ++x) {
        const QColor n = noise.pixelColor(x, y);
        const float ground = x < 40 ? 0.2F : 0.8F;
        const auto sample = [&](double of) {
          return ground + 0.08F * static_cast<float>(of - 0.5);
        };
        in.setPixelColor(x, y,
                         QColor::fromRgbF(sample(n.redF()), sample(n.greenF()), sample(n.blueF())));
      }
    }
    in = in.convertToFormat(c.format);
    const QImage out = ReduceNoise(in, c.grain, c.colour);
    const auto roughness = [](const QImage& p, int left) {
      double sum = 0;
      for (int y = 10; y < 50; ++y) {
        for (int x = left; x < left + 20; ++x)
          sum += std::abs(p.pixelColor(x, y).blueF() - p.pixelColor(x + 1, y).blueF());
      }
      return sum;
    };
    for (const int left : {10, 50})
      EXPECT_LT(roughness(out, left), 0.4 * roughness(in, left)) << c.format;
    for (const int y : {20, 40}) {
      EXPECT_NEAR(out.pixelColor(39, y).greenF(), 0.2, 0.06);
      EXPECT_NEAR(out.pixelColor(40, y).greenF(), 0.8, 0.06);
    }
  }
  // Colour alone leaves the brightness.
  const QImage in = Noise({40, 40}, QImage::Format_RGBX64);
  const QImage out = ReduceNoise(in, 0, 50);
  EXPECT_NE(out, in);
  EXPECT_EQ(ReduceNoise(in.convertToFormat(QImage::Format_Grayscale8), 0, 50),
            in.convertToFormat(QImage::Format_Grayscale8));
}

TEST(ColourBalance, WarmsCoolsAndTintsAtTheSameBrightness) {
  QImage gray(3, 3, QImage::Format_Grayscale8);
  gray.fill(120);
  struct Case {
    double temperature, tint;
    bool redder, bluer, greener;  // than the gray
  };
  for (const Case& c : {Case{60, 0, true, false, false},
                        {-60, 0, false, true, true},
                        {0, 60, true, true, false},
                        {0, -60, false, false, true}}) {
    const QColor out = TemperatureTint(gray, c.temperature, c.tint).pixelColor(1, 1);
    EXPECT_EQ(out.red() > 122, c.redder) << out.red();
    EXPECT_EQ(out.blue() > 122, c.bluer) << out.blue();
    EXPECT_EQ(out.green() > 120, c.greener) << out.green();
    EXPECT_NEAR(0.299 * out.red() + 0.587 * out.green() + 0.114 * out.blue(), 120, 1);
  }
  QImage cast(5, 5, QImage::Format_ARGB32);
  cast.fill(qRgba(130, 110, 90, 77));
  const QImage clean = BalanceColours(cast, {QColor(130, 110, 90)});
  EXPECT_NEAR(qRed(clean.pixel(2, 2)), qBlue(clean.pixel(2, 2)), 1);
  EXPECT_EQ(qAlpha(clean.pixel(2, 2)), 77);
  EXPECT_EQ(BalanceColours(cast, {QColor(0, 0, 0)}), cast) << "black tells nothing";
}

TEST(MeanAround, CountsWhatIsSeenAndInThePicture) {
  QImage in(5, 4, QImage::Format_ARGB32);
  in.fill(qRgba(0, 0, 0, 0));
  EXPECT_FALSE(MeanAround(in, {2, 2}, 1));
  in.setPixel(0, 0, qRgba(100, 60, 20, 255));
  in.setPixel(1, 1, qRgba(200, 80, 40, 255));
  const auto mean = MeanAround(in, {0, 0}, 1);
  ASSERT_TRUE(mean);
  EXPECT_EQ(mean->rgb(), qRgb(150, 70, 30));
  for (const QPoint& outside : {QPoint(-1, 0), QPoint(5, 0), QPoint(0, 4)})
    EXPECT_FALSE(MeanAround(in, outside, 2));
}

TEST(Histogram, CountsLevelsOfWhatIsSeen) {
  QImage in(4, 2, QImage::Format_ARGB32);
  in.fill(qRgba(10, 20, 30, 255));
  in.setPixel(0, 0, qRgba(255, 255, 255, 0));
  in.setPixel(1, 0, qRgba(255, 0, 0, 128));
  const Histogram histogram = HistogramOf(in);
  EXPECT_EQ(histogram.red[10], 6U);
  EXPECT_EQ(histogram.red[255], 1U);
  EXPECT_EQ(histogram.green[20], 6U);
  EXPECT_EQ(histogram.blue[30], 6U);
  EXPECT_EQ(histogram.luma[76], 1U);
  EXPECT_EQ(histogram.luma[255], 0U);
  QImage deep(2, 2, QImage::Format_Grayscale16);
  deep.fill(QColor(77, 77, 77));
  EXPECT_EQ(HistogramOf(deep).luma[77], 4U);
}

constexpr QRgb kSkin = qRgb(205, 150, 125), kLips = qRgb(185, 60, 75), kIris = qRgb(90, 70, 50);

void FillEllipse(QImage& picture, const QPointF& centre, double width, double height, QRgb colour) {
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const double dx = (x - centre.x()) / width, dy = (y - centre.y()) / height;
      if (dx * dx + dy * dy <= 1) picture.setPixelColor(x, y, QColor(colour));
    }
  }
}

/// A face with two eyes, glints in them, and lips.
QImage Face(QImage::Format format) {
  QImage face(300, 240, format);
  face.fill(QColor(kSkin));
  for (const int x : {90, 210}) {
    FillEllipse(face, {x * 1.0, 80}, 34, 18, qRgb(235, 230, 225));
    FillEllipse(face, {x * 1.0, 80}, 16, 16, kIris);
    FillEllipse(face, {x * 1.0, 80}, 10, 10, qRgb(210, 40, 50));
    FillEllipse(face, {x + 3.0, 76}, 2, 2, qRgb(255, 250, 250));
  }
  FillEllipse(face, {150, 190}, 46, 14, kLips);
  return face;
}

TEST(RemoveRedEyes, FindsPupilsAndLeavesTheFace) {
  for (const auto format : {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_RGBA64}) {
    const QImage face = Face(format);
    const QImage out = RemoveRedEyes(face);
    ASSERT_EQ(out.format(), format);
    for (const int x : {90, 210}) {
      const QColor pupil = out.pixelColor(x - 3, 83);
      EXPECT_LE(std::abs(pupil.red() - pupil.green()), 1);
      EXPECT_LE(std::abs(pupil.blue() - pupil.green()), 1);
      EXPECT_LT(pupil.red(), 60);
      EXPECT_EQ(out.pixelColor(x + 3, 76), face.pixelColor(x + 3, 76)) << "the glint";
      EXPECT_EQ(out.pixelColor(x + 28, 80), face.pixelColor(x + 28, 80)) << "the white";
    }
    int changed = 0, changedFarOff = 0;
    for (int y = 0; y < face.height(); ++y) {
      for (int x = 0; x < face.width(); ++x) {
        const bool differs = out.pixelColor(x, y) != face.pixelColor(x, y);
        const double away = std::min(std::hypot(x - 90, y - 80), std::hypot(x - 210, y - 80));
        changed += differs;
        changedFarOff += differs && away > 13;
      }
    }
    EXPECT_GT(changed, 500);
    EXPECT_EQ(changedFarOff, 0);
  }
}

TEST(RemoveRedEyes, TakesAPupilThatFillsTheSelectionAndNothingElse) {
  const QImage face = Face(QImage::Format_RGB32);
  const QImage tight = RemoveRedEyes(face.copy(84, 74, 13, 13));
  EXPECT_EQ(tight.pixel(1, 8), qRgb(45, 45, 45));
  for (const QRect& rect : {QRect(100, 165, 100, 60), QRect(0, 0, 50, 200), QRect(5, 5, 1, 1)}) {
    const QImage part = face.copy(rect);
    EXPECT_EQ(RemoveRedEyes(part), part) << "lips and skin";
  }
  const QImage gray = Noise({30, 30}, QImage::Format_Grayscale16);
  EXPECT_EQ(RemoveRedEyes(gray), gray);
  EXPECT_TRUE(RemoveRedEyes({}).isNull());
}

}  // namespace
}  // namespace zqm
