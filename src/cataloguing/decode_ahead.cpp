// SPDX-License-Identifier: GPL-3.0-or-later
#include "cataloguing/decode_ahead.h"

#include <QThread>
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

// Enough in flight that no worker waits for the rows to be written, few enough that whole camera
// RAW files in memory don't add up.
void DecodeAhead::Fill() {
  const auto most = static_cast<std::size_t>(2 * pool_.maxThreadCount() + 2);
  while (readings_.size() < most && next_ < paths_.size()) {
    const qsizetype index = next_++;
    const QString& path = paths_.at(index);
    if (!wanted_(path)) continue;
    auto task = std::make_shared<std::packaged_task<Result<PhotoFile>()>>(
        [path, request = request_] { return ReadPhotoFile(path, request); });
    readings_.push_back({index, task->get_future()});
    pool_.start([task] { (*task)(); });
  }
}

Result<PhotoFile> DecodeAhead::Take(qsizetype index, const std::function<void()>& wait) {
  while (!readings_.empty() && readings_.front().index < index) {
    readings_.front().photo.wait();
    readings_.pop_front();
  }
  if (readings_.empty() || readings_.front().index != index) {
    Fill();
    if (readings_.empty() || readings_.front().index != index)
      return ReadPhotoFile(paths_.at(index), request_);
  }
  std::future<Result<PhotoFile>> photo = std::move(readings_.front().photo);
  readings_.pop_front();
  Fill();
  while (photo.wait_for(std::chrono::milliseconds(30)) != std::future_status::ready)
    wait();
  return photo.get();
}

}  // namespace zqm
