// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "catalogue/core_database.h"
#include "shell/result.h"

namespace zqm {

/// Whether a file can be started, or why it is no editor.
Outcome CheckEditorProgram(const QString& path);

/// Puts an editor into the list, or says why not: no name, a path or a name (letter case aside)
/// that is there already.
Outcome AddEditor(CoreDatabase& core, const ExternalEditor& editor);
Outcome RemoveEditor(CoreDatabase& core, const QString& name);

/// Programs of this desktop that open images, by their entries in the application folders (Desktop
/// Entry Specification 1.5), sorted by name. Those that need more than their own path to start are
/// left out.
std::vector<ExternalEditor> InstalledEditors();
std::vector<ExternalEditor> InstalledEditors(const QStringList& applicationFolders);

/// The photos that stand, or `unusable` as the reason.
Result<QStringList> PhotosForEditor(const QStringList& paths, const char16_t* unusable);

/// Starts the editor for the photos and doesn't wait: once with all of them, or once for each in
/// order. Paths go as arguments of their own, never through a shell. Fails before any start when
/// nothing is chosen, the editor's file is gone or no photo stands; a start that fails passes in
/// silence. Gives the number of starts.
Result<int> OpenInEditor(const ExternalEditor& editor, const QStringList& paths,
                         bool supportsMultipleImages);

namespace editor_text {
inline constexpr char16_t kNoneYet[] =
    u"The list of photo editors is currently empty. Would you like to add a photo editor to that "
    u"list now?";
inline constexpr char16_t kUnusableForChoice[] =
    u"The image(s) that you have selected are offline or missing and thus cannot be open with an "
    u"external photo editor.";
inline constexpr char16_t kUnusable[] =
    u"The image(s) that you have selected are offline or missing and thus cannot be open in an "
    u"external editor.";
inline constexpr char16_t kNoneChosen[] = u"Select a photo editor.";
inline constexpr char16_t kPickTitle[] = u"Select Photo Editor";
}  // namespace editor_text

}  // namespace zqm
