// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ui/frmmain.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDir>
#include <QLabel>
#include <QMenuBar>
#include <QSplitter>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "batch/delete_photos.h"
#include "browser/ui/frmzolmira.h"
#include "browser/ui/photo_panel.h"
#include "browser/ui/thumbnail_panel.h"
#include "cataloguing/ui/frmcatalog.h"
#include "imaging/ui/image_multi_x.h"
#include "imaging/ui/image_x.h"
#include "search/ui/search_panel.h"
#include "session/ui/frmsettings.h"
#include "shell/error.h"
#include "shell/file_info.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "shell/ui/busy_label.h"
#include "shell/ui/elided_label.h"
#include "shell/ui/folder_tree.h"
#include "shell/ui/frmerror.h"
#include "shell/ui/frmhelp.h"
#include "shell/ui/look.h"
#include "shell/window_settings.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kUsualSize{1280, 800};
constexpr QSize kSmallestSize{800, 560};
constexpr int kLeftWidth = 240, kRightWidth = 320;
constexpr int kNarrowLeft = 200, kNarrowRight = 240, kNarrowWindow = 1100;
constexpr int kThumbnailsHeight = 250;
constexpr int kInfoPatienceMilliseconds = 250;
constexpr double kZoomStep = 1.25;

constexpr char16_t kNoFolder[] = u"Choose a folder at the left to see its photos.";
constexpr char16_t kEmptyFolder[] = u"There are no photos in this folder.";
constexpr char16_t kEmptyCatalogue[] =
    u"The catalogue is empty. Add the photos of your folders to it.";

QString PicturesFolder() {
  const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
  return FolderExists(pictures) ? pictures : QDir::homePath();
}

/// "Lisbon/e.jpg   4000 x 3000   JPEG Bitmap (JPG)   3.1 MB".
QString Facts(const ShownPhoto& photo) {
  const PhotoInfo& info = photo.info;
  QStringList facts{GetFileName(GetParentFolderName(photo.path)) + u'/' + GetFileName(photo.path)};
  if (!photo.fullSize.isEmpty())
    facts.append(u"%1 × %2"_s.arg(photo.fullSize.width()).arg(photo.fullSize.height()));
  for (const Property property : {Property::FileType, Property::Size})
    if (!info.Text(property).isEmpty()) facts.append(info.Text(property));
  return facts.join(u"     ");
}

}  // namespace

frmmain::frmmain(Session& session, QWidget* parent)
    : QMainWindow(parent),
      session_(session),
      browser_(session, busy_),
      actions_(new MainActions(this)),
      folders_(new FolderTree(FolderTree::Ticks::No)),
      search_(new SearchPanel(session.ActiveCatalogue(), busy_)),
      leftTabs_(new QTabWidget),
      thumbnails_(new ThumbnailPanel(browser_.Thumbnails(), *actions_)),
      viewer_(new ImageX),
      photoPanel_(new PhotoPanel(browser_.Keywords())),
      info_(new InfoPanel(photoPanel_)),
      status_(new ElidedLabel),
      zoom_(new QLabel) {
  setWindowTitle(u"Zolmira QM"_s);
  setObjectName(u"frmmain"_s);
  Compose();
  ConnectBrowser();
  ConnectViews();
  for (const char* key : {"MOUSEWHEELZOOM", "SCROLL"})
    viewer_->SetMouseInteract(QString::fromLatin1(key), true);
  browser_.RAWandCMSSettings();
  ShowCategories();
  SetRows(GetThumbnailViewSetting(StateFolder()));
  LoadMainInterfaceState();
  ArrangeControls();
  ShowList();
  StartFolder();
}

frmmain::~frmmain() = default;

QString frmmain::StateFolder() const {
  return session_.Folders().StateFolder();
}

// Putting together.

void frmmain::Compose() {
  actions_->FillMenuBar(menuBar());
  folders_->setObjectName(u"FolderTreeview1"_s);
  look::MakeBare(folders_);
  folders_->setAccessibleName(tr("Folders"));
  leftTabs_->setObjectName(u"lefttabs"_s);
  leftTabs_->setDocumentMode(true);
  leftTabs_->addTab(folders_, tr("Folders"));
  leftTabs_->addTab(search_, tr("Search"));

  panes_ = new QSplitter(Qt::Horizontal);
  panes_->setObjectName(u"panes"_s);
  panes_->setHandleWidth(1);
  panes_->setChildrenCollapsible(false);
  panes_->addWidget(leftTabs_);
  panes_->addWidget(ComposeCentre());
  panes_->addWidget(info_);
  panes_->setStretchFactor(1, 1);
  leftTabs_->setMinimumWidth(kNarrowLeft);
  info_->setMinimumWidth(kNarrowRight);
  setCentralWidget(panes_);
  ComposeStatusBar();
  busyLabel_ = new BusyLabel(busy_, panes_);
  setMinimumSize(kSmallestSize);
}

