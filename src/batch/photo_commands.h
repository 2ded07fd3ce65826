// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <span>

#include "shell/result.h"

namespace zqm {

/// A command of the File menu's photo section, which works on the selected photos.
struct PhotoCommand {
  int index;  ///< its place in the menu, from 1
  const char16_t* caption;
  const char16_t* prepare;   ///< in the busy label while the photos are looked at
  const char16_t* unusable;  ///< when none of the files stands
  bool existingOnly;         ///< takes the files that stand; otherwise all as soon as one stands
};

std::span<const PhotoCommand> PhotoCommands();
/// Nothing for an index without a command.
const PhotoCommand* FindPhotoCommand(int index);

inline constexpr int kEditCommand = 1, kMoveCommand = 3, kCopyCommand = 4, kConvertCommand = 6,
                     kPdfCommand = 7, kWatermarkCommand = 8, kResizeCommand = 9, kPrintCommand = 11;

/// The photos that the command works on, or why it can't.
Result<QStringList> PreparePhotos(const PhotoCommand& command, const QStringList& selected,
                                  const std::function<void(int done, int total)>& progress);

}  // namespace zqm
