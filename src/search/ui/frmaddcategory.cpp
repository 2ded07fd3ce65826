// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/ui/frmaddcategory.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

#include "search/categories.h"
#include "shell/error.h"
#include "shell/messages.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kWidth = 360;

}  // namespace

frmaddcategory::frmaddcategory(Catalogue& catalogue, QWidget* parent)
    : QDialog(parent), catalogue_(catalogue), name_(new QLineEdit) {
  setObjectName(u"frmaddcategory"_s);
  setWindowTitle(tr("Add New Category"));
  name_->setObjectName(u"Text1"_s);
  name_->setAccessibleName(tr("Category"));
  name_->setPlaceholderText(tr("Such as Family or Travel"));
  auto* add = new QPushButton(tr("Add"));
  add->setObjectName(u"Command1"_s);
  look::MakePrimary(add);
  auto* close = new QPushButton(tr("Close"));
  close->setObjectName(u"Command2"_s);

  auto* field = new QHBoxLayout;
  look::SetSpace(field, 0, look::kSpace8);
  field->addWidget(look::Caption(tr("Category")));
  field->addWidget(name_, 1);
  auto* foot = new QHBoxLayout;
  look::SetSpace(foot, 0, look::kSpace8);
  foot->addStretch();
  foot->addWidget(close);
  foot->addWidget(add);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace16);
  column->addLayout(field);
  column->addLayout(foot);
  setMinimumWidth(kWidth);

  connect(add, &QPushButton::clicked, this,
          [this] { Guarded("frmaddcategory", "Command1_Click", [this] { Command1_Click(); }); });
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  name_->setFocus();
}

void frmaddcategory::Command1_Click() {
  const auto added = AddCategory(catalogue_, name_->text());
  const QString message = added ? *added : added.Reason();
  if (!message.isEmpty()) MsgBox(message, added ? MessageKind::Information : MessageKind::Warning);
  name_->setFocus();
  if (!added) return name_->selectAll();
  if (message.isEmpty()) return;
  name_->clear();
  Q_EMIT Added();
}

}  // namespace zqm
