// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPoint>
#include <QWidget>
#include <vector>

#include "imaging/effects/part_view.h"
#include "imaging/ui/slider_row.h"

class QComboBox;
class QGridLayout;
class QHBoxLayout;

namespace zqm {

/// The controls of one change: what stands below the pictures of a `ChangeDialog`.
class ChangePage : public QWidget {
  Q_OBJECT
 public:
  ChangePage();

  /// What the controls ask for; empty where pictures would stay as they are.
  virtual PartChange Change() const = 0;
  /// How many pixels of the full picture around it a pixel depends on.
  virtual int Reach() const { return 0; }
  /// Everything as it was at first.
  virtual void Reset();
  /// The picture before was clicked.
  virtual void PixelClicked(const QPoint&) {}
  /// The preview shows these, at the size of the screen.
  virtual void PreviewShown(const QImage& /*before*/, const QImage& /*after*/) {}

 Q_SIGNALS:
  void Changed();

 protected:
  SliderRow* AddSlider(const SliderRow::Spec& spec);
  /// A choice below the sliders; `caption` with its mnemonic.
  QComboBox* AddChoice(const QString& caption, const char* name, const QStringList& items);
  QGridLayout* Grid() const { return grid_; }
  /// At the right of the sliders.
  void AddAside(QWidget* widget);

 private:
  QHBoxLayout* row_;
  QGridLayout* grid_;
  std::vector<SliderRow*> sliders_;
  std::vector<QComboBox*> choices_;
};

}  // namespace zqm
