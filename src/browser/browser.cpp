// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/browser.h"

#include <algorithm>
#include <numeric>

#include "browser/thumbnail_marks.h"
#include "cataloguing/folder_import.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr char16_t kOffline[] = u" is missing or is offline.";

/// Flagged photos first, rejected ones last.
int FlagRank(const QString& flag) {
  if (flag == u"Flagged") return 0;
  if (flag == u"Rejected") return 3;
  return flag.isEmpty() ? 2 : 1;
}

std::vector<ThumbnailLook> LooksOf(const std::vector<QString>& flags) {
  std::vector<ThumbnailLook> looks;
  looks.reserve(flags.size());
  for (const QString& flag : flags)
    looks.push_back(flag.isNull() ? UncataloguedLook() : CataloguedLook(flag));
  return looks;
}

template <class Key>
std::vector<int> StableOrder(const std::vector<Key>& keys) {
  std::vector<int> order(keys.size());
  std::iota(order.begin(), order.end(), 0);
  std::ranges::stable_sort(order, [&keys](int a, int b) {
    return keys[static_cast<std::size_t>(a)] < keys[static_cast<std::size_t>(b)];
  });
  return order;
}

}  // namespace

Browser::Browser(Session& session, Busy& busy)
    : session_(session),
      catalogue_(session.ActiveCatalogue()),
      busy_(busy),
      keywords_(catalogue_, busy, [this] { return selected_; }) {
  thumbnails_.SetStoredThumbnails([this](const QString& path) { return StoredThumbnail(path); });
  RAWandCMSSettings();
  connect(&loader_, &PhotoLoader::Loaded, this, &Browser::ShowLoaded);
  connect(&watch_, &FolderWatch::FolderChanged, this, &Browser::OnFolderChanged);
  connect(&watch_, &FolderWatch::PhotoChanged, this, &Browser::OnPhotoChanged);
  connect(&keywords_, &KeywordFields::Saved, this, [this](KeywordField field) {
    if (field == KeywordField::Flag) RefreshMarks();
  });
}

Browser::~Browser() = default;

QString Browser::Counter() const {
  const int count = thumbnails_.ImageCount();
  if (count == 0) return u"0 Photo / 0 Selected"_s;
  if (justLoaded_) return QString::number(count) + u" Photos"_s + u" / "_s + u" 0 Selected"_s;
  return QString::number(count) + u" Photos / "_s + QString::number(selected_.size()) +
         u" Selected"_s;
}

void Browser::RAWandCMSSettings() {
  thumbnails_.SetReadRequest(session_.ReadSettings());
}

bool Browser::Refused() {
  if (!keywords_.Queue().isEmpty()) busy_.Refuse();
  return !keywords_.Queue().isEmpty() || busy_.IsUp();
}

void Browser::FolderTreeview1_FolderClick(const QString& path, bool remember) {
  if (Refused() || !keywords_.CheckUpdate()) return;
  LoadFolder(path);
  Settings settings = session_.CurrentSettings();
  if (!remember || settings.StartupType != u"LastOpened" || settings.StartupFolder == path) return;
  settings.StartupFolder = path;
  // Where the next start begins isn't worth a message.
  (void)session_.ChangeSettings(settings);
}

void Browser::ClearForLoad() {
  watch_.WatchFolder(QString());
  SetSelection({});
  thumbnails_.Clear();
  emptyReason_.clear();
  justLoaded_ = true;
  keywords_.ResetKeywords();
  DisableKeywords(QString());
  Q_EMIT PhotoCleared();
  Q_EMIT StatusChanged(QString(), QString());
}

void Browser::LoadFolder(const QString& path) {
  if (path.isEmpty()) return;
  source_ = Source::Folder;
  folder_ = StripSlash(path);
  ClearForLoad();
  {
    BusyRun run(busy_, QString::fromUtf16(browser_text::kRetrieving));
    FailureList unread;
    const QStringList paths =
        RunAside([&unread, this] { return ScanFolder(folder_, false, unread); });
    const auto failed = std::ranges::find(unread.rows, folder_, &FailureRow::File);
    if (failed != unread.rows.end()) emptyReason_ = failed->Reason;
    thumbnails_.AppendImages(paths);
    RefreshMarks();
  }
  watch_.WatchFolder(folder_);
  Q_EMIT ListLoaded();
  Q_EMIT CounterChanged(Counter());
}

void Browser::RefreshMarks() {
  thumbnails_.SetLooks(LooksOf(catalogue_.Photos().TextsOf(Column::Flag, thumbnails_.FileNames())));
}

