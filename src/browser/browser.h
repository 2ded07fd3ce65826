// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QSize>
#include <QString>
#include <QStringList>

#include "batch/edit_metadata.h"
#include "batch/rotate_photos.h"
#include "browser/folder_watch.h"
#include "browser/keyword_fields.h"
#include "browser/photo_loader.h"
#include "cataloguing/browser_view.h"
#include "imaging/thumbnail_list.h"
#include "metadata/photo_info.h"
#include "search/query_builder.h"
#include "session/session.h"
#include "shell/busy.h"
#include "shell/failure_list.h"
#include "shell/wallpaper_module.h"

namespace zqm {

/// One photo as the viewer and the panels show it.
struct ShownPhoto {
  QString path;
  PhotoInfo info;
  QImage image;     ///< may be smaller than the photo; null without pixels
  QSize fullSize;   ///< pixels
  QString message;  ///< why there is no picture
  bool offline = false;
  bool standIn = false;  ///< the thumbnail, while the photo is being read; `info` is empty
};

/// The centre of the main window without its widgets: the list of thumbnails and where it came
/// from, the selection, and what is shown of it. Windows forward what the user does and show what
/// the signals tell.
class Browser : public QObject, public BrowserView {
  Q_OBJECT
 public:
  enum class Source { None, Folder, Catalogue };

  /// The session must have an active catalogue.
  Browser(Session& session, Busy& busy);
  ~Browser() override;

  ThumbnailList& Thumbnails() { return thumbnails_; }
  KeywordFields& Keywords() { return keywords_; }
  Source From() const { return source_; }
  /// The shown folder; "" in the catalogue's own view.
  const QString& Folder() const { return folder_; }
  /// Paths in the order in which they were selected.
  const QStringList& Selected() const { return selected_; }
  /// "248 Photos / 3 Selected".
  QString Counter() const;
  /// Why the list is empty, in words for the user; "" without a reason of its own.
  const QString& EmptyReason() const { return emptyReason_; }
  bool IsLoadingPhoto() const { return loader_.IsLoading(); }

  /// The user chose a folder. With `remember` it is also where "LastOpened" starts next time.
  void FolderTreeview1_FolderClick(const QString& path, bool remember = true);
  /// Shows a folder's photos, marked by what the catalogue knows. An empty path does nothing.
  void LoadFolder(const QString& path);
  /// Shows photos of the catalogue: from their files, or from their rows where those are away. What
  /// can't be shown at all ends in the failure list.
  void LoadResults(const QStringList& paths);

  /// The Search button: empties the list, builds the statement and shows its hits.
  void Search(const SearchCriteria& criteria);
  /// Every photo of the catalogue.
  void ShowCatalogue();
  /// The shown folder, or the last search, again.
  void Refresh();

  /// The user's selection is another one now.
  void OnImageSelect(const QStringList& selected);
  /// What was done to the selected files or rows is to show: the same selection, read again. User
  /// values of several photos stay as they stand in the panel.
  void RefreshLive();
  /// Properties, metadata and picture of the one selected file, read again; user values untouched.
  void UpdateLive();
  /// The settings for reading files have changed.
  void RAWandCMSSettings();

  void mnusort_Click();
  void mnusortflag_Click();
  /// Catalogues the selected photos.
  void mnucatalogindividual_Click();
  /// Reads metadata and thumbnails of the selected photos again.
  void RebuildSelected();
  /// Turns or mirrors the selected photos in their files.
  void mnurotate_Click(const Turn& turn);
  /// Marks of all thumbnails as the catalogue has them now.
  void RefreshMarks();

  /// How large the viewer is, in device pixels: photos are decoded to fill it.
  void SetViewBox(const QSize& box) { viewBox_ = box; }
  /// Every pixel of the shown photo is wanted.
  void LoadFullSize();

  /// Saves what waits. False while work is under way, or when the user's edits can't be saved and
  /// he doesn't want to lose them.
  bool MayClose();
  /// From now on the catalogue isn't asked for anything: it is about to be closed, and the window
  /// after it.
  void LetGoOfCatalogue();

  // The commands over files. Each gives the photos that its window works on; none when there is
  // nothing to do, which the user has been told.

