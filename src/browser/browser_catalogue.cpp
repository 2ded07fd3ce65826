// SPDX-License-Identifier: GPL-3.0-or-later
// What the browser does with the catalogue: searching it, adding and rebuilding rows.
#include <QSet>

#include "browser/browser.h"
#include "browser/thumbnail_marks.h"
#include "cataloguing/folder_import.h"
#include "shell/files.h"
#include "shell/messages.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr char16_t kEveryPhoto[] = u"Select * from qryphoto";
constexpr char16_t kNothingAsked[] = u"Say what to look for, then press Search.";
constexpr char16_t kNothingFound[] = u"No photo of the catalogue matches this search.";
constexpr char16_t kResultFailures[] =
    u"The following files are missing or offline but could not be loaded from the database:";

}  // namespace

// Searching.

void Browser::Search(const SearchCriteria& criteria) {
  if (Refused() || !keywords_.CheckUpdate()) return;
  source_ = Source::Catalogue;
  folder_.clear();
  statement_.clear();
  ClearForLoad();
  emptyReason_ = QString::fromUtf16(kNothingAsked);
  Q_EMIT ListLoaded();
  Q_EMIT CounterChanged(Counter());
  const auto statement = zqm::BuildSQL(criteria);
  if (!statement) {
    MsgBox(statement.Reason(), MessageKind::Warning);
    return;
  }
  Q_EMIT SearchDatesChanged(statement->dateFrom, statement->dateTo);
  if (!statement->condition.isEmpty())
    ShowHits(statement->Text(), QString::fromUtf16(search_text::kSearching));
}

void Browser::ShowCatalogue() {
  if (Refused() || !keywords_.CheckUpdate()) return;
  ShowHits(QString::fromUtf16(kEveryPhoto), u"Loading Photos..."_s);
}

void Browser::ShowHits(const QString& statement, const QString& busyText) {
  const QStringList paths = [&] {
    const BusyRun run(busy_, busyText);
    YieldToInterface();
    return catalogue_.Query(statement, Column::Photo);
  }();
  statement_ = statement;
  const bool search = statement != QStringView(kEveryPhoto);
  if (paths.isEmpty() && search) {
    emptyReason_ = QString::fromUtf16(kNothingFound);
    Q_EMIT ListLoaded();
    MsgBox(QString::fromUtf16(search_text::kNoResults), MessageKind::Information);
    return;
  }
  LoadResults(paths);
  if (search) emptyReason_ = QString::fromUtf16(kNothingFound);
}

void Browser::Refresh() {
  if (source_ == Source::Folder) return FolderTreeview1_FolderClick(folder_, false);
  if (statement_.isEmpty() || Refused() || !keywords_.CheckUpdate()) return;
  ClearForLoad();
  ShowHits(statement_, QString::fromUtf16(search_text::kSearching));
}

void Browser::LoadResults(const QStringList& paths) {
  if (Refused() || !keywords_.CheckUpdate()) return;
  source_ = Source::Catalogue;
  folder_.clear();
  ClearForLoad();
  FailureList failures{QString::fromUtf16(kResultFailures), {}};
  {
    BusyRun run(busy_, u"Loading Photos..."_s);
    QStringList offline;
    int done = 0;
    for (const QString& path : paths) {
      run.Progress(done++, static_cast<int>(paths.size()));
      if (!FileExists(path)) offline.append(path);
    }
    const std::vector<bool> stored = catalogue_.Photos().HaveThumbnails(offline);
    for (qsizetype i = 0; i < offline.size(); ++i)
      if (!stored[static_cast<std::size_t>(i)])
        failures.Add(offline.at(i), QString::fromUtf16(kReasonThumbnail));
    QSet<QString> lost;
    for (const FailureRow& row : failures.rows)
      lost.insert(row.File);
    const auto isLost = [&lost](const QString& path) { return lost.contains(path); };
    QStringList shown = paths;
    shown.removeIf(isLost);
    offline.removeIf(isLost);
    thumbnails_.AppendImages(shown);
    for (const QString& path : offline)
      thumbnails_.SetOffline(thumbnails_.IndexOf(path), true);
  }
  {
    const BusyRun run(busy_, QString::fromUtf16(browser_text::kRetrieving));
    RefreshMarks();
  }
  Q_EMIT ListLoaded();
  Q_EMIT CounterChanged(Counter());
  if (!failures.Empty()) Q_EMIT FailuresFound(failures);
}

// Rows of the selected photos.

/// Whether rows of the selected photos may be written, or says why not: before every file is read
/// for nothing.
bool Browser::MayWriteRows() {
  if (Refused() || selected_.isEmpty() || !keywords_.CheckUpdate()) return false;
  if (catalogue_.ReadOnly())
    MsgBox(QString::fromUtf16(kCatalogueReadOnly), MessageKind::Information);
  return !catalogue_.ReadOnly();
}

void Browser::mnucatalogindividual_Click() {
  if (!MayWriteRows()) return;
  ImportResult result;
  {
    BusyRun run(busy_, u"Cataloging Files. Please wait..."_s);
    YieldToInterface();
    result = CatalogueFiles(selected_, {}, session_.ReadSettings(), catalogue_, this,
                            [&run](const ImportProgress& at) { run.Progress(at.done, at.total); });
  }
  RefreshLive();
  if (result.failures.Empty()) {
    MsgBox(QString::fromUtf16(import_text::kFilesDone), MessageKind::Information);
    return;
  }
  result.failures.label = QString::fromUtf16(import_text::kFilesFailures);
  Q_EMIT FailuresFound(result.failures);
}

void Browser::RebuildSelected() {
  if (!MayWriteRows()) return;
  const QStringList paths = selected_;
  ImportResult result;
  {
    BusyRun run(busy_, QString::fromUtf16(import_text::kRebuilding));
    YieldToInterface();
    result = RebuildPhotos(paths, session_.ReadSettings(), catalogue_,
                           [&run](const ImportProgress& at) { run.Progress(at.done, at.total); });
  }
  for (const QString& path : paths)
    if (const int at = thumbnails_.IndexOf(path); at >= 0) thumbnails_.UpdateImage(at);
  RefreshLive();
  if (result.failures.Empty()) {
    MsgBox(QString::fromUtf16(import_text::kRebuildDone), MessageKind::Information);
    return;
  }
  result.failures.label = QString::fromUtf16(import_text::kRebuildFailures);
  Q_EMIT FailuresFound(result.failures);
}

void Browser::LetGoOfCatalogue() {
  released_ = true;
  thumbnails_.SetStoredThumbnails([](const QString&) { return QByteArray(); });
  watch_.WatchFolder(QString());
  watch_.WatchPhoto(QString());
  loader_.Drop();
}

}  // namespace zqm
