// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/browser.h"
#include "editor/save_edited.h"
#include "shell/files.h"
#include "tests/browser/home_fixture.h"
#include "tests/support/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

class Browsing : public test::HomeTest {
 protected:
  Browsing() {
    AutoSave::SetTickMilliseconds(60'000);
    using B = Browser;
    QObject::connect(&browser_, &B::CounterChanged, &browser_,
                     [this](const QString& text) { counters_.append(text); });
    QObject::connect(&browser_, &B::PhotoShown, &browser_, [this](const ShownPhoto& photo) {
      if (!photo.standIn) shown_ = photo;
    });
    QObject::connect(&browser_, &B::PhotoCleared, &browser_, [this] { shown_ = ShownPhoto(); });
    QObject::connect(&browser_, &B::StatusChanged, &browser_,
                     [this](const QString& name, const QString& rest) { status_ = name + rest; });
    QObject::connect(&browser_, &B::KeywordsEnabled, &browser_,
                     [this](bool enabled, const QString& why) {
                       editable_ = enabled;
                       why_ = why;
                     });
    QObject::connect(&browser_, &B::SelectionKept, &browser_, [this] { ++kept_; });
    QObject::connect(&browser_, &B::FailuresFound, &browser_,
                     [this](const FailureList& failures) { failures_ = failures; });
  }
  ~Browsing() override { AutoSave::SetTickMilliseconds(1000); }

  void Browse() { browser_.LoadFolder(scratch_.Path("photos")); }
  void Select(const QStringList& paths) {
    browser_.OnImageSelect(paths);
    EXPECT_TRUE(test::Eventually([this] { return !browser_.IsLoadingPhoto(); }));
  }
  QStringList Names() {
    QStringList names;
    for (const QString& path : browser_.Thumbnails().FileNames())
      names.append(GetFileName(path));
    return names;
  }
  const ThumbnailLook& LookOf(const QString& path) {
    return browser_.Thumbnails().Look(browser_.Thumbnails().IndexOf(path));
  }
  AutoSave& At(KeywordField field) { return browser_.Keywords().Field(field); }
  void SetFlag(const QString& path, const QString& flag) {
    EXPECT_TRUE(Photos().LocateRow(path));
    Photos().SetField(Column::Flag, flag);
    EXPECT_TRUE(Photos().MoveFirst());
  }
  QString PageText(MetadataPage page, QStringView caption) {
    for (const MetadataLine& line : shown_.info.Page(page))
      if (caption == line.caption) return line.text;
    return u"(no such line)"_s;
  }

  Busy busy_;
  Browser browser_{*session_, busy_};
  QStringList counters_;
  ShownPhoto shown_;
  QString status_, why_;
  bool editable_ = false;
  int kept_ = 0;
  FailureList failures_;
};

TEST_F(Browsing, AFolderIsCountedAndMarkedByTheCatalogue) {
  Browse();
  EXPECT_EQ(counters_.last(), u"0 Photo / 0 Selected"_s);
  const QString flagged = AddPhoto(u"b.jpg"_s), rejected = AddPhoto(u"Älter's.jpg"_s),
                unflagged = AddPhoto(u"c.JPG"_s), stranger = AddPhoto(u"a.jpg"_s);
  CatalogueThem({flagged, rejected, unflagged});
  SetFlag(flagged, u"Flagged"_s);
  SetFlag(rejected, u"Rejected"_s);
  Browse();
  EXPECT_EQ(counters_.last(), u"4 Photos /  0 Selected"_s);
  EXPECT_EQ(LookOf(stranger).topText, QString());
  for (const QString& path : {flagged, rejected, unflagged})
    EXPECT_EQ(LookOf(path).topText, u"Cataloged"_s);
  EXPECT_EQ(LookOf(flagged).frame, qRgb(200, 200, 200));
  EXPECT_EQ(LookOf(rejected).frame, qRgb(255, 0, 0));
  EXPECT_EQ(LookOf(unflagged).frame, LookOf(stranger).frame);
  Select({flagged, stranger});
  EXPECT_EQ(counters_.last(), u"4 Photos / 2 Selected"_s);
  Select({});
  EXPECT_EQ(counters_.last(), u"4 Photos / 0 Selected"_s);
}

TEST_F(Browsing, SortsByNameAndByFlagWithoutLosingMarks) {
  const QString b = AddPhoto(u"B.jpg"_s), a = AddPhoto(u"a.jpg"_s), c = AddPhoto(u"c.jpg"_s),
                d = AddPhoto(u"d.jpg"_s);
  CatalogueThem({a, b, d});
  SetFlag(a, u"Rejected"_s);
  SetFlag(d, u"Flagged"_s);
  Browse();
  browser_.mnusortflag_Click();
  EXPECT_EQ(Names(), (QStringList{u"d.jpg"_s, u"B.jpg"_s, u"c.jpg"_s, u"a.jpg"_s}));
  EXPECT_EQ(LookOf(a).frame, qRgb(255, 0, 0));
  browser_.mnusort_Click();
  EXPECT_EQ(Names(), (QStringList{u"a.jpg"_s, u"B.jpg"_s, u"c.jpg"_s, u"d.jpg"_s}));
}

TEST_F(Browsing, OnePhotoShowsItsFileAndItsRow) {
  const QString path = AddPhoto(
      u"a.jpg"_s, {{u"EXIF_Make", u"Canon"}, {u"EXIF_DateTimeOriginal", u"2007:12:31 23:59:59"}});
  Browse();
  Select({path});
  EXPECT_FALSE(editable_);
  EXPECT_NE(why_, QString());
  CatalogueThem({path});
  Photos().LocateRow(path);
  Photos().SetField(Column::Notes, u"by hand"_s);
  ASSERT_TRUE(Photos().MoveFirst());
  browser_.RefreshLive();
  ASSERT_TRUE(test::Eventually([this] { return !browser_.IsLoadingPhoto(); }));
  EXPECT_TRUE(editable_);
  EXPECT_EQ(At(KeywordField::Notes).Text(), u"by hand"_s);
  EXPECT_EQ(shown_.fullSize, QSize(320, 200));
  EXPECT_EQ(shown_.info.Text(Property::FileName), u"a.jpg"_s);
  EXPECT_EQ(shown_.info.Text(Property::Width), u"320 Pixels"_s);
  EXPECT_EQ(PageText(MetadataPage::Exif, u"Camera Make"), u"Canon"_s);
  EXPECT_EQ(PageText(MetadataPage::Exif, u"Date/Time Original"), u"12/31/2007 11:59:59 PM"_s);
}

TEST_F(Browsing, AnOfflinePhotoShowsWhatItsRowHolds) {
  const QString path =
      AddPhoto(u"Föhn's.jpg"_s,
               {{u"EXIF_Make", u"Canon"}, {u"EXIF_DateTimeOriginal", u"2007:12:31 23:59:59"}});
  CatalogueThem({path});
  Photos().LocateRow(path);
  Photos().SetField(Column::Tags, u"wind"_s);
  ASSERT_TRUE(Photos().MoveFirst());
  Browse();
  ASSERT_TRUE(QFile::rename(path, scratch_.Path("elsewhere.jpg")));
  Select({path});
  EXPECT_TRUE(shown_.offline);
  EXPECT_EQ(status_, u"Föhn's.jpg is missing or is offline."_s);
  EXPECT_EQ(shown_.image.size(), QSize(200, 125));
  EXPECT_EQ(shown_.info.Text(Property::Height), u"200 Pixels"_s);
  EXPECT_TRUE(shown_.info.Text(Property::Size).endsWith(u" KB"_s));
  EXPECT_EQ(PageText(MetadataPage::Exif, u"Camera Make"), u"Canon"_s);
  EXPECT_EQ(PageText(MetadataPage::Exif, u"Width"), u"320 Pixels"_s);
  EXPECT_EQ(PageText(MetadataPage::Exif, u"Date/Time Original"), u"12/31/2007 11:59:59 PM"_s);
  EXPECT_EQ(At(KeywordField::Tags).Text(), u"wind"_s);
  EXPECT_FALSE(editable_);
}

TEST_F(Browsing, TheCatalogueShowsItsPhotosWhereverTheyAre) {
  const QString here = AddPhoto(u"here.jpg"_s), away = AddPhoto(u"away.jpg"_s),
                spoilt = AddPhoto(u"spoilt.jpg"_s);
  CatalogueThem({here, away, spoilt});
  Photos().LocateRow(spoilt);
  Photos().WriteThumbnail(QByteArray());
  ASSERT_TRUE(Photos().MoveFirst());
  QFile::remove(away);
  QFile::remove(spoilt);
  browser_.LoadResults(Photos().Index().Paths());
  EXPECT_EQ(Names(), (QStringList{u"here.jpg"_s, u"away.jpg"_s}));
  ASSERT_EQ(failures_.rows.size(), 1U);
  EXPECT_EQ(failures_.rows[0].File, spoilt);
  EXPECT_EQ(failures_.rows[0].Reason, QString::fromUtf16(kReasonThumbnail));
  const QModelIndex row = browser_.Thumbnails().index(1);
  EXPECT_TRUE(row.data(ThumbnailList::OfflineRole).toBool());
  browser_.Thumbnails().SetVisible(0, 1);
  EXPECT_TRUE(test::Eventually(
      [&row] { return !row.data(ThumbnailList::PictureRole).value<QImage>().isNull(); }));
}

TEST_F(Browsing, LeavingAPhotoSavesWhatWasTyped) {
  const QString a = AddPhoto(u"a.jpg"_s), b = AddPhoto(u"b.jpg"_s);
  CatalogueThem({a, b});
  Browse();
  Select({a});
  At(KeywordField::Notes).Edit(u"for a"_s);
  Select({b});
  EXPECT_EQ(Stored(a, Column::Notes), u"for a"_s);
  EXPECT_EQ(Stored(b, Column::Notes), QString());
  EXPECT_EQ(At(KeywordField::Notes).Text(), QString());
  Select({b, a});
  At(KeywordField::Author).Edit(u"both"_s);
  browser_.FolderTreeview1_FolderClick(scratch_.Path());
  EXPECT_EQ(Stored(a, Column::Author), u"both"_s);
  EXPECT_EQ(Stored(b, Column::Author), u"both"_s);
}

TEST_F(Browsing, AFlagIsSavedAtOnceAndShows) {
  const QString a = AddPhoto(u"a.jpg"_s);
  CatalogueThem({a});
  Browse();
  Select({a});
  At(KeywordField::Flag).Edit(u"Rejected"_s);
  ASSERT_TRUE(test::Eventually([&] { return !At(KeywordField::Flag).Unsaved(); }));
  EXPECT_EQ(Stored(a, Column::Flag), u"Rejected"_s);
  EXPECT_EQ(LookOf(a).frame, qRgb(255, 0, 0));
}

TEST_F(Browsing, SeveralPhotosKeepThePanelOnlyWhenRefreshedLive) {
  const QString a = AddPhoto(u"a.jpg"_s), b = AddPhoto(u"b.jpg"_s);
  CatalogueThem({a});
  Browse();
  Select({a, b});
  EXPECT_TRUE(editable_);
  At(KeywordField::Author).Edit(u"Jo"_s);
  ASSERT_TRUE(browser_.Keywords().CheckUpdate());
  browser_.RefreshLive();
  EXPECT_EQ(At(KeywordField::Author).Text(), u"Jo"_s);
  // Also when others of the selection went.
  const QString gone = AddPhoto(u"gone.jpg"_s);
  Browse();
  Select({a, b, gone});
  At(KeywordField::Author).Edit(u"Jo"_s);
  ASSERT_TRUE(browser_.Keywords().CheckUpdate());
  browser_.RemovePhoto(gone);
  browser_.Live();
  EXPECT_EQ(browser_.Selected().size(), 2);
  EXPECT_EQ(At(KeywordField::Author).Text(), u"Jo"_s);
  Select({b, a});
  EXPECT_EQ(At(KeywordField::Author).Text(), QString());
  Select({b});
  Select({b, AddPhoto(u"c.jpg"_s)});
  EXPECT_FALSE(editable_);
}

TEST_F(Browsing, ASearchThatFindsNothingWhenRepeatedShowsNothing) {
  const QString a = AddPhoto(u"a.jpg"_s);
  CatalogueThem({a});
  Select({a});
  At(KeywordField::Notes).Edit(u"sunset"_s);
  ASSERT_TRUE(browser_.Keywords().CheckUpdate());
  browser_.Search({u"sunset"_s});
  EXPECT_EQ(Names(), QStringList{u"a.jpg"_s});
  Select({a});
  At(KeywordField::Notes).Edit(u"dawn"_s);
  ASSERT_TRUE(browser_.Keywords().CheckUpdate());
  browser_.Refresh();
  EXPECT_EQ(Names(), QStringList());
  EXPECT_EQ(browser_.Selected(), QStringList());
}

TEST_F(Browsing, PicturesThatWereWrittenJoinTheFolder) {
  const QString a = AddPhoto(u"a.jpg"_s);
  Browse();
  const QString made = AddPhoto(u"made.jpg"_s);
  const FolderHold hold(browser_);
  browser_.ShowWritten(made, true);
  browser_.ShowWritten(a, false);
  browser_.ShowWritten(scratch_.Path("elsewhere.jpg"), true);
  EXPECT_EQ(Names(), (QStringList{u"a.jpg"_s, u"made.jpg"_s}));
  EXPECT_EQ(LookOf(made).topText, u"Cataloged"_s);
  EXPECT_EQ(LookOf(a).topText, QString());
}

TEST_F(Browsing, PhotosSavedByTheEditorFollowInListAndPanel) {
  const QString a = AddPhoto(u"a.jpg"_s), b = AddPhoto(u"b.jpg"_s);
  CatalogueThem({a, b});
  Browse();
  Select({a});
  const SaveFollowers followers{session_->ActiveCatalogue(), &browser_, session_->ReadSettings()};
  EditedFile open = EditedFile::Of(a);
  Picture picture;
  ASSERT_TRUE(picture.LoadFromFile(a));
  picture.SetImage(picture.Image().scaled(64, 48));
  const FolderHold hold(browser_);
  const auto saveAs = [&](const QString& path) {
    ASSERT_TRUE(SaveEditedAs(followers, picture, FindSaveTarget(path), open));
    ASSERT_TRUE(test::Eventually([this] { return !browser_.IsLoadingPhoto(); }));
  };
  ASSERT_TRUE(SaveEdited(followers, picture, open));
  ASSERT_TRUE(test::Eventually([this] { return !browser_.IsLoadingPhoto(); }));
  EXPECT_EQ(shown_.fullSize, QSize(64, 48));
  EXPECT_EQ(LookOf(a).topText, u"Cataloged"_s);
  saveAs(PhotoPath(u"c.jpg"_s));
  saveAs(b);
  saveAs(scratch_.Path("elsewhere.jpg"));
  EXPECT_EQ(Names(), (QStringList{u"a.jpg"_s, u"b.jpg"_s, u"c.jpg"_s}));
  EXPECT_EQ(LookOf(b).topText, QString()) << "it has lost its row";

  // A list of hits loses what has no row any more, from the selection too.
  browser_.LoadResults({a, b});
  Select({a, b});
  saveAs(a);
  EXPECT_EQ(Names(), QStringList{u"b.jpg"_s});
  EXPECT_EQ(browser_.Selected(), QStringList{b});
}

TEST_F(Browsing, CataloguingTheSelectionMarksAndTells) {
  const QString a = AddPhoto(u"a.jpg"_s), gone = PhotoPath(u"gone.jpg"_s),
                broken = scratch_.Write("photos/broken.jpg", "not a picture");
  Browse();
  Select({a});
  browser_.mnucatalogindividual_Click();
  EXPECT_EQ(messages_.last(), u"The selected file(s) have been added to the database."_s);
  EXPECT_EQ(Stored(a, Column::Flag), u"Unflagged"_s);
  EXPECT_EQ(LookOf(a).topText, u"Cataloged"_s);
  Select({broken, a, gone});
  browser_.mnucatalogindividual_Click();
  EXPECT_EQ(failures_.label, u"The following files could not be added to the database:"_s);
  ASSERT_EQ(failures_.rows.size(), 3U);
  EXPECT_EQ(failures_.rows[0].File, broken);
  EXPECT_EQ(failures_.rows[1].Reason, u"File already exists in database"_s);
  EXPECT_EQ(failures_.rows[2].Reason, u"File is offline or missing"_s);
}

TEST_F(Browsing, AReadOnlyCatalogueIsSaidToBeBeforeAnythingIsRead) {
  const QString a = AddPhoto(u"a.jpg"_s);
  Session reading(session_->Folders());  // without the home's lock
  ASSERT_TRUE(reading.Activate(u"Zolmira QM.mdb"_s));
  Browser browser(reading, busy_);
  browser.OnImageSelect({a});
  browser.mnucatalogindividual_Click();
  browser.RebuildSelected();
  EXPECT_EQ(messages_,
            (QStringList{u"The catalogue is read-only."_s, u"The catalogue is read-only."_s}));
  EXPECT_EQ(Photos().Count(), 0);
}

TEST_F(Browsing, TheListFollowsARunWhenItIsThrough) {
  QStringList paths;
  for (const char16_t* name : {u"a.jpg", u"b.jpg", u"c.jpg", u"d.jpg"})
    paths.append(AddPhoto(QString::fromUtf16(name)));
  CatalogueThem(paths);
  Browse();
  Select({paths[2], paths[0], paths[1]});
  const QString renamed = PhotoPath(u"z.jpg"_s);
  {
    const FolderHold hold(browser_);
    ASSERT_TRUE(QFile::remove(paths[0]) && QFile::rename(paths[1], renamed));
    browser_.RemovePhoto(paths[0]);
    browser_.RenamePhoto(paths[1], renamed);
    browser_.MarkUncatalogued(paths[3]);
    EXPECT_EQ(Names().size(), 4);
    browser_.Live();
    EXPECT_EQ(Names(), (QStringList{u"z.jpg"_s, u"c.jpg"_s, u"d.jpg"_s}));
    EXPECT_EQ(browser_.Selected(), (QStringList{paths[2], renamed}));
    EXPECT_EQ(kept_, 2);
    EXPECT_EQ(counters_.last(), u"3 Photos / 2 Selected"_s);
    // Something appears meanwhile.
    AddPhoto(u"new.jpg"_s);
    const QDeadlineTimer rest(600);
    (void)test::Eventually([&rest] { return rest.hasExpired(); });
    EXPECT_EQ(Names().size(), 3);
  }
  EXPECT_EQ(Names().size(), 4);
  // Many go at once.
  QStringList many;
  for (int i = 0; i < 200; ++i)
    many.append(AddPhoto(u"m%1.jpg"_s.arg(i)));
  Browse();
  Select({many[0], paths[2]});
  for (const QString& path : many)
    browser_.RemovePhoto(path);
  browser_.Live();
  EXPECT_EQ(browser_.Selected(), QStringList{paths[2]});
  EXPECT_EQ(Names().size(), 4);
}

TEST_F(Browsing, CommandsOverFilesTakeTheSelectionOrSayWhyNot) {
  const QString a = AddPhoto(u"a.jpg"_s), b = AddPhoto(u"b.jpg"_s);
  CatalogueThem({a, b});
  Browse();
  EXPECT_EQ(browser_.mnuremoverejected_Click(), QStringList());
  EXPECT_EQ(messages_.last(), u"There are no photos that are marked as rejected."_s);
  SetFlag(b, u"Rejected"_s);
  EXPECT_EQ(browser_.mnuremoverejected_Click(), QStringList{b});
  Select({a, b});
  QFile::remove(a);
  EXPECT_EQ(browser_.mnufile2_Click(3), (QStringList{a, b}));
  EXPECT_EQ(browser_.mnurename_Click(), (QStringList{a, b}));
  EXPECT_EQ(browser_.mnuchoose_Click(), QStringList{b});
  browser_.mnuwallpaper_Click(WallpaperStyle::Tile);
  EXPECT_EQ(messages_.last(), u"Select only one picture to use as wallpaper."_s);
  QFile::remove(b);
  EXPECT_EQ(browser_.mnufile2_Click(4), QStringList());
  EXPECT_EQ(messages_.last(),
            u"The selected file(s) cannot be copied because they are offline or missing."_s);
  EXPECT_EQ(browser_.mnurename_Click(), QStringList());
  EXPECT_EQ(browser_.mnudelete_Click(), (QStringList{a, b}));
  Select({b});
  browser_.mnuwallpaper_Click(WallpaperStyle::Tile);
  EXPECT_EQ(messages_.last(),
            u"The photo that you have selected is either offline or missing and thus cannot be use "
            u"as a wallpaper."_s);
  // While something runs nothing begins.
  const qsizetype told = messages_.size();
  const BusyRun run(busy_, u"Working"_s);
  EXPECT_EQ(browser_.mnudelete_Click(), QStringList());
  EXPECT_EQ(messages_.size(), told);
}

TEST_F(Browsing, AWallpaperIsABitmapOfTheWholePhoto) {
  const QString a = AddPhoto(u"a.jpg"_s);
  const QByteArray desktop = qgetenv("XDG_CURRENT_DESKTOP"), path = qgetenv("PATH");
  qputenv("XDG_CURRENT_DESKTOP", "LXQt");
  const QString tool = scratch_.Write("bin/pcmanfm-qt", "#!/bin/sh\nexit 0\n");
  QFile::setPermissions(tool, QFile::ReadOwner | QFile::ExeOwner);
  qputenv("PATH", scratch_.Path("bin").toUtf8());
  Browse();
  Select({a});
  browser_.mnuwallpaper_Click(WallpaperStyle::Center);
  qputenv("PATH", path);
  qputenv("XDG_CURRENT_DESKTOP", desktop);
  EXPECT_EQ(messages_,
            QStringList{u"The selected photo has been set as your desktop wallpaper."_s});
  EXPECT_EQ(QImage(session_->Folders().ScratchFolder() + u"/Wallpaper.bmp"_s, "BMP").size(),
            QSize(320, 200));
}

TEST_F(Browsing, ABrokenPhotoIsSaidToBe) {
  const QString broken = scratch_.Write("photos/broken.jpg", "not a picture");
  Browse();
  Select({broken});
  EXPECT_EQ(shown_.path, broken);
  EXPECT_TRUE(shown_.image.isNull());
  EXPECT_EQ(shown_.message, u"File could not be read as an image"_s);
  EXPECT_EQ(shown_.info.Text(Property::FileType), QString());
}

TEST_F(Browsing, TheFolderFollowsWhatHappensToIt) {
  const QString kept = AddPhoto(u"kept.jpg"_s), known = AddPhoto(u"known.jpg"_s),
                lost = AddPhoto(u"lost.jpg"_s);
  CatalogueThem({known});
  Browse();
  Select({known});
  QFile::remove(known);
  QFile::remove(lost);
  const QString added = AddPhoto(u"new.jpg"_s);
  ASSERT_TRUE(test::Eventually([&] { return browser_.Thumbnails().IndexOf(added) >= 0; }));
  EXPECT_EQ(Names(), (QStringList{u"kept.jpg"_s, u"known.jpg"_s, u"new.jpg"_s}));
  ASSERT_TRUE(test::Eventually([this] { return shown_.offline; }));
  QDir(scratch_.Path("photos")).removeRecursively();
  ASSERT_TRUE(test::Eventually([&] { return browser_.Thumbnails().ImageCount() == 1; }));
  EXPECT_EQ(Names(), QStringList{u"known.jpg"_s});
  browser_.LoadFolder(scratch_.Path("photos"));
  EXPECT_EQ(browser_.EmptyReason(), u"File is offline or missing"_s);
}

TEST_F(Browsing, TheLastFolderIsRememberedWhenTheUserWantsIt) {
  browser_.FolderTreeview1_FolderClick(scratch_.Path("photos"));
  EXPECT_EQ(session_->CurrentSettings().StartupFolder, QString());
  Settings settings = session_->CurrentSettings();
  settings.StartupType = u"LastOpened"_s;
  ASSERT_TRUE(session_->ChangeSettings(settings));
  browser_.FolderTreeview1_FolderClick(scratch_.Path(), false);
  EXPECT_EQ(session_->CurrentSettings().StartupFolder, QString());
  browser_.FolderTreeview1_FolderClick(scratch_.Path("photos"));
  EXPECT_EQ(session_->Core().ReadSettings().StartupFolder, scratch_.Path("photos"));
}

TEST_F(Browsing, ClosingSavesAndIsRefusedDuringWork) {
  const QString a = AddPhoto(u"a.jpg"_s);
  CatalogueThem({a});
  Browse();
  Select({a});
  At(KeywordField::Notes).Edit(u"last words"_s);
  {
    const BusyRun run(busy_, u"Working. Please wait..."_s);
    EXPECT_FALSE(browser_.MayClose());
    EXPECT_EQ(Stored(a, Column::Notes), QString());
    // A folder click and a selection wait, too.
    browser_.FolderTreeview1_FolderClick(scratch_.Path());
    EXPECT_EQ(browser_.Folder(), scratch_.Path("photos"));
    browser_.OnImageSelect({});
    EXPECT_EQ(kept_, 1);
    EXPECT_EQ(browser_.Selected(), QStringList{a});
  }
  EXPECT_TRUE(browser_.MayClose());
  EXPECT_EQ(Stored(a, Column::Notes), u"last words"_s);
}

}  // namespace
}  // namespace zqm
