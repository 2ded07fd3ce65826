// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "printing/print_template.h"

namespace zqm {

/// A template that comes with the program.
struct StandardTemplate {
  QString name;
  PrintTemplate layout;
};

/// One to a page up to a contact sheet, on A4 and on Letter; passport photos and a pair of
/// postcards of exact size, which fit on both.
std::vector<StandardTemplate> StandardTemplates();

}  // namespace zqm
