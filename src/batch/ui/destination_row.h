// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLineEdit;
class QPushButton;

namespace zqm {

/// A folder with the button that picks it.
class DestinationRow : public QWidget {
  Q_OBJECT
 public:
  /// `fieldName` is the object name of the folder's field.
  explicit DestinationRow(const char* fieldName, QWidget* parent = nullptr);

  /// Without a closing separator, "" before one was picked.
  QString Folder() const;

 private:
  void cmdbrowse_Click();

  QLineEdit* field_;
  QPushButton* browse_;
};

}  // namespace zqm
