// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/thumbnail_loader.h"

#include <QElapsedTimer>
#include <QMetaObject>

#include "imaging/thumbnail.h"
#include "imaging/view_reader.h"

namespace zqm {
namespace {

/// Time that one turn of the event loop gives to new pictures.
constexpr int kLotMilliseconds = 8;

QImage ReadStored(const QByteArray& jpeg, const QSize& box) {
  QImage picture;
  picture.loadFromData(jpeg, "JPEG");
  return FitThumbnail(picture, box);
}

}  // namespace

ThumbnailLoader::ThumbnailLoader() {
  pool_.setMaxThreadCount(std::max(1, QThread::idealThreadCount()));
  pool_.setThreadPriority(QThread::LowPriority);
  // One more than there are threads, so that none waits for the interface.
  mostRunning_ = pool_.maxThreadCount() + 1;
}

ThumbnailLoader::~ThumbnailLoader() {
  pool_.clear();
  pool_.waitForDone();
}

void ThumbnailLoader::Begin(const Wish& wish, const QSize& box, const ReadRequest& request) {
  ++running_;
  pool_.start([this, wish, box, request, inbox = inbox_] {
    Picture picture{wish.key, {}};
    if (!wish.stored.isEmpty()) {
      picture.image = ReadStored(wish.stored, box);
    } else if (const Result<QImage> read = ReadThumbnailPicture(wish.path, box, request)) {
      picture.image = *read;
    }
    const std::scoped_lock lock(inbox->mutex);
    inbox->pictures.push_back(std::move(picture));
    if (inbox->pictures.size() == 1)
      QMetaObject::invokeMethod(this, &ThumbnailLoader::TakeLot, Qt::QueuedConnection);
  });
}

void ThumbnailLoader::TakeLot() {
  QElapsedTimer time;
  time.start();
  for (;;) {
    Picture picture;
    {
      const std::scoped_lock lock(inbox_->mutex);
      if (inbox_->pictures.empty()) break;
      if (time.elapsed() > kLotMilliseconds) {
        QMetaObject::invokeMethod(this, &ThumbnailLoader::TakeLot, Qt::QueuedConnection);
        break;
      }
      picture = std::move(inbox_->pictures.front());
      inbox_->pictures.pop_front();
    }
    --running_;
    Q_EMIT Arrived(picture.key, picture.image);
    Q_EMIT RoomMade();
  }
}

}  // namespace zqm
