// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>

class QLabel;
class QPushButton;

namespace zqm {

class PictureView;

/// The colour of the boxes that are added next, picked from a palette or in a dialog.
class ColourPanel : public QWidget {
  Q_OBJECT
 public:
  /// `folder` has the palette's file.
  explicit ColourPanel(const QString& folder, QWidget* parent = nullptr);

  const QColor& Colour() const { return colour_; }

 private:
  void ComposePalette();
  void TakeColour(const QColor& colour);
  void Swatch_Click();

  QImage palette_;
  PictureView* view_;
  QPushButton* swatch_;
  QLabel* text_;
  QColor colour_;
  bool picking_ = false;  // the button is down on the palette
};

}  // namespace zqm
