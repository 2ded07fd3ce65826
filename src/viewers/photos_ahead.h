// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QSize>
#include <QString>
#include <QStringList>
#include <atomic>
#include <map>
#include <memory>
#include <optional>

#include "imaging/progress.h"
#include "imaging/view_reader.h"
#include "shell/result.h"

namespace zqm {

/// Photos as a viewer steps through them: the one on the screen and those that may come next, read
/// beside the interface thread before they are asked for. Its end waits for no reading.
class PhotosAhead : public QObject {
  Q_OBJECT
 public:
  explicit PhotosAhead(const ReadRequest& request);
  ~PhotosAhead() override;

  /// Device pixels that photos are decoded to fill; empty for the full size. Another size forgets
  /// what was read for less; larger pictures stay.
  void SetBox(const QSize& box);
  /// Whether pictures and their sizes are given upright, by the orientation tag; they aren't at
  /// first. A change forgets all that was read.
  void SetUpright(bool upright);

  /// Reads these, the first one first, but for what is at hand; all others are forgotten, and what
  /// was read of a file that has changed. So few photos are kept as are named here.
  void Want(const QStringList& paths);
  /// What was read, or why it couldn't be; null while it is being read and for what isn't wanted.
  const Result<ViewPhoto>* Get(const QString& path) const;
  bool IsReading(const QString& path) const;
  /// How much of a wanted photo has been read, 0 to 99.
  int Percent(const QString& path) const;

 Q_SIGNALS:
  /// From the interface thread's event loop.
  void Ready(const QString& path);

 private:
  struct Receiver;
  struct Entry {
    std::shared_ptr<std::atomic<bool>> wanted;  ///< false: the reading may be passed over
    std::optional<Result<ViewPhoto>> photo;
    QString stamp;  ///< the file's, before it was read
    QSize box;      ///< for which it is read
    std::shared_ptr<ProgressSink> progress = std::make_shared<ProgressSink>();

    /// Whether another reading for that box would give no more pixels.
    bool IsEnoughFor(const QSize& wantedBox) const;

    ~Entry() {
      if (wanted) *wanted = false;
    }
  };

  void Start(const QString& path, Entry& entry, int priority);

  ReadRequest request_;
  QSize box_;
  bool upright_ = false;
  std::map<QString, std::unique_ptr<Entry>> entries_;
  std::shared_ptr<Receiver> receiver_;
};

}  // namespace zqm
