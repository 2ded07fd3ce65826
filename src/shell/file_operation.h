// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include "shell/result.h"

namespace zqm {

/// One operation of the shell on a list of sources: copy, move or delete. The file helpers run each
/// of their operations through one of these. It never asks and never uses a recycle bin here;
/// `AllowUndo` starts off and the properties are kept for callers that set them.
class CSHFileOp {
 public:
  enum class Operation { Copy, Move, Delete };

  bool AllowUndo = false;
  bool ConfirmMakeDir = false;
  bool ConfirmOperation = true;
  QString CustomText;
  bool IncludeDirectories = true;
  quintptr ParentWnd = 0;
  bool RenameOnCollision = false;
  bool SilentMode = false;

  void AddSource(const QString& path);
  void SetDestination(const QString& path);
  void ClearSources();

  /// One source goes to the destination itself, several go into it. The list is empty afterwards.
  /// The first failure ends the run; with several sources its reason names the file. Raises `Error`
  /// "No source files specified file operation" on an empty list.
  Outcome Run(Operation operation);

 private:
  QStringList sources_;
  QString destination_;
};

}  // namespace zqm
