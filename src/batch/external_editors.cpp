// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/external_editors.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QStandardPaths>
#include <algorithm>

#include "catalogue/like_pattern.h"
#include "shell/busy.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr qint64 kLargestEntry = qint64{1} << 20;

/// The keys of a desktop entry's first group, untranslated.
QHash<QString, QString> ReadDesktopEntry(const QString& path) {
  QHash<QString, QString> keys;
  const auto bytes = ReadWholeFile(path, kLargestEntry);
  if (!bytes) return keys;
  bool inside = false;
  for (const QString& line : QString::fromUtf8(*bytes).split(u'\n')) {
    if (line.startsWith(u'[')) {
      if (inside) break;
      inside = line.trimmed() == u"[Desktop Entry]";
      continue;
    }
    const qsizetype equals = line.indexOf(u'=');
    if (inside && equals > 0)
      keys.insert(line.first(equals).trimmed(), line.mid(equals + 1).trimmed());
  }
  return keys;
}

/// The program that an `Exec` line starts, if its path alone starts it.
QString ProgramOf(const QString& exec) {
  QStringList words = QProcess::splitCommand(exec);
  if (words.isEmpty()) return QString();
  const QString program = words.takeFirst();
  // Field codes stand for the files.
  words.removeIf([](const QString& word) { return word.startsWith(u'%'); });
  if (!words.isEmpty()) return QString();
  return QStandardPaths::findExecutable(program);
}

bool OpensImages(const QHash<QString, QString>& entry) {
  if (entry.value(u"Type"_s) != u"Application" || entry.value(u"NoDisplay"_s) == u"true" ||
      entry.value(u"Hidden"_s) == u"true" || entry.value(u"Terminal"_s) == u"true")
    return false;
  // Browsers and file managers take images too.
  const QStringList categories = entry.value(u"Categories"_s).split(u';');
  const QStringList types = entry.value(u"MimeType"_s).split(u';');
  return categories.contains(u"Graphics"_s) &&
         std::ranges::any_of(types, [](const QString& t) { return t.startsWith(u"image/"_s); });
}

bool SameName(const QString& a, const QString& b) {
  return FoldCase(a) == FoldCase(b);
}

}  // namespace

Outcome CheckEditorProgram(const QString& path) {
  const QFileInfo file(path);
  if (file.isFile() && file.isExecutable()) return {};
  return Failure{path + u"\nThis file is no program."_s};
}

Outcome AddEditor(CoreDatabase& core, const ExternalEditor& editor) {
  const QString name = editor.EditorName.trimmed();
  if (name.isEmpty()) return Failure{u"Enter the name of the Photo Editor."_s};
  std::vector<ExternalEditor> editors = core.Editors();
  for (const ExternalEditor& known : editors) {
    if (known.EditorPath == editor.EditorPath)
      return Failure{
          u"The Photo Editor that you are trying to add is already present in the list."_s};
    if (SameName(known.EditorName, name))
      return Failure{
          u"The name you specified already exists in the list of photo editors. Enter a different "
          u"name."_s};
  }
  editors.push_back({name, editor.EditorPath});
  return core.WriteEditors(editors);
}

Outcome RemoveEditor(CoreDatabase& core, const QString& name) {
  std::vector<ExternalEditor> editors = core.Editors();
  std::erase_if(editors,
                [&name](const ExternalEditor& editor) { return editor.EditorName == name; });
  return core.WriteEditors(editors);
}

std::vector<ExternalEditor> InstalledEditors() {
  return InstalledEditors(QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation));
}

std::vector<ExternalEditor> InstalledEditors(const QStringList& applicationFolders) {
  std::vector<ExternalEditor> editors;
  QStringList seen;
  for (const QString& folder : applicationFolders)
    for (const QString& name : QDir(folder).entryList({u"*.desktop"_s}, QDir::Files)) {
      // The user's own entry hides the system's of the same name.
      if (seen.contains(name)) continue;
      seen.append(name);
      const auto entry = ReadDesktopEntry(PathIn(folder, name));
      const QString program = OpensImages(entry) ? ProgramOf(entry.value(u"Exec"_s)) : QString();
      const bool known =
          std::ranges::find(editors, program, &ExternalEditor::EditorPath) != editors.end();
      const QString caption = entry.value(u"Name"_s);
      if (!program.isEmpty() && !known && !caption.isEmpty() &&
          program != QCoreApplication::applicationFilePath())
        editors.push_back({caption, program});
    }
  std::ranges::sort(editors, [](const ExternalEditor& a, const ExternalEditor& b) {
    return a.EditorName.localeAwareCompare(b.EditorName) < 0;
  });
  return editors;
}

Result<QStringList> PhotosForEditor(const QStringList& paths, const char16_t* unusable) {
  QStringList standing = paths;
  standing.removeIf([](const QString& path) { return !FileExists(path); });
  if (standing.isEmpty()) return Failure{QString::fromUtf16(unusable)};
  return standing;
}

Result<int> OpenInEditor(const ExternalEditor& editor, const QStringList& paths,
                         bool supportsMultipleImages) {
  if (editor.EditorPath.isEmpty()) return Failure{QString::fromUtf16(editor_text::kNoneChosen)};
  if (!FileExists(editor.EditorPath))
    return Failure{u"Cannot locate "_s + editor.EditorPath + u'.'};
  const auto photos = PhotosForEditor(paths, editor_text::kUnusable);
  if (!photos) return Failure{photos.Reason()};
  if (supportsMultipleImages) {
    (void)QProcess::startDetached(editor.EditorPath, *photos);
    return 1;
  }
  for (const QString& photo : *photos) {
    (void)QProcess::startDetached(editor.EditorPath, {photo});
    YieldToInterface();
  }
  return static_cast<int>(photos->size());
}

}  // namespace zqm
