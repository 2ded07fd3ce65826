// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/edited_picture.h"

#include <cmath>
#include <cstring>
#include <new>

#include "imaging/effects/red_eyes.h"
#include "imaging/object_painter.h"
#include "imaging/pixel_formats.h"
#include "imaging/tonal.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr char16_t kNoPicture[] = u"There is no picture";
constexpr char16_t kNoMemory[] = u"There is not enough memory for it";
constexpr char16_t kTooLarge[] = u"The picture would be too large";
constexpr char16_t kSizeChanged[] = u"What is selected must keep its size";

Failure FailureOf(const char16_t* reason) {
  return Failure{QString::fromUtf16(reason)};
}

/// The work format that holds both pictures, work formats themselves, without loss.
QImage::Format CommonFormat(const QImage& a, const QImage& b) {
  const bool deep = IsDeep(a) || IsDeep(b);
  if (IsGray(a) && IsGray(b)) return deep ? QImage::Format_Grayscale16 : QImage::Format_Grayscale8;
  if (a.hasAlphaChannel() || b.hasAlphaChannel())
    return deep ? QImage::Format_RGBA64 : QImage::Format_ARGB32;
  return deep ? QImage::Format_RGBX64 : QImage::Format_RGB32;
}

/// `part` in the place of the pixels of `whole` at a corner; of one format.
bool Insert(QImage& whole, const QImage& part, const QPoint& corner) {
  if (whole.isNull() || part.isNull() || !whole.bits()) return false;
  const int pixel = whole.depth() / 8;
  for (int y = 0; y < part.height(); ++y) {
    std::memcpy(whole.scanLine(corner.y() + y) + corner.x() * pixel, part.constScanLine(y),
                static_cast<std::size_t>(part.width() * pixel));
  }
  return true;
}

Result<QImage> ChangedWithin(const QImage& picture, const Selection& selection,
                             const PictureChange& change, int reach) {
  const QRect box = selection.Bounds();
  const QRect around = box.adjusted(-reach, -reach, reach, reach) & picture.rect();
  const QImage before = picture.copy(around);
  QImage after = InWorkFormat(change(before));
  if (after.isNull()) return FailureOf(kNoMemory);
  if (after.size() != before.size()) return FailureOf(kSizeChanged);
  QImage whole = InWorkFormat(picture);
  const QImage::Format format = CommonFormat(whole, after);
  whole = whole.convertToFormat(format);
  after = after.copy(box.translated(-around.topLeft())).convertToFormat(format);
  if (!selection.IsRectangle()) {
    const QImage mask = selection.Mask(box);
    if (mask.isNull()) return FailureOf(kNoMemory);
    after = WithinSelection(whole.copy(box), after, mask);
  }
  if (!Insert(whole, after, box.topLeft())) return FailureOf(kNoMemory);
  return whole;
}

Result<QImage> Changed(const QImage& picture, const Selection& selection,
                       const PictureChange& change, int reach) {
  if (!selection.IsEmpty()) return ChangedWithin(picture, selection, change, reach);
  const QImage after = change(picture);
  if (after.isNull()) return FailureOf(kNoMemory);
  return after;
}

/// -1 follows the other side.
std::optional<QSize> SizeFor(const QSize& picture, int width, int height) {
  const auto follow = [](int side, int own, int other) {
    const double length = std::round(static_cast<double>(side) * own / other);
    return static_cast<int>(std::clamp<double>(length, 1, kMostPixels));
  };
  if (width == -1 && height == -1) return picture;
  if (width == -1) width = follow(height, picture.width(), picture.height());
  if (height == -1) height = follow(width, picture.height(), picture.width());
  if (width < 1 || height < 1 || std::int64_t{width} * height > kMostPixels) return std::nullopt;
  return QSize(width, height);
}

}  // namespace

/// Has a piece of work done where pieces of work are done; what has no memory ends early.
void EditedPicture::Run(const std::function<void()>& work) const {
  const auto whole = [&] {
    history_.WaitForPacking();
    try {
      work();
    } catch (const std::bad_alloc&) {
    }
  };
  runner_ ? runner_(whole) : whole();
}

// Files.

