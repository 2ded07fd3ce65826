// SPDX-License-Identifier: GPL-3.0-or-later
// What the photo editor keeps between runs: three small record files in the state folder. A
// missing, short, long or foreign file gives the defaults.
#pragma once

#include <QColor>
#include <QString>
#include <optional>

#include "shell/result.h"

namespace zqm {

/// "Magic.dat": how far a colour may be from the one that was clicked.
struct MagicWandSettings {
  int tolerance = 10;
  std::optional<QString> typed;  ///< for the box; nothing leaves it as it is
};
MagicWandSettings LoadMagicWandSettings(const QString& folder);
/// "Invalid Tolerance Value." for a text that isn't a number. One of more than two characters has
/// no place in the record and raises `Error` (kRecordLength).
Outcome SaveMagicWandSettings(const QString& folder, const QString& typed);

/// "RSZ.dat": the resize panel.
struct ResizePanel {
  QString dpi = QStringLiteral("72");
  int filter = 0;  ///< place in the list (`kEditorFilters`)
  bool keepAspect = false;
  bool operator==(const ResizePanel&) const = default;
};
ResizePanel LoadResizeSettings(const QString& folder);
Outcome SaveResizeSettings(const QString& folder, const ResizePanel& panel);

/// "WTM.dat": the watermark panel. Numbers as they are typed.
struct WatermarkPanel {
  QString text = QStringLiteral("© Your Name");
  QString size = QStringLiteral("80");  ///< pixels
  QString angle = QStringLiteral("0");  ///< degrees
  QString fontName;                     ///< "" is the first of the list
  QColor colour{255, 255, 255};
  bool bold = false, underline = false, italic = false, strikeout = false;
  int transparency = 255;  ///< 0 to 255 opaque
  bool operator==(const WatermarkPanel&) const = default;
};
WatermarkPanel LoadWatermarkSettings(const QString& folder);
Outcome SaveWatermarkSettings(const QString& folder, const WatermarkPanel& panel);

}  // namespace zqm
