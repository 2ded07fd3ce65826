// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ui/main_actions.h"

#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>
#include <QWidget>

#include "shell/ui/commands.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

enum Trait : unsigned {
  kPlain = 0,
  kCheckable = 1,
  kNeedsSelection = 2,
  kEditsValues = 4,
  kSeparatorBefore = 8,
  kOwnMenu = 16,  ///< in a submenu of its kind
};

struct Row {
  Command command;
  const char16_t* menu;
  const char16_t* text;
  const char16_t* shortcut;
  const char* icon;
  const char* name;
  const char16_t* toolTip;
  unsigned traits;
};

constexpr Row kRows[] = {
    {Command::OpenFolder, u"&File", u"&Open Folder…", u"Ctrl+O", "folder-open", "mnuopenfolder",
     u"Browse a folder", kPlain},
    {Command::EditPhoto, u"&File", u"Edit In &Zolmira QM Photo Editor", u"F4", "document-edit",
     "mnufile2(1)", u"Edit the first of the selected photos", kNeedsSelection | kSeparatorBefore},
    {Command::ExternalEditor, u"&File", u"Open In &External Editor", u"Ctrl+E",
     "document-open-folder", "mnuchoose", u"Open the selected photos in another program",
     kNeedsSelection},
    {Command::MoveTo, u"&File", u"&Move To Folder...", u"Ctrl+M", "transform-move", "mnufile2(3)",
     u"Move the selected photos, their rows with them", kNeedsSelection | kSeparatorBefore},
    {Command::CopyTo, u"&File", u"&Copy To Folder...", u"Ctrl+Shift+M", "edit-copy", "mnufile2(4)",
     u"Copy the selected photos", kNeedsSelection},
    {Command::Convert, u"&File", u"Con&vert File Format", u"Ctrl+Shift+V", "document-export",
     "mnufile2(6)", u"Write the selected photos in another format",
     kNeedsSelection | kSeparatorBefore},
    {Command::Pdf, u"&File", u"Create Photo &Book (PDF)", u"Ctrl+Alt+P", "document-export",
     "mnufile2(7)", u"Write the selected photos into PDF files", kNeedsSelection},
    {Command::Watermark, u"&File", u"&Watermark Images", u"Ctrl+Shift+W", "draw-text",
     "mnufile2(8)", u"Paint a text or picture into the selected photos", kNeedsSelection},
    {Command::Resize, u"&File", u"Resi&ze Images", u"Ctrl+Alt+R", "transform-scale", "mnufile2(9)",
     u"Give the selected photos another size", kNeedsSelection},
    {Command::Print, u"&File", u"&Print", u"Ctrl+P", "document-print", "mnufile2(11)",
     u"Put the selected photos on the pages of a template and print them",
     kNeedsSelection | kSeparatorBefore},
    {Command::Rename, u"&File", u"&Rename Images…", u"F2", "edit-rename", "mnurename",
     u"Give the selected photos new names", kNeedsSelection | kSeparatorBefore},
    {Command::Delete, u"&File", u"&Delete Photos…", u"Del", "edit-delete", "mnudelete",
     u"Delete the selected photos, or take them out of the catalogue",
     kNeedsSelection | kSeparatorBefore},
    {Command::DeleteRejected, u"&File", u"Delete Re&jected Photos…", u"Ctrl+Shift+Del",
     "edit-delete", "mnuremoverejected",
     u"Delete the shown photos that are marked as rejected, or take them out of the catalogue",
     kPlain},
    {Command::Quit, u"&File", u"&Quit", u"Ctrl+Q", "application-exit", "mnuexit",
     u"Save what waits and close", kSeparatorBefore},
    {Command::SelectAll, u"&Edit", u"Select &All", u"Ctrl+A", "edit-select-all", "mnuselectall",
     u"Select every photo of the list", kPlain},
    {Command::SelectNone, u"&Edit", u"Select &None", u"Ctrl+Shift+A", "edit-select-none",
     "mnuselectnone", u"Deselect all photos", kPlain},
    {Command::CopyPaths, u"&Edit", u"&Copy Paths", u"Ctrl+Shift+C", "edit-copy", "mnucopypaths",
     u"Copy the paths of the selected photos as text", kNeedsSelection | kSeparatorBefore},
    {Command::SingleRow, u"&View", u"&Single Row", u"Ctrl+Shift+1", "", "mnusinglerow",
     u"Thumbnails in one row", kCheckable},
    {Command::MultipleRows, u"&View", u"&Multiple Rows", u"Ctrl+Shift+2", "", "mnumultiplerows",
     u"Thumbnails in as many rows as fit", kCheckable},
    {Command::SortByName, u"&View", u"Sort by &Name", u"Ctrl+Shift+N", "view-sort", "mnusort",
     u"Order the thumbnails by file name", kSeparatorBefore},
    {Command::SortByFlag, u"&View", u"Sort by &Flag Status", u"Ctrl+Shift+F", "flag", "mnusortflag",
     u"Flagged photos first, rejected ones last", kPlain},
    {Command::ZoomIn, u"&View", u"Zoom &In", u"Ctrl++", "zoom-in", "mnuzoomin",
     u"Enlarge the photo", kSeparatorBefore},
    {Command::ZoomOut, u"&View", u"Zoom &Out", u"Ctrl+-", "zoom-out", "mnuzoomout",
     u"Reduce the photo", kPlain},
    {Command::ZoomFit, u"&View", u"Fi&t to Window", u"Ctrl+0", "zoom-fit-best", "mnuzoomfit",
     u"Show the whole photo", kPlain},
    {Command::ZoomFull, u"&View", u"&Actual Size", u"Ctrl+Shift+0", "zoom-original", "mnuzoomfull",
     u"One pixel of the photo on one of the screen", kPlain},
    {Command::FullScreen, u"&View", u"F&ull Screen", u"F11", "view-fullscreen", "mnufull",
     u"Show the selected photos, or all of the list, one at a time on the whole screen",
     kSeparatorBefore},
    {Command::Compare, u"&View", u"&Compare…", u"Ctrl+T", "view-split-left-right", "mnucompare",
     u"Show two of the selected photos side by side", kPlain},
    {Command::InfoPanel, u"&View", u"Information &Panel", u"F9", "", "mnuinfopanel",
     u"Show or hide the panel at the right", kCheckable | kSeparatorBefore},
    {Command::Slideshow, u"&View", u"Slides&how…", u"Ctrl+L", "view-presentation", "mnuslide",
     u"Play the selected photos on the whole screen", kNeedsSelection | kSeparatorBefore},
    {Command::Refresh, u"&View", u"&Refresh", u"F5", "view-refresh", "mnurefresh",
     u"Read the shown folder again", kPlain},
    {Command::CatalogFolders, u"&Catalogue", u"Catalog &Folders / Subfolders…", u"Ctrl+I",
     "folder-new", "mnucatalog", u"Add the photos of whole folders to the catalogue", kPlain},
    {Command::CatalogSelected, u"&Catalogue", u"Catalog &Selected Photos", u"Ctrl+K", "list-add",
     "mnucatalogindividual", u"Add the selected photos to the catalogue", kNeedsSelection},
    {Command::ShowCatalogue, u"&Catalogue", u"Show &All Catalogued Photos", u"Ctrl+Shift+L",
     "view-list-icons", "mnushowcatalogue", u"Show every photo of the catalogue, offline ones too",
     kSeparatorBefore},
    {Command::Search, u"&Catalogue", u"S&earch…", u"Ctrl+F", "edit-find", "mnusearch",
     u"Find photos of the catalogue by words, dates, ratings, categories and metadata", kPlain},
    {Command::Rebuild, u"&Catalogue", u"Re&build Thumbnails and Metadata", u"Ctrl+Shift+B",
     "view-refresh", "mnurebuild", u"Read the selected photos' files again",
     kNeedsSelection | kSeparatorBefore},
    {Command::Reconnect, u"&Catalogue", u"&Reconnect Folder to Database…", u"Ctrl+Shift+R",
     "folder-sync", "mnuconnect", u"Tell the catalogue where a moved or renamed folder is now",
     kPlain},
    {Command::NewDatabase, u"&Catalogue", u"Create &New Database…", u"Ctrl+Shift+D", "document-new",
     "mnunewdb", u"Make a further, empty catalogue", kSeparatorBefore},
    {Command::SelectDatabase, u"&Catalogue", u"Select &Database…", u"Ctrl+D", "document-open",
     "mnuselectdb", u"Work with another catalogue", kPlain},
    {Command::Optimize, u"&Catalogue", u"&Optimize Database", u"Ctrl+Shift+O", "edit-clear-all",
     "mnuoptimize", u"Make the catalogue's file as small as it can be, then start again", kPlain},
    {Command::Rate1, u"&Photo", u"&1 Star", u"Ctrl+1", "", "mnurate1", u"",
     kEditsValues | kOwnMenu},
    {Command::Rate2, u"&Photo", u"&2 Stars", u"Ctrl+2", "", "mnurate2", u"",
     kEditsValues | kOwnMenu},
    {Command::Rate3, u"&Photo", u"&3 Stars", u"Ctrl+3", "", "mnurate3", u"",
     kEditsValues | kOwnMenu},
    {Command::Rate4, u"&Photo", u"&4 Stars", u"Ctrl+4", "", "mnurate4", u"",
     kEditsValues | kOwnMenu},
    {Command::Rate5, u"&Photo", u"&5 Stars", u"Ctrl+5", "", "mnurate5", u"",
     kEditsValues | kOwnMenu},
    {Command::Flag, u"&Photo", u"&Flagged", u"Ctrl+Shift+P", "flag", "mnuflag", u"Pick this photo",
     kEditsValues | kSeparatorBefore},
    {Command::Unflag, u"&Photo", u"&Unflagged", u"Ctrl+Shift+U", "edit-clear", "mnuunflag",
     u"Neither flagged nor rejected", kEditsValues},
    {Command::Reject, u"&Photo", u"Re&jected", u"Ctrl+Shift+X", "edit-delete-remove", "mnureject",
     u"Mark this photo as rejected", kEditsValues},
    {Command::RotateClockwise, u"&Photo", u"Rotate &Clockwise (90°)", u"Ctrl+Alt+Right",
     "object-rotate-right", "mnurotate(1)", u"Turn the picture in its file",
     kNeedsSelection | kOwnMenu},
    {Command::RotateCounterClockwise, u"&Photo", u"Rotate C&ounter Clockwise (90°)",
     u"Ctrl+Alt+Left", "object-rotate-left", "mnurotate(2)", u"Turn the picture in its file",
     kNeedsSelection | kOwnMenu},
    {Command::Rotate180, u"&Photo", u"Rotate &180°", u"", "", "mnurotate(3)",
     u"Turn the picture in its file", kNeedsSelection | kOwnMenu},
    {Command::FlipVertical, u"&Photo", u"Flip &Vertical", u"", "object-flip-vertical",
     "mnurotate(4)", u"Mirror the picture in its file", kNeedsSelection | kOwnMenu},
    {Command::FlipHorizontal, u"&Photo", u"Flip &Horizontal", u"", "object-flip-horizontal",
     "mnurotate(5)", u"Mirror the picture in its file", kNeedsSelection | kOwnMenu},
    {Command::WallpaperCenter, u"&Photo", u"&Center", u"", "", "mnuwallpaper(0)",
     u"In its own size in the middle", kNeedsSelection | kOwnMenu},
    {Command::WallpaperStretch, u"&Photo", u"&Stretch", u"", "", "mnuwallpaper(1)",
     u"As large as the screen", kNeedsSelection | kOwnMenu},
    {Command::WallpaperTile, u"&Photo", u"&Tile", u"", "", "mnuwallpaper(2)",
     u"Side by side in its own size", kNeedsSelection | kOwnMenu},
    {Command::Editors, u"&Tools", u"Configure Photo &Editors…", u"Ctrl+Shift+E", "", "mnuconfigure",
     u"The programs that photos can be opened in", kPlain},
    {Command::Settings, u"&Tools", u"&Settings…", u"Ctrl+,", "configure", "mnusettings",
     u"Start-up folder, RAW files, colour management, file types", kPlain},
    {Command::Guide, u"&Help", u"User &Guide", u"F1", "help-contents", "mnuhelp",
     u"How everything is done", kPlain},
    {Command::About, u"&Help", u"&About Zolmira QM", u"", "help-about", "mnuabout",
     u"Version and licence", kPlain},
};

}  // namespace

