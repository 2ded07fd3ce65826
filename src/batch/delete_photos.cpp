// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/delete_photos.h"

#include "batch/file_and_row.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
BatchResult DeletePhotos(Catalogue& catalogue, const QStringList& paths, BrowserView* view,
                         const BatchObserver& observer) {
  BatchResult result = BatchRun(
      paths, delete_text::kDelete,
      [&](qsizetype, const QString& path) -> QStringList {
        if (!FileExists(path)) return {QString::fromUtf16(kReasonMissing)};
        const Outcome deleted =
            ChangeFileAndRow(catalogue, {u"delete"_s, path, QString()},
                             [&path] { return AsDenied(DeleteFile(path)); }, {});
        if (view != nullptr && !FileExists(path)) view->RemovePhoto(path);
        return Reasons(deleted);
      },
      observer);
  if (view != nullptr) view->Live();
  return result;
}

BatchResult RemovePhotos(Catalogue& catalogue, const QStringList& paths, BrowserView* view,
                         const BatchObserver& observer) {
  BatchResult result = BatchRun(
      paths, delete_text::kRemove,
      [&](qsizetype, const QString& path) {
        const Outcome removed = CatalogueRemoval(catalogue, path);
        if (removed && view != nullptr)
          FileExists(path) ? view->MarkUncatalogued(path) : view->RemovePhoto(path);
        return Reasons(removed);
      },
      observer);
  if (view != nullptr) view->Live();
  return result;
}

QStringList RejectedPhotos(const Catalogue& catalogue, const QStringList& paths,
                           const std::function<void(int done, int total)>& progress) {
  const std::vector<QString> flags = catalogue.Photos().TextsOf(Column::Flag, paths);
  QStringList rejected;
  for (qsizetype i = 0; i < paths.size(); ++i) {
    if (flags[static_cast<std::size_t>(i)] == u"Rejected") rejected.append(paths.at(i));
    if (progress) progress(static_cast<int>(i) + 1, static_cast<int>(paths.size()));
  }
  return rejected;
}

}  // namespace zqm
