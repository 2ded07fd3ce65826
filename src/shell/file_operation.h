// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include "shell/result.h"

namespace zqm {

/// One operation of the shell on a list of sources: copy, move or delete. The file helpers run each
/// of their operations through one of these. It never asks, shows nothing and never uses a recycle
/// bin: callers ask before they run it. So most properties say only what a caller wishes for and
/// change nothing here.
class CSHFileOp {
 public:
  enum class Operation { Copy, Move, Delete };

  bool AllowUndo = false;          ///< no effect: there is no recycle bin
  bool ConfirmMakeDir = false;     ///< no effect: a destination folder must stand
  bool ConfirmOperation = true;    ///< no effect: never asks
  QString CustomText;              ///< no effect: no progress window
  bool IncludeDirectories = true;  ///< copies folders with all that is in them
  quintptr ParentWnd = 0;          ///< no effect: no window
  /// Copies and moves to a free name, "name (2).ext", where something stands, also under a name
  /// that differs only in letter case. Otherwise copying replaces and moving fails.
  bool RenameOnCollision = false;
  bool SilentMode = false;  ///< no effect: always silent

  void AddSource(const QString& path);
  void SetDestination(const QString& path);
  void ClearSources();

  /// One source goes to the destination itself, several go into it. The list is empty afterwards.
  /// The first failure ends the run; with several sources its reason names the file. Raises `Error`
  /// "No source files specified file operation" on an empty list.
  Outcome Run(Operation operation);

 private:
  Outcome RunOne(Operation operation, const QString& source, const QString& target) const;
  QStringList sources_;
  QString destination_;
};

}  // namespace zqm
