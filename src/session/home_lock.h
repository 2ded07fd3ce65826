// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <memory>

#include "shell/result.h"

namespace zqm {

namespace platform {
class FileLock;
}

/// The right of one process to write in a home. Let go by the destructor and, whatever happens, by
/// the end of the process.
class HomeLock {
 public:
  explicit HomeLock(const QString& folder);
  ~HomeLock();
  HomeLock(HomeLock&&) noexcept;
  HomeLock& operator=(HomeLock&&) noexcept;

  /// Reasons: another living process holds it, or the lock can't be written.
  Outcome Take();

 private:
  QString path_;
  std::unique_ptr<platform::FileLock> file_;
};

inline constexpr char16_t kReasonRunning[] = u"Zolmira QM is running. Close it first.";

}  // namespace zqm
