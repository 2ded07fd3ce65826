// SPDX-License-Identifier: GPL-3.0-or-later
#include <numbers>

#include "imaging/selection.h"
#include "tests/support/noise.h"

namespace zqm {
namespace {

using test::Noise;

constexpr QSize kPicture(100, 80);

int At(const QImage& mask, int x, int y) {
  return qGray(mask.pixel(x, y));
}

/// The sum of a mask, in pixels.
double Area(const QImage& mask) {
  double sum = 0;
  for (int y = 0; y < mask.height(); ++y) {
    for (int x = 0; x < mask.width(); ++x)
      sum += At(mask, x, y) / 255.0;
  }
  return sum;
}

TEST(Selection, RectanglesAreWholePixelsWithinThePicture) {
  const struct {
    QRectF drawn;
    QRect bounds;
  } cases[] = {
      {{10.4, 20.4, 30, 5}, {10, 20, 30, 5}},
      {{40, 40, -15.2, -10}, {25, 30, 15, 10}},  // drawn from the lower right
      {{-50, -50, 500, 500}, {0, 0, 100, 80}},
      {{90.6, 70.5, 500, 500}, {91, 71, 9, 9}},
      {{10, 10, 0.3, 20}, {}},
      {{200, 10, 20, 20}, {}},
  };
  for (const auto& c : cases) {
    const Selection selection = Selection::Rectangle(c.drawn, kPicture);
    EXPECT_EQ(selection.IsEmpty(), c.bounds.isEmpty());
    if (c.bounds.isEmpty()) continue;
    EXPECT_EQ(selection.Bounds(), c.bounds);
    EXPECT_TRUE(selection.IsRectangle());
    const QImage mask = selection.Mask(kPicture);
    EXPECT_EQ(Area(mask), c.bounds.width() * c.bounds.height());
    EXPECT_EQ(At(mask, c.bounds.left(), c.bounds.top()), 255);
    EXPECT_EQ(At(mask, c.bounds.right(), c.bounds.bottom()), 255);
    EXPECT_EQ(selection.Outline({}, 1).boundingRect(), QRectF(c.bounds));
  }
}

TEST(Selection, CurvedShapesHaveSmoothEdges) {
  const Selection ellipse = Selection::Ellipse({10, 10, 60, 40}, kPicture);
  EXPECT_EQ(ellipse.Bounds(), QRect(10, 10, 60, 40));
  const QImage mask = ellipse.Mask(kPicture);
  EXPECT_NEAR(Area(mask), std::numbers::pi * 30 * 20, 10);
  EXPECT_EQ(At(mask, 40, 30), 255);
  EXPECT_EQ(At(mask, 11, 11), 0);
  int between = 0;
  for (int x = 10; x < 70; ++x)
    between += At(mask, x, 12) > 0 && At(mask, x, 12) < 255;
  EXPECT_GT(between, 0);
  // A part of it is what the whole has there.
  const QRect part(35, 5, 20, 30);
  EXPECT_EQ(ellipse.Mask(part), mask.copy(part));
  // Beyond the picture there is nothing to select.
  const Selection corner = Selection::Ellipse({-30, -20, 60, 40}, kPicture);
  EXPECT_EQ(corner.Bounds(), QRect(0, 0, 30, 20));
  EXPECT_NEAR(Area(corner.Mask(kPicture)), std::numbers::pi * 30 * 20 / 4, 4);
}

TEST(Selection, PolygonsCloseThemselves) {
  const Selection triangle =
      Selection::Polygon(QPolygonF({{10, 10}, {50, 10}, {10, 50}}), kPicture);
  EXPECT_NEAR(Area(triangle.Mask(kPicture)), 800, 2);
  EXPECT_EQ(At(triangle.Mask(kPicture), 15, 15), 255);
  EXPECT_EQ(At(triangle.Mask(kPicture), 45, 45), 0);
  // A line and a point select nothing.
  EXPECT_TRUE(Selection::Polygon(QPolygonF({{10, 10}, {50, 10}}), kPicture).IsEmpty());
  EXPECT_TRUE(Selection::Polygon(QPolygonF({{10, 10}}), kPicture).IsEmpty());
  EXPECT_TRUE(Selection::Polygon({}, kPicture).IsEmpty());
}

TEST(Selection, MasksOfLongPicturesAreWhole) {
  const QSize strip(70'000, 4);
  const QImage mask = Selection::Ellipse({-100, -200, 70'200, 408}, strip).Mask(strip);
  for (const int x : {2, 16'383, 16'384, 32'767, 40'000, 69'000})
    EXPECT_EQ(At(mask, x, 2), 255) << x;
}

TEST(MagicWand, TakesWhatIsJoinedAndSimilar) {
  for (const QImage::Format format :
       {QImage::Format_RGB32, QImage::Format_Grayscale8, QImage::Format_Grayscale16,
        QImage::Format_RGBX64, QImage::Format_Indexed8, QImage::Format_ARGB32,
        QImage::Format_Mono}) {
    // Two dark fields, parted by a bright column; touching corners don't join.
    QImage picture(9, 6, QImage::Format_RGB32);
    picture.fill(qRgb(0, 0, 0));
    for (int y = 0; y < 6; ++y)
      picture.setPixel(4, y, qRgb(255, 255, 255));
    for (const QPoint& at : {QPoint(0, 1), QPoint(1, 0)})
      picture.setPixelColor(at, Qt::white);
    const QImage in = picture.convertToFormat(format);
    const Selection right = Selection::MagicWand(in, {6, 3}, 10);
    EXPECT_EQ(right.Bounds(), QRect(5, 0, 4, 6)) << format;
    EXPECT_EQ(Area(right.Mask(in.size())), 24) << format;
    const Selection corner = Selection::MagicWand(in, {0, 0}, 10);
    EXPECT_EQ(corner.Bounds(), QRect(0, 0, 1, 1)) << format;
    const Selection left = Selection::MagicWand(in, {3, 5}, 0);
    EXPECT_EQ(Area(left.Mask(in.size())), 24 - 3) << format;
    EXPECT_TRUE(Selection::MagicWand(in, {9, 0}, 50).IsEmpty());
    EXPECT_TRUE(Selection::MagicWand(in, {-1, 0}, 50).IsEmpty());
  }
  EXPECT_TRUE(Selection::MagicWand(QImage(), {0, 0}, 10).IsEmpty());
}

TEST(MagicWand, ToleranceIsPercentOfTheScaleFromTheClickedColour) {
  // A ramp over the whole scale: what is within the tolerance is that part of it.
  for (const QImage::Format format : {QImage::Format_Grayscale8, QImage::Format_Grayscale16}) {
    QImage ramp(256, 1, format);
    for (int x = 0; x < 256; ++x)
      ramp.setPixelColor(x, 0, QColor(x, x, x));
    EXPECT_EQ(Selection::MagicWand(ramp, {0, 0}, 0).Bounds().width(), 1);
    EXPECT_EQ(Selection::MagicWand(ramp, {0, 0}, 10).Bounds().width(), 26);
    EXPECT_EQ(Selection::MagicWand(ramp, {100, 0}, 10).Bounds(), QRect(75, 0, 51, 1));
    EXPECT_EQ(Selection::MagicWand(ramp, {0, 0}, 99).Bounds().width(), 253);
    EXPECT_EQ(Selection::MagicWand(ramp, {0, 0}, 500).Bounds().width(), 253);
  }
  // Transparency is a difference where there is alpha.
  QImage half(2, 1, QImage::Format_ARGB32);
  half.fill(qRgba(9, 9, 9, 255));
  half.setPixel(1, 0, qRgba(9, 9, 9, 0));
  EXPECT_EQ(Selection::MagicWand(half, {0, 0}, 20).Bounds().width(), 1);
}

TEST(MagicWand, OutlineIsTheEdgeOfItsPixels) {
  QImage ring(40, 30, QImage::Format_Grayscale8);
  ring.fill(200);
  for (int y = 5; y < 25; ++y) {
    for (int x = 10; x < 30; ++x)
      ring.setPixelColor(x, y, x > 14 && x < 20 && y > 9 && y < 15 ? Qt::white : Qt::black);
  }
  const Selection selection = Selection::MagicWand(ring, {11, 6}, 5);
  const auto length = [&](const QRectF& visible, double scale) {
    return selection.Outline(visible, scale).length();
  };
  const QRectF all(0, 0, 40, 30);
  EXPECT_EQ(length(all, 1), 4 * 20 + 4 * 5);  // around it and around its hole
  EXPECT_EQ(selection.Outline(all, 8).boundingRect(), QRectF(10, 5, 20, 20));
  // From afar it keeps its place; the edges out of view aren't there.
  EXPECT_EQ(selection.Outline(all, 0.2).boundingRect(), QRectF(10, 5, 20, 20));
  EXPECT_EQ(length({0, 0, 12, 30}, 1), 20 + 2 * 2);
}

TEST(MagicWand, LargeAndNoisyPicturesStayCheap) {
  QImage flat(9000, 6000, QImage::Format_RGB32);
  flat.fill(qRgb(90, 120, 200));
  const Selection all = Selection::MagicWand(flat, {4000, 3000}, 10);
  EXPECT_EQ(all.Bounds(), flat.rect());
  EXPECT_EQ(At(all.Mask({8999, 5999, 1, 1}), 0, 0), 255);
  // Every second pixel: as many edges as there can be.
  QImage chess(1000, 1000, QImage::Format_Grayscale8);
  for (int y = 0; y < 1000; ++y) {
    for (int x = 0; x < 1000; ++x)
      chess.scanLine(y)[x] = static_cast<uchar>(y % 2 == 0 || x % 2 == 0 ? 0 : 255);
  }
  const Selection comb = Selection::MagicWand(chess, {0, 0}, 5);
  EXPECT_EQ(comb.Bounds(), chess.rect());
  EXPECT_LT(comb.Outline(chess.rect(), 1).elementCount(), 40'000);
}

TEST(LimitedRectangle, KeepsAspectLimitsAndPicture) {
  const struct {
    QPointF from, to;
    SelectionLimits limits;
    QRectF drawn;
  } cases[] = {
      {{10, 10}, {40, 30}, {}, {10, 10, 30, 20}},
      {{40, 30}, {10, 10}, {}, {10, 10, 30, 20}},
      {{50, 50}, {500, 500}, {}, {50, 50, 50, 30}},
      {{10, 10}, {40, 30}, {2, 0, 0}, {10, 10, 40, 20}},
      {{10, 10}, {20, 40}, {0.5, 0, 0}, {10, 10, 15, 30}},
      {{90, 10}, {95, 60}, {1, 0, 0}, {90, 10, 10, 10}},  // no more room
      {{30, 30}, {0, 0}, {2, 0, 0}, {0, 15, 30, 15}},
      {{10, 10}, {90, 70}, {-1, 25, 15}, {10, 10, 25, 15}},
      {{90, 70}, {10, 10}, {2, 40, 40}, {50, 50, 40, 20}},
      {{-10, -10}, {20, 20}, {}, {0, 0, 20, 20}},
  };
  for (const auto& c : cases)
    EXPECT_EQ(LimitedRectangle(c.from, c.to, c.limits, kPicture), c.drawn)
        << c.from.x() << ' ' << c.to.x() << ' ' << c.limits.aspectRatio;
}

}  // namespace
}  // namespace zqm
