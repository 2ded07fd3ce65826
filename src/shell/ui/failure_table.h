// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTableView>

#include "shell/failure_list.h"

namespace zqm {

class FailureModel;

/// Files and why they failed, in the order in which it happened until the user sorts them; rows can
/// be copied as text.
class FailureTable : public QTableView {
  Q_OBJECT
 public:
  explicit FailureTable(QWidget* parent = nullptr);

  void SetFailures(const FailureList& failures);

 private:
  void CopyRows() const;

  FailureModel* model_;
};

}  // namespace zqm
