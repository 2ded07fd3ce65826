// SPDX-License-Identifier: GPL-3.0-or-later
// What the questions for picture files offer, each as "Description (*.ext)".
#pragma once

#include <QString>
#include <QStringList>

namespace zqm {

/// "All Supported Formats" with every extension, then a line for each format.
QStringList OpenPictureFilters();

/// A line for each format that can be written, JPEG first.
QStringList SavePictureFilters();

/// A path that was typed for saving: without an extension it gets that of the first line.
QString WithSaveExtension(const QString& path);

}  // namespace zqm
