// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <string>

#include "catalogue/columns.h"
#include "catalogue/database.h"

namespace zqm {

/// One step that brings a file from version n to n + 1; an empty file has version 0. A step leaves
/// the very table texts that a new file of that version would have: opening compares them.
using SchemaStep = std::string (*)();

/// The steps in order: a file of version n needs those from index n on.
std::span<const SchemaStep> SchemaSteps(Database::Kind kind);

/// Says in a file's header whose it is (bytes 68 to 71, high byte first).
int ApplicationId(Database::Kind kind);

/// All columns of a row that hold text: every one but `ID` and `Thumbnail`, in their order.
std::span<const Column> TextColumns();

}  // namespace zqm
