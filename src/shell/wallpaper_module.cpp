// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/wallpaper_module.h"

#include <QProcess>
#include <QStandardPaths>
#include <QStringList>
#include <QUrl>
#include <array>
#include <vector>

#include "shell/busy.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kPatienceMilliseconds = 10'000;

/// What a tool calls the styles, in the order of `WallpaperStyle`.
using StyleNames = std::array<const char16_t*, 3>;

QString Named(const StyleNames& names, WallpaperStyle style) {
  return QString::fromUtf16(names[static_cast<std::size_t>(style)]);
}

struct Call {
  QString program;
  QStringList arguments;
  bool needed = true;  ///< its failure is a failure of the whole
};
using Calls = std::vector<Call>;

/// Standard output of a finished program; nothing when it isn't there, fails or takes too long.
std::optional<QString> Run(const Call& call) {
  return RunAside([call]() -> std::optional<QString> {
    QProcess process;
    process.start(call.program, call.arguments, QProcess::ReadOnly);
    if (!process.waitForFinished(kPatienceMilliseconds)) return std::nullopt;
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
      return std::nullopt;
    return QString::fromUtf8(process.readAllStandardOutput());
  });
}

// Desktops look at a picture again only when its name changes, so it is taken away first.

Calls ByGsettings(const QString& schema, const QString& key, const QString& value,
                  WallpaperStyle style) {
  const StyleNames names{u"centered", u"stretched", u"wallpaper"};
  const auto set = [&schema](const QString& name, const QString& text, bool needed) {
    return Call{u"gsettings"_s, {u"set"_s, schema, name, text}, needed};
  };
  return {set(u"picture-options"_s, Named(names, style), true), set(key, u"''"_s, true),
          set(key, value, true)};
}

Calls Gnome(const QString& picture, WallpaperStyle style) {
  const QString schema = u"org.gnome.desktop.background"_s;
  const QString url = QUrl::fromLocalFile(picture).toString(QUrl::FullyEncoded);
  Calls calls = ByGsettings(schema, u"picture-uri"_s, url, style);
  // Of the dark style, which older ones don't have.
  calls.push_back({u"gsettings"_s, {u"set"_s, schema, u"picture-uri-dark"_s, url}, false});
  return calls;
}

Calls Cinnamon(const QString& picture, WallpaperStyle style) {
  return ByGsettings(u"org.cinnamon.desktop.background"_s, u"picture-uri"_s,
                     QUrl::fromLocalFile(picture).toString(QUrl::FullyEncoded), style);
}

Calls Mate(const QString& picture, WallpaperStyle style) {
  return ByGsettings(u"org.mate.background"_s, u"picture-filename"_s, picture, style);
}

Calls Plasma(const QString& picture, WallpaperStyle style) {
  // Fill modes of the toolkit's image item: pad, stretch, tile.
  const StyleNames modes{u"6", u"0", u"3"};
  const QString script =
      u"for (const desktop of desktops()) { desktop.wallpaperPlugin = 'org.kde.image'; "
      u"desktop.currentConfigGroup = ['Wallpaper', 'org.kde.image', 'General']; "
      u"desktop.writeConfig('Image', ''); desktop.writeConfig('FillMode', %1); "
      u"desktop.writeConfig('Image', '%2'); }"_s.arg(
          Named(modes, style),
          QUrl::fromLocalFile(picture).toString(QUrl::FullyEncoded).replace(u'\'', u"%27"_s));
  return {{u"dbus-send"_s,
           {u"--session"_s, u"--dest=org.kde.plasmashell"_s, u"--type=method_call"_s,
            u"--print-reply"_s, u"/PlasmaShell"_s, u"org.kde.PlasmaShell.evaluateScript"_s,
            u"string:"_s + script}}};
}

