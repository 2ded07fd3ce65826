// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include "viewers/photo_values.h"
#include "viewers/photo_viewer.h"

namespace zqm {

/// "3 / 120".
QString PlaceText(int position, int count);

/// What lies over a photo that fills the screen, but for its name: place, size, date, exposure,
/// the user's values; a line for each that there is something to say of.
QStringList FullInfo(const ViewedPhoto& photo, int count, const PhotoValues& values);

}  // namespace zqm