QWidget* frmmain::ComposeCentre() {
  viewer_->setObjectName(u"ImageX1"_s);
  viewer_->setAccessibleName(tr("Photo"));
  centre_ = new QSplitter(Qt::Vertical);
  centre_->setObjectName(u"centre"_s);
  centre_->setHandleWidth(1);
  centre_->setChildrenCollapsible(false);
  centre_->addWidget(thumbnails_);
  centre_->addWidget(viewer_);
  centre_->setStretchFactor(1, 1);
  return centre_;
}

void frmmain::ComposeStatusBar() {
  status_->setObjectName(u"lblstatus"_s);
  zoom_->setObjectName(u"lblzoom"_s);
  statusBar()->setSizeGripEnabled(false);
  statusBar()->setContentsMargins(look::kSpace8, 0, look::kSpace8, 0);
  statusBar()->addWidget(status_, 1);
  statusBar()->addPermanentWidget(zoom_);
}

void frmmain::ConnectBrowser() {
  connect(&browser_, &Browser::ListLoaded, this, &frmmain::ShowList);
  connect(&browser_, &Browser::CounterChanged, thumbnails_, &ThumbnailPanel::SetCounter);
  connect(&browser_, &Browser::SelectionKept, this, &frmmain::ShowSelection);
  connect(&browser_, &Browser::PhotoCleared, this, &frmmain::ShowNoPhoto);
  connect(&browser_, &Browser::PhotoShown, this, &frmmain::ShowPhoto);
  connect(&browser_, &Browser::StatusChanged, status_, &ElidedLabel::SetParts);
  connect(&browser_, &Browser::Said, this,
          [this](const QString& line) { status_->SetParts(line, QString()); });
  connect(&browser_, &Browser::KeywordsEnabled, this, [this](bool enabled, const QString& why) {
    photoPanel_->SetEditable(enabled, why);
    actions_->SetEditable(enabled);
  });
  connect(&browser_, &Browser::FailuresFound, this,
          [this](const FailureList& failures) { ShowFailures(failures, this); });
  clearInfo_.setSingleShot(true);
  clearInfo_.setInterval(kInfoPatienceMilliseconds);
  connect(&clearInfo_, &QTimer::timeout, this, [this] { info_->ShowInfo(EmptyPhotoInfo()); });
}

void frmmain::ConnectViews() {
  connect(actions_, &MainActions::Triggered, this, [this](Command command) {
    Guarded("frmmain", "Run", [this, command] { Run(command); });
  });
  connect(folders_, &FolderTree::FolderClick, this, [this](const QString& path) {
    Guarded("frmmain", "FolderTreeview1_FolderClick", [this, &path] {
      browser_.FolderTreeview1_FolderClick(path, !loading_);
      loading_ = false;
    });
  });
  ImageMultiX& list = thumbnails_->View();
  const auto select = [this, &list] {
    Guarded("frmmain", "ImageMultiX1_OnImageSelect", [this, &list] {
      browser_.OnImageSelect(list.SelectedPaths());
      actions_->SetSelected(static_cast<int>(browser_.Selected().size()));
      info_->SetSelected(static_cast<int>(browser_.Selected().size()));
    });
  };
  connect(&list, &ImageMultiX::OnImageSelect, this, select);
  connect(&list, &ImageMultiX::OnImageDeselect, this, select);
  connect(&list, &ImageMultiX::Activated, this, [this](const QString& path) {
    Guarded("frmmain", "ImageMultiX1_Activated", [this, &path] { ViewFullScreen(path); });
  });
  connect(&list, &ImageMultiX::MenuWanted, this, [this](const QPoint& at) {
    frmzolmira menu(*actions_, this);
    menu.exec(at);
  });
  connect(thumbnails_, &ThumbnailPanel::ImportWanted, this, [this] {
    Guarded("frmmain", "mnucatalog_Click", [this] { Run(Command::CatalogFolders); });
  });
  connect(search_, &SearchPanel::SearchWanted, this, [this] {
    Guarded("frmmain", "BuildSQL", [this] { browser_.Search(search_->Criteria()); });
  });
  connect(&browser_, &Browser::SearchDatesChanged, search_, &SearchPanel::SetDates);
  connect(photoPanel_, &PhotoPanel::AddCategoryWanted, this,
          [this] { Guarded("frmmain", "cmdinfo_Click", [this] { AddCategory(); }); });
  connect(photoPanel_, &PhotoPanel::DeleteCategoryWanted, this, [this](const QString& name) {
    Guarded("frmmain", "cmdinfo_Click", [this, &name] { DeleteCategory(name); });
  });
  connect(photoPanel_, &PhotoPanel::RebuildWanted, this,
          [this] { Guarded("frmmain", "cmdinfo_Click", [this] { Run(Command::Rebuild); }); });
  connect(info_, &InfoPanel::CommandWanted, this,
          [this](MetadataCommand command, MetadataPage page) {
            const char* handler = page == MetadataPage::Iptc   ? "cmdiptc_Click"
                                  : page == MetadataPage::Exif ? "cmdexif_Click"
                                                               : "cmdcreategps_Click";
            Guarded("frmmain", handler, [this, command, page] { RunMetadata(command, page); });
          });
  connect(viewer_, &ImageX::OnViewChange, this, &frmmain::ShowZoom);
  connect(viewer_, &ImageX::FullSizeWanted, &browser_, &Browser::LoadFullSize);
}

