// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/raster.h"
#include "imaging/rotate.h"
#include "imaging/tonal.h"
#include "tests/support/noise.h"

namespace zqm {
namespace {

constexpr QImage::Format kFormats[] = {QImage::Format_Mono,       QImage::Format_Indexed8,
                                       QImage::Format_Grayscale8, QImage::Format_Grayscale16,
                                       QImage::Format_RGB32,      QImage::Format_ARGB32,
                                       QImage::Format_RGBX64,     QImage::Format_RGBA64};

using test::Noise;

QImage Flat(QImage::Format format, const QColor& colour, const QSize& size = {12, 9}) {
  QImage picture(size, format);
  picture.fill(colour);
  return picture;
}

TEST(Rotated, QuarterTurnsMovePixelsExactly) {
  for (const QImage::Format format : kFormats) {
    for (const QSize& size : {QSize(1, 1), QSize(7, 5), QSize(33, 64), QSize(1, 90)}) {
      const QImage in = Noise(size, format);
      const QImage left = Rotated(in, 90, true);
      EXPECT_EQ(left.format(), format);
      ASSERT_EQ(left.size(), size.transposed());
      // What was at the top right is at the top left.
      EXPECT_EQ(left.pixelColor(0, 0), in.pixelColor(size.width() - 1, 0)) << format;
      EXPECT_EQ(left.pixelColor(size.height() - 1, 0),
                in.pixelColor(size.width() - 1, size.height() - 1));
      EXPECT_EQ(Rotated(left, -90, false), in) << format;
      EXPECT_EQ(Rotated(left, 90, true), Rotated(in, -180, true)) << format;
      EXPECT_EQ(Rotated(in, 270, true), Rotated(in, -90, true)) << format;
      EXPECT_EQ(Rotated(Rotated(Rotated(left, 90, true), 90, true), 90, true), in) << format;
      EXPECT_EQ(Rotated(in, 720, true), in);
      EXPECT_EQ(Flipped(Flipped(in, FlipDirection::Vertical), FlipDirection::Horizontal),
                Rotated(in, 180, true))
          << format;
    }
  }
}

TEST(Flipped, ReversesRowsOrColumns) {
  for (const QImage::Format format : kFormats) {
    const QImage in = Noise({13, 6}, format);
    const QImage down = Flipped(in, FlipDirection::Vertical);
    const QImage aside = Flipped(in, FlipDirection::Horizontal);
    for (int x = 0; x < 13; ++x) {
      EXPECT_EQ(down.pixelColor(x, 0), in.pixelColor(x, 5)) << format;
      EXPECT_EQ(aside.pixelColor(x, 2), in.pixelColor(12 - x, 2)) << format;
    }
    EXPECT_EQ(down.format(), format);
  }
}

TEST(Rotated, OtherAnglesHoldThePictureAndTurnTheRightWay) {
  for (const auto format :
       {QImage::Format_Grayscale8, QImage::Format_Grayscale16, QImage::Format_RGB32,
        QImage::Format_ARGB32, QImage::Format_RGBX64, QImage::Format_RGBA64}) {
    QImage in = Flat(format, Qt::black, {100, 60});
    for (int y = 0; y < 60; ++y) {
      for (int x = 50; x < 100; ++x)
        in.setPixelColor(x, y, QColor(128, 128, 128));
    }
    for (const bool antialias : {false, true}) {
      const QImage out = Rotated(in, 30, antialias);
      ASSERT_EQ(out.format(), format);
      EXPECT_EQ(out.size(), QSize(117, 102));  // 100 cos + 60 sin, 100 sin + 60 cos
      // The right half went up.
      EXPECT_EQ(out.pixelColor(58 + 26, 51 - 15), QColor(128, 128, 128)) << format;
      EXPECT_EQ(out.pixelColor(58 - 26, 51 + 15), QColor(Qt::black)) << format;
      const QColor corner = out.pixelColor(0, 0);
      if (in.hasAlphaChannel())
        EXPECT_EQ(corner.alpha(), 0);
      else
        EXPECT_EQ(corner, QColor(Qt::white)) << format;
    }
  }
  EXPECT_TRUE(Rotated({}, 12, true).isNull());
  EXPECT_TRUE(Rotated(Noise({4, 4}, QImage::Format_RGB32), std::nan(""), true).isNull());
  EXPECT_TRUE(Rotated(QImage(40000, 1, QImage::Format_Grayscale8), 45, true).isNull());
}

TEST(ConvertToGrey, WeighsColoursAndKeepsDepthAndAlpha) {
  struct Case {
    QColor colour;
    int gray;
  };
  for (const Case& c : {Case{Qt::red, 76}, {Qt::green, 150}, {Qt::blue, 29}, {Qt::white, 255}}) {
    const QImage gray = ConvertToGrey(Flat(QImage::Format_RGB32, c.colour));
    EXPECT_EQ(gray.format(), QImage::Format_Grayscale8);
    EXPECT_EQ(gray.constScanLine(3)[4], c.gray);
    const QImage deep = ConvertToGrey(Flat(QImage::Format_RGBX64, c.colour));
    EXPECT_EQ(deep.format(), QImage::Format_Grayscale16);
    EXPECT_NEAR(reinterpret_cast<const quint16*>(deep.constScanLine(3))[4], c.gray * 257, 128);
  }
  const QImage alpha = ConvertToGrey(Flat(QImage::Format_ARGB32, QColor(255, 0, 0, 90)));
  EXPECT_EQ(alpha.pixel(0, 0), qRgba(76, 76, 76, 90));
}

TEST(ConvertToBlackWhite, PartsTwoLevelsWhereverTheyLie) {
  QImage dark(19, 4, QImage::Format_RGB32);
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 19; ++x)
      dark.setPixel(x, y, x < 11 ? qRgb(20, 20, 20) : qRgb(60, 60, 60));
  }
  const QImage out = ConvertToBlackWhite(dark);
  EXPECT_EQ(out.format(), QImage::Format_Mono);
  for (int x = 0; x < 19; ++x)
    EXPECT_EQ(out.pixel(x, 2), x < 11 ? qRgb(0, 0, 0) : qRgb(255, 255, 255)) << x;
  EXPECT_EQ(ConvertToBlackWhite(Flat(QImage::Format_RGB32, QColor(9, 9, 9))).pixel(0, 0),
            qRgb(0, 0, 0));
  EXPECT_EQ(ConvertToBlackWhite(Flat(QImage::Format_ARGB32, QColor(0, 0, 0, 0))).pixel(0, 0),
            qRgb(255, 255, 255));
}

