// SPDX-License-Identifier: GPL-3.0-or-later
// What the main window does with the catalogue as a whole: search, categories, maintenance.
#include <QTabWidget>

#include "browser/ui/frmmain.h"
#include "browser/ui/photo_panel.h"
#include "cataloguing/reconnect.h"
#include "cataloguing/ui/frmconnect.h"
#include "search/categories.h"
#include "search/ui/frmaddcategory.h"
#include "search/ui/search_panel.h"
#include "session/maintenance.h"
#include "session/ui/frmnewdb.h"
#include "shell/messages.h"

namespace zqm {

/// Whether a command may begin that changes the catalogue: no work is under way, and what the user
/// typed is saved.
bool frmmain::NothingWaits() {
  if (!browser_.Keywords().Queue().isEmpty()) busy_.Refuse();
  return !busy_.IsUp() && browser_.Keywords().CheckUpdate();
}

void frmmain::ShowSearch() {
  leftTabs_->setCurrentWidget(search_);
  search_->Begin();
}

// Categories.

void frmmain::ShowCategories() {
  const QStringList names = session_.ActiveCatalogue().Categories();
  photoPanel_->SetCategories(names);
  search_->SetCategories(names);
}

void frmmain::AddCategory() {
  frmaddcategory dialog(session_.ActiveCatalogue(), this);
  connect(&dialog, &frmaddcategory::Added, this, &frmmain::ShowCategories);
  dialog.exec();
}

void frmmain::DeleteCategory(const QString& name) {
  if (NothingWaits() && AskAndDeleteCategory(session_.ActiveCatalogue(), name)) ShowCategories();
}

// Maintenance.

void frmmain::mnuconnect_Click() {
  if (!NothingWaits()) return;
  const QStringList folders = [this] {
    const BusyRun run(busy_, QString::fromUtf16(reconnect_text::kAnalyzing));
    YieldToInterface();
    return CatalogueFolders(session_.ActiveCatalogue());
  }();
  if (folders.isEmpty()) {
    MsgBox(QString::fromUtf16(reconnect_text::kEmpty), MessageKind::Information);
    return;
  }
  frmconnect dialog(session_.ActiveCatalogue(), folders, this);
  dialog.exec();
  // Rows have other paths now.
  if (browser_.From() == Browser::Source::Catalogue)
    browser_.Refresh();
  else
    browser_.RefreshLive();
}

void frmmain::mnunewdb_Click() {
  frmnewdb dialog(session_.Folders(), this);
  dialog.exec();
}

void frmmain::mnuoptimize_Click() {
  if (!NothingWaits()) return;
  const auto report = [this] {
    BusyRun run(busy_, QString::fromUtf16(maintenance_text::kOptimizing));
    return Optimize(
        session_, [&run](int done, int total) { run.Progress(done, total); },
        [this] { browser_.LetGoOfCatalogue(); });
  }();
  if (report)
    MsgBox(report->Text() + QString::fromUtf16(maintenance_text::kWillRestart),
           MessageKind::Information);
  else
    MsgBox(report.Reason(), MessageKind::Critical);
  if (session_.HasActiveCatalogue()) return;
  restartRequested_ = true;
  close();
}

}  // namespace zqm
