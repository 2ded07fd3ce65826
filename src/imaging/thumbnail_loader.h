// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>
#include <QThreadPool>
#include <QTimer>
#include <deque>
#include <memory>
#include <mutex>

#include "imaging/photo_reader.h"

namespace zqm {

/// Reads thumbnails beside the interface thread, a few at a time. Whoever owns it says which one is
/// wanted next whenever there is room, so that the order follows the view and nothing stale queues
/// up. Results arrive on the interface thread in small lots.
class ThumbnailLoader : public QObject {
  Q_OBJECT
 public:
  struct Wish {
    quint64 key = 0;  ///< the owner's, given back with the picture
    QString path;
    QByteArray stored;  ///< a JPEG to decode instead of the file; may be empty
  };

  ThumbnailLoader();
  ~ThumbnailLoader() override;

  /// Whether another wish would be begun at once.
  bool HasRoom() const { return running_ < mostRunning_; }
  void Begin(const Wish& wish, const QSize& box, const ReadRequest& request);

 Q_SIGNALS:
  /// A null picture: the file can't be read.
  void Arrived(quint64 key, const QImage& picture);
  /// There is room again.
  void RoomMade();

 private:
  struct Picture {
    quint64 key;
    QImage image;
  };
  struct Inbox {
    std::mutex mutex;
    std::deque<Picture> pictures;
  };

  void TakeLot();

  QThreadPool pool_;
  int mostRunning_;
  int running_ = 0;
  std::shared_ptr<Inbox> inbox_ = std::make_shared<Inbox>();
};

}  // namespace zqm