TEST(ConvertToPalette, KeepsToItsNumberOfColours) {
  const QImage in = Noise({120, 80}, QImage::Format_RGB32);
  for (const PaletteMethod method : {PaletteMethod::Ordered, PaletteMethod::Threshold}) {
    for (const int colours : {2, 16, 256}) {
      const QImage out = ConvertToPalette(in, colours, method);
      ASSERT_EQ(out.format(), QImage::Format_Indexed8);
      ASSERT_EQ(out.size(), in.size());
      EXPECT_LE(out.colorCount(), colours);
      EXPECT_GT(out.colorCount(), colours / 2);
      EXPECT_EQ(ConvertToPalette(in, colours, method), out) << "not the same twice";
    }
    // Few colours come out as they are.
    QImage few(64, 64, QImage::Format_ARGB32);
    for (int y = 0; y < 64; ++y) {
      for (int x = 0; x < 64; ++x)
        few.setPixel(x, y,
                     x < 20   ? qRgb(250, 10, 10)
                     : y < 30 ? qRgb(0, 0, 90)
                              : qRgba(0, 0, 0, 0));
    }
    const QImage same = ConvertToPalette(few, 16, method).convertToFormat(QImage::Format_ARGB32);
    for (const QPoint& at : {QPoint(3, 3), QPoint(40, 3), QPoint(40, 40)})
      EXPECT_EQ(same.pixelColor(at), few.pixelColor(at));
    EXPECT_TRUE(ConvertToPalette({}, 16, method).isNull());
  }
}

TEST(ConvertToPalette, OrderedHidesStepsThatThresholdShows) {
  QImage ramp(512, 64, QImage::Format_RGB32);
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 512; ++x)
      ramp.setPixel(x, y, qRgb(x / 2, x / 2, x / 2));
  }
  const QImage steps = ConvertToPalette(ramp, 8, PaletteMethod::Threshold);
  const QImage pattern = ConvertToPalette(ramp, 8, PaletteMethod::Ordered);
  int rowsEqual = 0;
  for (int y = 1; y < 64; ++y) {
    EXPECT_EQ(steps.copy(0, y, 512, 1), steps.copy(0, 0, 512, 1));
    rowsEqual += pattern.copy(0, y, 512, 1) == pattern.copy(0, 0, 512, 1);
  }
  EXPECT_EQ(rowsEqual, 7) << "a pattern of 8 rows";
}

