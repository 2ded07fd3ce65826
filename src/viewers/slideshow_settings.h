// SPDX-License-Identifier: GPL-3.0-or-later
// What a slideshow is started with: how long a photo stays and how the next one comes.
#pragma once

#include <QString>
#include <chrono>

#include "shell/result.h"

namespace zqm {

/// "STRN.dat" in the state folder. A missing, short or long file gives the defaults.
struct SlideshowSettings {
  int transition = 0;                      ///< number in `Transitions()`
  QString duration = QStringLiteral("5");  ///< seconds, as the user types them
  bool operator==(const SlideshowSettings&) const = default;
};
SlideshowSettings LoadTransition(const QString& folder);
Outcome SaveTransition(const QString& folder, int transition, double seconds);

/// How long a slide is shown, for what was typed as seconds, or a message to the user.
Result<std::chrono::milliseconds> SlideInterval(const QString& typed);

namespace slideshow_text {
inline constexpr char16_t kNoDuration[] = u"Enter slide duration.";
inline constexpr char16_t kInvalidDuration[] = u"Invalid Slide Duration.";
inline constexpr char16_t kTooShort[] = u"Slide duration should be at least 5 seconds.";
inline constexpr char16_t kTooLong[] = u"Slide duration should be less than 60 seconds.";
}  // namespace slideshow_text

}  // namespace zqm
