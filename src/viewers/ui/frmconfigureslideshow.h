// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QStringList>

#include "viewers/slideshow.h"

class QCheckBox;
class QLineEdit;
class QListWidget;

namespace zqm {

class SlideshowPreview;

/// Asks how long the photos of a slideshow stay and how the next one comes.
class frmconfigureslideshow : public QDialog {
  Q_OBJECT
 public:
  /// `stateFolder` keeps the settings between runs.
  frmconfigureslideshow(QStringList photos, const ReadRequest& request, const QString& stateFolder,
                        QWidget* parent = nullptr);

  /// What is to be shown, after the window was accepted.
  const SlideshowPlan& Plan() const { return plan_; }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* ComposeTransitions();
  QLayout* ComposeRest();
  void LoadSettings();
  void ShowTransition();
  void Command2_Click();  // Start

  QString stateFolder_;
  SlideshowPlan plan_;
  QListWidget* transitions_;
  SlideshowPreview* preview_;
  QLineEdit* duration_;
  QCheckBox* keys_;
  QCheckBox* upright_;
};

}  // namespace zqm
