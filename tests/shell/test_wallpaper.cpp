// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QScopeGuard>

#include "shell/wallpaper_module.h"
#include "tests/support/print_text.h"
#include "tests/support/scratch.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// A machine that has only the tools of its folder, each of which writes down how it was called.
class Wallpaper : public ::testing::Test {
 protected:
  Wallpaper() : path_(qgetenv("PATH")), desktop_(qgetenv("XDG_CURRENT_DESKTOP")) {
    qputenv("PATH", scratch_.Path("bin").toUtf8());
  }
  ~Wallpaper() override {
    qputenv("PATH", path_);
    qputenv("XDG_CURRENT_DESKTOP", desktop_);
  }
  void Tool(const char* name, const QByteArray& does = "exit 0\n") {
    const QString tool =
        scratch_.Write(u"bin/"_s + QLatin1StringView(name),
                       "#!/bin/sh\n{ printf '%s' \"${0##*/}\"; for a in \"$@\"; do "
                       "printf ' [%s]' \"$a\"; done; printf '\\n'; } >> '" +
                           scratch_.Path("log").toUtf8() + "'\n" + does);
    QFile::setPermissions(tool, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  /// What was called, or the reason.
  QString Change(const char* desktop, const QString& picture, WallpaperStyle style) {
    QFile::remove(scratch_.Path("log"));
    qputenv("XDG_CURRENT_DESKTOP", desktop);
    const Outcome changed = ChangeWallPaper(picture, style);
    return changed ? QString::fromUtf8(test::Scratch::Read(scratch_.Path("log")))
                   : changed.Reason();
  }

  test::Scratch scratch_;
  QByteArray path_, desktop_;
};

const QString kPicture = u"/home/Jörg's/Wall paper.bmp"_s;

TEST_F(Wallpaper, EachDesktopByItsOwnTool) {
  for (const char* tool : {"gsettings", "dbus-send", "pcmanfm", "pcmanfm-qt", "swaymsg", "feh"})
    Tool(tool);
  const QString gnome = Change("ubuntu:GNOME", kPicture, WallpaperStyle::Center);
  const QString url = u"file:///home/J%C3%B6rg's/Wall%20paper.bmp"_s;
  EXPECT_TRUE(
      gnome.contains(u"[set] [org.gnome.desktop.background] [picture-options] [centered]\n"_s));
  EXPECT_TRUE(gnome.contains(u"[picture-uri] ["_s + url + u"]\n"_s));
  EXPECT_TRUE(gnome.contains(u"[picture-uri-dark] ["_s + url + u"]\n"_s));
  EXPECT_TRUE(Change("MATE", kPicture, WallpaperStyle::Tile)
                  .endsWith(u"[org.mate.background] [picture-filename] ["_s + kPicture + u"]\n"_s));
  EXPECT_TRUE(Change("MATE", kPicture, WallpaperStyle::Tile).contains(u"[wallpaper]\n"_s));
  EXPECT_TRUE(Change("X-Cinnamon", kPicture, WallpaperStyle::Stretch)
                  .contains(u"[org.cinnamon.desktop.background] [picture-options] [stretched]"_s));
  const QString plasma = Change("KDE", kPicture, WallpaperStyle::Stretch);
  EXPECT_TRUE(plasma.contains(u"writeConfig('FillMode', 0)"_s));
  EXPECT_TRUE(
      plasma.contains(u"writeConfig('Image', 'file:///home/J%C3%B6rg%27s/Wall%20paper.bmp')"_s));
  EXPECT_EQ(Change("LXQt", kPicture, WallpaperStyle::Tile),
            u"pcmanfm-qt [--set-wallpaper="_s + kPicture + u"] [--wallpaper-mode=tile]\n"_s);
  EXPECT_EQ(Change("sway", u"/a \"b\".bmp"_s, WallpaperStyle::Center),
            u"swaymsg [output] [*] [bg] [\"/a \\\"b\\\".bmp\"] [center]\n"_s);
  EXPECT_EQ(Change("awesome", kPicture, WallpaperStyle::Stretch),
            u"feh [--no-fehbg] [--bg-scale] ["_s + kPicture + u"]\n"_s);
}

TEST_F(Wallpaper, XfceHasAPropertyForEachMonitor) {
  Tool("xfconf-query",
       "[ \"$3\" = -l ] && printf '/backdrop/screen0/monitor0/workspace0/last-image\\n"
       "/backdrop/screen0/monitor1/workspace0/last-image\\n/other\\n'\nexit 0\n");
  const QString calls = Change("XFCE", kPicture, WallpaperStyle::Stretch);
  for (const QString& monitor : {u"0"_s, u"1"_s}) {
    const QString base = u"[/backdrop/screen0/monitor"_s + monitor + u"/workspace0/"_s;
    EXPECT_TRUE(calls.contains(base + u"image-style] [-n] [-t] [int] [-s] [3]\n"_s));
    EXPECT_TRUE(
        calls.contains(base + u"last-image] [-n] [-t] [string] [-s] ["_s + kPicture + u']'));
  }
}

TEST_F(Wallpaper, WhatDoesNotWorkIsSaid) {
  const QString unsupported = u"Setting a wallpaper is not supported on this desktop."_s;
  EXPECT_EQ(Change("GNOME", kPicture, WallpaperStyle::Tile), unsupported);
  Tool("gsettings", "[ \"$3\" = picture-uri-dark ] && exit 1\nexit 0\n");
  EXPECT_TRUE(Change("GNOME", kPicture, WallpaperStyle::Tile).startsWith(u"gsettings"_s));
  EXPECT_EQ(Change("", kPicture, WallpaperStyle::Tile), unsupported);
  Tool("gsettings", "exit 1\n");
  EXPECT_EQ(Change("GNOME", kPicture, WallpaperStyle::Tile),
            u"The desktop did not take the wallpaper: gsettings failed."_s);
}

}  // namespace
}  // namespace zqm
