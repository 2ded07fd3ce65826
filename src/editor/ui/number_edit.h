// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineEdit>

#include "editor/crop_resize.h"

namespace zqm {

/// A box that takes the keys of a number only.
class NumberEdit : public QLineEdit {
 public:
  NumberEdit(TypedNumber number, const char* name, const QString& text = {},
             QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  TypedNumber number_;
};

}  // namespace zqm
