// SPDX-License-Identifier: GPL-3.0-or-later
// What the editor's menus, steps and tools do to the picture.
#include <QStackedWidget>

#include "editor/edit_text.h"
#include "editor/ui/edit_step.h"
#include "editor/ui/frmbright.h"
#include "editor/ui/frmcolorcast.h"
#include "editor/ui/frmedit.h"
#include "editor/ui/frmsaturation.h"
#include "editor/ui/frmsharpen.h"
#include "editor/ui/tool_cursors.h"
#include "editor/ui/tool_strip.h"
#include "editor/ui/workflow_help.h"
#include "imaging/ui/previews_dialog.h"
#include "shell/file_info.h"
#include "shell/messages.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

/// Commands that are one call on the picture.
struct PictureCommand {
  EditCommand command;
  Outcome (*run)(ImageX& picture);
};
constexpr PictureCommand kPictureCommands[] = {
    {EditCommand::FlipHorizontal, [](ImageX& p) { return p.Flip(FlipDirection::Horizontal); }},
    {EditCommand::FlipVertical, [](ImageX& p) { return p.Flip(FlipDirection::Vertical); }},
    {EditCommand::Grey, [](ImageX& p) { return p.ConvertToGrey(); }},
    {EditCommand::BlackWhite, [](ImageX& p) { return p.ConvertToBlackWhite(); }},
    {EditCommand::Colors16, [](ImageX& p) { return p.ConvertToPalette(16); }},
    {EditCommand::Colors256Threshold,
     [](ImageX& p) { return p.ConvertToPalette(256, PaletteMethod::Threshold); }},
    {EditCommand::Colors256Ordered,
     [](ImageX& p) { return p.ConvertToPalette(256, PaletteMethod::Ordered); }},
    {EditCommand::Sepia, [](ImageX& p) { return p.Sepia(40, 50, 1.2); }},
};

struct EffectCommand {
  EditCommand command;
  const char16_t* page;
};
constexpr EffectCommand kEffectCommands[] = {{EditCommand::UserFilter, u"UserFilt"},
                                             {EditCommand::BumpMap, u"BumpMap"},
                                             {EditCommand::Lens, u"Lens"},
                                             {EditCommand::Wave, u"Wave"},
                                             {EditCommand::Morph, u"Morph"}};

struct TurnCommand {
  EditCommand command;
  double degrees;
};
constexpr TurnCommand kTurnCommands[] = {{EditCommand::RotateClockwise, -90},
                                         {EditCommand::RotateCounterClockwise, 90},
                                         {EditCommand::Rotate180, 180}};

/// The place of each in the tool strip.
constexpr EditCommand kToolCommands[] = {EditCommand::MagicWand, EditCommand::Rectangle,
                                         EditCommand::Ellipse, EditCommand::Polygon,
                                         EditCommand::Lasso};
constexpr int kMagicWand = 0, kEllipse = 2;

}  // namespace

void frmedit::Run(EditCommand command) {
  if (image1_->IsWorking()) return;
  const auto row = [command](const auto& rows) {
    return std::ranges::find(rows, command, [](const auto& r) { return r.command; });
  };
  if (const auto* found = row(kPictureCommands); found != std::end(kPictureCommands)) {
    ShowPage(Page::Editing);
    return Tell(found->run(*image1_));
  }
  if (const auto* found = row(kEffectCommands); found != std::end(kEffectCommands))
    return Effect(found->page);
  if (const auto* found = row(kTurnCommands); found != std::end(kTurnCommands))
    return Turn(found->degrees);
  if (const auto* tool = std::ranges::find(kToolCommands, command); tool != std::end(kToolCommands))
    return imgtool_Click(static_cast<int>(tool - kToolCommands));
  switch (command) {
    case EditCommand::Open:
      return mnu_open_Click();
    case EditCommand::Save:
      return Command16_Click();
    case EditCommand::SaveAs:
      return Command17_Click();
    case EditCommand::QuickPrint:
      return image1_->PrintImageDialog(QString::fromUtf16(edit_text::kQuickPrintJob));
    case EditCommand::Minimize:
      return showMinimized();
    case EditCommand::Exit:
      close();
      return;
    case EditCommand::Undo:
      return Undo();
    case EditCommand::UndoAll:
      return UndoAll();
    case EditCommand::Redo:
      return Redo();
    case EditCommand::CustomRotation:
      return OpenStep(EditCommand::Level);
    case EditCommand::Navigate:
      return Image13_Click();
    case EditCommand::MagicSettings:
      imgtool_Click(kMagicWand);
      return ShowStep(command);
    case EditCommand::ClearSelection:
      return ClearSelection();
    case EditCommand::ActualSize:
      for (ImageX* image : {image1_, image2_})
        image->SetZoom(100);
      return;
    case EditCommand::AutoFit:
      for (ImageX* image : {image1_, image2_})
        image->Fit();
      return;
    case EditCommand::OriginalImage:
      return ShowPage(Page::Original);
    case EditCommand::EditingPreview:
      return ShowPage(Page::Editing);
    case EditCommand::Workflow:
      return ShowWorkflow();
    case EditCommand::About:
      MsgBox(AboutText(), MessageKind::Information);
      return;
    default:
      return OpenStep(command);
  }
}

// Steps.

