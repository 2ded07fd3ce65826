// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/folder_import.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <filesystem>

#include "cataloguing/catalogue_photo.h"
#include "cataloguing/decode_ahead.h"
#include "imaging/codec.h"
#include "shell/dates.h"
#include "shell/files.h"

namespace zqm {
namespace {

struct FolderEntries {
  QStringList files, folders;
};

/// The photos of a folder, and the folders to visit. Read as bytes: the toolkit's own listing
/// leaves out names that it can't decode.
Outcome ListEntries(const QString& folder, bool recursive, FolderEntries& entries,
                    FailureList& failures) {
  std::error_code problem;
  for (std::filesystem::directory_iterator at(QFile::encodeName(folder).toStdString(), problem),
       end;
       !problem && at != end; at.increment(problem)) {
    const std::string bytes = at->path().filename().string();
    const QByteArray name = QByteArray::fromStdString(bytes);
    const QString decoded = QFile::decodeName(name);
    const QString path = QDir(folder).filePath(decoded);
    std::error_code ignored;
    const bool isFolder = at->is_directory(ignored);
    const bool wanted = isFolder ? recursive && !at->is_symlink(ignored) : HasKnownExtension(path);
    if (!wanted) continue;
    if (QFile::encodeName(decoded) != name)
      failures.Add(path, QString::fromUtf16(import_text::kUnreadableName));
    else
      (isFolder ? entries.folders : entries.files).append(path);
  }
  if (problem) return Failure{ReasonForErrno(problem.value())};
  return {};
}

void ScanInto(const QString& folder, bool recursive, QStringList& paths, FailureList& failures) {
  if (!FolderExists(folder)) return failures.Add(folder, QString::fromUtf16(kReasonMissing));
  FolderEntries entries;
  if (const Outcome listed = ListEntries(folder, recursive, entries, failures); !listed)
    failures.Add(folder, listed.Reason());
  entries.files.sort(Qt::CaseInsensitive);
  paths += entries.files;
  entries.folders.sort(Qt::CaseInsensitive);
  for (const QString& below : entries.folders)
    ScanInto(below, recursive, paths, failures);
}

/// A file in a folder that may not be entered looks missing; opening it tells the two apart.
QString WhyUnreachable(const QString& path) {
  const QString refused = QString::fromUtf16(kReasonPermission);
  return ReadWholeFile(path, 0).Reason() == refused ? refused : QString::fromUtf16(kReasonMissing);
}

void WriteTexts(const ImportTexts& texts, PhotoRecordset& photos) {
  if (!texts.notes.isEmpty()) photos.SetField(Column::Notes, texts.notes);
  if (texts.date.isValid()) photos.SetField(Column::Date, texts.date.toString(Qt::ISODate));
  if (!texts.author.isEmpty()) photos.SetField(Column::Author, texts.author);
}

}  // namespace

QStringList ScanFolder(const QString& folder, bool recursive, FailureList& failures) {
  QStringList paths;
  ScanInto(AbsolutePath(folder), recursive, paths, failures);
  return paths;
}

QDate ParseImportDate(const QString& text) {
  const auto parsed = ParseDate(text, DateOrder::DayFirst);
  return parsed ? parsed->date() : QDate();
}

ImportResult CatalogueFiles(const QStringList& paths, const ImportTexts& texts, ReadRequest request,
                            Catalogue& catalogue, BrowserView* view,
                            const std::function<void(const ImportProgress&)>& progress) {
  PhotoRecordset& photos = catalogue.Photos();
  ImportResult result;
  ImportProgress at{0, static_cast<int>(paths.size()), QString()};
  const auto tell = [&] {
    if (progress) progress(at);
  };
  request.thumbnail = true;
  DecodeAhead ahead(paths, request,
                    [&photos](const QString& path) { return !photos.IsCatalogued(path); });
  for (qsizetype i = 0; i < paths.size(); ++i, ++at.done) {
    const QString& path = at.file = paths.at(i);
    tell();
    if (!FileExists(path)) {
      result.failures.Add(path, WhyUnreachable(path));
      continue;
    }
    if (photos.IsCatalogued(path)) {
      result.failures.Add(path, QString::fromUtf16(import_text::kExists));
      continue;
    }
    const Result<PhotoFile> photo = ahead.Take(i, tell);
    if (!photo) {
      result.failures.Add(path, photo.Reason());
      continue;
    }
    const Outcome added = CataloguePhoto(*photo, path, photos,
                                         [&texts](PhotoRecordset& row) { WriteTexts(texts, row); });
    if (!added) {
      result.failures.Add(path, added.Reason());
      continue;
    }
    ++result.added;
    if (view != nullptr) view->MarkCatalogued(path);
  }
  at.file.clear();
  tell();
  return result;
}

}  // namespace zqm
