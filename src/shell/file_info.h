// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zqm {

struct VersionData {
  bool Available = false;
  quint32 FileFlags = 0, FileOS = 0, FileType = 0, FileSubType = 0;
  QString VerFile, VerProduct, VerStructure, Language;
  QString CompanyName, FileDescription, FileVersion, InternalName, LegalCopyright, LegalTrademarks,
      OriginalFilename, ProductName, ProductVersion, PrivateBuild, SpecialBuild;
};

/// The version data of a program file. Answered for the running program from its build data; for
/// any other file `Available` is false and every text is empty.
class FileInfo : public VersionData {
 public:
  explicit FileInfo(QString path = QString());

  void SetFullPathName(const QString& path);
  void Refresh();

  QString FullPathName;
};

/// "MAJOR.MINOR.PATCH" of this build.
QString ProgramVersion();
/// Version and licence, for the windows' "About".
QString AboutText();

}  // namespace zqm
