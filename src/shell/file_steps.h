// SPDX-License-Identifier: GPL-3.0-or-later
// The single steps that file operations are made of. Each leaves its target as it was when it
// fails.
#pragma once

#include <QString>
#include <functional>

#include "shell/result.h"

namespace zqm::platform {
class Handle;
}

namespace zqm::steps {

/// Done for 0, else the reason.
Outcome FromErrno(int number);
/// The reason for a source that can't be read: one that isn't a file counts as missing.
QString ReasonForSource(int number);

using Fill = std::function<Outcome(platform::Handle&)>;

/// Puts a new file, filled by `fill` and flushed, in the place of `path`, whose links are resolved.
/// Owner, mode and attributes come from the file that stood there. Read-only targets are refused.
Outcome Replace(const QString& path, const Fill& fill);

/// Replaces `to`, with the source's attributes and times. A file onto itself is done already.
Outcome CopyOne(const QString& from, const QString& to);
/// `from` becomes `to`, which may stand, with the attributes of what stood there.
Outcome ReplaceOne(const QString& from, const QString& to);
/// Never replaces. Files, links and, within one file system, folders.
Outcome MoveOne(const QString& from, const QString& to);
/// As `MoveOne`, and what stands at `to` goes when the new one is in its place.
Outcome MoveOver(const QString& from, const QString& to);
Outcome DeleteOne(const QString& path);
/// Links in the folder are copied as links. What stands in `to` already stays beside.
Outcome CopyTree(const QString& from, const QString& to);

}  // namespace zqm::steps