void Browser::MarkCatalogued(const QString& path) {
  if (const int at = thumbnails_.IndexOf(path); at >= 0)
    thumbnails_.SetLook(at, CataloguedLook(QString()));
}

QByteArray Browser::StoredThumbnail(const QString& path) {
  // Asked for while thumbnails are drawn: a row that is being edited must stay the current one.
  const auto stored = catalogue_.Photos().ThumbnailOf(path);
  return stored ? *stored : QByteArray();
}

// The selection.

void Browser::SetSelection(const QStringList& selected) {
  selected_ = selected;
  loader_.Drop();
  watch_.WatchPhoto(selected.size() == 1 ? selected.first() : QString());
}

void Browser::OnImageSelect(const QStringList& selected) {
  if (removing_ || selected == selected_) return;
  if (busy_.IsUp() || !keywords_.CheckUpdate()) {
    Q_EMIT SelectionKept();
    return;
  }
  SetSelection(selected);
  justLoaded_ = false;
  Q_EMIT CounterChanged(Counter());
  ProcessSelection();
}

void Browser::ProcessSelection() {
  if (selected_.size() == 1) return ProcessSingleImage();
  if (selected_.size() > 1) return ProcessMultipleImages();
  keywords_.ResetKeywords();
  DisableKeywords(QString());
  Q_EMIT PhotoCleared();
  Q_EMIT StatusChanged(QString(), QString());
}

void Browser::RefreshLive() {
  live_ = true;
  loader_.Drop();
  RefreshMarks();
  ProcessSelection();
  live_ = false;
}

void Browser::UpdateLive() {
  if (selected_.size() != 1) return;
  const QString& path = selected_.first();
  if (FileExists(path) && !ReadOnlyFile(path))
    loader_.Load(path, viewBox_, session_.ReadSettings());
}

void Browser::DisableKeywords(const QString& why) {
  Q_EMIT KeywordsEnabled(false, why);
}

void Browser::EnableKeywords() {
  const QString why = WhyNotEditable(catalogue_, selected_);
  Q_EMIT KeywordsEnabled(why.isEmpty(), why);
}

void Browser::ProcessSingleImage() {
  const QString path = selected_.first();
  const bool catalogued = catalogue_.Photos().LocateRow(path);
  if (catalogued)
    keywords_.LoadRow();
  else
    keywords_.ResetKeywords();
  EnableKeywords();
  if (!FileExists(path)) return ShowOffline(path);
  Q_EMIT StatusChanged(QString(), QString());
  if (const int at = thumbnails_.IndexOf(path); at >= 0) thumbnails_.SetOffline(at, false);
  ShowAtHand(path);
  loader_.Load(path, viewBox_, session_.ReadSettings());
}

void Browser::ShowOffline(const QString& path) {
  EnableKeywords();
  ShownPhoto shown{path, EmptyPhotoInfo()};
  shown.offline = true;
  PhotoRecordset& photos = catalogue_.Photos();
  if (photos.LocateRow(path)) {
    shown.info = LoadInfoFromDatabase(photos);
    if (const auto thumbnail = photos.ReadThumbnail())
      shown.image.loadFromData(*thumbnail);
    else
      shown.message = thumbnail.Reason();
    shown.fullSize = shown.image.size();
  }
  if (const int at = thumbnails_.IndexOf(path); at >= 0) thumbnails_.SetOffline(at, true);
  Q_EMIT StatusChanged(GetFileName(path), QString::fromUtf16(kOffline));
  Q_EMIT PhotoShown(shown);
}

/// The thumbnail stands in until the photo is read.
void Browser::ShowAtHand(const QString& path) {
  ShownPhoto shown{path, EmptyPhotoInfo()};
  shown.standIn = true;
  const int at = thumbnails_.IndexOf(path);
  if (at >= 0) shown.image = thumbnails_.index(at).data(ThumbnailList::PictureRole).value<QImage>();
  // How large the photo is shows when it is read; until then it fills the view.
  constexpr int kSurelyLarger = 100;
  shown.fullSize = shown.image.size() * kSurelyLarger;
  Q_EMIT PhotoShown(shown);
}

void Browser::ShowLoaded(const QString& path, const Result<ViewPhoto>& photo) {
  if (selected_.size() != 1 || selected_.first() != path) return;
  ShownPhoto shown{path, EmptyPhotoInfo()};
  if (!photo) {
    if (!FileExists(path)) return ShowOffline(path);
    shown.message = photo.Reason();
  } else {
    shown.info = FilePhotoInfo(path, photo->file);
    shown.image = photo->image;
    shown.fullSize = photo->fullSize;
    shown.message = photo->reason;
  }
  Q_EMIT PhotoShown(shown);
}

