// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/session_folders.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QLatin1StringView kProgramFolder = "/Zolmira/QM"_L1;

QString UserFolder(QStandardPaths::StandardLocation location) {
  const QString folder = QStandardPaths::writableLocation(location);
  return folder.isEmpty() ? QDir::homePath() : StripSlash(folder);
}

}  // namespace

QString SessionFolders::WorkingFolder() const {
  return DocumentsPath + kProgramFolder;
}

QString SessionFolders::StateFolder() const {
  return AppDataPath + kProgramFolder;
}

QString SessionFolders::ScratchFolder() const {
  return StateFolder() + "/Temp"_L1;
}

QString SessionFolders::MasterFolder() const {
  return CommonAppDataPath + kProgramFolder;
}

QString SessionFolders::PrintingTemplatesFolder() const {
  return WorkingFolder() + "/printing_templates"_L1;
}

QString SessionFolders::WatermarkTemplatesFolder() const {
  return WorkingFolder() + "/watermark_templates"_L1;
}

SessionFolders ResolveSessionFolders(const QString& home) {
  SessionFolders folders;
  folders.ProgramFilesPath = QCoreApplication::applicationDirPath();
  folders.CommonAppDataPath = AbsolutePath(folders.ProgramFilesPath + "/../share"_L1);
  if (home.isEmpty()) {
    folders.DocumentsPath = UserFolder(QStandardPaths::DocumentsLocation);
    folders.DesktopPath = UserFolder(QStandardPaths::DesktopLocation);
    folders.AppDataPath = UserFolder(QStandardPaths::GenericDataLocation);
    return folders;
  }
  const QString root = AbsolutePath(home);
  const QString prefix = root.endsWith(u'/') ? root : root + u'/';
  folders.DocumentsPath = prefix + "Documents"_L1;
  folders.DesktopPath = prefix + "Desktop"_L1;
  folders.AppDataPath = prefix + "AppData"_L1;
  return folders;
}

}  // namespace zqm
