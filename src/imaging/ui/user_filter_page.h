// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "imaging/effects/user_filter.h"
#include "imaging/ui/change_page.h"

class QSpinBox;

namespace zqm {

/// A matrix to fill in, or to choose.
class UserFilterPage : public ChangePage {
  Q_OBJECT
 public:
  UserFilterPage();

  PartChange Change() const override;
  int Reach() const override { return FilterMatrix::kSide / 2; }
  void Reset() override;

 private:
  QWidget* ComposeMatrix();
  FilterMatrix Matrix() const;
  void Show(const FilterMatrix& matrix);
  void PresetChosen(int index);
  void CellChanged();
  QSpinBox* AddNumber(const QString& caption, const char* name, int low, int high);

  std::array<QSpinBox*, FilterMatrix::kSide * FilterMatrix::kSide> cells_{};
  QComboBox* preset_;
  QSpinBox* divisor_;
  QSpinBox* bias_;
  bool filling_ = false;
};

}  // namespace zqm
