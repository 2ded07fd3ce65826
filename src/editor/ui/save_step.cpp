// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/save_step.h"

namespace zqm {

SaveStep::SaveStep(ImageX& picture)
    : EditStep("frasave", tr("Save"),
               tr("Over the open file at the best quality, or into another one."), picture) {
  AddButton(
      tr("Save"), "Command16", [this] { Q_EMIT SaveWanted(); }, true);
  AddButton(tr("Save &As…"), "Command17", [this] { Q_EMIT SaveAsWanted(); });
}

}  // namespace zqm
