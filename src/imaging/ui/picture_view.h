// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractScrollArea>
#include <QColor>
#include <QImage>
#include <QPointF>
#include <QSet>
#include <QString>
#include <vector>

namespace zqm {

/// Where a view looks: what two of them share that are looked at side by side.
struct ImageView {
  double zoom = 100;  ///< percent
  QPointF centre;     ///< the pixel of the picture in the middle of the view
  bool fit = true;    ///< fitted; the other two follow from the window's size then
};

/// Shows one picture: fitted, zoomed by the wheel about the pointer, panned by dragging. Only what
/// is visible is scaled. Coordinates told outward are pixels of the full picture.
///
/// Whatever the left button does: the middle one and the left one with the space bar down pan, the
/// wheel zooms with Ctrl held.
class PictureView : public QAbstractScrollArea {
  Q_OBJECT
 public:
  /// What stays where the picture isn't fitted: nothing, all for the picture that was shown before,
  /// only larger, or for another one the zoom and the place in proportion.
  enum class KeepView { No, SamePhoto, Zoom };

  explicit PictureView(QWidget* parent = nullptr);

  /// `image` may be smaller than the true size `fullSize`; `FullSizeWanted` says when that no
  /// longer does.
  void ShowImage(const QImage& image, const QSize& fullSize, KeepView keep = KeepView::No);
  void Clear();
  bool HasImage() const { return !levels_.empty(); }
  /// Of the image that is shown; `ShowImage` may have told of a larger picture.
  QSize ImageSize() const { return HasImage() ? levels_.front().size() : QSize(); }
  /// Shown where the picture would be.
  void SetMessage(const QString& message);
  /// Around the picture, and where it is transparent.
  void SetBackground(const QColor& colour);

  /// Percent; 100 is one picture pixel on one pixel of the device.
  double Zoom() const { return scale_ * 100; }
  void SetZoom(double percent);
  /// The whole picture, not enlarged.
  void Fit();
  bool IsFit() const { return fit_; }
  /// What `Fit` would zoom to, percent.
  double FitZoom() const { return FitScale(fullSize_) * 100; }
  /// For a picture of the same size in another window. `OnViewChange` tells of each change.
  ImageView View() const;
  void SetView(const ImageView& view);

  /// Of the mouse modes the view has "SCROLL" (dragging pans) and "MOUSEWHEELZOOM", on from the
  /// start; others are ignored.
  virtual void SetMouseInteract(const QString& mode, bool on);
  bool GetMouseInteract(const QString& mode) const { return modes_.contains(mode.toUpper()); }

  /// From the viewport's coordinates to pixels of the full picture; may lie outside of it.
  double ToBitmapX(double x) const;
  double ToBitmapY(double y) const;
  /// The other way.
  QPointF FromBitmap(const QPointF& pixel) const;

  /// Whatever the mouse would do.
  void HideCursor(bool hidden);

  /// While locked nothing is painted.
  void LockUpdate(bool lock) { viewport()->setUpdatesEnabled(!lock); }

 Q_SIGNALS:
  void OnImageChange();
  void OnViewChange();
  /// Before anything is done with it.
  void OnMouseDown(const QPointF& pixel, Qt::MouseButton button);
  void OnMouseMove(const QPointF& pixel);
  /// After all has been done with it.
  void OnMouseUp(const QPointF& pixel, Qt::MouseButton button);
  /// More pixels are needed than the image has; once for each image.
  void FullSizeWanted();

 protected:
  /// What lies over the picture; the painter is the viewport's, clipped to `region`.
  virtual void PaintOver(QPainter& painter, const QRegion& region);
  /// The cursor when nothing is panned.
  virtual QCursor IdleCursor() const { return Qt::ArrowCursor; }
  /// Whether dragging with the left button pans when there is room to.
  virtual bool LeftButtonPans() const;

  /// An image as the view keeps it, and made smaller for the zoom that it has now: what costs time
  /// about another image, apart. May run on any thread.
  static std::vector<QImage> MakeLevels(const QImage& image, double deviceScale);
  /// The scale at which `ShowLevels` will show a picture of that size.
  double ScaleToShow(const QSize& picture) const;
  /// Shows what `MakeLevels` made of the whole picture. The view stays where the size does.
  void ShowLevels(std::vector<QImage> levels);

  void SwitchMode(const QString& mode, bool on);
  QPointF ToBitmap(const QPointF& at) const;
  const QSize& FullSize() const { return fullSize_; }
  double Scale() const { return scale_; }
  bool IsPanning() const { return panning_; }
  /// A press that pans; otherwise it is the caller's.
  bool BeginPan(QMouseEvent* event);
  bool MovePan(QMouseEvent* event);
  bool EndPan(QMouseEvent* event);
  void UpdateCursor();

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  QSizeF ShownSize() const;
  QPointF Origin() const;
  double FitScale(const QSize& picture) const;
  void SetScale(double scale, const QPointF& about);
  void MoveTo(const QPointF& pixel, const QPointF& at);
  void Reshow();
  void UpdateScrollBars();
  void AskForPixels();
  void HoldSpace(bool held);
  bool HasRoomToPan() const;
  const QImage& LevelFor(double deviceScale);
  void DrawPicture(QPainter& painter);
  const QImage& Frame();

  std::vector<QImage> levels_;  // each half of the one before, made when it is first needed
  QImage frame_;                // the viewport without what lies over the picture; null: to be made
  QSize fullSize_;
  QString message_;
  QColor background_;
  double scale_ = 1;  // device pixels of a picture pixel
  bool fit_ = true;
  bool asked_ = false;
  bool panning_ = false;
  bool spaceHeld_ = false;
  bool cursorHidden_ = false;
  QPoint panFrom_;
  QSet<QString> modes_;
};

}  // namespace zqm
