// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/frmconfigure.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "batch/external_editors.h"
#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "shell/ui/dialog_foot.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kConfigureSize{480, 320};
constexpr int kConfirmWidth = 420;
constexpr int kSideWidth = 104;

}  // namespace

frmconfirmeditor::frmconfirmeditor(CoreDatabase& core, const ExternalEditor& proposal,
                                   QWidget* parent)
    : QDialog(parent),
      core_(core),
      nameEdit_(new QLineEdit(proposal.EditorName)),
      location_(new QLineEdit(proposal.EditorPath)) {
  setObjectName(u"frmconfirmeditor"_s);
  setWindowTitle(u"Photo Editor Information"_s);
  setMinimumWidth(kConfirmWidth);
  nameEdit_->setObjectName(u"Text1"_s);
  location_->setObjectName(u"Text2"_s);
  location_->setReadOnly(true);
  location_->setToolTip(proposal.EditorPath);
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  const auto add = [grid](int row, const QString& text, QLineEdit* edit) {
    QLabel* caption = look::Caption(text);
    caption->setBuddy(edit);
    grid->addWidget(caption, row, 0);
    grid->addWidget(edit, row, 1);
  };
  add(0, u"Name:"_s, nameEdit_);
  add(1, u"Location:"_s, location_);
  auto* foot = new DialogFoot;
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace16);
  column->addLayout(grid);
  column->addLayout(foot);
  connect(foot->Cancel(), &QPushButton::clicked, this, &QDialog::reject);
  connect(foot->Ok(), &QPushButton::clicked, this,
          [this] { Guarded("frmconfirmeditor", "cmdok_Click", [this] { cmdok_Click(); }); });
  nameEdit_->selectAll();
  nameEdit_->setFocus();
}

void frmconfirmeditor::cmdok_Click() {
  const Outcome added = AddEditor(core_, {nameEdit_->text(), location_->text()});
  if (added) return accept();
  MsgBox(added.Reason(), MessageKind::Information);
  nameEdit_->setFocus();
}

frmconfigure::frmconfigure(CoreDatabase& core, QWidget* parent)
    : QDialog(parent),
      core_(core),
      before_(core.Editors()),
      list_(new QListWidget),
      installed_(new QMenu(this)),
      removeButton_(new QPushButton(tr("&Remove"))) {
  setObjectName(u"frmconfigure"_s);
  setWindowTitle(u"Configure Photo Editors"_s);
  list_->setObjectName(u"List1"_s);
  list_->setAccessibleName(tr("Photo editors"));
  auto* add = new QPushButton(tr("&Add"));
  add->setObjectName(u"cmdadd"_s);
  add->setToolTip(tr("Choose the program's file"));
  auto* installed = new QPushButton(tr("&Installed"));
  installed->setObjectName(u"cmdinstalled"_s);
  installed->setToolTip(tr("Programs of this desktop that open images"));
  look::MakeChoice(installed);
  removeButton_->setObjectName(u"cmdremove"_s);
  auto* side = new QVBoxLayout;
  look::SetSpace(side, 0, look::kSpace8);
  for (QPushButton* button : {add, installed, removeButton_}) {
    button->setAutoDefault(false);
    button->setMinimumWidth(kSideWidth);
    side->addWidget(button);
  }
  side->addStretch();
  auto* body = new QHBoxLayout;
  look::SetSpace(body, 0, look::kSpace12);
  body->addWidget(list_, 1);
  body->addLayout(side);
  auto* foot = new DialogFoot;
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace16);
  column->addLayout(body, 1);
  column->addLayout(foot);
  resize(kConfigureSize);

  const bool readOnly = core_.ReadOnly();
  for (QPushButton* button : {add, installed}) {
    button->setEnabled(!readOnly);
    if (readOnly) button->setToolTip(tr("The settings file is read-only."));
  }
  connect(add, &QPushButton::clicked, this,
          [this] { Guarded("frmconfigure", "cmdadd_Click", [this] { cmdadd_Click(); }); });
  connect(installed, &QPushButton::clicked, this, [this, installed] {
    FillInstalled();
    installed_->popup(installed->mapToGlobal(installed->rect().bottomLeft()));
  });
  connect(removeButton_, &QPushButton::clicked, this,
          [this] { Guarded("frmconfigure", "cmdremove_Click", [this] { cmdremove_Click(); }); });
  connect(foot->Ok(), &QPushButton::clicked, this, &QDialog::accept);
  connect(foot->Cancel(), &QPushButton::clicked, this, &frmconfigure::reject);
  connect(list_, &QListWidget::itemSelectionChanged, this, [this, readOnly] {
    removeButton_->setEnabled(!readOnly && !list_->selectedItems().isEmpty());
  });
  ShowEditors();
  list_->setFocus();
}

void frmconfigure::ShowEditors() {
  list_->clear();
  for (const ExternalEditor& editor : core_.Editors()) {
    auto* item = new QListWidgetItem(editor.EditorName, list_);
    item->setToolTip(editor.EditorPath);
  }
  removeButton_->setEnabled(false);
}

void frmconfigure::FillInstalled() {
  installed_->clear();
  for (const ExternalEditor& editor : InstalledEditors()) {
    QAction* action = installed_->addAction(editor.EditorName);
    action->setToolTip(editor.EditorPath);
    connect(action, &QAction::triggered, this, [this, editor] { Propose(editor); });
  }
  if (installed_->isEmpty()) installed_->addAction(tr("None found"))->setEnabled(false);
}

void frmconfigure::cmdadd_Click() {
  const QString path = Pick({PickRequest::What::OpenFile,
                             QString::fromUtf16(editor_text::kPickTitle),
                             u"/usr/bin"_s,
                             {tr("Executable Files (*)")}});
  if (path.isEmpty()) return;
  if (const Outcome program = CheckEditorProgram(path); !program) {
    MsgBox(program.Reason(), MessageKind::Information);
    return;
  }
  Propose({GetFileName(path), path});
}

void frmconfigure::Propose(const ExternalEditor& editor) {
  Guarded("frmconfigure", "cmdadd_Click", [&] {
    frmconfirmeditor confirm(core_, editor, this);
    if (confirm.exec() == QDialog::Accepted) ShowEditors();
  });
}

void frmconfigure::cmdremove_Click() {
  const QList<QListWidgetItem*> chosen = list_->selectedItems();
  if (chosen.isEmpty()) return;
  const QString name = chosen.first()->text();
  const QString question = u"Delete "_s + name + u" from the list of Photo Editors?"_s;
  if (MsgBox(question, MessageKind::Question, Buttons::YesNo) != Answer::Yes) return;
  if (const Outcome removed = RemoveEditor(core_, name); !removed)
    MsgBox(removed.Reason(), MessageKind::Warning);
  ShowEditors();
}

void frmconfigure::reject() {
  if (core_.Editors() != before_)
    if (const Outcome undone = core_.WriteEditors(before_); !undone)
      MsgBox(undone.Reason(), MessageKind::Warning);
  QDialog::reject();
}

}  // namespace zqm
