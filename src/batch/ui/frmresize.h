// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "batch/resize_photos.h"
#include "batch/ui/picture_dialog.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QSlider;

namespace zqm {

/// Gives photos another size.
class frmresize : public PictureDialog {
  Q_OBJECT
 public:
  frmresize(BatchPlace place, const PictureSettings& load, const ReadRequest& read,
            QWidget* parent = nullptr);

 private:
  void ComposeSize(QGridLayout* grid);
  void ComposeQuality(QGridLayout* grid);
  /// One follows the other, so not both do.
  void Auto_Click(QCheckBox* clicked, QCheckBox* other);
  void cmdresize_Click();

  PictureSettings load_;
  QLineEdit* width_;
  QLineEdit* height_;
  QCheckBox* autoWidth_;
  QCheckBox* autoHeight_;
  QLineEdit* dpi_;
  QComboBox* filter_;
  QSlider* sharpen_;
};

}  // namespace zqm
