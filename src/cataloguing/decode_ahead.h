// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QThreadPool>
#include <deque>
#include <functional>
#include <future>

#include "imaging/photo_reader.h"

namespace zqm {

/// Reads the photos of a list ahead of their turn on a bounded pool, a few in flight at a time, and
/// hands them over in list order. All calls come from one thread; the destructor waits for what is
/// still being read.
class DecodeAhead {
 public:
  /// `wanted` is asked once for each path when its reading would begin; others are passed over.
  DecodeAhead(QStringList paths, ReadRequest request,
              std::function<bool(const QString& path)> wanted);
  ~DecodeAhead();

  /// The photo at `index`, 0 to the list's end, each index at most once and in rising order; also
  /// one that was passed over. `wait` runs about every 30 ms while the photo isn't ready.
  Result<PhotoFile> Take(qsizetype index, const std::function<void()>& wait);

 private:
  struct Reading {
    qsizetype index;
    qint64 bytes;  ///< of the file
    std::future<Result<PhotoFile>> photo;
  };

  void Start(qsizetype index);
  void Fill();
  Reading TakeFirst();

  QStringList paths_;
  ReadRequest request_;
  std::function<bool(const QString&)> wanted_;
  qsizetype next_ = 0;
  std::deque<Reading> readings_;
  qint64 bytesInFlight_ = 0;
  QThreadPool pool_;
};

}  // namespace zqm
