// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QTimer>

#include "catalogue/catalogue.h"
#include "metadata/photo_info.h"
#include "viewers/photos_ahead.h"

namespace zqm {

/// One photo as a viewer shows it.
struct ViewedPhoto {
  QString path;
  int position = -1;  ///< in the viewer's list, from 0
  PhotoInfo info;
  QImage image;     ///< may be smaller than the photo; null without pixels
  QSize fullSize;   ///< pixels, as `image` lies
  QString message;  ///< why there is no picture
  bool offline = false;
  bool again = false;  ///< the photo of before, lying as before: the view may stay where it is
};

/// A viewer's list of photos and the place in it. Neighbours are read before they are asked for; a
/// photo whose file is away is shown as its row has it. The list stays as it is whatever happens to
/// the files.
class PhotoViewer : public QObject {
  Q_OBJECT
 public:
  /// Begins at `position` as soon as it knows the box. The catalogue must outlive the viewer.
  PhotoViewer(Catalogue& catalogue, const ReadRequest& request, QStringList paths, int position);

  int Count() const { return static_cast<int>(paths_.size()); }
  /// Where the viewer is going to; what is shown may still be another one.
  int Position() const { return position_; }
  QString PathAt(int position) const { return paths_.value(position); }
  /// Whether the photo at the position is still being read.
  bool IsLoading() const { return shown_.position != position_; }
  /// Whether it, or the full size of the shown one, is still being read.
  bool IsReading() const { return IsLoading() || full_.IsReading(shown_.path); }
  /// What was shown last; position -1 before the first.
  const ViewedPhoto& Shown() const { return shown_; }

  /// How many device pixels a photo may fill. A larger size has the photo read again
  /// once it has stood for a moment.
  void SetBox(const QSize& box);
  void SetUpright(bool upright);

  /// To that photo of the list, and no further than its ends. False for where the viewer is.
  bool GoTo(int position);
  /// Every pixel of the shown photo is wanted.
  void WantFullSize();

 Q_SIGNALS:
  /// `Shown` is another one now, or has more pixels.
  void Changed();
  /// What is wanted isn't at hand.
  void Waiting();
  /// Why the shown photo's full size can't be read; what is shown stays.
  void FullSizeFailed(const QString& reason);

 private:
  void TakeBox();
  void Look();
  void Show(const Result<ViewPhoto>& photo);
  void ShowFullSize();
  void ShowOffline();

  Catalogue& catalogue_;
  QStringList paths_;
  int position_;
  bool backwards_ = false;
  QSize box_, nextBox_;
  QTimer rest_;  // until the next box is taken
  ViewedPhoto shown_;
  PhotosAhead ahead_;
  PhotosAhead full_;  // the shown photo only
};

}  // namespace zqm