TEST(AlphaChannel, CountsOnlyWhereSomethingIsTransparent) {
  for (const auto format : {QImage::Format_ARGB32, QImage::Format_RGBA64}) {
    QImage in = Flat(format, QColor(10, 20, 30));
    EXPECT_FALSE(HasAlphaChannel(in));
    in.setPixelColor(11, 8, QColor(200, 100, 0, 128));
    EXPECT_TRUE(HasAlphaChannel(in));
    const QImage merged = RemoveAlphaChannel(in);
    EXPECT_FALSE(merged.hasAlphaChannel());
    EXPECT_EQ(merged.depth(), in.depth());
    EXPECT_EQ(merged.pixelColor(0, 0), QColor(10, 20, 30));
    EXPECT_EQ(merged.pixel(11, 8), qRgb(227, 177, 127));
    EXPECT_EQ(RemoveAlphaChannel(in, AlphaRemoval::Drop).pixel(11, 8), qRgb(200, 100, 0));
  }
  EXPECT_FALSE(HasAlphaChannel(Flat(QImage::Format_RGB32, Qt::red)));
}

TEST(Tonal, AmountsOfNothingChangeNothing) {
  for (const auto format :
       {QImage::Format_Grayscale8, QImage::Format_Grayscale16, QImage::Format_RGB32,
        QImage::Format_ARGB32, QImage::Format_RGBX64, QImage::Format_RGBA64}) {
    const QImage in = Noise({40, 30}, format);
    EXPECT_EQ(Sharpen(in, 0, 5), in);
    EXPECT_EQ(Sharpen(in, 50, 1), in);
    EXPECT_EQ(AdjustBrightnessContrastSaturation(in, 0, 0, 0), in);
    EXPECT_EQ(AdjustHueSaturationLightness(in, 0, 0, 0), in);
    EXPECT_EQ(AdjustSaturation(in, 0), in);
    if (!in.isGrayscale()) {
      EXPECT_EQ(WhiteBalance(in, QColor(90, 90, 90)), in) << format;
    }
  }
}

TEST(Tonal, KeepsGrayGrayAtItsDepth) {
  for (const auto format : {QImage::Format_Grayscale8, QImage::Format_Grayscale16}) {
    const QImage in = Noise({40, 30}, format);
    const QImage there = AdjustBrightnessContrastSaturation(in, 0, -50, 30);
    EXPECT_EQ(there.format(), format);
    const int unit = format == QImage::Format_Grayscale8 ? 1 : 257;
    const auto sample = [&](const QImage& p, int x) {
      return unit == 1 ? p.constScanLine(7)[x]
                       : reinterpret_cast<const quint16*>(p.constScanLine(7))[x];
    };
    for (int x = 0; x < 40; ++x)
      EXPECT_NEAR(sample(there, x), sample(in, x) / 2.0 + 255 * unit / 4.0, 1) << format;
    EXPECT_EQ(AdjustHueSaturationLightness(in, 90, 20, 0), in) << "gray has no hue";
  }
}

