// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "batch/convert_photos.h"
#include "batch/ui/picture_dialog.h"

class QListWidget;
class QStackedWidget;

namespace zqm {

struct ConvertSetting;

/// Writes photos in another format.
class frmformat : public PictureDialog {
  Q_OBJECT
 public:
  frmformat(BatchPlace place, const PictureSettings& load, const ReadRequest& read,
            QWidget* parent = nullptr);

 private:
  QWidget* ComposeSettings(const ConvertFormat& format);
  static QWidget* ComposeHint(const QString& text);
  int FormatRow() const;
  QWidget* Control(const ConvertSetting& setting);
  void List1_Click();
  void Command4_Click();

  /// Where a setting's control stands.
  struct Chosen {
    const ConvertSetting* setting;
    std::function<int()> value;
  };

  PictureSettings load_;
  QListWidget* formats_;
  QStackedWidget* settings_;
  std::vector<Chosen> chosen_;
};

}  // namespace zqm
