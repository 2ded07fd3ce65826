// SPDX-License-Identifier: GPL-3.0-or-later
// Draws every window with sample data, so that a person can look at the whole program at once.
#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QCommandLineParser>
#include <QDeadlineTimer>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPushButton>
#include <QSettings>
#include <QSlider>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <memory>

#include "app/start/start_windows.h"
#include "batch/delete_photos.h"
#include "batch/ui/frmconfigure.h"
#include "batch/ui/frmdelete.h"
#include "batch/ui/frmeditiptc.h"
#include "batch/ui/frmexif.h"
#include "batch/ui/frmexternaleditor.h"
#include "batch/ui/frmformat.h"
#include "batch/ui/frmmove.h"
#include "batch/ui/frmpdf.h"
#include "batch/ui/frmrename.h"
#include "batch/ui/frmresize.h"
#include "browser/ui/frmmain.h"
#include "cataloguing/reconnect.h"
#include "cataloguing/ui/frmcatalog.h"
#include "cataloguing/ui/frmconnect.h"
#include "editor/ui/frmbright.h"
#include "editor/ui/frmcolorcast.h"
#include "editor/ui/frmedit.h"
#include "editor/ui/frmsaturation.h"
#include "editor/ui/frmsharpen.h"
#include "imaging/template_files.h"
#include "imaging/ui/before_after.h"
#include "imaging/ui/image_multi_x.h"
#include "imaging/ui/image_x.h"
#include "imaging/ui/previews_dialog.h"
#include "metadata/exif_editor.h"
#include "metadata/iptc_editor.h"
#include "printing/ui/frmname.h"
#include "printing/ui/frmprint.h"
#include "printing/ui/frmtemplate.h"
#include "search/ui/check_list.h"
#include "search/ui/frmaddcategory.h"
#include "search/ui/search_panel.h"
#include "session/ui/frmnewdb.h"
#include "session/ui/frmsettings.h"
#include "shell/files.h"
#include "shell/locale_info.h"
#include "shell/session_folders.h"
#include "shell/ui/folder_tree.h"
#include "shell/ui/frmerror.h"
#include "shell/ui/frmhelp.h"
#include "shell/ui/look.h"
#include "viewers/photo_values.h"
#include "viewers/slideshow_settings.h"
#include "viewers/ui/frmcompare.h"
#include "viewers/ui/frmconfigureslideshow.h"
#include "viewers/ui/frmfull.h"
#include "viewers/ui/frmslideshow.h"
#include "watermark/ui/frmwatermarkcreator.h"
#include "watermark/ui/frmwatermarkimages.h"
#include "watermark/ui/frmwatername.h"
#include "watermark/ui/symbol_picker.h"

using namespace Qt::StringLiterals;

namespace {

using namespace zqm;

constexpr std::chrono::milliseconds kRest(400), kIntoTheRun(900), kIntoTheTransition(500);

/// Lets windows load what they show.
void Settle(std::chrono::milliseconds time = kRest) {
  const QDeadlineTimer rest(time);
  while (!rest.hasExpired())
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
}

class Studio {
 public:
  Studio(Session& session, QString photos, QString out, QString suffix, QSize size)
      : session_(session),
        photos_(std::move(photos)),
        out_(std::move(out)),
        suffix_(std::move(suffix)),
        size_(size) {}

  bool Failed() const { return failed_; }

  void MainWindow() {
    frmmain window(session_);
    window.resize(size_);
    window.show();
    auto* list = window.findChild<ImageMultiX*>(u"ImageMultiX1"_s);
    const QStringList names = QDir(photos_).entryList({u"*.jpg"_s}, QDir::Files);
    window.OpenPath(photos_);
    Settle(kRest * 3);
    Take(window, u"main-folder"_s);
    const auto pick = [&](QList<int> rows) {
      QStringList paths;
      for (const int row : rows)
        paths.append(photos_ + u'/' + names.value(row));
      list->SelectPaths(paths);
      Settle(kRest * 2);
    };
    pick({2});
    Take(window, u"main-photo"_s);
    auto* info = window.findChild<QTabWidget*>(u"cmdinfo"_s);
    for (auto* menu : window.menuBar()->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly))
      if (menu->title() == u"&File"_s) {
        Show(*menu, u"menu-file"_s);
        menu->close();
      }
    info->setCurrentIndex(1);
    Take(window, u"main-properties"_s);
    info->setCurrentIndex(2);
    Take(window, u"main-metadata"_s);
    info->setCurrentIndex(0);
    Trigger(window, u"mnumultiplerows");
    pick({1, 4, 6});
    Take(window, u"main-selected"_s);
    const QString away = photos_ + u'/' + names.value(3);
    const QString hidden = photos_ + u"/.away"_s;
    if (QFile::rename(away, hidden)) {
      Trigger(window, u"mnushowcatalogue");
      list->SelectPaths({away});
      Settle(kRest * 2);
      Take(window, u"main-offline"_s);
      list->clearSelection();
      Take(window, u"main-catalogue"_s);
      QFile::rename(hidden, away);
    }
    Searches(window);
    const QString empty = photos_ + u"/empty"_s;
    QDir().mkpath(empty);
    window.OpenPath(empty);
    Settle();
    Take(window, u"main-empty"_s);
    QDir().rmdir(empty);
  }

