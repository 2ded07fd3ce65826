// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/codec.h"

namespace zqm {

/// `Codec::save` of TIFF.
Result<QByteArray> SaveTiff(const QImage& picture, const SaveOptions& options,
                            const FileBlocks& blocks);

}  // namespace zqm
