// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "imaging/edited_picture.h"
#include "imaging/ui/mouse_tools.h"
#include "imaging/ui/picture_view.h"

namespace zqm {

/// The picture control: a view, and with `LoadFromFile` or `AssignTo` a picture that is worked on
/// in it, its objects, selection and way back. Without such a picture it shows what `ShowImage`
/// hands it.
///
/// Operations give their outcome when they are done. The heavy part runs on the work pool;
/// meanwhile the window paints, the user is kept out, `OnProgress` tells how far it is and a second
/// operation is refused. The control may be destroyed while one is under way.
class ImageX : public PictureView, private ToolHost {
  Q_OBJECT
 public:
  explicit ImageX(QWidget* parent = nullptr);
  ~ImageX() override;

  // Files and other controls. See EditedPicture for what each does.

  void SetScratchFolder(const QString& folder);
  void SetSettings(const PictureSettings& settings) { picture_->SetSettings(settings); }
  Outcome LoadFromFile(const QString& path);
  Outcome ReadParamsFromFile(const QString& path);
  Outcome SaveToFile(const QString& path);
  void PrepareSave() { picture_->PictureForSaving().PrepareSave(); }
  /// Takes a picture as loading would.
  void Assign(const Picture& picture);
  void AssignTo(ImageX& other) const { other.Assign(GetPicture()); }
  void AssignSelectionTo(ImageX& other) const;
  void Clear();
  const Picture& GetPicture() const { return picture_->GetPicture(); }
  /// For saving, which may set parameters; the pixels must stay as they are.
  Picture& PictureForSaving() { return picture_->PictureForSaving(); }
  /// What is selected (its bounding box), else everything: what `Apply` will hand its change.
  QImage SelectedImage() const { return picture_->SelectedImage(); }
  int ImageWidth() const { return picture_->ImageWidth(); }
  int ImageHeight() const { return picture_->ImageHeight(); }
  QString GetIOProperty(QStringView key) const { return picture_->GetIOProperty(key); }
  void SetIOProperty(QStringView key, const QString& value) { picture_->SetIOProperty(key, value); }
  void CopyParamsHandle(const ImageX& from) { picture_->CopyParamsHandle(*from.picture_); }

  // Operations. Each one that succeeds saves one undo and ends with `OnImageChange` and
  // `OnFinishWork`.

  using Operation = std::function<Outcome(EditedPicture&)>;
  /// Any of EditedPicture's, or several.
  Outcome Run(const Operation& operation);
  bool IsWorking() const { return working_; }

  Outcome Apply(const PictureChange& change, int reach = 0) {
    return Run([&](EditedPicture& p) { return p.Apply(change, reach); });
  }
  Outcome AdjustBrightnessContrastSaturation(double brightness, double contrast,
                                             double saturation) {
    return Run([=](EditedPicture& p) {
      return p.AdjustBrightnessContrastSaturation(brightness, contrast, saturation);
    });
  }
  Outcome AdjustHueSaturationLightness(double hue, double saturation, double lightness) {
    return Run([=](EditedPicture& p) {
      return p.AdjustHueSaturationLightness(hue, saturation, lightness);
    });
  }
  Outcome AdjustSaturation(double saturation) {
    return Run([=](EditedPicture& p) { return p.AdjustSaturation(saturation); });
  }
  Outcome Sharpen(double intensity, int neighbourhood = 3) {
    return Run([=](EditedPicture& p) { return p.Sharpen(intensity, neighbourhood); });
  }
  Outcome WhiteBalance(const QColor& gray) {
    return Run([=](EditedPicture& p) { return p.WhiteBalance(gray); });
  }
  Outcome WhiteBalance() {
    return Run([](EditedPicture& p) { return p.WhiteBalance(); });
  }
  Outcome RemoveRedEyes() {
    return Run([](EditedPicture& p) { return p.RemoveRedEyes(); });
  }
  Outcome Rotate(double degrees, bool antialias = true, int quality = 2) {
    return Run([=](EditedPicture& p) { return p.Rotate(degrees, antialias, quality); });
  }
  Outcome Flip(FlipDirection direction) {
    return Run([=](EditedPicture& p) { return p.Flip(direction); });
  }
  Outcome Resample(int width, int height, ResampleFilter filter, std::optional<int> dpi = {}) {
    return Run([=](EditedPicture& p) { return p.Resample(width, height, filter, dpi); });
  }
  Outcome ResampleTo(ImageX& target, int width, int height, ResampleFilter filter);
  Outcome CropToSelection() {
    return Run([](EditedPicture& p) { return p.CropToSelection(); });
  }
  Outcome ConvertToGrey() {
    return Run([](EditedPicture& p) { return p.ConvertToGrey(); });
  }
  Outcome ConvertToBlackWhite() {
    return Run([](EditedPicture& p) { return p.ConvertToBlackWhite(); });
  }
  Outcome ConvertToPalette(int colours, PaletteMethod method = PaletteMethod::Ordered) {
    return Run([=](EditedPicture& p) { return p.ConvertToPalette(colours, method); });
  }
  Outcome Sepia(double hue, double saturation, double gain) {
    return Run([=](EditedPicture& p) { return p.Sepia(hue, saturation, gain); });
  }
  bool HasAlphaChannel() const { return picture_->HasAlphaChannel(); }
  Outcome RemoveAlphaChannel() {
    return Run([](EditedPicture& p) { return p.RemoveAlphaChannel(); });
  }
  /// Saves no undo of its own.
  Outcome MergeObjects() {
    return Run([](EditedPicture& p) { return p.MergeObjects(); });
  }
  /// Asks for the printer, too. `title` is the print job's.
  void PrintImageDialog(const QString& title);