  void Searches(frmmain& window) {
    Trigger(window, u"mnusearch");
    auto* panel = window.findChild<SearchPanel*>(u"searchpanel"_s);
    panel->findChild<QLineEdit*>(u"Text6"_s)->setText(u"light"_s);
    panel->SetAdvancedSearch(true);
    auto* slot = panel->findChild<QWidget*>(u"filterslot(0)"_s);
    slot->findChild<QAction*>(u"mnushutter"_s)->trigger();
    auto* values = panel->findChild<CheckList*>(u"lstfilter(0)"_s);
    values->SetTicked(values->Items());
    panel->findChild<QAbstractButton*>(u"Command1"_s)->click();
    Settle(kRest * 2);
    Take(window, u"main-search"_s);
    // Shown from its button; a menu's own window is drawn by itself.
    auto* menu = slot->findChild<QMenu*>(u"mnufilter"_s);
    menu->popup(window.geometry().center());
    Show(*menu, u"menu-filter"_s);
    for (auto* group : menu->findChildren<QMenu*>())
      if (group->title() == u"Miscellaneous"_s) Show(*group, u"menu-filter-exif"_s);
    menu->close();
    panel->findChild<QAbstractButton*>(u"cmdclear"_s)->click();
    panel->SetAdvancedSearch(false);
    panel->findChild<QAbstractButton*>(u"Command1"_s)->click();
    Settle();
    Take(window, u"main-search-empty"_s);
    window.findChild<QTabWidget*>(u"lefttabs"_s)->setCurrentIndex(0);
  }

  void FileDialogs() {
    QStringList photos;
    for (const QString& name : QDir(photos_).entryList({u"*.jpg"_s}, QDir::Files))
      photos.append(photos_ + u'/' + name);
    const BatchPlace place{session_.ActiveCatalogue(), nullptr, photos};
    frmmove move(place, photos_);
    Q_EMIT move.findChild<FolderTree*>(u"FolderTreeview1"_s)->FolderClick(photos_);
    Show(move, u"frmmove"_s);
    frmcopy copy(place, QString());
    Show(copy, u"frmcopy"_s);
    frmdelete remove(place, delete_text::kAskSelected);
    Show(remove, u"frmdelete"_s);
    frmrename rename(place);
    Show(rename, u"frmrename"_s);
    frmrename single({place.catalogue, nullptr, photos.first(1)});
    single.findChild<QAbstractButton*>(u"Option3"_s)->setChecked(true);
    Show(single, u"frmrename-single"_s);
    MetadataDialogs(place);
    PictureDialogs(place);
    CoreDatabase& core = session_.Core();
    if (core.Editors().empty())
      (void)core.WriteEditors(
          {{u"Darkroom"_s, u"/usr/bin/darkroom"_s}, {u"Paintbox"_s, u"/usr/bin/paintbox"_s}});
    frmconfigure configure(core);
    Show(configure, u"frmconfigure"_s);
    frmconfirmeditor confirm(core, {u"darkroom"_s, u"/opt/darkroom/bin/darkroom"_s});
    Show(confirm, u"frmconfirmeditor"_s);
    frmexternaleditor editor(core, photos);
    Show(editor, u"frmexternaleditor"_s);
  }

