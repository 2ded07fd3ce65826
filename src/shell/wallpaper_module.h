// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include "shell/result.h"

namespace zqm {

enum class WallpaperStyle { Center, Stretch, Tile };

/// Makes a picture the wallpaper of the desktop that runs, by that desktop's own tool: GNOME and its
/// kin, KDE Plasma, Xfce, Cinnamon, MATE, LXQt, LXDE, Sway, and otherwise feh or xwallpaper. Which
/// one it is says `XDG_CURRENT_DESKTOP`. Fails when no tool is known or found, or when it says no.
/// `picture` is an absolute path; the file must stay.
Outcome ChangeWallPaper(const QString& picture, WallpaperStyle style);

}  // namespace zqm
