// SPDX-License-Identifier: GPL-3.0-or-later
#include <set>

#include "imaging/quantise.h"

namespace zqm {
namespace {

QImage Gradient(QImage::Format format, int width, int height, int alphaStep = 0) {
  QImage picture(width, height, QImage::Format_ARGB32);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      picture.setPixel(x, y,
                       qRgba(x * 255 / width, y * 255 / height, (x * y) % 64, 255 - y * alphaStep));
    }
  }
  return picture.convertToFormat(format);
}

std::set<QRgb> Colours(const QImage& picture) {
  std::set<QRgb> colours;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x)
      colours.insert(picture.pixel(x, y));
  }
  return colours;
}

TEST(Quantised, FewColoursStayExactlyAsTheyAre) {
  QImage indexed(9, 5, QImage::Format_Indexed8);
  indexed.setColorTable({qRgb(1, 2, 3), qRgba(9, 8, 7, 40), qRgb(255, 0, 0)});
  indexed.fill(1);
  indexed.setPixel(4, 4, 2);
  const QImage pictures[] = {
      indexed,
      Gradient(QImage::Format_Grayscale8, 300, 40),
      Gradient(QImage::Format_Mono, 33, 40),
      Gradient(QImage::Format_RGB32, 16, 16),
      Gradient(QImage::Format_ARGB32, 16, 16, 10),
      Gradient(QImage::Format_RGBX64, 4, 64),
  };
  for (const QImage& picture : pictures) {
    const QImage result = Quantised(picture, 256);
    ASSERT_EQ(result.format(), QImage::Format_Indexed8) << picture.format();
    EXPECT_EQ(result.convertToFormat(QImage::Format_ARGB32),
              picture.convertToFormat(QImage::Format_ARGB32))
        << picture.format();
  }
}

TEST(Quantised, ManyColoursBecomeAsManyAsAskedForAndComeClose) {
  const struct {
    QImage picture;
    int colours;
    double meanError;
  } cases[] = {{Gradient(QImage::Format_RGB32, 200, 150), 256, 6},
               {Gradient(QImage::Format_RGB32, 200, 150), 16, 25},
               {Gradient(QImage::Format_Grayscale8, 300, 40), 16, 10},
               {Gradient(QImage::Format_RGB32, 16, 16).scaled(17, 16), 255, 6},
               {Gradient(QImage::Format_RGBA64, 200, 120, 2), 256, 12}};
  for (const auto& c : cases) {
    const QImage result = Quantised(c.picture, c.colours);
    ASSERT_EQ(result.size(), c.picture.size());
    EXPECT_LE(result.colorCount(), c.colours);
    EXPECT_GT(Colours(result).size(), static_cast<std::size_t>(c.colours) / 2);
    double error = 0;
    const QImage wanted = c.picture.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < wanted.height(); ++y) {
      for (int x = 0; x < wanted.width(); ++x) {
        const QRgb a = wanted.pixel(x, y), b = result.pixel(x, y);
        error += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
                 std::abs(qBlue(a) - qBlue(b)) + std::abs(qAlpha(a) - qAlpha(b));
      }
    }
    EXPECT_LT(error / (wanted.width() * wanted.height() * 4), c.meanError) << c.colours;
    EXPECT_EQ(Quantised(c.picture, c.colours), result) << "the same every time";
  }
}

TEST(Quantised, AnIndexBeyondThePaletteIsBlack) {
  QImage picture(2, 1, QImage::Format_Indexed8);
  picture.setColorTable({qRgb(9, 9, 9)});
  picture.scanLine(0)[0] = 0;
  picture.scanLine(0)[1] = 200;
  const QImage result = Quantised(picture, 256);
  EXPECT_EQ(result.pixel(0, 0), qRgb(9, 9, 9));
  EXPECT_EQ(result.pixel(1, 0), qRgb(0, 0, 0));
  EXPECT_TRUE(Quantised(QImage(), 256).isNull());
}

}  // namespace
}  // namespace zqm
