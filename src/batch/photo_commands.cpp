// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/photo_commands.h"

#include <algorithm>

#include "shell/files.h"

namespace zqm {
namespace {

constexpr PhotoCommand kCommands[] = {
    {kEditCommand, u"Edit In Zolmira QM Photo Editor",
     u"Preparing image for editing. Please wait...",
     u"The selected image is either missing or offline and thus cannot be edited.", false},
    {kMoveCommand, u"Move To Folder...", u"Preparing to move file(s). Please wait...",
     u"The selected file(s) cannot be moved because they are offline or missing.", false},
    {kCopyCommand, u"Copy To Folder...", u"Preparing to copy file(s). Please wait...",
     u"The selected file(s) cannot be copied because they are offline or missing.", false},
    {6, u"Convert File Format", u"Preparing to convert file(s). Please wait...",
     u"The selected file(s) cannot be converted because they are offline or missing.", false},
    {kPdfCommand, u"Create Photo Book (PDF)", u"Preparing to create PDF file(s). Please wait...",
     u"PDF Files cannot be created with the selected file(s) since they are offline or missing.",
     true},
    {kWatermarkCommand, u"Watermark Images", u"Preparing file(s) to be watermarked. Please wait...",
     u"The selected image(s) cannot be watermarked since they are offline or missing.", true},
    {9, u"Resize Images", u"Preparing to resize file(s). Please wait...",
     u"The selected file(s) cannot be resized because they are offline or missing.", false},
    {kPrintCommand, u"Print", u"Preparing file(s) to be printed. Please wait...",
     u"The image(s) that you have selected are either offline or missing and thus cannot be "
     u"printed.",
     true},
};

}  // namespace

std::span<const PhotoCommand> PhotoCommands() {
  return kCommands;
}

const PhotoCommand* FindPhotoCommand(int index) {
  const auto* found = std::ranges::find(kCommands, index, &PhotoCommand::index);
  return found == std::end(kCommands) ? nullptr : found;
}

Result<QStringList> PreparePhotos(const PhotoCommand& command, const QStringList& selected,
                                  const std::function<void(int done, int total)>& progress) {
  QStringList standing;
  int done = 0;
  for (const QString& path : selected) {
    if (FileExists(path)) standing.append(path);
    // One is enough where all are taken.
    if (!command.existingOnly && !standing.isEmpty()) return selected;
    if (progress && command.existingOnly) progress(++done, static_cast<int>(selected.size()));
  }
  if (standing.isEmpty()) return Failure{QString::fromUtf16(command.unusable)};
  return standing;
}

}  // namespace zqm
