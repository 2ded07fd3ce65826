// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QImage>
#include <optional>

#include "imaging/picture_change.h"

namespace zqm {

class BeforeAfter;
class ChangePage;

/// A change of a picture, looked at before and after while its controls are moved. Enter applies,
/// Escape cancels.
class ChangeDialog : public QDialog {
  Q_OBJECT
 public:
  /// Takes `page`.
  ChangeDialog(const QImage& picture, const QString& caption, ChangePage* page,
               QWidget* parent = nullptr);

  /// For the full picture, once the dialog was accepted; none where nothing would change.
  std::optional<PictureChange> Change() const;
  /// Shows the dialog until it is applied or cancelled.
  std::optional<PictureChange> Ask();

  BeforeAfter* Views() const { return views_; }

 private:
  void UpdatePreview();

  ChangePage* page_;
  BeforeAfter* views_;
};

}  // namespace zqm
