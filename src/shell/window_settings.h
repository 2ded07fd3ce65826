// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSettings>

namespace zqm {

/// What windows keep between runs, such as their geometry: kept the desktop's way, beside the
/// record files.
inline QSettings WindowSettings() {
  return QSettings(QStringLiteral("Zolmira"), QStringLiteral("QM"));
}

}  // namespace zqm
