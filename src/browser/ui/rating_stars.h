// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace zqm {

/// Five stars, of which the first k are filled. Mouse, digits 1 to 5 and arrow keys choose.
class RatingStars : public QWidget {
  Q_OBJECT
 public:
  explicit RatingStars(QWidget* parent = nullptr);

  /// 0 (none filled) to 5.
  int Rating() const { return rating_; }
  void SetRating(int rating);

  QSize sizeHint() const override;

 Q_SIGNALS:
  /// The user chose 1 to 5.
  void Rated(int rating);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  int StarAt(int x) const;
  void SetHovered(int star);
  void Choose(int rating);

  int rating_ = 0;
  int hovered_ = 0;
};

}  // namespace zqm