// What the browser tells.

void frmmain::ShowList() {
  const bool anyRow = session_.ActiveCatalogue().Photos().Count() > 0;
  QString text = QString::fromUtf16(kNoFolder);
  if (browser_.From() == Browser::Source::Folder) text = QString::fromUtf16(kEmptyFolder);
  if (browser_.From() == Browser::Source::Catalogue) text = QString::fromUtf16(kEmptyCatalogue);
  if (!browser_.EmptyReason().isEmpty()) text = browser_.EmptyReason();
  const bool empty = browser_.Thumbnails().ImageCount() == 0;
  thumbnails_->SetEmptyState(text, empty && !anyRow);
  thumbnails_->SetCounter(browser_.Counter());
  actions_->SetSelected(0);
  info_->SetSelected(0);
  if (wanted_.isEmpty()) return;
  thumbnails_->View().SelectPaths({wanted_});
  wanted_.clear();
}

void frmmain::ShowSelection() {
  thumbnails_->View().BlockSelectionSignals(true);
  thumbnails_->View().SelectPaths(browser_.Selected());
  thumbnails_->View().BlockSelectionSignals(false);
  actions_->SetSelected(static_cast<int>(browser_.Selected().size()));
  info_->SetSelected(static_cast<int>(browser_.Selected().size()));
}

void frmmain::ShowPhoto(const ShownPhoto& photo) {
  standIn_ = photo.standIn;
  if (photo.standIn) {
    clearInfo_.start();
  } else {
    clearInfo_.stop();
    info_->ShowInfo(photo.info);
    if (!photo.offline) status_->SetParts(Facts(photo), QString());
  }
  if (photo.image.isNull())
    viewer_->Clear();
  else
    viewer_->ShowImage(
        photo.image, photo.fullSize,
        photo.path == shownPath_ ? ImageX::KeepView::SamePhoto : ImageX::KeepView::No);
  shownPath_ = photo.path;
  viewer_->SetMessage(photo.message);
  ShowZoom();
}

void frmmain::ShowNoPhoto() {
  clearInfo_.stop();
  shownPath_.clear();
  info_->ShowInfo(EmptyPhotoInfo());
  viewer_->SetMessage(QString());
  viewer_->Clear();
  ShowZoom();
}

void frmmain::ShowZoom() {
  const qreal scale = devicePixelRatioF();
  browser_.SetViewBox((QSizeF(viewer_->viewport()->size()) * scale).toSize());
  const bool shows = viewer_->HasImage();
  zoom_->setText(shows && !standIn_ ? tr("Zoom %1 %").arg(qRound(viewer_->Zoom())) : QString());
  for (const Command command :
       {Command::ZoomIn, Command::ZoomOut, Command::ZoomFit, Command::ZoomFull})
    actions_->Get(command)->setEnabled(shows);
}

// Commands.

