// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/page_painter.h"

#include <QPageLayout>
#include <QPagedPaintDevice>
#include <algorithm>
#include <cmath>
#include <new>
#include <optional>

#include "imaging/codec.h"
#include "imaging/raster.h"
#include "imaging/resample.h"
#include "imaging/rotate.h"
#include "imaging/source_file.h"
#include "imaging/tonal.h"
#include "shell/busy.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr double kSharpenIntensity = 2;
constexpr int kSharpenNeighbourhood = 3;
constexpr char16_t kNoMemory[] = u"Not enough memory";

/// Of one photo on paper; posters stay within memory.
constexpr double kMostPlacedPixels = 1 << 26;
/// Of one page's photos for its further copies.
constexpr qsizetype kMostKeptBytes = qsizetype{512} << 20;

QSize PixelsAt(const QSizeF& sheetPixels, double dpi) {
  const double area = sheetPixels.width() * sheetPixels.height();
  const double scale =
      std::min(std::min(dpi, kMostPhotoDpi) / kSheetDpi, std::sqrt(kMostPlacedPixels / area));
  return {std::max(1, static_cast<int>(std::lround(sheetPixels.width() * scale))),
          std::max(1, static_cast<int>(std::lround(sheetPixels.height() * scale)))};
}

QSize SizeOf(const PictureFacts& facts) {
  return {facts.width, facts.height};
}

LoadOptions OptionsFor(const QString& path, const PictureSettings& load) {
  LoadOptions options;
  options.colourManagement = load.colourManagement;
  options.raw = ParseRawOptions(load.rawWords);
  options.extension = GetExtensionName(path).toLower();
  return options;
}

/// The whole photo's size (turned) when what is kept of it has `target`.
QSize WholeAt(const QSize& turned, const QRect& crop, const QSize& target) {
  return {static_cast<int>(std::ceil(double(turned.width()) * target.width() / crop.width())),
          static_cast<int>(std::ceil(double(turned.height()) * target.height() / crop.height()))};
}

/// Decoded smaller only where at least half is left out: below, a decoder's short cut would show.
QSize DecodingBox(const QSize& photo, const QSize& needed) {
  return needed.width() * 2 <= photo.width() && needed.height() * 2 <= photo.height() ? needed
                                                                                      : QSize();
}

/// A part of the full photo in what was decoded of it, which may be smaller.
QRect InDecoded(const QRect& part, const QSize& full, const QSize& decoded) {
  const double x = double(decoded.width()) / full.width();
  const double y = double(decoded.height()) / full.height();
  const QRectF scaled(part.x() * x, part.y() * y, part.width() * x, part.height() * y);
  const QRect inside = scaled.toRect().intersected(QRect({}, decoded));
  return inside.isEmpty() ? QRect({}, decoded) : inside;
}