MainActions::MainActions(QWidget* window) : QObject(window) {
  auto* rows = new QActionGroup(this);
  for (const Row& row : kRows) {
    QAction* action =
        AddCommand(window, this, {row.text, row.shortcut, row.icon, row.name, row.toolTip});
    action->setCheckable((row.traits & kCheckable) != 0);
    connect(action, &QAction::triggered, this,
            [this, command = row.command] { Q_EMIT Triggered(command); });
    actions_[row.command] = action;
  }
  rows->addAction(Get(Command::SingleRow));
  rows->addAction(Get(Command::MultipleRows));
  SetSelected(0);
  SetEditable(false);
}

namespace {

constexpr Command kRatings[] = {Command::Rate1, Command::Rate2, Command::Rate3, Command::Rate4,
                                Command::Rate5};
constexpr Command kFlags[] = {Command::Flag, Command::Unflag, Command::Reject};
constexpr Command kTurns[] = {Command::RotateClockwise, Command::RotateCounterClockwise,
                              Command::Rotate180, Command::FlipVertical, Command::FlipHorizontal};
constexpr Command kWallpapers[] = {Command::WallpaperCenter, Command::WallpaperStretch,
                                   Command::WallpaperTile};

}  // namespace

void MainActions::FillMenuBar(QMenuBar* bar) const {
  QMenu* menu = nullptr;
  QStringView title;
  for (const Row& row : kRows) {
    if (title != QStringView(row.menu)) {
      title = row.menu;
      menu = bar->addMenu(title.toString());
      menu->setToolTipsVisible(true);
    }
    if ((row.traits & kSeparatorBefore) != 0) menu->addSeparator();
    if ((row.traits & kOwnMenu) == 0) menu->addAction(Get(row.command));
    // A submenu stands where the first of its commands does.
    if (row.command == kRatings[0]) FillRatingMenu(menu->addMenu(tr("&Rating")));
    if (row.command == kTurns[0]) {
      menu->addSeparator();
      FillRotateMenu(menu->addMenu(tr("R&otate")));
    }
    if (row.command == kWallpapers[0]) {
      FillWallpaperMenu(menu->addMenu(tr("Set as &Wallpaper")));
    }
  }
}

void MainActions::Fill(QMenu* menu, std::span<const Command> commands) const {
  for (const Command command : commands)
    menu->addAction(Get(command));
}

void MainActions::FillRatingMenu(QMenu* menu) const {
  Fill(menu, kRatings);
}

void MainActions::FillFlagMenu(QMenu* menu) const {
  Fill(menu, kFlags);
}

void MainActions::FillWallpaperMenu(QMenu* menu) const {
  Fill(menu, kWallpapers);
}

void MainActions::FillRotateMenu(QMenu* menu) const {
  Fill(menu, kTurns);
}

void MainActions::SetSelected(int count) {
  for (const Row& row : kRows)
    if ((row.traits & kNeedsSelection) != 0) Get(row.command)->setEnabled(count > 0);
}

void MainActions::SetEditable(bool editable) {
  for (const Row& row : kRows)
    if ((row.traits & kEditsValues) != 0) Get(row.command)->setEnabled(editable);
}

}  // namespace zqm
