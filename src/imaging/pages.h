// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/codec.h"

namespace zqm {

/// Whether a file holds more pictures than the one that is shown, which encoding it anew would
/// lose: further pages of a TIFF (smaller versions of the first one don't count), frames of a GIF,
/// layers of a PSD.
bool HasSeveralPages(ByteView file, const Codec& codec);

}  // namespace zqm
