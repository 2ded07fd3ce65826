// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace zqm {

/// The picture in Indexed8 with at most that many colours, 2 to 256. Equal pictures come out equal.
/// Null when there is no memory for it.
QImage Quantised(const QImage& picture, int colours);

}  // namespace zqm
