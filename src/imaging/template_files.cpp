// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/template_files.h"

#include <QCollator>
#include <QDir>
#include <algorithm>

#include "shell/busy.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr auto kExtension = ".iev"_L1;

Failure CannotLocate(const QString& path) {
  return Failure{u"Cannot locate "_s + path};
}

Failure About(const QString& path, const QString& reason) {
  return Failure{GetFileName(path) + u": "_s + reason};
}

}  // namespace

QStringList TemplatesName(const QString& folder) {
  QStringList names;
  for (const QString& file :
       QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name | QDir::IgnoreCase))
    if (file.endsWith(kExtension) && file.size() > kExtension.size())
      names.append(file.chopped(kExtension.size()));
  QCollator order{QLocale()};
  order.setNumericMode(true);
  std::ranges::stable_sort(
      names, [&](const QString& a, const QString& b) { return order.compare(a, b) < 0; });
  return names;
}

QString TemplatePath(const QString& folder, const QString& name) {
  return PathIn(folder, name + kExtension);
}

QString FindTemplate(const QString& folder, const QString& name) {
  const QStringList names = TemplatesName(folder);
  if (names.contains(name)) return name;
  const auto alike = std::ranges::find_if(
      names, [&](const QString& each) { return each.compare(name, Qt::CaseInsensitive) == 0; });
  return alike == names.end() ? QString() : *alike;
}

Outcome CheckTemplateName(const QString& name) {
  if (name.trimmed().isEmpty()) return Failure{QString::fromUtf16(template_text::kInvalidName)};
  if (!CheckIfValidFN(name)) return Failure{QString::fromUtf16(template_text::kForbidden)};
  return {};
}

Result<ObjectFile> LoadTemplate(const QString& path) {
  if (!FileExists(path)) return CannotLocate(path);
  Result<ObjectFile> file = RunAside([&path] { return LoadObjects(path); });
  if (!file) return About(path, file.Reason());
  return file;
}

Outcome SaveTemplate(const QString& path, const VectorObjects& objects, QSize surfaceSize) {
  const Outcome saved = RunAside([&]() -> Outcome {
    QDir().mkpath(GetParentFolderName(path));
    return SaveObjects(path, objects, surfaceSize);
  });
  return saved ? saved : About(path, saved.Reason());
}

Outcome RemoveTemplate(const QString& path) {
  if (!FileExists(path)) return CannotLocate(path);
  const Outcome removed = DeleteFile(path);
  return removed ? removed : About(path, removed.Reason());
}

}  // namespace zqm