/// The step's panel if it has one, its caption lit; a command that is no step shows none.
void frmedit::ShowStep(EditCommand command) {
  // Not to whatever comes after a field that is hidden now.
  image1_->setFocus();
  for (const auto& [step, caption] : captions_)
    caption->setChecked(step == command);
  for (const auto& [step, panel] : steps_)
    panel->setVisible(step == command);
  noStep_->setVisible(!steps_.contains(command));
}

void frmedit::OpenStep(EditCommand command) {
  ShowPage(Page::Editing);
  LeaveStep();
  if (!steps_.contains(command)) return OpenDialog(command);
  ShowStep(command);
  steps_.at(command)->Enter();
  if (command == EditCommand::RedEye) imgtool_Click(kEllipse);
}

/// What a step has over the picture and isn't applied ends with it: a line, a crop's rectangle, a
/// watermark, which would look like part of the picture and not be saved.
void frmedit::LeaveStep() {
  const bool crops = tool_ == QStringView(edit_tool::kCrop);
  const bool draws =
      tool_ == QStringView(edit_tool::kLevel) || tool_ == QStringView(edit_tool::kWatermark);
  if (crops) image1_->Deselect();
  if (draws) image1_->RemoveAllObjects();
  if (crops || draws) SetTool(QString());
}

void frmedit::OpenDialog(EditCommand command) {
  ShowStep(command);
  image1_->RemoveAllObjects();
  if (image1_->GetMouseInteract(u"SELECTRECT"_s)) SetTool(QString());
  for (const QStringView mode : {u"SELECTRECT", u"PUTLINE", u"OBJECTSELECT"})
    image1_->SetMouseInteract(mode.toString(), false);
  const QImage picture = image1_->SelectedImage();
  if (picture.isNull()) return;
  std::optional<PictureChange> change;
  if (command == EditCommand::Sharpen) change = frmsharpen(picture, this).Ask();
  if (command == EditCommand::Color) change = frmcolorcast(picture, this).Ask();
  if (command == EditCommand::Saturation) change = frmsaturation(picture, this).Ask();
  if (command == EditCommand::Brightness) change = frmbright(picture, this).Ask();
  if (change) Tell(image1_->Apply(*change));
}

void frmedit::Effect(const char16_t* page) {
  ShowPage(Page::Editing);
  const QImage picture = image1_->SelectedImage();
  if (picture.isNull()) return;
  const auto change = PreviewsDialog(picture, page, this);
  if (change) Tell(image1_->Apply(*change));
}

void frmedit::Turn(double degrees) {
  ShowPage(Page::Editing);
  Tell(image1_->Rotate(degrees));
  image1_->RemoveAllObjects();
  if (tool_ == QStringView(edit_tool::kWatermark)) steps_.at(EditCommand::Watermark)->Enter();
}

void frmedit::ShowWorkflow() {
  WorkflowHelp(this).exec();
}

// Tools.

void frmedit::SetTool(const QString& tool) {
  tool_ = tool;
  tools_->SetTool(tool);
  for (const SelectionTool& known : SelectionTools())
    image1_->SetMouseInteract(QString::fromUtf16(known.mode), false);
  for (const QStringView mode : {u"PUTLINE", u"OBJECTSELECT"})
    image1_->SetMouseInteract(mode.toString(), false);
  if (tool.isEmpty()) image1_->SetMouseInteract(u"SCROLL"_s, true);
  if (const auto cursor = ToolCursor(tool))
    image1_->SetMouseCursor(*cursor);
  else
    image1_->ResetMouseCursor();
}

void frmedit::imgtool_Click(int index) {
  ShowPage(Page::Editing);
  LeaveStep();
  const SelectionTool& tool = SelectionTools()[static_cast<std::size_t>(index)];
  SetTool(QString::fromUtf16(tool.letter));
  image1_->SetMouseInteract(QString::fromUtf16(tool.mode), true);
}

void frmedit::Image13_Click() {
  ClearSelection();
  SetTool(QString());
}

void frmedit::ClearSelection() {
  image1_->RemoveAllObjects();
  image1_->Deselect();
}

// The way back.

void frmedit::Undo() {
  if (image1_->UndoCount() == 0) return;
  ShowPage(Page::Editing);
  image1_->SaveRedo();
  const Outcome undone = image1_->UndoAt(0);
  if (undone)
    image1_->DiscardUndo();
  else
    image1_->DiscardRedo();
  Tell(undone);
  UpdateStatusBar();
}

void frmedit::Redo() {
  if (image1_->RedoCount() == 0) return;
  ShowPage(Page::Editing);
  image1_->SaveUndo();
  // To save the state may have cost the list its last level.
  const Outcome redone =
      image1_->RedoCount() > 0 ? image1_->RedoAt(0) : Failure{image1_->History().LostReason()};
  if (redone)
    image1_->DiscardRedo();
  else
    image1_->DiscardUndo();
  Tell(redone);
  UpdateStatusBar();
}

void frmedit::UndoAll() {
  ShowPage(Page::Editing);
  image1_->SaveRedo();
  const Outcome undone = image1_->UndoAt(image1_->UndoCount() - 1);
  if (undone) {
    image1_->ClearAllUndo();
    image1_->CopyParamsHandle(*image2_);
  } else {
    image1_->DiscardRedo();
  }
  Tell(undone);
  UpdateStatusBar();
}

}  // namespace zqm
