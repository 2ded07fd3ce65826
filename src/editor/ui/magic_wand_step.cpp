// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/magic_wand_step.h"

#include <QGridLayout>

#include "editor/editor_settings.h"
#include "editor/ui/number_edit.h"
#include "shell/messages.h"
#include "shell/ui/look.h"

namespace zqm {

MagicWandStep::MagicWandStep(ImageX& picture, const QString& folder)
    : EditStep(
          "framagic", tr("Magic Wand"),
          tr("A click selects the pixels around it whose colour differs by no more than this."),
          picture),
      folder_(folder) {
  tolerance_ = new NumberEdit(TypedNumber::Digits, "Text23");
  AddField(AddGrid(), QStringLiteral("Magic Wand Tolerance :"), tolerance_,
           look::Hint(QStringLiteral("%")));
  AddButton(
      tr("&Apply Setting"), "Command20", [this] { ApplySetting(); }, true);
}

void MagicWandStep::LoadMagicWandSettings() {
  const MagicWandSettings settings = zqm::LoadMagicWandSettings(folder_);
  if (settings.typed) tolerance_->setText(*settings.typed);
  Image().SetMagicWandTolerance(settings.tolerance);
}

void MagicWandStep::ApplySetting() {
  if (const Outcome saved = SaveMagicWandSettings(folder_, tolerance_->text()); !saved) {
    MsgBox(saved.Reason(), MessageKind::Warning);
    return;
  }
  Image().SetMagicWandTolerance(tolerance_->text().toInt());
}

}  // namespace zqm
