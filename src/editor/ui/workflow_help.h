// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

namespace zqm {

/// What the steps of the editor's workflow do, to be read beside it.
class WorkflowHelp : public QDialog {
  Q_OBJECT
 public:
  explicit WorkflowHelp(QWidget* parent = nullptr);
};

}  // namespace zqm