  void PictureDialogs(const BatchPlace& place) {
    const PictureSettings load = session_.WorkSettings();
    frmformat format(place, load, session_.ReadSettings());
    Show(format, u"frmformat"_s);
    auto* formats = format.findChild<QListWidget*>(u"List1"_s);
    for (const int row : {2, 7}) {
      formats->setCurrentRow(row);
      Show(format, u"frmformat-"_s + formats->currentItem()->text().left(3).toLower());
    }
    format.findChild<QAbstractButton*>(u"Option2"_s)->setChecked(true);
    const QTemporaryDir out;
    format.findChild<QLineEdit*>(u"Text1"_s)->setText(out.path());
    ShowRunning(format, "Command4", u"frmformat-running"_s);
    frmresize resize(place, load, session_.ReadSettings());
    resize.findChild<QAbstractButton*>(u"Check3"_s)->setChecked(true);
    Show(resize, u"frmresize"_s);
    frmpdf pdf(place, load, photos_);
    Q_EMIT pdf.findChild<FolderTree*>(u"FolderTreeview1"_s)->FolderClick(photos_);
    pdf.findChild<QAbstractButton*>(u"Option4"_s)->setChecked(true);
    Show(pdf, u"frmpdf"_s);
    frmprint print(place.photos, load, session_.Folders());
    Show(print, u"frmprint-begin"_s);
    auto* templates = print.findChild<QListWidget*>(u"List1"_s);
    templates->setCurrentItem(templates->findItems(u"4 photos A4"_s, Qt::MatchExactly).value(0));
    Show(print, u"frmprint-template"_s);
    print.findChild<QAbstractButton*>(u"Command6"_s)->click();
    Show(print, u"frmprint"_s);
  }

  void Viewing() {
    QStringList photos;
    for (const QString& name : QDir(photos_).entryList({u"*.jpg"_s}, QDir::Files))
      photos.append(photos_ + u'/' + name);
    Catalogue& catalogue = session_.ActiveCatalogue();
    (void)SetValue(catalogue, photos.value(2), {KeywordField::Rating, u"4"_s});
    (void)SetValue(catalogue, photos.value(2), {KeywordField::Flag, u"Flagged"_s});
    frmfull full(session_, photos, 2);
    Show(full, u"frmfull"_s);
    Trigger(full, u"mnuinformation");
    Take(full, u"frmfull-information"_s);
    Trigger(full, u"mnuzoomfull");
    Trigger(full, u"mnurate5");
    Take(full, u"frmfull-zoomed"_s);
    Trigger(full, u"mnuinformation");
    full.hide();
    photos.append(photos_ + u"/A photo that is away.jpg"_s);
    frmfull gone(session_, photos, static_cast<int>(photos.size()) - 1);
    Show(gone, u"frmfull-gone"_s);
    gone.hide();
    frmcompare compare(session_, photos.mid(2, 5));
    compare.resize(size_);
    Show(compare, u"frmcompare"_s);
    Trigger(compare, u"mnuzoomfull");
    Trigger(compare, u"mnuallvalues");
    Take(compare, u"frmcompare-zoomed"_s);
    Trigger(compare, u"mnuinformation");
    Trigger(compare, u"mnulinked");
    Trigger(compare, u"mnuotherside");
    Trigger(compare, u"mnuzoomfit");
    Take(compare, u"frmcompare-unlinked"_s);
  }

  /// In the middle of what a button starts.
  void ShowRunning(QDialog& window, const char* button, const QString& name) {
    QTimer::singleShot(kIntoTheRun, &window, [&] { Take(window, name); });
    window.findChild<QPushButton*>(QString::fromLatin1(button))->click();
  }

  void MetadataDialogs(const BatchPlace& place) {
    frmexif exif(place);
    const auto tick = [](QWidget& window, const QString& box) {
      window.findChild<QAbstractButton*>(box)->setChecked(true);
    };
    exif.Fill({{FindExifField(u"Camera Make"), u"Zorki"_s},
               {FindExifField(u"Shutter Speed"), u"1/250"_s},
               {FindExifField(u"Exposure Time"), u"1/250"_s},
               {FindExifField(u"Lens Aperture"), u"2.8"_s}});
    for (const char16_t* caption : {u"Camera Make", u"Date/Time Original", u"Shutter Speed"})
      tick(exif, u"chkexif(%1)"_s.arg(FindExifField(caption)));
    auto* pages = exif.findChild<QTabWidget*>(u"TabStrip2"_s);
    for (int page = 0; page < pages->count(); ++page) {
      pages->setCurrentIndex(page);
      Show(exif, u"frmexif-%1"_s.arg(page + 1));
    }
    frmeditiptc iptc(place);
    iptc.Fill({{FindIptcField(u"Caption"), u"Fog on the lake"_s}});
    tick(iptc, u"Check1"_s);
    pages = iptc.findChild<QTabWidget*>(u"TabStrip1"_s);
    for (int page = 0; page < pages->count(); ++page) {
      pages->setCurrentIndex(page);
      Show(iptc, u"frmeditiptc-%1"_s.arg(page + 1));
    }
  }

