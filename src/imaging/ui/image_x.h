// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractScrollArea>
#include <QImage>
#include <QPointF>
#include <QSet>
#include <QString>
#include <vector>

namespace zqm {

/// Where an `ImageX` looks: what two of them share that are looked at side by side.
struct ImageView {
  double zoom = 100;  ///< percent
  QPointF centre;     ///< the pixel of the picture in the middle of the view
  bool fit = true;    ///< fitted; the other two follow from the window's size then
};

/// Shows one picture: fitted, zoomed by the wheel about the pointer, panned by dragging. Only what
/// is visible is scaled. Coordinates told outward are pixels of the full picture.
class ImageX : public QAbstractScrollArea {
  Q_OBJECT
 public:
  /// Whether the picture is the one that was shown before, only larger, or another one.
  enum class KeepView { No, SamePhoto };

  explicit ImageX(QWidget* parent = nullptr);

  /// `image` may be smaller than the true size `fullSize`; `FullSizeWanted` says when that no
  /// longer does. Another photo is fitted.
  void ShowImage(const QImage& image, const QSize& fullSize, KeepView keep = KeepView::No);
  void Clear();
  bool HasImage() const { return !levels_.empty(); }
  /// Shown where the picture would be.
  void SetMessage(const QString& message);

  /// Percent; 100 is one picture pixel on one pixel of the device.
  double Zoom() const { return scale_ * 100; }
  void SetZoom(double percent);
  /// The whole picture, not enlarged.
  void Fit();
  bool IsFit() const { return fit_; }
  /// For a picture of the same size in another window. `OnViewChange` tells of each change.
  ImageView View() const;
  void SetView(const ImageView& view);

  /// The mouse modes so far: "SCROLL" (dragging pans), "MOUSEWHEELZOOM".
  void SetMouseInteract(const QString& mode, bool on);
  bool GetMouseInteract(const QString& mode) const { return modes_.contains(mode); }

  /// From the viewport's coordinates to pixels of the full picture; may lie outside of it.
  double ToBitmapX(double x) const;
  double ToBitmapY(double y) const;

  /// While locked nothing is painted.
  void LockUpdate(bool lock) { viewport()->setUpdatesEnabled(!lock); }

 Q_SIGNALS:
  void OnImageChange();
  void OnViewChange();
  void OnMouseDown(const QPointF& pixel, Qt::MouseButton button);
  void OnMouseMove(const QPointF& pixel);
  void OnMouseUp(const QPointF& pixel, Qt::MouseButton button);
  /// More pixels are needed than the image has; once for each image.
  void FullSizeWanted();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QPointF ToBitmap(const QPointF& at) const;
  QSizeF ShownSize() const;
  QPointF Origin() const;
  double FitScale() const;
  void SetScale(double scale, const QPointF& about);
  void MoveTo(const QPointF& pixel, const QPointF& at);
  void UpdateScrollBars();
  void AskForPixels();
  void UpdateCursor();
  bool CanPan() const;
  const QImage& LevelFor(double deviceScale);

  std::vector<QImage> levels_;  // each half of the one before, made when it is first needed
  QSize fullSize_;
  QString message_;
  double scale_ = 1;  // device pixels of a picture pixel
  bool fit_ = true;
  bool asked_ = false;
  bool panning_ = false;
  QPoint panFrom_;
  QSet<QString> modes_;
};

}  // namespace zqm