/// In a format that devices take as it is: what they converted they would take anew for each copy.
QImage ForDevice(const QImage& picture) {
  const bool gray = picture.format() == QImage::Format_Grayscale8 ||
                    picture.format() == QImage::Format_Grayscale16;
  return picture.convertToFormat(gray ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
}

/// The part of the photo at the size wanted. What already has it keeps its pixels.
QImage Shaped(const QImage& decoded, const PhotoPlace& how, const QSize& full,
              const QSize& target) {
  const QImage turned = how.turn == 0 ? decoded : Rotated(decoded, how.turn, false);
  if (turned.isNull()) return {};
  const QImage part = turned.copy(InDecoded(how.crop, full, turned.size()));
  const QImage scaled =
      part.size() == target ? part : Resample(part, target, ResampleFilter::Bicubic);
  return ForDevice(Sharpen(RemoveAlphaChannel(scaled), kSharpenIntensity, kSharpenNeighbourhood));
}

Result<PlacedPhoto> ReadAndPlace(const QString& path, const QRectF& box, double dpi,
                                 const PictureSettings& load) {
  LoadOptions options = OptionsFor(path, load);
  const Result<SourceFile> source = OpenSourceFile(path, options);
  if (!source) return Failure{source.Reason()};
  const QSize photo = SizeOf(source->facts);
  const PhotoPlace how = PlacePhoto(photo, box);
  const QSize turned = how.turn == 0 ? photo : photo.transposed();
  const QSize target = PixelsAt(how.place.size(), dpi);
  const QSize whole = WholeAt(turned, how.crop, target);
  options.box = DecodingBox(photo, how.turn == 0 ? whole : whole.transposed());
  const Result<QImage> decoded = source->codec->load(source->View(), options);
  if (!decoded) return Failure{decoded.Reason()};
  PlacedPhoto placed{Shaped(*decoded, how, turned, target), how.place};
  if (placed.pixels.isNull()) return Failure{QString::fromUtf16(kNoMemory)};
  return placed;
}

Failure DeviceFailure() {
  return {u"The page could not be written"_s};
}

/// From pixels of the sheet to those of the device. What the painter counts from is the corner of
/// the area within the margins, unless the page is without.
void SetToSheet(QPainter& painter, const QPagedPaintDevice& device) {
  const double dpiX = device.logicalDpiX(), dpiY = device.logicalDpiY();
  const QPageLayout layout = device.pageLayout();
  if (layout.mode() == QPageLayout::StandardMode) {
    const QMarginsF margins = layout.margins(QPageLayout::Inch);
    painter.translate(-margins.left() * dpiX, -margins.top() * dpiY);
  }
  painter.scale(dpiX / kSheetDpi, dpiY / kSheetDpi);
}

/// All pages on one device. Photos that several pages have too are read for each.
class Printing {
 public:
  Printing(const PrintJob& job, QPagedPaintDevice& device, const PrintObserver& observer)
      : job_(job), device_(device), observer_(observer), boxes_(BoxesOf(job.layout)) {}

  Result<PrintResult> Run() {
    const int photos = static_cast<int>(job_.photos.size());
    const int boxes = static_cast<int>(boxes_.size());
    const int pages = PagesRequired(photos, boxes);
    QPainter painter;
    if (pages == 0 || !painter.begin(&device_)) return DeviceFailure();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    SetToSheet(painter, device_);
    for (int page = 0; page < pages; ++page)
      if (!Print(painter, page, pages)) return DeviceFailure();
    if (!painter.end()) return DeviceFailure();
    result_.pages = pages;
    return result_;
  }

 private:
  bool Print(QPainter& painter, int page, int pages) {
    const auto tell = [&] {
      if (observer_) observer_(page, pages);
    };
    tell();
    const PagePhotos which =
        PhotosOnPage(page, static_cast<int>(job_.photos.size()), static_cast<int>(boxes_.size()));
    const QStringList photos = job_.photos.mid(which.from, which.Count());
    std::vector<Kept> kept(std::min<std::size_t>(boxes_.size(), photos.size()));
    keptBytes_ = 0;
    for (int copy = 0; copy < job_.copies; ++copy) {
      tell();
      if ((page > 0 || copy > 0) && !device_.newPage()) return false;
      for (std::size_t i = 0; i < kept.size(); ++i)
        PrintBox(painter, boxes_[i], photos[static_cast<qsizetype>(i)], kept[i], tell);
    }
    return true;
  }

  /// Of a photo for the copies behind the first.
  struct Kept {
    std::optional<PlacedPhoto> photo;
    bool failed = false;
  };

  void PrintBox(QPainter& painter, const QRectF& box, const QString& path, Kept& kept,
                const std::function<void()>& tell) {
    if (kept.failed) return;
    if (kept.photo) return painter.drawImage(kept.photo->place, kept.photo->pixels);
    const double dpi = device_.logicalDpiX();
    auto placed = RunAside([&] { return PlaceOnSheet(path, box, dpi, job_.load); }, tell);
    if (!placed) {
      kept.failed = true;
      result_.failures.Add(path, placed.Reason());
      return;
    }
    painter.drawImage(placed->place, placed->pixels);
    if (job_.copies == 1 || keptBytes_ + placed->pixels.sizeInBytes() > kMostKeptBytes) return;
    keptBytes_ += placed->pixels.sizeInBytes();
    kept.photo = std::move(*placed);
  }

  const PrintJob& job_;
  QPagedPaintDevice& device_;
  const PrintObserver& observer_;
  std::vector<QRectF> boxes_;
  qsizetype keptBytes_ = 0;
  PrintResult result_;
};

}  // namespace

Result<PlacedPhoto> PlaceOnSheet(const QString& path, const QRectF& box, double dpi,
                                 const PictureSettings& load) {
  try {
    return ReadAndPlace(path, box, dpi, load);
  } catch (const std::bad_alloc&) {
    return Failure{QString::fromUtf16(kNoMemory)};
  }
}

std::vector<EmptyBox> PaintPage(QPainter& painter, std::span<const QRectF> boxes,
                                const QStringList& photos, double dpi,
                                const PictureSettings& load) {
  std::vector<EmptyBox> empty;
  const std::size_t count = std::min<std::size_t>(boxes.size(), photos.size());
  for (std::size_t i = 0; i < count; ++i) {
    const QString& path = photos[static_cast<qsizetype>(i)];
    if (const auto placed = PlaceOnSheet(path, boxes[i], dpi, load))
      painter.drawImage(placed->place, placed->pixels);
    else
      empty.push_back({boxes[i], {path, placed.Reason()}});
  }
  return empty;
}

Result<PrintResult> PrintPages(const PrintJob& job, QPagedPaintDevice& device,
                               const PrintObserver& observer) {
  return Printing(job, device, observer).Run();
}

}  // namespace zqm
