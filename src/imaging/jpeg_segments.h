// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include "imaging/file_parameters.h"
#include "shell/result.h"

namespace zqm {

/// The same JPEG with the EXIF and IPTC blocks of `parameters` behind its start and JFIF segments;
/// the compressed picture stays byte for byte. The JPEG must not carry such blocks yet. Fails on
/// bytes that aren't a JPEG and on a block that no segment can hold (65,533 bytes).
Result<QByteArray> WithMetadata(const QByteArray& jpeg, const FileParameters& parameters);

}  // namespace zqm
