// SPDX-License-Identifier: GPL-3.0-or-later
#include "session/ui/frmnewdb.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "session/maintenance.h"
#include "shell/busy.h"
#include "shell/error.h"
#include "shell/messages.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kWidth = 400;

}  // namespace

frmnewdb::frmnewdb(SessionFolders folders, QWidget* parent)
    : QDialog(parent),
      folders_(std::move(folders)),
      name_(new QLineEdit),
      status_(look::Hint(QString())),
      ok_(new QPushButton(tr("Create"))) {
  setObjectName(u"frmnewdb"_s);
  setWindowTitle(u"Create New Database"_s);
  name_->setObjectName(u"Text1"_s);
  name_->setAccessibleName(tr("Name of the database"));
  status_->setObjectName(u"Label3"_s);
  ok_->setObjectName(u"cmdok"_s);
  look::MakePrimary(ok_);
  auto* cancel = new QPushButton(tr("Cancel"));
  cancel->setObjectName(u"cmdcancel"_s);

  auto* field = new QHBoxLayout;
  look::SetSpace(field, 0, look::kSpace8);
  field->addWidget(look::Caption(tr("Name")));
  field->addWidget(name_, 1);
  auto* foot = new QHBoxLayout;
  look::SetSpace(foot, 0, look::kSpace8);
  foot->addWidget(status_, 1);
  foot->addWidget(cancel);
  foot->addWidget(ok_);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace16);
  column->addLayout(field);
  column->addLayout(foot);
  setMinimumWidth(kWidth);

  connect(ok_, &QPushButton::clicked, this,
          [this] { Guarded("frmnewdb", "cmdok_Click", [this] { cmdok_Click(); }); });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  name_->setFocus();
}

void frmnewdb::cmdok_Click() {
  status_->setText(QString::fromUtf16(maintenance_text::kCreating));
  ok_->setEnabled(false);
  YieldToInterface();
  const Outcome made = CreateCatalogue(folders_, name_->text());
  status_->clear();
  ok_->setEnabled(true);
  if (!made) {
    MsgBox(made.Reason(), MessageKind::Warning);
    name_->setFocus();
    return name_->selectAll();
  }
  MsgBox(QString::fromUtf16(maintenance_text::kCreated), MessageKind::Information);
  accept();
}

}  // namespace zqm
