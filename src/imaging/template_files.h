// SPDX-License-Identifier: GPL-3.0-or-later
// Templates: files of objects (".iev") in a folder of their own, each known by its name.
#pragma once

#include <QString>
#include <QStringList>

#include "imaging/object_file.h"
#include "shell/result.h"

namespace zqm {

/// The names of a folder's templates, sorted as the user's language does.
QStringList TemplatesName(const QString& folder);

/// "FOLDER/NAME.iev".
QString TemplatePath(const QString& folder, const QString& name);

/// The name under which a template stands, the same one or one that differs only in letter case; ""
/// when there is none.
QString FindTemplate(const QString& folder, const QString& name);

/// Whether a file may be called so. Reasons are messages to the user.
Outcome CheckTemplateName(const QString& name);

/// Windows paint meanwhile. Reasons are messages to the user: the file is missing, or what is wrong
/// with it.
Result<ObjectFile> LoadTemplate(const QString& path);

/// Likewise; whole or not at all. The folder is made when it is missing.
Outcome SaveTemplate(const QString& path, const VectorObjects& objects, QSize surfaceSize);

/// Likewise.
Outcome RemoveTemplate(const QString& path);

namespace template_text {
inline constexpr char16_t kInvalidName[] = u"Invalid template name.";
inline constexpr char16_t kForbidden[] =
    u"A filename cannot contain any of the following characters:\n\\ / : * ? \" < > |";
inline constexpr char16_t kExists[] =
    u"A template with the name you entered already exists.\nDo you want to overwrite it?";
inline constexpr char16_t kSaving[] = u"Saving template. Please wait...";
inline constexpr char16_t kSaved[] = u"The template has been saved.";
}  // namespace template_text

}  // namespace zqm
