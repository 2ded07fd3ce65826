// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/decode_ahead.h"

#include <QFileInfo>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <memory>

namespace zqm {

DecodeAhead::DecodeAhead(QStringList paths, ReadRequest request,
                         std::function<bool(const QString&)> wanted)
    : paths_(std::move(paths)), request_(request), wanted_(std::move(wanted)) {
  pool_.setMaxThreadCount(QThread::idealThreadCount());
  Fill();
}

DecodeAhead::~DecodeAhead() {
  pool_.clear();
  pool_.waitForDone();
}

void DecodeAhead::Start(qsizetype index) {
  const QString& path = paths_.at(index);
  auto task = std::make_shared<std::packaged_task<Result<PhotoFile>()>>(
      [path, request = request_] { return ReadPhotoFile(path, request); });
  const qint64 bytes = QFileInfo(path).size();
  bytesInFlight_ += bytes;
  readings_.push_back({index, bytes, task->get_future()});
  pool_.start([task] { (*task)(); });
}

// Enough in flight that no worker waits for the rows to be written, few enough, in number and in
// bytes, that large files in memory don't add up.
void DecodeAhead::Fill() {
  constexpr qint64 kMostBytes = 256 << 20;
  const auto most = static_cast<std::size_t>(2 * pool_.maxThreadCount() + 2);
  while (readings_.size() < most && next_ < paths_.size() &&
         (readings_.empty() || bytesInFlight_ < kMostBytes)) {
    const qsizetype index = next_++;
    if (wanted_(paths_.at(index))) Start(index);
  }
}

DecodeAhead::Reading DecodeAhead::TakeFirst() {
  Reading first = std::move(readings_.front());
  readings_.pop_front();
  bytesInFlight_ -= first.bytes;
  return first;
}

Result<PhotoFile> DecodeAhead::Take(qsizetype index, const std::function<void()>& wait) {
  while (!readings_.empty() && readings_.front().index < index)
    TakeFirst();
  Fill();
  if (readings_.empty() || readings_.front().index != index) {
    // It was passed over: everything in flight comes later in the list.
    Start(index);
    std::rotate(readings_.begin(), readings_.end() - 1, readings_.end());
  }
  std::future<Result<PhotoFile>> photo = TakeFirst().photo;
  Fill();
  while (photo.wait_for(std::chrono::milliseconds(30)) != std::future_status::ready)
    wait();
  return photo.get();
}

}  // namespace zqm
