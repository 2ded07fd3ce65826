// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

class QGridLayout;
class QLabel;
class QSlider;
class QSpinBox;
class QWidget;

namespace zqm {

/// A whole number by a slider and a field beside it, each showing what the other is set to.
class SliderRow : public QObject {
  Q_OBJECT
 public:
  struct Spec {
    QString caption;   ///< with its mnemonic, which leads to the slider
    const char* name;  ///< the slider is named "sld" and this, the field "txt" and this
    int low, high;
    int standard;  ///< at first and after a reset
    QString unit = {};
  };
  /// The next row of a grid of three columns; owned by `parent`.
  SliderRow(const Spec& spec, QGridLayout* grid, QObject* parent);

  /// What the keyboard comes to first.
  QWidget* First() const;
  int Value() const;
  void SetValue(int value);
  void Reset() { SetValue(standard_); }

 Q_SIGNALS:
  void Changed();

 private:
  int standard_;
  QSlider* slider_;
  QSpinBox* field_;
};

}  // namespace zqm
