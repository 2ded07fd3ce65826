// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "batch/ui/batch_dialog.h"

namespace zqm {

/// Deletes photos from disk, or takes their rows out of the catalogue.
class frmdelete : public BatchDialog {
  Q_OBJECT
 public:
  frmdelete(BatchPlace place, const char16_t* question, QWidget* parent = nullptr);

 private:
  void cmddelete_Click();
  void cmdremove_Click();
};

}  // namespace zqm