/// One property for each monitor and workspace.
Calls Xfce(const QString& picture, WallpaperStyle style) {
  const StyleNames styles{u"1", u"3", u"2"};
  const QString tool = u"xfconf-query"_s;
  const QStringList channel{u"-c"_s, u"xfce4-desktop"_s};
  const auto set = [&](const QString& property, const QString& value, const QString& type) {
    return Call{tool,
                channel + QStringList{u"-p"_s, property, u"-n"_s, u"-t"_s, type, u"-s"_s, value}};
  };
  Calls calls;
  const QString suffix = u"/last-image"_s;
  const auto properties = Run({tool, channel + QStringList{u"-l"_s}});
  for (const QString& property : properties.value_or(QString()).split(u'\n'))
    if (property.endsWith(suffix)) {
      calls.push_back(
          set(property.chopped(suffix.size()) + u"/image-style"_s, Named(styles, style), u"int"_s));
      calls.push_back(set(property, QString(), u"string"_s));
      calls.push_back(set(property, picture, u"string"_s));
    }
  return calls;
}

Calls ByFileManager(const QString& program, const QString& picture, WallpaperStyle style) {
  return {{program,
           {u"--set-wallpaper="_s + picture,
            u"--wallpaper-mode="_s + Named({u"center", u"stretch", u"tile"}, style)}}};
}
Calls Lxqt(const QString& picture, WallpaperStyle style) {
  return ByFileManager(u"pcmanfm-qt"_s, picture, style);
}
Calls Lxde(const QString& picture, WallpaperStyle style) {
  return ByFileManager(u"pcmanfm"_s, picture, style);
}

Calls Sway(const QString& picture, WallpaperStyle style) {
  // One argument for the program's own language, in which quotes hold a path together.
  const QString quoted = u'"' + QString(picture).replace(u'"', u"\\\""_s) + u'"';
  return {{u"swaymsg"_s,
           {u"output"_s, u"*"_s, u"bg"_s, quoted, Named({u"center", u"stretch", u"tile"}, style)}}};
}

Calls Feh(const QString& picture, WallpaperStyle style) {
  return {
      {u"feh"_s,
       {u"--no-fehbg"_s, Named({u"--bg-center", u"--bg-scale", u"--bg-tile"}, style), picture}}};
}
Calls Xwallpaper(const QString& picture, WallpaperStyle style) {
  return {{u"xwallpaper"_s, {Named({u"--center", u"--stretch", u"--tile"}, style), picture}}};
}

struct Desktop {
  const char16_t* name;  ///< as `XDG_CURRENT_DESKTOP` has it; "" for any
  const char16_t* tool;
  Calls (*calls)(const QString& picture, WallpaperStyle style);
};
constexpr Desktop kDesktops[] = {
    {u"GNOME", u"gsettings", Gnome},
    {u"Unity", u"gsettings", Gnome},
    {u"Budgie", u"gsettings", Gnome},
    {u"Pantheon", u"gsettings", Gnome},
    {u"KDE", u"dbus-send", Plasma},
    {u"XFCE", u"xfconf-query", Xfce},
    {u"X-Cinnamon", u"gsettings", Cinnamon},
    {u"MATE", u"gsettings", Mate},
    {u"LXQt", u"pcmanfm-qt", Lxqt},
    {u"LXDE", u"pcmanfm", Lxde},
    {u"sway", u"swaymsg", Sway},
    {u"", u"feh", Feh},
    {u"", u"xwallpaper", Xwallpaper},
};

}  // namespace

Outcome ChangeWallPaper(const QString& picture, WallpaperStyle style) {
  const QStringList running = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
  for (const Desktop& desktop : kDesktops) {
    const QString name = QString::fromUtf16(desktop.name);
    if (!name.isEmpty() && !running.contains(name, Qt::CaseInsensitive)) continue;
    const QString tool = QString::fromUtf16(desktop.tool);
    if (QStandardPaths::findExecutable(tool).isEmpty()) continue;
    const Calls calls = desktop.calls(picture, style);
    bool done = !calls.empty();
    for (const Call& call : calls)
      done = (Run(call) || !call.needed) && done;
    if (done) return {};
    return Failure{u"The desktop did not take the wallpaper: "_s + tool + u" failed."_s};
  }
  return Failure{u"Setting a wallpaper is not supported on this desktop."_s};
}

}  // namespace zqm
