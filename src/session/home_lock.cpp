// SPDX-License-Identifier: GPL-3.0-or-later
#include "session/home_lock.h"

#include <cerrno>

#include "shell/files.h"
#include "shell/platform.h"

namespace zqm {

HomeLock::HomeLock(const QString& folder)
    : path_(folder + QStringLiteral("/zolmira-qm.lock")),
      file_(std::make_unique<platform::FileLock>()) {}

HomeLock::~HomeLock() = default;
HomeLock::HomeLock(HomeLock&&) noexcept = default;
HomeLock& HomeLock::operator=(HomeLock&&) noexcept = default;

Outcome HomeLock::Take() {
  const int problem = file_->Take(path_);
  if (problem == 0) return {};
  if (problem == EWOULDBLOCK) return Failure{QString::fromUtf16(kReasonRunning)};
  return Failure{path_ + QStringLiteral(": ") + ReasonForErrno(problem)};
}

}  // namespace zqm
