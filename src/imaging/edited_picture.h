// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPoint>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "imaging/picture.h"
#include "imaging/picture_change.h"
#include "imaging/raster.h"
#include "imaging/resample.h"
#include "imaging/rotate.h"
#include "imaging/selection.h"
#include "imaging/undo_stack.h"
#include "imaging/vector_objects.h"

namespace zqm {

/// A picture that is worked on: pixels and parameters, the objects that lie over it, what is
/// selected of it, and the way back.
///
/// An operation that succeeds saves one undo first and leaves the redo list alone, which whoever
/// offers redoing clears; one that fails (no memory) has changed nothing. Neutral settings give
/// equal pixels. What changes the picture's size ends the selection. Not copied; one thread.
class EditedPicture {
 public:
  /// Runs the heavy part of an operation, which touches values only, and returns when it is done:
  /// here or on another thread.
  using Runner = std::function<void(const std::function<void()>& work)>;

  explicit EditedPicture(const QString& scratchFolder = {}) : history_(scratchFolder) {}
  void SetRunner(Runner runner) { runner_ = std::move(runner); }
  void SetScratchFolder(const QString& folder) { history_.SetScratchFolder(folder); }

  // Files. Loading ends selection, objects, undo and redo.

  Outcome LoadFromFile(const QString& path);
  /// Only the parameters; pixels, lists and objects stay.
  Outcome ReadParamsFromFile(const QString& path);
  /// Takes a picture as loading would.
  void Assign(const Picture& picture);
  void Clear();
  const Picture& GetPicture() const { return picture_; }
  /// For saving, which may set parameters; the pixels must stay as they are.
  Picture& PictureForSaving();
  const QImage& Image() const { return picture_.Image(); }
  int ImageWidth() const { return picture_.ImageWidth(); }
  int ImageHeight() const { return picture_.ImageHeight(); }
  void SetSettings(const PictureSettings& settings) { PictureForSaving().SetSettings(settings); }
  QString GetIOProperty(QStringView key) const { return picture_.GetIOProperty(key); }
  void SetIOProperty(QStringView key, const QString& value) {
    PictureForSaving().SetIOProperty(key, value);
  }
  void CopyParamsHandle(const EditedPicture& from) {
    PictureForSaving().CopyParamsHandle(from.picture_);
  }

  void AssignTo(EditedPicture& other) const { other.Assign(picture_); }
  /// The bounding box of what is selected, all its pixels as they are: a shape lies in its
  /// surroundings. The whole picture where nothing is selected.
  void AssignSelectionTo(EditedPicture& other) const { other.Assign(SelectedPicture()); }
  Picture SelectedPicture() const;
  /// The same as pixels.
  QImage SelectedImage() const;

  // Tones, within the selection where there is one.

  /// `change` gets the pixels of `SelectedImage`, of which the selected ones are taken, and must
  /// keep their size there. `reach` is how many pixels around it the change looks at: they are
  /// handed in too, where there are any, so that the box has no edge.
  Outcome Apply(const PictureChange& change, int reach = 0);
  Outcome AdjustBrightnessContrastSaturation(double brightness, double contrast, double saturation);
  Outcome AdjustHueSaturationLightness(double hue, double saturation, double lightness);
  Outcome AdjustSaturation(double saturation);
  Outcome Sharpen(double intensity, int neighbourhood = 3);
  Outcome WhiteBalance(const QColor& gray);
  Outcome WhiteBalance();
  Outcome RemoveRedEyes();

  // The whole picture.

  Outcome ApplyToAll(const PictureChange& change);
  /// Degrees counter-clockwise; `quality` from 0 nearest pixel, without `antialias` likewise.
  Outcome Rotate(double degrees, bool antialias = true, int quality = 2);
  Outcome Flip(FlipDirection direction);
  /// A width or height of -1 follows the other by the picture's aspect. `dpi` becomes `DPIX` and
  /// `DPIY`.
  Outcome Resample(int width, int height, ResampleFilter filter, std::optional<int> dpi = {});
  /// Into another picture, of which everything else ends as in loading; nothing changes here.
  Outcome ResampleTo(EditedPicture& target, int width, int height, ResampleFilter filter) const;
  /// To the selection's bounding box; nothing without a selection.
  Outcome CropToSelection();
  Outcome ConvertToGrey();
  Outcome ConvertToBlackWhite();
  Outcome ConvertToPalette(int colours, PaletteMethod method = PaletteMethod::Ordered);
  Outcome Sepia(double hue, double saturation, double gain);
  bool HasAlphaChannel() const { return zqm::HasAlphaChannel(Image()); }
  Outcome RemoveAlphaChannel();

  // Selection.

  const Selection& Selected() const { return selection_; }
  bool HasSelection() const { return !selection_.IsEmpty(); }
  /// One that was made for a larger picture selects nothing.
  void Select(const Selection& selection);
  /// On the runner, as the area may be large.
  void SelectByMagicWand(const QPoint& seed, int tolerance);
  void Deselect() { selection_ = Selection(); }

  // Objects.

  VectorObjects& Objects() { return objects_; }
  const VectorObjects& Objects() const { return objects_; }
  /// Paints them into the picture, where they stay over it too until they are removed. Saves no
  /// undo of its own: `SaveUndo` first.
  Outcome MergeObjects();

  // The way back. Index 0 is the newest.

  void SaveUndo() { Save(UndoStack::List::Undo); }
  void DiscardUndo() { history_.Discard(UndoStack::List::Undo); }
  /// Pixels and parameters become those of a level; the lists stay as they are. Nothing for an
  /// index that there isn't; a failure leaves the picture.
  Outcome UndoAt(int index) { return Restore(UndoStack::List::Undo, index); }
  int UndoCount() const { return history_.Count(UndoStack::List::Undo); }
  void ClearAllUndo() { history_.Clear(UndoStack::List::Undo); }
  void SaveRedo() { Save(UndoStack::List::Redo); }
  void DiscardRedo() { history_.Discard(UndoStack::List::Redo); }
  Outcome RedoAt(int index) { return Restore(UndoStack::List::Redo, index); }
  int RedoCount() const { return history_.Count(UndoStack::List::Redo); }
  void ClearAllRedo() { history_.Clear(UndoStack::List::Redo); }
  void SetUndoLimit(int levels) { history_.SetLimit(levels); }
  int UndoLimit() const { return history_.Limit(); }
  /// What could not be kept of it, and why.
  const UndoStack& History() const { return history_; }

 private:
  void Run(const std::function<void()>& work) const;
  PictureState State();
  void Save(UndoStack::List list);
  Outcome Restore(UndoStack::List list, int index);
  Outcome Change(const Selection& selection, const PictureChange& change, int reach);
  Outcome Take(const Result<QImage>& after);
  void SetPixels(const QImage& image);

  Picture picture_;
  std::shared_ptr<const FileParameters> parameters_;  // as the picture has them; null: not taken
  VectorObjects objects_;
  Selection selection_;
  UndoStack history_;
  Runner runner_;
};

}  // namespace zqm
