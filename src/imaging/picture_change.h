// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <functional>

namespace zqm {

/// Makes a picture of a picture, beside the interface thread; null when there is no memory for it.
using PictureChange = std::function<QImage(const QImage&)>;

}  // namespace zqm