Outcome EditedPicture::LoadFromFile(const QString& path) {
  Picture loaded = picture_;
  Outcome outcome = FailureOf(kNoMemory);
  Run([&] { outcome = loaded.LoadFromFile(path); });
  if (outcome) Assign(loaded);
  return outcome;
}

Outcome EditedPicture::ReadParamsFromFile(const QString& path) {
  return PictureForSaving().ReadParamsFromFile(path);
}

void EditedPicture::Assign(const Picture& picture) {
  picture_ = picture;
  parameters_.reset();
  objects_.RemoveAllObjects();
  Deselect();
  ClearAllUndo();
  ClearAllRedo();
}

void EditedPicture::Clear() {
  Picture empty = picture_;
  empty.Clear();
  Assign(empty);
}

Picture& EditedPicture::PictureForSaving() {
  parameters_.reset();
  return picture_;
}

QImage EditedPicture::SelectedImage() const {
  return HasSelection() ? Image().copy(selection_.Bounds()) : Image();
}

Picture EditedPicture::SelectedPicture() const {
  Picture part = picture_;
  if (HasSelection()) part.SetImage(SelectedImage());
  return part;
}

// Operations.

void EditedPicture::SetPixels(const QImage& image) {
  if (image.size() != Image().size()) Deselect();
  picture_.SetImage(image);
}

Outcome EditedPicture::Take(const Result<QImage>& after) {
  if (!after) return Failure{after.Reason()};
  SaveUndo();
  SetPixels(*after);
  return {};
}

Outcome EditedPicture::Change(const Selection& selection, const PictureChange& change, int reach) {
  if (Image().isNull()) return FailureOf(kNoPicture);
  Result<QImage> after = FailureOf(kNoMemory);
  Run([&, before = Image()] { after = Changed(before, selection, change, reach); });
  return Take(after);
}

Outcome EditedPicture::Apply(const PictureChange& change, int reach) {
  return Change(selection_, change, reach);
}

Outcome EditedPicture::ApplyToAll(const PictureChange& change) {
  return Change({}, change, 0);
}

Outcome EditedPicture::AdjustBrightnessContrastSaturation(double brightness, double contrast,
                                                          double saturation) {
  return Apply([=](const QImage& picture) {
    return zqm::AdjustBrightnessContrastSaturation(picture, brightness, contrast, saturation);
  });
}

Outcome EditedPicture::AdjustHueSaturationLightness(double hue, double saturation,
                                                    double lightness) {
  return Apply([=](const QImage& picture) {
    return zqm::AdjustHueSaturationLightness(picture, hue, saturation, lightness);
  });
}

Outcome EditedPicture::AdjustSaturation(double saturation) {
  return Apply([=](const QImage& picture) { return zqm::AdjustSaturation(picture, saturation); });
}

Outcome EditedPicture::Sharpen(double intensity, int neighbourhood) {
  return Apply(
      [=](const QImage& picture) { return zqm::Sharpen(picture, intensity, neighbourhood); },
      std::clamp(neighbourhood, 1, 99) / 2);
}

Outcome EditedPicture::WhiteBalance(const QColor& gray) {
  return Apply([=](const QImage& picture) { return zqm::WhiteBalance(picture, gray); });
}

Outcome EditedPicture::WhiteBalance() {
  return Apply([](const QImage& picture) { return zqm::WhiteBalance(picture); });
}

Outcome EditedPicture::RemoveRedEyes() {
  return Apply([](const QImage& picture) { return zqm::RemoveRedEyes(picture); });
}

Outcome EditedPicture::Rotate(double degrees, bool antialias, int quality) {
  if (Image().isNull()) return FailureOf(kNoPicture);
  if (!std::isfinite(degrees)) return Failure{u"The angle is not a number"_s};
  const Outcome turned = ApplyToAll(
      [=](const QImage& picture) { return Rotated(picture, degrees, antialias && quality > 0); });
  // Elsewhere in the picture now, also where the size is the same.
  if (turned) Deselect();
  return turned;
}

Outcome EditedPicture::Flip(FlipDirection direction) {
  const Outcome flipped =
      ApplyToAll([=](const QImage& picture) { return Flipped(picture, direction); });
  if (flipped) Deselect();
  return flipped;
}