  /// Each with something to see in it.
  void ChangeDialogs() {
    const QImage photo(photos_ + u'/' +
                       QDir(photos_).entryList({u"*.jpg"_s}, QDir::Files).value(2));
    for (const QString& page : PreviewPages()) {
      const auto dialog = MakePreviewsDialog(photo, page);
      if (auto* preset = dialog->findChild<QComboBox*>(u"cmbpreset"_s))
        preset->setCurrentText(u"Relief on gray"_s);
      Show(*dialog, u"previews-"_s + page.toLower());
    }
    const auto slide = [](const ChangeDialog& dialog, const char16_t* slider, int value) {
      dialog.findChild<QSlider*>(QString::fromUtf16(slider))->setValue(value);
    };
    frmsharpen sharpen(photo);
    slide(sharpen, u"sldsharpen", 40);
    Show(sharpen, u"frmsharpen"_s);
    sharpen.Views()->Before()->SetZoom(200);
    Show(sharpen, u"frmsharpen-zoomed"_s);
    frmcolorcast cast(photo);
    slide(cast, u"sldtemperature", 40);
    Show(cast, u"frmcolorcast"_s);
    frmsaturation saturation(photo);
    slide(saturation, u"sldsaturation", 60);
    Show(saturation, u"frmsaturation"_s);
    frmbright bright(photo);
    slide(bright, u"sldcontrast", 30);
    Show(bright, u"frmbright"_s);
  }

  void PhotoEditor() {
    frmedit editor(session_, nullptr);
    editor.resize(size_);
    const QStringList names = QDir(photos_).entryList({u"*.jpg"_s}, QDir::Files);
    if (!editor.OpenPhoto(photos_ + u'/' + names.value(5))) return;
    Show(editor, u"frmedit"_s);
    auto* image = editor.findChild<ImageX*>(u"ImageX1"_s);
    const QPointF size(image->ImageWidth(), image->ImageHeight());
    const auto drag = [&](QPointF from, QPointF to) {
      const auto send = [&](QEvent::Type type, QPointF share, Qt::MouseButtons buttons) {
        const QPointF at = image->FromBitmap({share.x() * size.x(), share.y() * size.y()});
        QMouseEvent event(type, at, image->viewport()->mapToGlobal(at), Qt::LeftButton, buttons,
                          {});
        QCoreApplication::sendEvent(image->viewport(), &event);
      };
      send(QEvent::MouseButtonPress, from, Qt::LeftButton);
      send(QEvent::MouseMove, (from + to) / 2, Qt::LeftButton);
      send(QEvent::MouseMove, to, Qt::LeftButton);
      send(QEvent::MouseButtonRelease, to, {});
    };
    Trigger(editor, u"mnu_level");
    drag({0.1, 0.6}, {0.9, 0.66});
    Take(editor, u"frmedit-level"_s);
    Trigger(editor, u"mnu_crop");
    drag({0.2, 0.2}, {0.7, 0.8});
    Take(editor, u"frmedit-crop"_s);
    Trigger(editor, u"mnu_resize_img");
    Take(editor, u"frmedit-resize"_s);
    Trigger(editor, u"mnu_red_eye");
    drag({0.4, 0.4}, {0.6, 0.6});
    Take(editor, u"frmedit-redeye"_s);
    Trigger(editor, u"mnu_watermark");
    Take(editor, u"frmedit-watermark"_s);
    Trigger(editor, u"mnu_magic_settings");
    drag({0.5, 0.1}, {0.5, 0.1});
    Take(editor, u"frmedit-wand"_s);
    editor.findChild<QAbstractButton*>(u"Label10"_s)->click();
    Take(editor, u"frmedit-save"_s);
    Trigger(editor, u"mnu_original");
    Take(editor, u"frmedit-original"_s);
  }

