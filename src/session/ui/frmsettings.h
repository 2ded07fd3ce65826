// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <vector>

#include "session/session.h"
#include "shell/file_associations.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;

namespace zqm {

/// The settings of the program: where it starts, how RAW files are read, colour management, which
/// files the desktop opens with it.
class frmsettings : public QDialog {
  Q_OBJECT
 public:
  explicit frmsettings(Session& session, QWidget* parent = nullptr);
  frmsettings(Session& session, QWidget* parent, AssociationFolders folders);

 private:
  void AddPage(const QString& caption, QWidget* page);
  QWidget* StartupPage();
  QWidget* RawPage();
  QWidget* CmsPage();
  QWidget* AssociationsPage();
  void ShowSettings(const Settings& settings);
  Settings Chosen() const;
  void Browse();
  void cmdok_Click();

  Session& session_;
  AssociationFolders folders_;
  QListWidget* pageList_;
  QStackedWidget* pages_;
  QButtonGroup* startup_;
  QLineEdit* customEdit_;
  QPushButton* browseButton_;
  QComboBox* rawView_;
  QComboBox* rawBatch_;
  QButtonGroup* whiteBalance_;
  QCheckBox* cms_;
  std::vector<QCheckBox*> kinds_;
  std::vector<bool> kindsBefore_;
};

}  // namespace zqm