void Browser::LoadFullSize() {
  if (selected_.size() == 1 && FileExists(selected_.first()))
    loader_.Load(selected_.first(), QSize(), session_.ReadSettings());
}

void Browser::ProcessMultipleImages() {
  if (!live_) keywords_.ResetKeywords();
  EnableKeywords();
  Q_EMIT PhotoCleared();
  Q_EMIT StatusChanged(QString(), QString::number(selected_.size()) + u" photos selected"_s);
}

// What changes under the program.

void Browser::OnPhotoChanged(const QString& path) {
  if (selected_.size() != 1 || selected_.first() != path) return;
  if (const int at = thumbnails_.IndexOf(path); at >= 0) thumbnails_.UpdateImage(at);
  if (!FileExists(path))
    ShowOffline(path);
  else
    loader_.Load(path, viewBox_, session_.ReadSettings());
}

/// The selection goes on without them.
void Browser::RemoveFromList(const QStringList& paths) {
  if (paths.isEmpty()) return;
  const QSet<QString> gone(paths.begin(), paths.end());
  QStringList left = selected_;
  left.removeIf([&gone](const QString& path) { return gone.contains(path); });
  const bool sameSelection = left.size() == selected_.size();
  // A view tells each stretch of rows that goes.
  removing_ = true;
  thumbnails_.DeleteImages(paths);
  removing_ = false;
  if (!sameSelection) SetSelection(left);
  Q_EMIT SelectionKept();
  Q_EMIT CounterChanged(Counter());
  if (!sameSelection) ProcessSelection();
}

void Browser::OnFolderChanged() {
  if (source_ != Source::Folder || busy_.IsUp() || holds_ > 0) return;
  Guarded("browser", "OnFolderChanged", [this] {
    FailureList unread;
    const QString folder = folder_;
    const QStringList now =
        RunAside([&unread, &folder] { return ScanFolder(folder, false, unread); });
    if (source_ != Source::Folder || folder != folder_) return;
    const QSet<QString> standing(now.begin(), now.end());
    QStringList gone;
    bool turned = false;  // a photo has gone offline, or come back
    for (const QString& path : thumbnails_.FileNames()) {
      const bool away = !standing.contains(path);
      const int at = thumbnails_.IndexOf(path);
      // A photo with a row stays, as the row has it.
      if (away && !catalogue_.Photos().IsCatalogued(path)) {
        gone.append(path);
      } else if (thumbnails_.IsOffline(at) != away) {
        thumbnails_.SetOffline(at, away);
        turned = true;
      }
    }
    QStringList added = now;
    added.removeIf([this](const QString& path) { return thumbnails_.IndexOf(path) >= 0; });
    RemoveFromList(gone);
    thumbnails_.AppendImages(added);
    if (turned || !added.isEmpty()) RefreshMarks();
    if (gone.isEmpty() && added.isEmpty()) return;
    if (selected_.size() > 1 || thumbnails_.ImageCount() == 0) justLoaded_ = false;
    Q_EMIT CounterChanged(Counter());
  });
}

// Commands.

void Browser::Sort(const QString& busyText, const std::function<std::vector<int>()>& order) {
  if (Refused()) return;
  BusyRun run(busy_, busyText);
  thumbnails_.Reorder(order());
}

void Browser::mnusort_Click() {
  Sort(u"Sorting photos by name. Please wait..."_s, [this] {
    std::vector<QString> names;
    for (const QString& path : thumbnails_.FileNames())
      names.push_back(GetFileName(path).toLower());
    return StableOrder(names);
  });
}

void Browser::mnusortflag_Click() {
  Sort(u"Sorting photos by flag status. Please wait..."_s, [this] {
    std::vector<int> ranks;
    for (const QString& flag : catalogue_.Photos().TextsOf(Column::Flag, thumbnails_.FileNames()))
      ranks.push_back(FlagRank(flag));
    return StableOrder(ranks);
  });
}

bool Browser::MayClose() {
  if (released_) return true;
  if (Refused()) return false;
  if (keywords_.CheckUpdate()) return true;
  return MsgBox(u"Close all the same and lose these changes?"_s, MessageKind::Question,
                Buttons::YesNo) == Answer::Yes;
}

}  // namespace zqm
