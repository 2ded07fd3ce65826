// SPDX-License-Identifier: GPL-3.0-or-later
// The small windows on the way to the main one.
#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>
#include <QWidget>

class QLabel;
class QListWidget;

namespace zqm {

/// The first sign of life.
class frmstart : public QWidget {
  Q_OBJECT
 public:
  frmstart();
};

/// Which of several catalogues to load.
class frmcheckDB : public QDialog {
  Q_OBJECT
 public:
  explicit frmcheckDB(const QStringList& names, QWidget* parent = nullptr);

  /// After it was accepted.
  QString Name() const;

 private:
  void Confirm();

  QListWidget* list_;
};

/// What is being loaded.
class frmintro : public QWidget {
  Q_OBJECT
 public:
  frmintro();

  /// Painted before this returns.
  void SetStatus(const QString& status);

 private:
  QLabel* status_;
};

}  // namespace zqm
