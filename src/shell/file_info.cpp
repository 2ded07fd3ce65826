// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/file_info.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr quint32 kApplicationType = 1;

bool IsRunningProgram(const QString& path) {
  if (path.isEmpty() || QCoreApplication::instance() == nullptr) return false;
  const QString canonical = QFileInfo(path).canonicalFilePath();
  return !canonical.isEmpty() &&
         canonical == QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath();
}

VersionData OwnVersion() {
  VersionData data;
  data.Available = true;
  data.FileType = kApplicationType;
  data.VerFile = data.VerProduct = data.FileVersion = data.ProductVersion = ProgramVersion();
  data.VerStructure = u"1.0"_s;
  data.Language = u"English"_s;
  data.CompanyName = data.ProductName = u"Zolmira QM"_s;
  data.FileDescription = u"Desktop photo manager"_s;
  data.InternalName = data.OriginalFilename =
      QFileInfo(QCoreApplication::applicationFilePath()).fileName();
  data.LegalCopyright = u"GPL-3.0-or-later"_s;
  return data;
}

}  // namespace

FileInfo::FileInfo(QString path) : FullPathName(std::move(path)) {
  Refresh();
}

void FileInfo::SetFullPathName(const QString& path) {
  FullPathName = path;
  Refresh();
}

void FileInfo::Refresh() {
  VersionData& data = *this;
  data = IsRunningProgram(FullPathName) ? OwnVersion() : VersionData();
}

QString ProgramVersion() {
  return QString::fromUtf8(ZQM_VERSION);
}

QString AboutText() {
  return u"Zolmira QM "_s + ProgramVersion() +
         u"\n\nA photo manager for one user and one machine.\n\nFree software under the GNU "
         u"General Public License, version 3 or later."_s;
}

}  // namespace zqm
