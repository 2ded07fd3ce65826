// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/photos_ahead.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>
#include <QThreadPool>
#include <mutex>

#include "shell/platform.h"
#include "viewers/upright.h"

namespace zqm {
namespace {

void SetUp(ViewPhoto& photo) {
  const int tag = OrientationTag(photo.file.parameters);
  const bool hadPixels = !photo.image.isNull();
  photo.image = Upright(photo.image, tag);
  if (hadPixels && photo.image.isNull()) photo.reason = QStringLiteral("Not enough memory");
  photo.fullSize = UprightSize(photo.fullSize, tag);
}

/// Not of one viewer: a large photo that is still being read would hold up the end of its window.
QThreadPool& ReadingPool() {
  static QThreadPool pool;
  [[maybe_unused]] static const bool isSetUp = [] {
    // More than there are cores, so that photos that are slow to read on both sides of a comparison
    // don't hold up the next one.
    pool.setMaxThreadCount(QThread::idealThreadCount() + 1);
    // What is still being read ends with the application object: readers use other statics.
    qAddPostRoutine([] {
      pool.clear();
      pool.waitForDone();
    });
    return true;
  }();
  return pool;
}

}  // namespace

/// Where photos go that have been read; the viewer may be gone by then.
struct PhotosAhead::Receiver {
  std::mutex mutex;
  PhotosAhead* ahead;
};

PhotosAhead::PhotosAhead(const ReadRequest& request)
    : request_(request), receiver_(std::make_shared<Receiver>()) {
  receiver_->ahead = this;
}

PhotosAhead::~PhotosAhead() {
  const std::lock_guard lock(receiver_->mutex);
  receiver_->ahead = nullptr;
}

bool PhotosAhead::Entry::IsEnoughFor(const QSize& wantedBox) const {
  if (box.isEmpty()) return true;
  if (!wantedBox.isEmpty() && wantedBox.boundedTo(box) == wantedBox) return true;
  return photo && *photo && !(*photo)->image.isNull() &&
         (*photo)->image.size() == (*photo)->fullSize;
}

void PhotosAhead::SetBox(const QSize& box) {
  if (box == box_) return;
  box_ = box;
  std::erase_if(entries_, [&](const auto& entry) { return !entry.second->IsEnoughFor(box); });
}

void PhotosAhead::SetUpright(bool upright) {
  if (upright == upright_) return;
  upright_ = upright;
  entries_.clear();
}

void PhotosAhead::Want(const QStringList& paths) {
  std::erase_if(entries_, [&](const auto& entry) { return !paths.contains(entry.first); });
  int priority = static_cast<int>(paths.size());
  for (const QString& path : paths) {
    auto& entry = entries_[path];
    if (!entry || entry->stamp != platform::FileStamp(path)) {
      entry = std::make_unique<Entry>();
      Start(path, *entry, priority);
    }
    --priority;
  }
}

const Result<ViewPhoto>* PhotosAhead::Get(const QString& path) const {
  const auto entry = entries_.find(path);
  return entry == entries_.end() || !entry->second->photo ? nullptr : &*entry->second->photo;
}

bool PhotosAhead::IsReading(const QString& path) const {
  return entries_.contains(path) && Get(path) == nullptr;
}

int PhotosAhead::Percent(const QString& path) const {
  const auto entry = entries_.find(path);
  return entry == entries_.end() ? 0 : entry->second->progress->Percent();
}

void PhotosAhead::Start(const QString& path, Entry& entry, int priority) {
  entry.stamp = platform::FileStamp(path);
  entry.box = box_;
  entry.wanted = std::make_shared<std::atomic<bool>>(true);
  const auto read = [receiver = receiver_, path, box = box_, upright = upright_, request = request_,
                     wanted = entry.wanted, progress = entry.progress] {
    if (!*wanted) return;
    const ProgressScope scope(progress.get());
    auto photo = std::make_shared<Result<ViewPhoto>>(ReadViewPhoto(path, box, request));
    if (upright && *photo) SetUp(**photo);
    const std::lock_guard lock(receiver->mutex);
    PhotosAhead* const ahead = receiver->ahead;
    if (ahead == nullptr) return;
    const auto deliver = [ahead, path, photo, wanted] {
      if (!*wanted) return;  // forgotten meanwhile, perhaps asked for anew
      ahead->entries_.at(path)->photo = std::move(*photo);
      Q_EMIT ahead->Ready(path);
    };
    QMetaObject::invokeMethod(ahead, deliver, Qt::QueuedConnection);
  };
  ReadingPool().start(read, priority);
}

}  // namespace zqm
