// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/frmexternaleditor.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "batch/external_editors.h"
#include "shell/error.h"
#include "shell/messages.h"
#include "shell/ui/dialog_foot.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kSize{420, 320};

}  // namespace

frmexternaleditor::frmexternaleditor(const CoreDatabase& core, QStringList photos, QWidget* parent)
    : QDialog(parent),
      editors_(core.Editors()),
      photos_(std::move(photos)),
      list_(new QListWidget),
      multiple_(new QCheckBox(u"Support &Multiple Images"_s)) {
  setObjectName(u"frmexternaleditor"_s);
  setWindowTitle(u"Select Photo Editor"_s);
  list_->setObjectName(u"List1"_s);
  list_->setAccessibleName(tr("Photo editors"));
  for (const ExternalEditor& editor : editors_) {
    auto* item = new QListWidgetItem(editor.EditorName, list_);
    item->setToolTip(editor.EditorPath);
  }
  multiple_->setObjectName(u"Check1"_s);
  multiple_->setToolTip(tr("Start the program once with all photos instead of once for each"));
  auto* foot = new DialogFoot;
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace12);
  column->addWidget(list_, 1);
  column->addWidget(multiple_);
  column->addLayout(foot);
  resize(kSize);
  const auto confirmed = [this] {
    Guarded("frmexternaleditor", "cmdok_Click", [this] { cmdok_Click(); });
  };
  connect(foot->Ok(), &QPushButton::clicked, this, confirmed);
  connect(list_, &QListWidget::itemDoubleClicked, this, confirmed);
  connect(foot->Cancel(), &QPushButton::clicked, this, &QDialog::reject);
  list_->setFocus();
}

void frmexternaleditor::cmdok_Click() {
  const QList<QListWidgetItem*> chosen = list_->selectedItems();
  const ExternalEditor editor =
      chosen.isEmpty() ? ExternalEditor()
                       : editors_[static_cast<std::size_t>(list_->row(chosen.first()))];
  const auto started = OpenInEditor(editor, photos_, multiple_->isChecked());
  if (started) return accept();
  MsgBox(started.Reason(), MessageKind::Information);
}

}  // namespace zqm
