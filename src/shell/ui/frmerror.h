// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "shell/failure_list.h"

class QLabel;

namespace zqm {

class FailureTable;

/// What a run could not do: a list of files and reasons that one can read, sort and copy from.
class frmerror : public QDialog {
  Q_OBJECT
 public:
  explicit frmerror(QWidget* parent = nullptr);

  void SetFailures(const FailureList& failures);

  QSize sizeHint() const override;

 private:
  QLabel* label_;
  QLabel* count_;
  FailureTable* table_;
};

/// The same fields for what was told of one fault.
class frmbug : public frmerror {
  Q_OBJECT
 public:
  explicit frmbug(QWidget* parent = nullptr);
};

/// Shows the list and waits for the user to close it.
void ShowFailures(const FailureList& failures, QWidget* parent);

}  // namespace zqm
