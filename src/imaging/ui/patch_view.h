// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>
#include <QWidget>

namespace zqm {

class ImageX;

/// A sharp part of a picture laid over a view that shows all of it with fewer pixels.
class PatchView : public QWidget {
  Q_OBJECT
 public:
  explicit PatchView(ImageX* view);

  /// `area` in pixels of the view's picture; a null image takes the patch away.
  void Show(const QImage& image, const QRect& area);
  const QImage& Image() const { return image_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  ImageX* view_;
  QImage image_;
  QRect area_;
};

}  // namespace zqm
