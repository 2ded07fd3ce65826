// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewers/photos_ahead.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThreadPool>
#include <mutex>

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

/// Threads enough that a photo that is slow to read doesn't hold up the next one, on two sides.
class ReadingThreads : public QThreadPool {
 public:
  ReadingThreads() {
    constexpr int kThreads = 4;
    setMaxThreadCount(kThreads);
    // What the decoders use is there as long as the application.
    qAddPostRoutine([] { Get().waitForDone(); });
  }
  static QThreadPool& Get() {
    static ReadingThreads threads;
    return threads;
  }
};

}  // namespace

struct PhotosAhead::Channel {
  std::mutex mutex;
  PhotosAhead* owner;  ///< null once it is gone
};

PhotosAhead::PhotosAhead(const ReadRequest& request)
    : request_(request), channel_(std::make_shared<Channel>()) {
  channel_->owner = this;
}

/// A reading under way ends by itself: a viewer that closes waits for none.
PhotosAhead::~PhotosAhead() {
  entries_.clear();
  const std::scoped_lock lock(channel_->mutex);
  channel_->owner = nullptr;
}

void PhotosAhead::SetBox(const QSize& box) {
  if (box == box_) return;
  box_ = box;
  entries_.clear();
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
    if (!entry) {
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

void PhotosAhead::Forget(const QString& path) {
  entries_.erase(path);
}

void PhotosAhead::Start(const QString& path, Entry& entry, int priority) {
  entry.wanted = std::make_shared<std::atomic<bool>>(true);
  const auto read = [path, box = box_, upright = upright_, request = request_,
                     wanted = entry.wanted, channel = channel_] {
    if (!*wanted) return;
    auto photo = std::make_shared<Result<ViewPhoto>>(ReadViewPhoto(path, box, request));
    if (upright && *photo) SetUp(**photo);
    const std::scoped_lock lock(channel->mutex);
    PhotosAhead* owner = channel->owner;
    if (owner == nullptr) return;
    const auto arrive = [owner, path, photo, wanted] {
      if (!*wanted) return;  // forgotten meanwhile, perhaps asked for anew
      owner->entries_.at(path)->photo = std::move(*photo);
      Q_EMIT owner->Ready(path);
    };
    QMetaObject::invokeMethod(owner, arrive, Qt::QueuedConnection);
  };
  ReadingThreads::Get().start(read, priority);
}

}  // namespace zqm
