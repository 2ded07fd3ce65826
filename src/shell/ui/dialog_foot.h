// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBoxLayout>

class QPushButton;

namespace zqm {

/// The last row of a dialog: at the right Cancel (`cmdcancel`) and the button that does what the
/// dialog is for (`cmdok`).
class DialogFoot : public QHBoxLayout {
  Q_OBJECT
 public:
  /// "OK" without a caption of its own.
  explicit DialogFoot(const QString& okCaption = QString());

  QPushButton* Ok() const { return ok_; }
  QPushButton* Cancel() const { return cancel_; }

 private:
  QPushButton* ok_;
  QPushButton* cancel_;
};

}  // namespace zqm
