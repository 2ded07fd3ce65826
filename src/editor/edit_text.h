// SPDX-License-Identifier: GPL-3.0-or-later
// What the photo editor says.
#pragma once

namespace zqm::edit_text {

inline constexpr char16_t kOffline[] =
    u"The selected image is either missing or offline and thus cannot be edited.";
inline constexpr char16_t kPreparing[] = u"Preparing image for editing. Please wait...";
inline constexpr char16_t kInvalidAngle[] = u"Invalid rotation angle.";
inline constexpr char16_t kInvalidTolerance[] = u"Invalid Tolerance Value.";
inline constexpr char16_t kSaveTitle[] = u"File open";
inline constexpr char16_t kQuickPrintJob[] = u"Zolmira QM Quick Print";

}  // namespace zqm::edit_text