  /// The File menu's photo section (`PhotoCommands`).
  QStringList mnufile2_Click(int index);
  QStringList mnurename_Click();
  /// Those of the selected photos that stand.
  QStringList mnuslide_Click();
  QStringList mnudelete_Click();
  QStringList mnuremoverejected_Click();
  /// Those of the selected photos that stand, for an external editor.
  QStringList mnuchoose_Click();
  /// For an editor of metadata: the selected photos, whether they stand or not.
  QStringList PhotosForMetadata();
  /// Asks for a folder and writes texts of the selected photos' metadata into it.
  void ExportMetadata(MetadataKind kind);
  /// Asks, then takes the block out of the selected photos.
  void RemoveMetadata(MetadataBlock block);
  /// Makes the selected photo the desktop's wallpaper.
  void mnuwallpaper_Click(WallpaperStyle style);

  void MarkCatalogued(const QString& path) override;
  void MarkUncatalogued(const QString& path) override;
  void ShowChanged(const QString& path) override;
  void ShowWritten(const QString& path, bool catalogued) override;
  void Say(const QString& line) override;
  /// Goes from the list at the next `Live`, with all others of the run.
  void RemovePhoto(const QString& path) override;
  void RenamePhoto(const QString& path, const QString& newPath) override;
  void Live() override;

 Q_SIGNALS:
  void ListLoaded();
  void CounterChanged(const QString& text);
  /// One of a search's dates has taken the other's text.
  void SearchDatesChanged(const QString& from, const QString& to);
  /// The selection stays what it was (`Selected`): what was typed could not be saved.
  void SelectionKept();
  /// None or several photos are selected.
  void PhotoCleared();
  /// First with what is at hand, then with what was read.
  void PhotoShown(const zqm::ShownPhoto& photo);
  /// `name` may be cut to fit, `rest` not.
  void StatusChanged(const QString& name, const QString& rest);
  /// Whether user values can be edited, or why not.
  void KeywordsEnabled(bool enabled, const QString& why);
  void FailuresFound(const zqm::FailureList& failures);
  /// For the status line.
  void Said(const QString& line);

 private:
  void ClearForLoad();
  void SetSelection(const QStringList& selected);
  void ProcessSelection();
  void ProcessSingleImage();
  void ProcessMultipleImages();
  void ShowOffline(const QString& path);
  void ShowAtHand(const QString& path);
  void ShowLoaded(const QString& path, const Result<ViewPhoto>& photo);
  void DisableKeywords(const QString& why);
  void EnableKeywords();
  bool Refused();
  bool MayWriteRows();
  void ShowHits(const QString& statement, const QString& busyText);
  QStringList Prepare(const char16_t* busyText,
                      const std::function<Result<QStringList>(BusyRun& run)>& photos);
  void RemoveFromList(const QStringList& paths);
  void RunOver(const BatchTexts& texts,
               const std::function<BatchResult(const BatchObserver& observer)>& work);
  void OnFolderChanged();
  void OnPhotoChanged(const QString& path);
  void Sort(const QString& busyText, const std::function<std::vector<int>()>& order);
  QByteArray StoredThumbnail(const QString& path);

  Session& session_;
  Catalogue& catalogue_;
  Busy& busy_;
  ThumbnailList thumbnails_;
  QStringList selected_;
  KeywordFields keywords_;
  PhotoLoader loader_;
  FolderWatch watch_;
  Source source_ = Source::None;
  QString folder_;
  QString emptyReason_;
  QString statement_;  // of the search that is shown; "" without one
  QSize viewBox_{1024, 768};
  bool justLoaded_ = false;
  bool live_ = false;
  bool released_ = false;  // the catalogue is no longer to be used
  bool removing_ = false;  // what the view tells meanwhile is not the user's selection
  int holds_ = 0;
  QSet<QString> gone_;                // of the run under way
  QHash<QString, QString> formerly_;  // new path to the one before the run

  friend class FolderHold;
};

/// While it lives the shown folder isn't followed; then it is looked at once. For windows that
/// change files.
class FolderHold {
 public:
  explicit FolderHold(Browser& browser) : browser_(browser) { ++browser_.holds_; }
  ~FolderHold() {
    if (--browser_.holds_ == 0) browser_.OnFolderChanged();
  }
  FolderHold(const FolderHold&) = delete;
  FolderHold& operator=(const FolderHold&) = delete;

 private:
  Browser& browser_;
};

namespace browser_text {
inline constexpr char16_t kRetrieving[] = u"Retrieving Information. Please wait...";
}  // namespace browser_text

}  // namespace zqm
