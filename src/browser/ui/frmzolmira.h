// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>

namespace zqm {

class MainActions;

/// The pop-up menu on thumbnails.
class frmzolmira : public QMenu {
  Q_OBJECT
 public:
  explicit frmzolmira(const MainActions& actions, QWidget* parent = nullptr);
};

}  // namespace zqm
