// SPDX-License-Identifier: GPL-3.0-or-later
#include <QThreadPool>

#include "imaging/resample.h"
#include "shell/work_pool.h"
#include "tests/support/noise.h"

namespace zqm {
namespace {

constexpr QImage::Format kFormats[] = {QImage::Format_Grayscale8, QImage::Format_Grayscale16,
                                       QImage::Format_RGB32,      QImage::Format_ARGB32,
                                       QImage::Format_RGBX64,     QImage::Format_RGBA64};

using test::Noise;

QImage Gray(const QSize& size, const std::function<int(int, int)>& value) {
  QImage picture(size, QImage::Format_Grayscale8);
  for (int y = 0; y < size.height(); ++y) {
    for (int x = 0; x < size.width(); ++x)
      picture.scanLine(y)[x] = static_cast<uchar>(value(x, y));
  }
  return picture;
}

TEST(Resample, KeepsFlatAreasFlatWithEveryFilterInEveryFormat) {
  for (const ResampleFilterName& filter : ResampleFilterNames()) {
    for (const QImage::Format format : kFormats) {
      QImage flat(97, 61, format);
      flat.fill(QColor(51, 51, 51));
      for (const QSize& size : {QSize(13, 7), QSize(96, 60), QSize(200, 150), QSize(1, 1)}) {
        QImage expected(size, format);
        expected.fill(QColor(51, 51, 51));
        EXPECT_EQ(Resample(flat, size, filter.filter), expected)
            << qPrintable(filter.name.toString()) << format << size.width();
      }
    }
  }
}

TEST(Resample, OnlyNegativeLobesOvershootAtAStep) {
  const QImage step = Gray({64, 8}, [](int x, int) { return x < 32 ? 100 : 200; });
  for (const ResampleFilterName& filter : ResampleFilterNames()) {
    for (const QSize& size : {QSize(21, 3), QSize(230, 20)}) {
      const QImage out = Resample(step, size, filter.filter);
      const auto [low, high] = std::ranges::minmax(
          std::span(out.constScanLine(1), static_cast<std::size_t>(size.width())));
      const bool lobes = filter.filter == ResampleFilter::Lanczos3 ||
                         filter.filter == ResampleFilter::Bicubic ||
                         filter.filter == ResampleFilter::Mitchell;
      EXPECT_EQ(low < 100 && high > 200, lobes) << qPrintable(filter.name.toString());
      EXPECT_EQ(low == 100 && high == 200, !lobes) << qPrintable(filter.name.toString());
    }
  }
}

TEST(Resample, AveragesDetailThatNearestWouldDrop) {
  const QImage stripes = Gray({400, 300}, [](int x, int) { return x % 2 ? 240 : 0; });
  for (const ResampleFilterName& filter : ResampleFilterNames()) {
    const int middle = Resample(stripes, {40, 30}, filter.filter).constScanLine(15)[20];
    switch (filter.filter) {
      case ResampleFilter::Nearest:
        EXPECT_TRUE(middle == 0 || middle == 240);
        break;
      case ResampleFilter::ProjectBW:
        EXPECT_EQ(middle, 0);
        break;
      case ResampleFilter::ProjectWB:
        EXPECT_EQ(middle, 240);
        break;
      default:
        EXPECT_NEAR(middle, 120, 3) << qPrintable(filter.name.toString());
    }
  }
}

TEST(Resample, InterpolatingKernelsKeepAPictureOfTheSameSize) {
  for (const QImage::Format format : kFormats) {
    QImage in = Noise({31, 17}, format);
    if (in.hasAlphaChannel()) {  // what is nearly transparent has few colours once it is weighed
      in = in.convertToFormat(QImage::Format_RGB32).convertToFormat(format);
    }
    for (const int filter : {0, 1, 2, 5, 7, 8, 9, 10, 11, 12, 13}) {
      EXPECT_EQ(Resample(in, in.size(), static_cast<ResampleFilter>(filter)), in)
          << filter << ' ' << format;
    }
  }
}

TEST(Resample, TransparentColoursDoNotBleedNorOvershootTheirAlpha) {
  for (const auto format : {QImage::Format_ARGB32, QImage::Format_RGBA64}) {
    // Opaque red, a sharp edge, then transparent green.
    QImage in(64, 16, QImage::Format_ARGB32);
    for (int y = 0; y < 16; ++y) {
      for (int x = 0; x < 64; ++x)
        in.setPixel(x, y, x < 32 ? qRgba(200, 0, 0, 255) : qRgba(0, 255, 0, 0));
    }
    in = in.convertToFormat(format);
    for (const ResampleFilterName& filter : ResampleFilterNames()) {
      const bool picks = filter.filter == ResampleFilter::Nearest ||
                         filter.filter == ResampleFilter::ProjectBW ||
                         filter.filter == ResampleFilter::ProjectWB;
      for (const QSize& size : {QSize(21, 5), QSize(150, 40)}) {
        const QImage out = Resample(in, size, filter.filter);
        for (int x = 0; x < size.width(); ++x) {
          const QRgb pixel = out.pixel(x, 2);
          if (picks && qAlpha(pixel) == 0) continue;
          EXPECT_EQ(qGreen(pixel), 0) << qPrintable(filter.name.toString()) << x;
          if (qAlpha(pixel) > 40) {
            EXPECT_NEAR(qRed(pixel), 200, 30) << qAlpha(pixel);
          }
        }
      }
    }
  }
}

TEST(Resample, ProjectionsKeepLinesOfOnePixel) {
  QImage drawing(200, 160, QImage::Format_Mono);
  drawing.fill(1);
  for (int x = 0; x < 200; ++x)
    drawing.setPixel(x, 77, 0);
  QImage inverted = drawing;
  inverted.invertPixels();

  const auto rowsOf = [](const QImage& picture, QRgb colour) {
    int rows = 0;
    for (int y = 0; y < picture.height(); ++y) {
      QImage row(picture.width(), 1, QImage::Format_RGB32);
      row.fill(colour);
      rows += picture.copy(0, y, picture.width(), 1).convertToFormat(row.format()) == row;
    }
    return rows;
  };
  for (const QSize& size : {QSize(23, 19), QSize(199, 159), QSize(5, 3)}) {
    const QImage black = Resample(drawing, size, ResampleFilter::ProjectBW);
    const QImage white = Resample(inverted, size, ResampleFilter::ProjectWB);
    EXPECT_EQ(rowsOf(black, qRgb(0, 0, 0)), 1) << size.width();
    EXPECT_EQ(rowsOf(black, qRgb(255, 255, 255)), size.height() - 1) << size.width();
    EXPECT_EQ(rowsOf(white, qRgb(255, 255, 255)), 1) << size.width();
    EXPECT_EQ(rowsOf(Resample(drawing, {19, 19}, ResampleFilter::ProjectWB), qRgb(0, 0, 0)), 0);
  }
  // By lightness, and whole pixels: no colour comes out that didn't go in.
  QImage colours(2, 1, QImage::Format_RGB32);
  colours.setPixel(0, 0, qRgb(0, 0, 255));
  colours.setPixel(1, 0, qRgb(0, 255, 0));
  EXPECT_EQ(Resample(colours, {1, 1}, ResampleFilter::ProjectBW).pixel(0, 0), qRgb(0, 0, 255));
  EXPECT_EQ(Resample(colours, {1, 1}, ResampleFilter::ProjectWB).pixel(0, 0), qRgb(0, 255, 0));
}

TEST(Resample, GivesTheSameOnOneThreadAndOnMany) {
  QThreadPool* pool = &WorkPool();
  const int usual = pool->maxThreadCount();
  for (const auto format : {QImage::Format_RGB32, QImage::Format_RGBA64}) {
    const QImage in = Noise({1501, 1103}, format);
    for (const int filter : {1, 5, 7, 12}) {
      pool->setMaxThreadCount(1);
      const QImage alone = Resample(in, {611, 449}, static_cast<ResampleFilter>(filter));
      pool->setMaxThreadCount(5);
      EXPECT_EQ(Resample(in, {611, 449}, static_cast<ResampleFilter>(filter)), alone) << filter;
    }
  }
  pool->setMaxThreadCount(usual);
}

TEST(Resample, RefusesSizesThatAreNone) {
  const QImage picture = Gray({4, 4}, [](int, int) { return 9; });
  for (const int filter : {1, 7, 12, 99}) {
    const auto known = static_cast<ResampleFilter>(filter);
    EXPECT_TRUE(Resample({}, {4, 4}, known).isNull());
    EXPECT_TRUE(Resample(picture, {0, 4}, known).isNull());
    EXPECT_TRUE(Resample(picture, {1 << 15, 1 << 14}, known).isNull());
    EXPECT_EQ(Resample(picture, {2, 3}, known).size(), QSize(2, 3));
  }
}

TEST(Resample, NamesStandByTheirNumbers) {
  const auto names = ResampleFilterNames();
  ASSERT_EQ(names.size(), 14U);
  for (std::size_t i = 0; i < names.size(); ++i)
    EXPECT_EQ(static_cast<std::size_t>(names[i].filter), i);
  EXPECT_EQ(FindResampleFilter(u"fast LINEAR"), ResampleFilter::FastLinear);
  EXPECT_EQ(FindResampleFilter(u"ProjectWB"), ResampleFilter::ProjectWB);
  EXPECT_FALSE(FindResampleFilter(u"Bicub"));
}

}  // namespace
}  // namespace zqm
