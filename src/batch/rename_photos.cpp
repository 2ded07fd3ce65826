// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/rename_photos.h"

#include "batch/existing_names.h"
#include "batch/file_and_row.h"
#include "shell/files.h"
#include "shell/text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr char16_t kInvalidCharacters[] =
    u"File name cannot contain the following characters: \\ / : * ? \" < > |";
constexpr char16_t kReasonDuplicates[] =
    u"Renaming this file would create duplicates in the destination folder";
constexpr char16_t kReasonIdentical[] = u"The new name is identical to the current name";
constexpr char16_t kReasonInvalidName[] = u"New name contain invalid characters";

bool IsValidName(const QString& name) {
  return CheckIfValidFN(name);
}
bool IsGiven(const QString& text) {
  return !text.isEmpty();
}
bool IsNumber(const QString& text) {
  return IsNumeric(text);
}

/// In the order in which they are made; the first that fails is told.
struct Check {
  RenameMode mode;
  QString RenameOptions::*field;
  bool (*holds)(const QString&);
  const char16_t* message;
};
constexpr Check kChecks[] = {
    {RenameMode::Sequential, &RenameOptions::customText, IsGiven,
     u"The 'Custom Text' field is empty."},
    {RenameMode::Sequential, &RenameOptions::startNumber, IsGiven, u"Enter start number."},
    {RenameMode::Sequential, &RenameOptions::startNumber, IsNumber,
     u"Enter a valid number in the start number field."},
    {RenameMode::Sequential, &RenameOptions::customText, IsValidName, kInvalidCharacters},
    {RenameMode::SearchAndReplace, &RenameOptions::searchFor, IsGiven,
     u"The 'Search for' field is empty."},
    {RenameMode::SearchAndReplace, &RenameOptions::replaceBy, IsGiven,
     u"The 'Replace by' field is empty."},
    {RenameMode::SearchAndReplace, &RenameOptions::replaceBy, IsValidName, kInvalidCharacters},
    {RenameMode::SingleFile, &RenameOptions::newName, IsGiven, u"Enter the new name of the image."},
    {RenameMode::SingleFile, &RenameOptions::newName, IsValidName, kInvalidCharacters},
};

QString NewBaseName(const QString& base, const RenameOptions& options, const QString& number) {
  switch (options.mode) {
    case RenameMode::Sequential:
      return options.customText + u'-' + number;
    case RenameMode::SearchAndReplace:
      // An empty text is found nowhere.
      return options.searchFor.isEmpty()
                 ? base
                 : QString(base).replace(options.searchFor, options.replaceBy);
    case RenameMode::SingleFile:
      break;
  }
  return options.newName;
}

/// Why the file system refused the name.
QStringList RefusedName(const QString& path, const QString& newPath, const Outcome& renamed) {
  QStringList reasons;
  if (path.compare(newPath, Qt::CaseInsensitive) == 0)
    reasons.append(QString::fromUtf16(kReasonIdentical));
  const bool denied = renamed.Reason() == QStringView(kReasonPermission);
  reasons.append(QString::fromUtf16(denied ? kReasonPermission : kReasonInvalidName));
  return reasons;
}

QStringList RenameOne(Catalogue& catalogue, const QString& path, const QString& newName,
                      ExistingNames& names, BrowserView* view) {
  const QString newPath = PathIn(GetParentFolderName(path), newName);
  if (!FileExists(path)) return {QString::fromUtf16(kReasonMissing)};
  if (!names.Find(newPath).isEmpty()) return {QString::fromUtf16(kReasonDuplicates)};
  bool refused = false;
  const Outcome renamed = ChangeFileAndRow(
      catalogue, {u"rename"_s, path, newPath},
      [&] {
        Outcome moved = MoveFile(path, newPath);
        refused = !moved;
        return moved;
      },
      [&] { return MoveFile(newPath, path); });
  if (refused) return RefusedName(path, newPath, renamed);
  if (!renamed) return Reasons(renamed);
  names.Add(newPath);
  if (view != nullptr) view->RenamePhoto(path, newPath);
  return {};
}

}  // namespace

QString DefaultCustomText(QDate today) {
  return today.toString(u"yyyy-MM-dd");
}

QStringList RenamePreview(const QStringList& paths, const RenameOptions& options) {
  QStringList names;
  QString number = options.startNumber;
  for (const QString& path : paths) {
    names.append(NewBaseName(GetBaseName(path), options, number) + u'.' + GetExtensionName(path));
    number = PlainText(ToNumber(number).value_or(0) + 1);
  }
  return names;
}

Outcome CheckRename(const RenameOptions& options) {
  for (const Check& check : kChecks)
    if (check.mode == options.mode && !check.holds(options.*check.field))
      return Failure{QString::fromUtf16(check.message)};
  return {};
}

BatchResult RenamePhotos(Catalogue& catalogue, const QStringList& paths,
                         const QStringList& newNames, BrowserView* view,
                         const BatchObserver& observer) {
  ExistingNames names;
  return BatchRun(
      paths, rename_text::kRename,
      [&](qsizetype index, const QString& path) {
        return RenameOne(catalogue, path, newNames.at(index), names, view);
      },
      observer);
}

}  // namespace zqm
