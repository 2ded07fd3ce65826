// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "batch/ui/metadata_dialog.h"

class QRadioButton;

namespace zqm {

class ShutterInput;

/// Writes EXIF fields into photos.
class frmexif : public MetadataDialog {
  Q_OBJECT
 public:
  explicit frmexif(BatchPlace place, QWidget* parent = nullptr);

  void Fill(const std::map<int, QString>& texts) override;

 protected:
  QString TypedText(int index) const override;
  BatchResult Write(const BatchObserver& observer) override;

 private:
  static const Names kNames;
  QWidget* MakeInput(int index);
  void AddOptions(QGridLayout* page);
  void chkexif_Click();
  void Option_Click();

  QRadioButton* slow_;
  QRadioButton* fast_;
  std::map<int, ShutterInput*> times_;
  std::map<int, QCheckBox*> timeBoxes_;
};

}  // namespace zqm