Outcome EditedPicture::Resample(int width, int height, ResampleFilter filter,
                                std::optional<int> dpi) {
  if (Image().isNull()) return FailureOf(kNoPicture);
  const std::optional<QSize> size = SizeFor(Image().size(), width, height);
  if (!size) return FailureOf(kTooLarge);
  // In a copy equal pixels are others: a density is only written along with pixels.
  const Outcome done = ApplyToAll([=](const QImage& picture) {
    return picture.size() == *size ? picture.copy() : zqm::Resample(picture, *size, filter);
  });
  if (done && dpi) {
    SetIOProperty(u"DPIX", QString::number(*dpi));
    SetIOProperty(u"DPIY", QString::number(*dpi));
  }
  return done;
}

Outcome EditedPicture::ResampleTo(EditedPicture& target, int width, int height,
                                  ResampleFilter filter) const {
  if (Image().isNull()) return FailureOf(kNoPicture);
  const std::optional<QSize> size = SizeFor(Image().size(), width, height);
  if (!size) return FailureOf(kTooLarge);
  QImage resampled;
  Run([&, picture = Image()] { resampled = zqm::Resample(picture, *size, filter); });
  if (resampled.isNull()) return FailureOf(kNoMemory);
  Picture other = picture_;
  other.SetImage(resampled);
  target.Assign(other);
  return {};
}

Outcome EditedPicture::CropToSelection() {
  if (!HasSelection()) return {};
  return ApplyToAll(
      [box = selection_.Bounds()](const QImage& picture) { return picture.copy(box); });
}

Outcome EditedPicture::ConvertToGrey() {
  return ApplyToAll([](const QImage& picture) { return zqm::ConvertToGrey(picture); });
}

Outcome EditedPicture::ConvertToBlackWhite() {
  return ApplyToAll([](const QImage& picture) { return zqm::ConvertToBlackWhite(picture); });
}

Outcome EditedPicture::ConvertToPalette(int colours, PaletteMethod method) {
  return ApplyToAll(
      [=](const QImage& picture) { return zqm::ConvertToPalette(picture, colours, method); });
}

Outcome EditedPicture::Sepia(double hue, double saturation, double gain) {
  return ApplyToAll(
      [=](const QImage& picture) { return zqm::Sepia(picture, hue, saturation, gain); });
}

Outcome EditedPicture::RemoveAlphaChannel() {
  return ApplyToAll([](const QImage& picture) { return zqm::RemoveAlphaChannel(picture); });
}

Outcome EditedPicture::MergeObjects() {
  if (Image().isNull()) return FailureOf(kNoPicture);
  if (objects_.IsEmpty()) return {};
  QImage merged;
  Run([&, picture = Image(), objects = objects_] { merged = Merged(picture, objects); });
  if (merged.isNull()) return FailureOf(kNoMemory);
  SetPixels(merged);
  return {};
}

void EditedPicture::Select(const Selection& selection) {
  const bool fits = Image().isNull() || Image().rect().contains(selection.Bounds());
  selection_ = fits ? selection : Selection();
}

void EditedPicture::SelectByMagicWand(const QPoint& seed, int tolerance) {
  Selection selection;
  Run([&, picture = Image()] { selection = Selection::MagicWand(picture, seed, tolerance); });
  Select(selection);
}

// The way back.

PictureState EditedPicture::State() {
  if (!parameters_) parameters_ = std::make_shared<const FileParameters>(picture_.Parameters());
  return {Image(), parameters_, picture_.PixelsUntouched()};
}

void EditedPicture::Save(UndoStack::List list) {
  Run([] {});  // the level before may still be packed
  history_.Push(list, State());
}

Outcome EditedPicture::Restore(UndoStack::List list, int index) {
  if (index < 0 || index >= history_.Count(list)) return {};
  Result<PictureState> state = FailureOf(kNoMemory);
  Run([&] { state = history_.At(list, index); });
  if (!state) return Failure{state.Reason()};
  SetPixels(state->image);
  if (state->untouched) picture_.SetLoadedImage(state->image);
  picture_.SetParameters(*state->parameters);
  parameters_ = state->parameters;
  return {};
}

}  // namespace zqm
