// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/folder_import.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <filesystem>

#include "cataloguing/catalogue_photo.h"
#include "cataloguing/decode_ahead.h"
#include "cataloguing/virtual_exif.h"
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
    const QString path = PathIn(folder, decoded);
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

/// Why a file is passed over without being read; "" for one that is wanted.
using Refusal = std::function<QString(const QString& path)>;
using PhotoStep = std::function<Outcome(const QString& path, const PhotoFile& photo)>;

/// Reads one photo after the other and hands each to `step`; what fails ends in `failures`, and the
/// run goes on.
void ForEachPhoto(const QStringList& paths, ReadRequest request, const Refusal& refusal,
                  const PhotoStep& step, FailureList& failures,
                  const std::function<void(const ImportProgress&)>& progress) {
  ImportProgress at{0, static_cast<int>(paths.size()), QString()};
  const auto tell = [&] {
    if (progress) progress(at);
  };
  request.thumbnail = true;
  DecodeAhead ahead(paths, request,
                    [&refusal](const QString& path) { return refusal(path).isEmpty(); });
  const auto reasonAgainst = [&](qsizetype i) {
    const QString& path = at.file;
    if (!FileExists(path)) return WhyUnreachable(path);
    if (QString refused = refusal(path); !refused.isEmpty()) return refused;
    const Result<PhotoFile> photo = ahead.Take(i, tell);
    if (!photo) return photo.Reason();
    return step(path, *photo).Reason();
  };
  for (qsizetype i = 0; i < paths.size(); ++i, ++at.done) {
    at.file = paths.at(i);
    tell();
    if (const QString reason = reasonAgainst(i); !reason.isEmpty()) failures.Add(at.file, reason);
  }
  at.file.clear();
  tell();
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
  ForEachPhoto(
      paths, std::move(request),
      [&photos](const QString& path) {
        return photos.IsCatalogued(path) ? QString::fromUtf16(import_text::kExists) : QString();
      },
      [&](const QString& path, const PhotoFile& photo) {
        Outcome added = CataloguePhoto(photo, path, photos,
                                       [&texts](PhotoRecordset& row) { WriteTexts(texts, row); });
        if (!added) return added;
        ++result.added;
        if (view != nullptr) view->MarkCatalogued(path);
        return added;
      },
      result.failures, progress);
  return result;
}

ImportResult RebuildPhotos(const QStringList& paths, ReadRequest request, Catalogue& catalogue,
                           const std::function<void(const ImportProgress&)>& progress) {
  PhotoRecordset& photos = catalogue.Photos();
  ImportResult result;
  ForEachPhoto(
      paths, std::move(request),
      [&photos](const QString& path) {
        return photos.IsCatalogued(path) ? QString() : QString::fromUtf16(kReasonNotCatalogued);
      },
      [&](const QString& path, const PhotoFile& photo) {
        if (!photos.LocateRow(path)) return photos.MoveFirst();
        UpdatefromForm3(ReadMetadataRecord(photo, path), photo.thumbnail, photos);
        Outcome written = photos.CommitRow();
        if (written) ++result.added;
        return written;
      },
      result.failures, progress);
  return result;
}

}  // namespace zqm
