// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/ui/frmzolmira.h"

#include "browser/ui/main_actions.h"

namespace zqm {

frmzolmira::frmzolmira(const MainActions& actions, QWidget* parent) : QMenu(parent) {
  setObjectName(QStringLiteral("frmzolmira"));
  addAction(actions.Get(Command::CatalogSelected));
  addAction(actions.Get(Command::ExternalEditor));
  addAction(actions.Get(Command::Slideshow));
  addSeparator();
  addAction(actions.Get(Command::FullScreen));
  addAction(actions.Get(Command::Compare));
  addSeparator();
  for (const Command command :
       {Command::MoveTo, Command::CopyTo, Command::Convert, Command::Pdf, Command::Watermark,
        Command::Resize, Command::Print, Command::Rename, Command::Delete})
    addAction(actions.Get(command));
  addSeparator();
  actions.FillRatingMenu(addMenu(tr("&Rating")));
  actions.FillFlagMenu(addMenu(tr("&Flag")));
  actions.FillRotateMenu(addMenu(tr("R&otate")));
  actions.FillWallpaperMenu(addMenu(tr("Set as &Wallpaper")));
  addSeparator();
  addAction(actions.Get(Command::CopyPaths));
  addAction(actions.Get(Command::SelectAll));
  addAction(actions.Get(Command::SelectNone));
  addSeparator();
  addAction(actions.Get(Command::SortByName));
  addAction(actions.Get(Command::SortByFlag));
}

}  // namespace zqm