  // The way back; index 0 is the newest. No `OnFinishWork`.

  void SaveUndo() { SaveState(&EditedPicture::SaveUndo); }
  void DiscardUndo() { picture_->DiscardUndo(); }
  Outcome UndoAt(int index);
  int UndoCount() const { return picture_->UndoCount(); }
  void ClearAllUndo() { picture_->ClearAllUndo(); }
  void SaveRedo() { SaveState(&EditedPicture::SaveRedo); }
  void DiscardRedo() { picture_->DiscardRedo(); }
  Outcome RedoAt(int index);
  int RedoCount() const { return picture_->RedoCount(); }
  void ClearAllRedo() { picture_->ClearAllRedo(); }
  void SetUndoLimit(int levels) { picture_->SetUndoLimit(levels); }
  int UndoLimit() const { return picture_->UndoLimit(); }
  /// How many undo levels were lost for want of memory and disk.
  const UndoStack& History() const { return picture_->History(); }

  // Mouse modes: "SCROLL", "MOUSEWHEELZOOM", and those with a tool for the left button, "SELECT"
  // (as "SELECTRECT"), "OBJECTSELECT", "PUTLINE", "SELECTRECT", "SELECTCIRCLE", "SELECTPOLYGON",
  // "SELECTLASSO", "SELECTMAGICWAND". Of these the one that was switched on last is on; it comes
  // before "SCROLL", which switched on ends all but "OBJECTSELECT".

  void SetMouseInteract(const QString& mode, bool on) override;
  /// In the place of the mode's own; `ResetMouseCursor` brings that back.
  void SetMouseCursor(const QCursor& cursor);
  void ResetMouseCursor();

  // Selection.

  bool HasSelection() const { return picture_->HasSelection(); }
  const Selection& Selected() const { return picture_->Selected(); }
  void Select(const Selection& selection);
  void Deselect() { Select(Selection()); }
  void SetMagicWandTolerance(int percent) { tolerance_ = percent; }
  int MagicWandTolerance() const { return tolerance_; }
  /// Width by height; -1 is free.
  void SetSelectionAspectRatio(double ratio) { limits_.aspectRatio = ratio; }
  double SelectionAspectRatio() const { return limits_.aspectRatio; }
  /// Pixels; 0 is no limit.
  void SetSelectionMaxWidth(int pixels) { limits_.maxWidth = pixels; }
  int SelectionMaxWidth() const { return limits_.maxWidth; }
  void SetSelectionMaxHeight(int pixels) { limits_.maxHeight = pixels; }
  int SelectionMaxHeight() const { return limits_.maxHeight; }