  void Watermarks() {
    // Copies, which may be stamped.
    const QTemporaryDir copies;
    QStringList photos;
    for (const QString& name : QDir(photos_).entryList({u"*.jpg"_s}, QDir::Files)) {
      photos.append(copies.filePath(name));
      QFile::copy(photos_ + u'/' + name, photos.last());
    }
    const auto apply = [](frmwatermarkimages& window, const QString& name) {
      auto* list = window.findChild<QListWidget*>(u"List1"_s);
      list->setCurrentItem(list->findItems(name, Qt::MatchExactly).value(0));
      window.findChild<QPushButton*>(u"Command4"_s)->click();
    };
    {
      frmwatermarkimages window(session_, photos);
      Show(window, u"frmwatermarkimages"_s);
      apply(window, u"Tiled proof 12 MP"_s);
      window.findChild<ImageMultiX*>(u"ImageMultiX1"_s)->SelectPaths({photos.value(2)});
      Show(window, u"frmwatermarkimages-applied"_s);
      ShowRunning(window, "Command5", u"frmwatermarkimages-running"_s);
    }
    {
      const QStringList some = photos.mid(0, 3);
      frmwatermarkimages window(session_, some);
      window.show();
      Settle();
      apply(window, u"Proof"_s);
      for (const QString& path : some)
        QFile::remove(path);
      window.findChild<QPushButton*>(u"Command5"_s)->click();
      Show(window, u"frmwatermarkimages-failures"_s);
    }
    TemplateCreator(photos.value(3));
  }

  void TemplateCreator(const QString& path) {
    Picture photo;
    if (!photo.LoadFromFile(path)) return;
    const QString folder = session_.Folders().WatermarkTemplatesFolder();
    frmwatermarkcreator creator(folder, session_.WorkSettings(), photo);
    Show(creator, u"frmwatermarkcreator"_s);
    const auto file = LoadTemplate(TemplatePath(folder, u"Signature"_s));
    if (!file) return;
    creator.EditTemplate(u"Signature"_s, file->objects);
    creator.findChild<QPushButton*>(u"Command1"_s)->click();
    Show(creator, u"frmwatermarkcreator-text"_s);
    creator.findChild<QPushButton*>(u"Command10"_s)->click();
    Show(creator, u"frmwatermarkcreator-all"_s);
    auto* symbols = creator.findChild<SymbolPicker*>();
    Show(*symbols, u"frmwatermarkcreator-symbols"_s);
    symbols->hide();
    frmwatername name(folder, file->objects, {}, u"Signature"_s);
    Show(name, u"frmwatername"_s);
  }

  void Slideshows() {
    QStringList photos;
    for (const QString& name : QDir(photos_).entryList({u"*.jpg"_s}, QDir::Files))
      photos.append(photos_ + u'/' + name);
    (void)SaveTransition(session_.Folders().StateFolder(), 129, 7.5);
    frmconfigureslideshow settings(photos, session_.ReadSettings(),
                                   session_.Folders().StateFolder());
    settings.show();
    Settle(kIntoTheTransition);
    Take(settings, u"frmconfigureslideshow"_s);
    settings.close();
    photos[1] = photos_ + u"/gone.jpg"_s;
    // On a clock that stands still in the middle of a transition.
    std::chrono::milliseconds now(0);
    const SlideshowPlan plan{photos, 77, std::chrono::seconds(5), true, session_.ReadSettings()};
    frmslideshow show(plan, nullptr, [&now] { return now; });
    Show(show, u"frmslideshow"_s);
    now += plan.interval;
    show.Show().Tick();
    Settle();
    now += kIntoTheTransition;
    show.Show().Tick();
    Take(show, u"frmslideshow-transition"_s);
  }

  void PrintTemplates() {
    const SessionFolders& folders = session_.Folders();
    const QString name = u"4 photos A4"_s;
    const auto layout = LoadTemplate(folders.PrintingTemplatesFolder(), name);
    if (!layout) return;
    frmtemplate designer(folders);
    Show(designer, u"frmtemplate-begin"_s);
    designer.EditTemplate(name, *layout);
    Show(designer, u"frmtemplate-edit"_s);
    auto* surface = designer.findChild<ImageX*>(u"ImageX1"_s);
    for (const int id : {2, 3})
      surface->SelectObject(id, true);
    Show(designer, u"frmtemplate"_s);
    designer.findChild<QAbstractButton*>(u"Option2"_s)->click();
    designer.findChild<QAbstractButton*>(u"Command2"_s)->click();
    Show(designer, u"frmtemplate-inches"_s);
    frmname ask(folders.PrintingTemplatesFolder(), *layout, name);
    Show(ask, u"frmname"_s);
    frmprint print({}, session_.WorkSettings(), folders);
    Show(print, u"frmprint-empty"_s);
  }

