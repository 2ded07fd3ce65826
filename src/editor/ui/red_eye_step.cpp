// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/red_eye_step.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace zqm {

RedEyeStep::RedEyeStep(ImageX& picture)
    : EditStep("fraredeye", tr("Red Eye Removal"),
               tr("Draw an ellipse about each eye, or about both, and remove the red."), picture) {
  QPushButton* remove = AddButton(
      tr("Re&move Red Eye"), "Command9", [this] { Tell(Image().RemoveRedEyes()); }, true);
  AddButton(tr("Clea&r"), "Command10", [this] { Image().Deselect(); });
  const auto enable = [this, remove] {
    const bool selected = Image().HasSelection();
    remove->setEnabled(selected);
    remove->setToolTip(selected ? QString() : tr("Select an eye first"));
  };
  connect(&picture, &ImageX::OnSelectionChange, this, enable);
  enable();
}

void RedEyeStep::Enter() {
  Q_EMIT ToolWanted(u"C"_s);
}

}  // namespace zqm
