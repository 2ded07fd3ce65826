// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <functional>

namespace zqm {

/// What an effect does to a picture: pure, on any thread. A null picture means that there was no
/// memory for it.
using PictureChange = std::function<QImage(const QImage&)>;

}  // namespace zqm