  void Dialogs() {
    frmstart start;
    Show(start, u"frmstart"_s);
    frmintro intro;
    intro.show();
    intro.SetStatus(u"Initializing Search Engine..."_s);
    Show(intro, u"frmintro"_s);
    frmhelp guide;
    Show(guide, u"frmhelp"_s);
    guide.findChild<GuideText*>(u"guide"_s)->ShowHeading(u"watermarks"_s);
    Take(guide, u"frmhelp-watermarks"_s);
    frmcheckDB check({u"Holidays.mdb"_s, u"Zolmira QM.mdb"_s});
    Show(check, u"frmcheckDB"_s);
    frmsettings settings(session_);
    auto* pages = settings.findChild<QListWidget*>(u"lstsettings"_s);
    for (int page = 0; page < pages->count(); ++page) {
      pages->setCurrentRow(page);
      Show(settings, u"frmsettings-%1"_s.arg(page + 1));
    }
    frmcatalog import(session_, nullptr, photos_);
    import.show();
    import.findChild<QAbstractButton*>(u"Check1"_s)->setChecked(true);
    Settle(kRest * 3);
    auto* tree = import.findChild<FolderTree*>(u"FolderTreeview1"_s);
    tree->model()->setData(tree->currentIndex(), Qt::Checked, Qt::CheckStateRole);
    Show(import, u"frmcatalog"_s);
    frmaddcategory category(session_.ActiveCatalogue());
    Show(category, u"frmaddcategory"_s);
    frmnewdb fresh(session_.Folders());
    Show(fresh, u"frmnewdb"_s);
    frmconnect connection(
        session_.ActiveCatalogue(),
        CatalogueFolders(session_.ActiveCatalogue()) + QStringList{u"/media/Holidays/2019/Graz"_s});
    connection.findChild<FolderTree*>(u"FolderTreeview1"_s)->SetCurrentFolder(photos_);
    Show(connection, u"frmconnect"_s);
    FileDialogs();
    FailureList failures{u"The following files could not be added to the database:"_s, {}};
    failures.Add(photos_ + u"/Fog on the lake.jpg"_s, u"File already exists in database"_s);
    failures.Add(photos_ + u"/gone.jpg"_s, u"File is offline or missing"_s);
    frmerror error;
    error.SetFailures(failures);
    Show(error, u"frmerror"_s);
    frmbug bug;
    bug.SetFailures(failures);
    Show(bug, u"frmbug"_s);
  }

 private:
  static void Trigger(const QWidget& window, const char16_t* action) {
    window.findChild<QAction*>(QString::fromUtf16(action))->trigger();
    Settle();
  }
  void Show(QWidget& window, const QString& name) {
    window.show();
    Settle();
    Take(window, name);
  }
  void Take(QWidget& window, const QString& name) {
    Settle(kRest / 2);
    const QString path = out_ + u'/' + name + suffix_ + u".png"_s;
    if (window.grab().save(path)) return;
    std::fprintf(stderr, "%s: could not be written\n", qUtf8Printable(path));
    failed_ = true;
  }

  Session& session_;
  QString photos_, out_, suffix_;
  QSize size_;
  bool failed_ = false;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  UseSystemLocale();
  QCommandLineParser parser;
  for (const char16_t* name : {u"home", u"photos", u"out", u"suffix", u"width", u"height", u"only"})
    parser.addOption({QString::fromUtf16(name), QString(), u"VALUE"_s});
  parser.process(application);
  const SessionFolders folders = ResolveSessionFolders(AbsolutePath(parser.value(u"home"_s)));
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folders.AppDataPath);
  look::Apply(application);
  Session session(folders);
  if (!session.PrepareFolders() || !session.LockHome() || !session.Activate(u"Zolmira QM.mdb"_s)) {
    std::fputs("the sample catalogue can't be opened\n", stderr);
    return 1;
  }
  Studio studio(session, AbsolutePath(parser.value(u"photos"_s)), parser.value(u"out"_s),
                parser.value(u"suffix"_s),
                {parser.value(u"width"_s).toInt(), parser.value(u"height"_s).toInt()});
  const std::pair<const char16_t*, void (Studio::*)()> scenes[] = {
      {u"main", &Studio::MainWindow},          {u"editor", &Studio::PhotoEditor},
      {u"changes", &Studio::ChangeDialogs},    {u"watermarks", &Studio::Watermarks},
      {u"templates", &Studio::PrintTemplates}, {u"viewers", &Studio::Slideshows},
      {u"viewing", &Studio::Viewing},          {u"dialogs", &Studio::Dialogs}};
  const QString only = parser.value(u"only"_s);
  for (const auto& [name, draw] : scenes)
    if (only.isEmpty() || only == QStringView(name)) (studio.*draw)();
  return studio.Failed() ? 1 : 0;
}
