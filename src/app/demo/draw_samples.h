// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "app/commands/console.h"
#include "app/demo/samples.h"

namespace zqm::demo {

struct DrawnSamples {
  QStringList paths;
  FailureList failures;
};

struct DrawProgress {
  int done = 0;  ///< photos finished, 0 to total
  int total = 0;
  QString path;  ///< the photo under work
  const DrawnSamples& soFar;
};
/// Hears how far it is, before each photo and about every 30 ms while one is drawn; false ends the
/// run.
using DrawObserver = std::function<bool(const DrawProgress&)>;

/// Draws the samples on a pool and writes each as a JPEG into the folder, which is made where it
/// is missing. A file that stands already is a failure and stays.
DrawnSamples DrawSamples(const std::vector<Sample>& samples, const QString& folder,
                         const DrawObserver& observer);

/// The same for the command line: tells the paths and the failures; gives the exit code.
int DrawSamples(const std::vector<Sample>& samples, const QString& folder, const Console& console);

}  // namespace zqm::demo