TEST(Tonal, GoesTheWayThatItsNumbersSay) {
  using Work = std::function<QImage(const QImage&)>;
  struct Case {
    const char* what;
    Work work;
    QColor before;
    QColor after;
  };
  const QColor brown(120, 80, 40);
  const Case cases[] = {
      {"brighter", [](const QImage& p) { return AdjustBrightnessContrastSaturation(p, 20, 0, 0); },
       brown, QColor(171, 131, 91)},
      {"white", [](const QImage& p) { return AdjustBrightnessContrastSaturation(p, 100, 0, 0); },
       brown, Qt::white},
      {"two levels",
       [](const QImage& p) { return AdjustBrightnessContrastSaturation(p, 0, 100, 0); },
       QColor(120, 140, 40), QColor(0, 255, 0)},
      {"one gray",
       [](const QImage& p) { return AdjustBrightnessContrastSaturation(p, 0, -100, 0); }, brown,
       QColor(128, 128, 128)},
      {"no colour", [](const QImage& p) { return AdjustSaturation(p, -100); }, Qt::red,
       QColor(76, 76, 76)},
      {"a third of the circle",
       [](const QImage& p) { return AdjustHueSaturationLightness(p, 120, 0, 0); }, brown,
       QColor(40, 120, 80)},
      {"backwards", [](const QImage& p) { return AdjustHueSaturationLightness(p, -120, 0, 0); },
       brown, QColor(80, 40, 120)},
      {"lighter", [](const QImage& p) { return AdjustHueSaturationLightness(p, 0, 0, 50); },
       QColor(0, 0, 0), QColor(128, 128, 128)},
      {"unsaturated", [](const QImage& p) { return AdjustHueSaturationLightness(p, 0, -100, 0); },
       brown, QColor(80, 80, 80)},
      {"sepia", [](const QImage& p) { return Sepia(p, 40, 50, 1.2); }, QColor(100, 100, 100),
       QColor(120, 100, 60)},
      {"gray point", [](const QImage& p) { return WhiteBalance(p, QColor(120, 100, 80)); },
       QColor(120, 100, 80), QColor(104, 104, 104)},
      {"gray world", [](const QImage& p) { return WhiteBalance(p); }, QColor(60, 50, 40),
       QColor(52, 52, 52)},
  };
  for (const Case& c : cases) {
    const QColor shallow = c.work(Flat(QImage::Format_RGB32, c.before)).pixelColor(5, 5);
    EXPECT_NEAR(shallow.red(), c.after.red(), 1) << c.what;
    EXPECT_NEAR(shallow.green(), c.after.green(), 1) << c.what;
    EXPECT_NEAR(shallow.blue(), c.after.blue(), 1) << c.what;
    const QImage deep = c.work(Flat(QImage::Format_RGBA64, c.before));
    EXPECT_EQ(deep.format(), QImage::Format_RGBA64) << c.what;
    EXPECT_NEAR(deep.pixelColor(5, 5).red(), c.after.red(), 1) << c.what;
  }
}

TEST(Sharpen, SteepensAnEdgeByItsAmountAndKeepsAlpha) {
  QImage edge = Flat(QImage::Format_ARGB32, QColor(100, 100, 100, 255), {20, 6});
  for (int y = 0; y < 6; ++y) {
    for (int x = 10; x < 20; ++x)
      edge.setPixel(x, y, qRgba(150, 150, 150, 255));
    edge.setPixel(0, y, qRgba(0, 255, 0, 0));
  }
  int last = 0;
  for (const int intensity : {2, 20, 100}) {
    const QImage out = Sharpen(edge, intensity, 3);
    const int overshoot = qRed(out.pixel(10, 3)) - 150;
    EXPECT_GT(overshoot, last) << intensity;
    last = overshoot;
    EXPECT_EQ(out.pixel(15, 3), qRgba(150, 150, 150, 255));
    EXPECT_EQ(qAlpha(out.pixel(0, 3)), 0);
    EXPECT_EQ(qRed(out.pixel(1, 3)), qGreen(out.pixel(1, 3))) << "the transparent green bleeds";
  }
  const QImage wide = Sharpen(edge, 50, 9);
  EXPECT_GT(qRed(wide.pixel(13, 3)), 150) << "the neighbourhood reaches four pixels";
}

TEST(WithinSelection, MixesByTheMask) {
  for (const auto format :
       {QImage::Format_Grayscale8, QImage::Format_RGB32, QImage::Format_RGBA64}) {
    const QImage before = Flat(format, QColor(0, 0, 0));
    const QImage after = Flat(format, QColor(200, 200, 200));
    QImage mask(after.size(), QImage::Format_Grayscale8);
    mask.fill(0);
    mask.scanLine(2)[3] = 255;
    mask.scanLine(2)[4] = 128;
    const QImage out = WithinSelection(before, after, mask);
    EXPECT_EQ(out.pixelColor(0, 0), before.pixelColor(0, 0));
    EXPECT_EQ(out.pixelColor(3, 2), after.pixelColor(3, 2));
    EXPECT_NEAR(out.pixelColor(4, 2).red(), 100, 1);
    EXPECT_EQ(WithinSelection(before, after, {}), after);
  }
}

}  // namespace
}  // namespace zqm
