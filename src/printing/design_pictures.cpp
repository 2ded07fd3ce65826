// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/design_pictures.h"

#include <algorithm>
#include <cmath>

#include "imaging/picture.h"
#include "imaging/resample.h"
#include "imaging/view_reader.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kCanvas{826, 1169};  // A4
constexpr QSize kMostShown{2000, 2000};

// Hues from left to right, dark to light from top to bottom, grays in a strip below. Steps, so that
// the same colour is found again.
constexpr int kCell = 24, kHues = 36, kShades = 9, kGrayRows = 1;

QImage BlankCanvas() {
  QImage canvas(kCanvas, QImage::Format_RGB32);
  canvas.fill(Qt::white);
  return canvas;
}

QColor PaletteColour(int column, int row) {
  if (row == kShades) return QColor::fromHslF(0, 0, static_cast<float>(column) / (kHues - 1));
  const float hue = static_cast<float>(column) / kHues;
  return QColor::fromHslF(hue, 1, static_cast<float>(row + 1) / (kShades + 1));
}

QImage DrawnPalette() {
  QImage palette(kCell * kHues, kCell * (kShades + kGrayRows), QImage::Format_RGB32);
  for (int y = 0; y < palette.height(); ++y)
    for (int x = 0; x < palette.width(); ++x)
      palette.setPixelColor(x, y, PaletteColour(x / kCell, y / kCell));
  return palette;
}

QImage FromFile(const QString& path, QImage (*draw)()) {
  // A user's own may be large.
  if (FileExists(path))
    if (const auto image = ReadThumbnailPicture(path, kMostShown, {}); image && !image->isNull())
      return *image;
  Picture drawn;
  drawn.SetImage(draw());
  // Without the file it is drawn again the next time. One that stands is the user's.
  if (!FileExists(path)) (void)drawn.SaveToFile(path);
  return drawn.Image();
}

}  // namespace

QImage CanvasPicture(const QString& folder, const QSize& sheet) {
  const bool fits = sheet.boundedTo(kMostShown) == sheet;
  const QSize shown = fits ? sheet : sheet.scaled(kMostShown, Qt::KeepAspectRatio);
  return Resample(FromFile(PathIn(folder, u"Canvas.jpg"_s), BlankCanvas), shown.expandedTo({1, 1}),
                  ResampleFilter::FastLinear);
}

QImage PalettePicture(const QString& folder) {
  return FromFile(PathIn(folder, u"Palette.png"_s), DrawnPalette);
}

QColor ColourAt(const QImage& image, const QPointF& pixel) {
  if (image.isNull()) return {};
  const auto inside = [](double at, int length) {
    return static_cast<int>(std::floor(std::clamp(at, 0.0, length - 1.0)));
  };
  return image.pixelColor(inside(pixel.x(), image.width()), inside(pixel.y(), image.height()));
}

}  // namespace zqm
