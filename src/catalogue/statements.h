// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>
#include <optional>
#include <string>

#include "catalogue/columns.h"
#include "shell/result.h"

namespace zqm {

/// A statement of the program in the engine's own language. The program writes its statements in
/// the dialect of its catalogues: double-quoted (or single-quoted) text literals with the quote
/// doubled inside, `[Column Name]` or a bare one-word column, `#date#` literals, `LIKE` with "%",
/// "_",
/// "[a-z]", "[!a]", `=`, `<>`, `<`, `>`, `BETWEEN … AND …`, `AND`, `OR`, `NOT`, parentheses, over
/// one source: `qryphoto`. Selected columns are "*" (only `bound` is fetched then) or a list.
/// Results come in row order. Anything else is a failure whose reason says where.
Result<std::string> TranslateStatement(QStringView statement, Column bound);

/// The catalogue's `LIKE`: whole text against pattern, letter case ignored for all of Unicode, "%"
/// any run, "_" any one character, "[a-z]" a class, "[!a]" its complement. An unclosed "[" stands
/// for itself. Linear-time in practice: no pattern makes it exponential.
bool LikeMatches(QStringView text, QStringView pattern);

/// A `#…#` literal's date: all that `ParseDate` accepts, time dropped; of ambiguous numbers the
/// month comes first, if that gives no date the day.
std::optional<QString> DateLiteralToIso(QStringView text);

}  // namespace zqm
