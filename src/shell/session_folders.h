// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zqm {

/// Where the program's things live. Resolved once at start and passed on; none ends in a separator.
struct SessionFolders {
  QString DocumentsPath;      ///< the user's documents
  QString AppDataPath;        ///< the user's application data
  QString CommonAppDataPath;  ///< installed data: the masters
  QString DesktopPath;
  QString ProgramFilesPath;  ///< the folder of the running program

  /// "DocumentsPath/Zolmira/QM": catalogues, CORE.mdb, template folders.
  QString WorkingFolder() const;
  /// "AppDataPath/Zolmira/QM": the small files in which windows keep their look and settings.
  QString StateFolder() const;
  /// "AppDataPath/Zolmira/QM/Temp".
  QString ScratchFolder() const;
  /// "CommonAppDataPath/Zolmira/QM": the master copies.
  QString MasterFolder() const;
  /// Under the working folder.
  QString PrintingTemplatesFolder() const;
  QString WatermarkTemplatesFolder() const;
};

/// The user's own folders, or all of them under `home` ("DIR/Documents", "DIR/Desktop",
/// "DIR/AppData") when it isn't empty; the masters stay where they are installed. Those are found
/// beside the program: "../share" of the program's folder, which is also the build tree's layout.
SessionFolders ResolveSessionFolders(const QString& home);

}  // namespace zqm
