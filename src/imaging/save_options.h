// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/codec.h"
#include "imaging/file_parameters.h"

namespace zqm {

/// The save options that were set as file parameters, by their keys (`JPEG_QUALITY`, …); the
/// defaults of `SaveOptions` for the rest. Texts that are no numbers count as not set, numbers out
/// of an option's range as the nearest one in it.
SaveOptions ReadSaveOptions(const FileParameters& parameters);

/// Whether this is the key of a save option, letter case ignored.
bool IsSaveKey(QStringView key);

}  // namespace zqm
