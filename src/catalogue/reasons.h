// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace zqm {

// Why a statement or a file could not be carried out, in words for the user.
inline constexpr char16_t kReasonDatabaseReadOnly[] = u"The database is read-only";
inline constexpr char16_t kReasonDatabaseLocked[] = u"The database is locked by another program";
inline constexpr char16_t kReasonDiskFull[] = u"The disk is full";
inline constexpr char16_t kReasonDiskFailed[] = u"The disk could not be read or written";

}  // namespace zqm
