// SPDX-License-Identifier: GPL-3.0-or-later
// Which kinds of photo files the desktop opens with this program, for this user. Sources: the
// freedesktop.org specifications "MIME Applications" (mimeapps.list) and "Desktop Entry".
#pragma once

#include <QString>
#include <QStringList>
#include <span>
#include <vector>

#include "shell/result.h"
#include "shell/session_folders.h"

namespace zqm {

struct FileKind {
  const char16_t* caption;             ///< "JPEG, JPG, JPE"
  std::span<const char* const> types;  ///< MIME types
};

/// All kinds that can be given to the program, in the order in which they are shown.
std::span<const FileKind> FileKinds();

/// The user's folders of such files.
struct AssociationFolders {
  QString config;        ///< holds "mimeapps.list"
  QString applications;  ///< holds desktop entries
};
/// The desktop's own ("~/.config", "~/.local/share/applications").
AssociationFolders UsersAssociationFolders();

/// The desktop's own, or those of a session whose home is another one.
AssociationFolders AssociationFoldersOf(const SessionFolders& session);

/// Whether all types of the kind are opened with this program.
bool IsAssociated(const AssociationFolders& folders, const FileKind& kind);

/// Gives the ticked kinds to the program and takes the others from it, by one change of the file.
/// All that isn't this program's stays as it stands. `program` is the path that a desktop entry,
/// written when none stands, starts. `ticked` has one value for each kind.
Outcome Associate(const AssociationFolders& folders, const std::vector<bool>& ticked,
                  const QString& program);

}  // namespace zqm
