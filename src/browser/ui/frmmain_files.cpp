// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's commands over the selected files.
#include <QEventLoop>

#include "batch/external_editors.h"
#include "batch/photo_commands.h"
#include "batch/ui/frmconfigure.h"
#include "batch/ui/frmdelete.h"
#include "batch/ui/frmexternaleditor.h"
#include "batch/ui/frmformat.h"
#include "batch/ui/frmmove.h"
#include "batch/ui/frmpdf.h"
#include "batch/ui/frmrename.h"
#include "batch/ui/frmresize.h"
#include "browser/ui/frmmain.h"
#include "editor/edit_text.h"
#include "editor/ui/frmedit.h"
#include "printing/ui/frmprint.h"
#include "shell/messages.h"
#include "shell/ui/folder_tree.h"
#include "viewers/ui/frmconfigureslideshow.h"
#include "viewers/ui/frmslideshow.h"
#include "watermark/ui/frmwatermarkimages.h"

namespace zqm {

void frmmain::MoveOrCopy(Command command) {
  const bool moves = command == Command::MoveTo;
  const QStringList photos = browser_.mnufile2_Click(moves ? kMoveCommand : kCopyCommand);
  if (photos.isEmpty()) return;
  const FolderHold hold(browser_);
  const BatchPlace place{session_.ActiveCatalogue(), &browser_, photos};
  if (moves)
    frmmove(place, folders_->CurrentFolder(), this).exec();
  else
    frmcopy(place, folders_->CurrentFolder(), this).exec();
}

void frmmain::EditPhoto() {
  const QStringList photos = browser_.mnufile2_Click(kEditCommand);
  if (photos.isEmpty()) return;
  const FolderHold hold(browser_);
  frmedit editor(session_, &browser_, this);
  Outcome opened;
  {
    const BusyRun busy(busy_, QString::fromUtf16(edit_text::kPreparing));
    opened = editor.OpenPhoto(browser_.Selected().first());
  }
  if (!opened) {
    MsgBox(opened.Reason(), MessageKind::Information);
    return;
  }
  // Where this window is, so that it is hidden behind.
  editor.setGeometry(geometry());
  QEventLoop untilClosed;
  connect(&editor, &frmedit::Closed, &untilClosed, &QEventLoop::quit);
  editor.setWindowState(windowState());
  editor.show();
  untilClosed.exec();
}

void frmmain::ConvertThem() {
  const QStringList photos = browser_.mnufile2_Click(kConvertCommand);
  if (photos.isEmpty()) return;
  const FolderHold hold(browser_);
  frmformat dialog({session_.ActiveCatalogue(), &browser_, photos}, session_.FormatSettings(),
                   session_.ReadSettings(), this);
  dialog.exec();
}

void frmmain::CreatePdfOfThem() {
  const QStringList photos = browser_.mnufile2_Click(kPdfCommand);
  if (photos.isEmpty()) return;
  const FolderHold hold(browser_);
  frmpdf dialog({session_.ActiveCatalogue(), &browser_, photos}, session_.WorkSettings(),
                folders_->CurrentFolder(), this);
  dialog.exec();
}

void frmmain::WatermarkThem() {
  const QStringList photos = browser_.mnufile2_Click(kWatermarkCommand);
  if (photos.isEmpty()) return;
  const FolderHold hold(browser_);
  frmwatermarkimages dialog(session_, photos, this);
  dialog.exec();
}

void frmmain::ResizeThem() {
  const QStringList photos = browser_.mnufile2_Click(kResizeCommand);
  if (photos.isEmpty()) return;
  const FolderHold hold(browser_);
  frmresize dialog({session_.ActiveCatalogue(), &browser_, photos}, session_.WorkSettings(),
                   session_.ReadSettings(), this);
  dialog.exec();
}

void frmmain::PrintThem() {
  const QStringList photos = browser_.mnufile2_Click(kPrintCommand);
  if (photos.isEmpty()) return;
  const FolderHold hold(browser_);
  frmprint dialog(photos, session_.WorkSettings(), session_.Folders(), this);
  dialog.exec();
}

void frmmain::mnuslide_Click() {
  const QStringList photos = browser_.mnuslide_Click();
  if (photos.isEmpty()) return;
  SlideshowPlan plan;
  {
    frmconfigureslideshow settings(photos, session_.ReadSettings(), StateFolder(), this);
    if (settings.exec() != QDialog::Accepted) return;
    plan = settings.Plan();
  }
  frmslideshow(plan, this).exec();
}

// The commands stand in the order of the turns.
void frmmain::Rotate(Command command) {
  const auto turn =
      static_cast<std::size_t>(command) - static_cast<std::size_t>(Command::RotateClockwise);
  const FolderHold hold(browser_);
  browser_.mnurotate_Click(Turns()[turn]);
}

void frmmain::mnurename_Click() {
  const QStringList photos = browser_.mnurename_Click();
  if (photos.isEmpty()) return;
  const FolderHold hold(browser_);
  frmrename dialog({session_.ActiveCatalogue(), &browser_, photos}, this);
  dialog.exec();
}

void frmmain::DeleteThem(const QStringList& photos, const char16_t* question) {
  if (photos.isEmpty()) return;
  const FolderHold hold(browser_);
  frmdelete dialog({session_.ActiveCatalogue(), &browser_, photos}, question, this);
  dialog.exec();
}

void frmmain::mnuchoose_Click() {
  if (session_.Core().Editors().empty()) {
    if (MsgBox(QString::fromUtf16(editor_text::kNoneYet), MessageKind::Question, Buttons::YesNo) ==
        Answer::Yes)
      mnuconfigure_Click();
    return;
  }
  const QStringList photos = browser_.mnuchoose_Click();
  if (photos.isEmpty()) return;
  frmexternaleditor dialog(session_.Core(), photos, this);
  dialog.exec();
}

void frmmain::mnuconfigure_Click() {
  frmconfigure dialog(session_.Core(), this);
  dialog.exec();
}

}  // namespace zqm
