// SPDX-License-Identifier: GPL-3.0-or-later
#include "session/ui/frmnewdb.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "session/maintenance.h"
#include "shell/busy.h"
#include "shell/error.h"
#include "shell/messages.h"
#include "shell/ui/dialog_foot.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {
constexpr int kNameWidth = 320;
}

frmnewdb::frmnewdb(SessionFolders folders, QWidget* parent)
    : QDialog(parent),
      folders_(std::move(folders)),
      nameEdit_(new QLineEdit),
      status_(look::Hint(QString())) {
  setObjectName(u"frmnewdb"_s);
  setWindowTitle(u"Create New Database"_s);
  nameEdit_->setObjectName(u"Text1"_s);
  nameEdit_->setMinimumWidth(kNameWidth);
  status_->setObjectName(u"Label3"_s);
  auto* foot = new DialogFoot(tr("C&reate"));
  createButton_ = foot->Ok();
  cancelButton_ = foot->Cancel();

  QLabel* caption = look::Caption(tr("&Name"));
  caption->setBuddy(nameEdit_);
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  grid->addWidget(caption, 0, 0);
  grid->addWidget(nameEdit_, 0, 1);
  grid->addWidget(look::Caption(u".mdb"_s), 0, 2);
  grid->addWidget(status_, 1, 1, 1, 2);
  grid->setColumnStretch(1, 1);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace16);
  column->addLayout(grid);
  column->addStretch();
  column->addLayout(foot);

  connect(cancelButton_, &QPushButton::clicked, this, &QDialog::reject);
  connect(createButton_, &QPushButton::clicked, this,
          [this] { Guarded("frmnewdb", "cmdok_Click", [this] { cmdok_Click(); }); });
  SetLocked(false);
  nameEdit_->setFocus();
}

void frmnewdb::cmdok_Click() {
  if (running_) return;
  SetLocked(true);
  YieldToInterface();
  const Outcome made = CreateCatalogue(folders_, nameEdit_->text());
  SetLocked(false);
  if (made) {
    MsgBox(QString::fromUtf16(maintenance_text::kCreated), MessageKind::Information);
    return accept();
  }
  MsgBox(made.Reason(), MessageKind::Warning);
  nameEdit_->selectAll();
  nameEdit_->setFocus();
}

void frmnewdb::SetLocked(bool locked) {
  running_ = locked;
  for (QWidget* widget : std::initializer_list<QWidget*>{nameEdit_, createButton_, cancelButton_})
    widget->setEnabled(!locked);
  status_->setText(locked ? QString::fromUtf16(maintenance_text::kCreating)
                          : tr("It starts empty. The database in use stays loaded."));
}

void frmnewdb::reject() {
  if (!running_) QDialog::reject();
}

void frmnewdb::closeEvent(QCloseEvent* event) {
  if (running_) return event->ignore();
  QDialog::closeEvent(event);
}

}  // namespace zqm
