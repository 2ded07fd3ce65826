// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/folder_import.h"

#include <QDir>
#include <algorithm>

#include "cataloguing/catalogue_photo.h"
#include "cataloguing/decode_ahead.h"
#include "imaging/codec.h"
#include "shell/dates.h"
#include "shell/files.h"

namespace zqm {
namespace {

void ScanInto(const QString& folder, bool recursive, QStringList& paths, FailureList& failures) {
  const QDir dir(folder);
  if (!dir.exists()) return failures.Add(folder, QString::fromUtf16(kReasonMissing));
  if (!dir.isReadable()) return failures.Add(folder, QString::fromUtf16(kReasonPermission));
  const QDir::SortFlags byName = QDir::Name | QDir::IgnoreCase;
  // Links that point nowhere are listed too, so that they end as failures and not in silence.
  for (const QString& name :
       dir.entryList(QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, byName)) {
    const QString path = dir.filePath(name);
    if (HasKnownExtension(path)) paths.append(path);
  }
  if (!recursive) return;
  for (const QString& name :
       dir.entryList(QDir::Dirs | QDir::Hidden | QDir::NoSymLinks | QDir::NoDotAndDotDot, byName))
    ScanInto(dir.filePath(name), recursive, paths, failures);
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
      result.failures.Add(path, QString::fromUtf16(kReasonMissing));
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