void frmmain::Run(Command command) {
  ImageMultiX& list = thumbnails_->View();
  switch (command) {
    case Command::OpenFolder:
      return OpenFolder();
    case Command::EditPhoto:
      return EditPhoto();
    case Command::ExternalEditor:
      return mnuchoose_Click();
    case Command::MoveTo:
    case Command::CopyTo:
      return MoveOrCopy(command);
    case Command::Convert:
      return ConvertThem();
    case Command::Pdf:
      return CreatePdfOfThem();
    case Command::Watermark:
      return WatermarkThem();
    case Command::Resize:
      return ResizeThem();
    case Command::Print:
      return PrintThem();
    case Command::RotateClockwise:
    case Command::RotateCounterClockwise:
    case Command::Rotate180:
    case Command::FlipVertical:
    case Command::FlipHorizontal:
      return Rotate(command);
    case Command::Rename:
      return mnurename_Click();
    case Command::Delete:
      return DeleteThem(browser_.mnudelete_Click(), delete_text::kAskSelected);
    case Command::DeleteRejected:
      return DeleteThem(browser_.mnuremoverejected_Click(), delete_text::kAskRejected);
    case Command::Quit:
      close();
      return;
    case Command::SelectAll:
      return list.selectAll();
    case Command::SelectNone:
      return list.clearSelection();
    case Command::CopyPaths:
      QApplication::clipboard()->setText(browser_.Selected().join(u'\n'));
      return;
    case Command::SingleRow:
    case Command::MultipleRows: {
      const ThumbnailRows rows =
          command == Command::SingleRow ? ThumbnailRows::Single : ThumbnailRows::Multiple;
      SetRows(rows);
      if (const Outcome saved = SaveThumbnailViewSetting(StateFolder(), rows); !saved)
        MsgBox(saved.Reason(), MessageKind::Warning);
      return;
    }
    case Command::SortByName:
      return browser_.mnusort_Click();
    case Command::SortByFlag:
      return browser_.mnusortflag_Click();
    case Command::ZoomIn:
      return viewer_->SetZoom(viewer_->Zoom() * kZoomStep);
    case Command::ZoomOut:
      return viewer_->SetZoom(viewer_->Zoom() / kZoomStep);
    case Command::ZoomFit:
      return viewer_->Fit();
    case Command::ZoomFull:
      return viewer_->SetZoom(100);
    case Command::FullScreen:
      return ViewFullScreen(QString());
    case Command::Compare:
      return ComparePhotos();
    case Command::InfoPanel:
      info_->setVisible(actions_->Get(Command::InfoPanel)->isChecked());
      return;
    case Command::Slideshow:
      return mnuslide_Click();
    case Command::Refresh:
      return browser_.Refresh();
    case Command::CatalogFolders:
      return mnucatalog_Click();
    case Command::CatalogSelected:
      return browser_.mnucatalogindividual_Click();
    case Command::ShowCatalogue:
      return browser_.ShowCatalogue();
    case Command::Search:
      return ShowSearch();
    case Command::Rebuild:
      return browser_.RebuildSelected();
    case Command::Reconnect:
      return mnuconnect_Click();
    case Command::NewDatabase:
      return mnunewdb_Click();
    case Command::SelectDatabase:
      if (NothingWaits()) Q_EMIT SelectDatabaseWanted();
      return;
    case Command::Optimize:
      return mnuoptimize_Click();
    case Command::Rate1:
    case Command::Rate2:
    case Command::Rate3:
    case Command::Rate4:
    case Command::Rate5:
      return photoPanel_->SetRating(static_cast<int>(command) - static_cast<int>(Command::Rate1) +
                                    1);
    case Command::Flag:
      return photoPanel_->SetFlag(u"Flagged"_s);
    case Command::Unflag:
      return photoPanel_->SetFlag(u"Unflagged"_s);
    case Command::Reject:
      return photoPanel_->SetFlag(u"Rejected"_s);
    case Command::WallpaperCenter:
      return browser_.mnuwallpaper_Click(WallpaperStyle::Center);
    case Command::WallpaperStretch:
      return browser_.mnuwallpaper_Click(WallpaperStyle::Stretch);
    case Command::WallpaperTile:
      return browser_.mnuwallpaper_Click(WallpaperStyle::Tile);
    case Command::Editors:
      return mnuconfigure_Click();
    case Command::Settings:
      return mnusettings_Click();
    case Command::Guide:
      return ShowGuide();
    case Command::About:
      return ShowAbout();
  }
}

void frmmain::SetRows(ThumbnailRows rows) {
  thumbnails_->SetRows(rows);
  const bool single = rows == ThumbnailRows::Single;
  actions_->Get(single ? Command::SingleRow : Command::MultipleRows)->setChecked(true);
}

void frmmain::OpenFolder() {
  const QString folder =
      Pick({PickRequest::What::Folder, tr("Open Folder"), browser_.Folder(), {}});
  if (!folder.isEmpty()) OpenPath(folder);
}