  // Objects.

  /// For the object that "PUTLINE" or `AddObject` puts next.
  static constexpr int kNextObject = 0;
  const VectorObjects& Objects() const { return picture_->Objects(); }
  /// In the place of all that are there.
  void SetObjects(const VectorObjects& objects);
  /// With the properties set for `kNextObject`; gives the ID.
  int AddObject(ObjectKind kind);
  bool SetObjectProperty(int id, QStringView key, const QString& value);
  QString GetObjectProperty(int id, QStringView key) const;
  void SetObjectPicture(int id, const QImage& picture);
  void RemoveObject(int id);
  void RemoveAllObjects();
  void SendToBack(int id);
  void BringToFront(int id);
  /// In z-order.
  std::vector<int> SelectedObjects() const;
  bool IsObjectSelected(int id) const override { return selected_.contains(id); }
  /// `OnSelectObject` tells of each change, also by these.
  void SelectObject(int id, bool on);
  void SelectAllObjects();
  void DeselectAllObjects() { SetSelected({}); }
  /// While the mouse sizes.
  void SetKeepObjectAspect(bool keep) { keepAspect_ = keep; }
  bool KeepObjectAspect() const { return keepAspect_; }

 Q_SIGNALS:
  /// An operation has changed the picture; not after undoing and redoing.
  void OnFinishWork();
  void OnProgress(int percent);
  void OnKeyPress(int key, Qt::KeyboardModifiers modifiers);
  /// What is selected of the objects has changed.
  void OnSelectObject();
  /// The user has moved or sized an object: once an object, at the end of the drag.
  void OnObjectMoved(int id);
  void OnSelectionChange();

 protected:
  void PaintOver(QPainter& painter, const QRegion& region) override;
  QCursor IdleCursor() const override;
  bool LeftButtonPans() const override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  // What tools see.
  QSize PictureSize() const override { return FullSize(); }
  const SelectionLimits& Limits() const override { return limits_; }
  void TakeSelection(const Selection& selection) override { Select(selection); }
  void TakeMagicWand(const QPoint& seed) override;
  const VectorObjects& ObjectList() const override { return picture_->Objects(); }
  int SelectedCount() const override { return static_cast<int>(selected_.size()); }
  bool KeepsObjectAspect() const override { return keepAspect_; }
  void SelectOnly(const std::vector<int>& ids) override;
  void ToggleObject(int id) override { SelectObject(id, !IsObjectSelected(id)); }
  void ReplaceObject(const VectorObject& object) override;
  void TellMoved(const std::vector<int>& ids) override;
  int PutLine(const QPointF& from, const QPointF& to) override;

  enum class Ending { Silent, Finished };
  bool Occupied(const std::function<void(EditedPicture&)>& body);
  Outcome Work(const Operation& operation, Ending ending);
  void SaveState(void (EditedPicture::*save)());
  void ShowEdited();
  void ObjectsChanged();
  void SetSelected(std::set<int> ids);
  void SelectionChanged();
  void March();
  void UpdateOutline();
  QTransform ToView() const;
  QPainterPath InView(const QPainterPath& line) const;
  bool ToolWorks() const { return tool_ && HasImage() && !working_; }
  void HandTo(void (MouseTool::*handler)(const ToolEvent&), const QMouseEvent* event);
  ToolEvent EventAt(const QPointF& at, Qt::KeyboardModifiers modifiers) const;
  void SwitchTool(const QString& mode);

  std::shared_ptr<EditedPicture> picture_;  // an operation under way holds it too
  bool working_ = false;
  QString toolMode_;
  std::shared_ptr<MouseTool> tool_;  // a handler under way holds it too
  ToolEvent hover_;  // where the mouse was last
  std::optional<QCursor> cursor_;
  SelectionLimits limits_;
  int tolerance_ = 10;
  std::vector<std::pair<QString, QString>> nextObject_;
  std::set<int> selected_;
  bool keepAspect_ = false;
  // The marching line in the viewport, for the view that it was made for.
  QTimer ants_;
  int phase_ = 0;
  QPainterPath outline_;
  QRegion outlineRegion_;
  bool outlineStale_ = true;
};

}  // namespace zqm
