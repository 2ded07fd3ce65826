// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/existing_names.h"

#include <QDir>
#include <QFileInfo>

#include "catalogue/like_pattern.h"
#include "shell/files.h"

namespace zqm {
namespace {

/// Also a link that leads nowhere.
bool Stands(const QString& path) {
  const QFileInfo info(path);
  return info.exists() || info.isSymLink();
}

}  // namespace

ExistingNames::Names& ExistingNames::NamesIn(const QString& folder) {
  const auto known = folders_.find(folder);
  if (known != folders_.end()) return *known;
  Names names;
  const auto all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
  for (const QString& name : QDir(folder).entryList(all, QDir::Unsorted))
    names[FoldCase(name)].append(name);
  return *folders_.insert(folder, std::move(names));
}

QString ExistingNames::Find(const QString& path) {
  if (Stands(path)) return path;
  const QString folder = GetParentFolderName(path);
  for (const QString& name : NamesIn(folder).value(FoldCase(GetFileName(path))))
    if (const QString other = PathIn(folder, name); Stands(other)) return other;
  return QString();
}

void ExistingNames::Add(const QString& path) {
  QStringList& names = NamesIn(GetParentFolderName(path))[FoldCase(GetFileName(path))];
  const QString name = GetFileName(path);
  if (!names.contains(name)) names.append(name);
}

}  // namespace zqm
