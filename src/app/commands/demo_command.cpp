// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/commands.h"
#include "app/demo/draw_samples.h"

namespace zqm {

int RunDemo(const QString& folder, const Console& console) {
  return demo::DrawSamples(demo::Samples(), folder, console);
}

}  // namespace zqm
