// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <QWidget>

#include "imaging/ui/picture_view.h"
#include "viewers/photo_viewer.h"

class QLabel;
class QToolButton;

namespace zqm {

class ElidedLabel;

/// Where another view has to look to show the same place of a photo of another size: as far from
/// the edges in proportion, `zoomRatio` times as large; fitted if that one is.
ImageView LinkedView(const ImageView& view, const QSize& size, const QSize& otherSize,
                     double zoomRatio);

/// One side of a comparison: a photo with its name, place and values over it.
class ComparePane : public QWidget {
  Q_OBJECT
 public:
  ComparePane(Catalogue& catalogue, const ReadRequest& request, const QStringList& photos,
              int position, QWidget* parent = nullptr);

  PhotoViewer& Viewer() { return viewer_; }
  PictureView& View() { return *view_; }
  /// The photo that is seen; "" before the first.
  const QString& ShownPath() const { return viewer_.Shown().path; }

  /// Shows what the viewer has now. A photo that was seen already stays where it is.
  void ShowPhoto();
  /// Name, place, rating and flag as they are now.
  void ShowValues();
  /// The keys are for the active side, which has a frame.
  void SetActive(bool active);
  /// Photos are to fill the view as it is now.
  void FitBox();

 Q_SIGNALS:
  /// The user touched this side.
  void Activated();
  /// Its button wants the next photo (1) or the one before (-1).
  void StepWanted(int step);
  /// A double click is about to show one pixel on one of the screen.
  void ActualSizeWanted();

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLayout* ComposeHead();
  QToolButton* StepButton(const char* icon, const QString& toolTip, const char* name, int step);
  void ShowZoom();

  Catalogue& catalogue_;
  PhotoViewer viewer_;
  PictureView* view_;
  ElidedLabel* name_;
  QLabel* values_;
  QLabel* zoom_;
  QTimer patience_;
  QString seen_;  // path of the photo in the view
  bool active_ = false;
};

}  // namespace zqm
