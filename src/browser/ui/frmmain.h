// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMainWindow>
#include <QPointer>

#include "browser/browser.h"
#include "browser/ui/info_panel.h"
#include "browser/ui/main_actions.h"
#include "browser/window_state.h"
#include "session/session.h"
#include "shell/busy.h"

class QLabel;
class QSplitter;
class QTabWidget;

namespace zqm {

class BusyLabel;
class ElidedLabel;
class FolderTree;
class ImageX;
class PhotoPanel;
class SearchPanel;
class frmhelp;
class ThumbnailPanel;

/// The main window: puts the panels together and forwards commands. What happens to photos happens
/// in `Browser`.
class frmmain : public QMainWindow {
  Q_OBJECT
 public:
  /// The session must have an active catalogue.
  explicit frmmain(Session& session, QWidget* parent = nullptr);
  ~frmmain() override;

  /// Browses a folder, or a photo's folder with the photo selected.
  void OpenPath(const QString& path);
  /// Whether the program is to start again after closing.
  bool RestartRequested() const { return restartRequested_; }

 Q_SIGNALS:
  /// After the last thing that the window had to do.
  void Closed();
  /// Another catalogue is to be chosen. Nothing waits to be saved.
  void SelectDatabaseWanted();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Compose();
  QWidget* ComposeCentre();
  void ComposeStatusBar();
  void ConnectBrowser();
  void ConnectViews();
  void Run(Command command);
  void StartFolder();
  void OpenFolder();
  void ShowSelection();
  void ShowPhoto(const ShownPhoto& photo);
  void ShowNoPhoto();
  void ShowZoom();
  void ShowList();
  void SetRows(ThumbnailRows rows);
  void mnucatalog_Click();
  void mnusettings_Click();
  bool NothingWaits();
  void ShowSearch();
  void mnuconnect_Click();
  void mnunewdb_Click();
  void mnuoptimize_Click();
  void MoveOrCopy(Command command);
  void EditPhoto();
  void ConvertThem();
  void CreatePdfOfThem();
  void WatermarkThem();
  void ResizeThem();
  void PrintThem();
  void mnuslide_Click();
  void Rotate(Command command);
  void mnurename_Click();
  void DeleteThem(const QStringList& photos, const char16_t* question);
  void ViewFullScreen(const QString& from);
  void ComparePhotos();
  void mnuchoose_Click();
  void mnuconfigure_Click();
  void RunMetadata(MetadataCommand command, MetadataPage page);
  PhotoInfo InfoToEdit() const;
  void EditExif();
  void EditIptc();
  void AddCategory();
  void DeleteCategory(const QString& name);
  void ShowCategories();
  void ShowGuide();
  void ShowAbout();
  void SaveMainInterfaceState();
  void LoadMainInterfaceState();
  void ArrangeControls();
  QString StateFolder() const;

  Session& session_;
  Busy busy_;
  Browser browser_;
  MainActions* actions_;
  FolderTree* folders_;
  SearchPanel* search_;
  QTabWidget* leftTabs_;
  ThumbnailPanel* thumbnails_;
  ImageX* viewer_;
  PhotoPanel* photoPanel_;
  InfoPanel* info_;
  QSplitter* panes_;
  QSplitter* centre_;
  BusyLabel* busyLabel_;
  QPointer<frmhelp> guide_;
  ElidedLabel* status_;
  QLabel* zoom_;
  QTimer clearInfo_;  // empties the panels when the next photo takes long
  QString wanted_;    // a photo to select as soon as its folder is shown
  QString shownPath_;
  bool standIn_ = false;  // the viewer shows a thumbnail while the photo is read
  bool loading_ = true;
  bool restartRequested_ = false;
  MainInterfaceState state_;
};

}  // namespace zqm
