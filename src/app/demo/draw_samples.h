// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/commands/console.h"
#include "app/demo/samples.h"

namespace zqm::demo {

/// Draws the samples on a pool and writes each as a JPEG into the folder, which is made where it
/// is missing. A file that stands already is a failure and stays. Tells the paths and the failures;
/// gives the exit code.
int DrawSamples(const std::vector<Sample>& samples, const QString& folder, const Console& console);

}  // namespace zqm::demo