void frmmain::OpenPath(const QString& path) {
  const QString absolute = AbsolutePath(path);
  const QString folder = FolderExists(absolute) ? absolute : GetParentFolderName(absolute);
  if (!FolderExists(folder)) {
    MsgBox(absolute + u"\n"_s + QString::fromUtf16(kReasonMissing), MessageKind::Warning);
    return;
  }
  loading_ = false;
  wanted_ = FileExists(absolute) ? absolute : QString();
  if (browser_.Folder() == folder)
    ShowList();
  else
    folders_->SetCurrentFolder(folder);
}

void frmmain::StartFolder() {
  const Settings& settings = session_.CurrentSettings();
  const bool given = settings.StartupType == u"LastOpened" || settings.StartupType == u"Custom";
  if (!given && settings.StartupType != u"Default") {
    loading_ = false;
    return;
  }
  const bool stands = given && FolderExists(settings.StartupFolder);
  folders_->SetCurrentFolder(stands ? settings.StartupFolder : PicturesFolder());
}

void frmmain::mnucatalog_Click() {
  if (!NothingWaits()) return;
  frmcatalog dialog(session_, &browser_, folders_->CurrentFolder(), this);
  dialog.exec();
  // Photos that were shown unmarked may have rows now, and the selected one fields to fill in.
  browser_.RefreshLive();
  if (browser_.Thumbnails().ImageCount() == 0) ShowList();
}

void frmmain::mnusettings_Click() {
  frmsettings dialog(session_, this);
  if (dialog.exec() != QDialog::Accepted) return;
  browser_.RAWandCMSSettings();
  browser_.RefreshLive();
}

void frmmain::ShowGuide() {
  if (guide_) {
    guide_->raise();
    guide_->activateWindow();
    return;
  }
  guide_ = new frmhelp(this);
  guide_->setAttribute(Qt::WA_DeleteOnClose);
  guide_->show();
}

void frmmain::ShowAbout() {
  MsgBox(AboutText(), MessageKind::Information);
}

// The window's state.

void frmmain::LoadMainInterfaceState() {
  state_ = zqm::LoadMainInterfaceState(StateFolder());
  info_->SetPage(state_.page);
  info_->setVisible(state_.metadataShown);
  actions_->Get(Command::InfoPanel)->setChecked(state_.metadataShown);
  search_->SetAdvancedSearch(state_.advancedSearchShown);
}

void frmmain::SaveMainInterfaceState() {
  state_.page = info_->Page();
  state_.metadataShown = actions_->Get(Command::InfoPanel)->isChecked();
  state_.advancedSearchShown = search_->AdvancedSearch();
  // A layout that isn't kept is no reason to stay open.
  (void)zqm::SaveMainInterfaceState(StateFolder(), state_);
  QSettings settings = WindowSettings();
  settings.setValue(u"main/geometry"_s, saveGeometry());
  settings.setValue(u"main/panes"_s, panes_->saveState());
  settings.setValue(u"main/centre"_s, centre_->saveState());
  settings.setValue(u"main/thumbnailSize"_s, thumbnails_->ThumbnailSize());
}

void frmmain::ArrangeControls() {
  resize(kUsualSize);
  panes_->setSizes({kLeftWidth, kUsualSize.width() - kLeftWidth - kRightWidth, kRightWidth});
  centre_->setSizes({kThumbnailsHeight, kUsualSize.height() - kThumbnailsHeight});
  const QSettings settings = WindowSettings();
  restoreGeometry(settings.value(u"main/geometry"_s).toByteArray());
  panes_->restoreState(settings.value(u"main/panes"_s).toByteArray());
  centre_->restoreState(settings.value(u"main/centre"_s).toByteArray());
  if (const int size = settings.value(u"main/thumbnailSize"_s).toInt(); size > 0)
    thumbnails_->SetThumbnailSize(size);
}

void frmmain::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  if (event->size().width() > kNarrowWindow) return;
  panes_->setSizes({kNarrowLeft, event->size().width() - kNarrowLeft - kNarrowRight, kNarrowRight});
}

void frmmain::closeEvent(QCloseEvent* event) {
  bool closes = false;
  Guarded("frmmain", "Form_Unload", [this, &closes] {
    closes = browser_.MayClose();
    if (closes) SaveMainInterfaceState();
  });
  event->setAccepted(closes);
  if (closes) Q_EMIT Closed();
}

}  // namespace zqm
