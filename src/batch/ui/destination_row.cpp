// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch/ui/destination_row.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

#include "shell/error.h"
#include "shell/files.h"
#include "shell/messages.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {

DestinationRow::DestinationRow(const char* fieldName, QWidget* parent)
    : QWidget(parent), field_(new QLineEdit), browse_(new QPushButton(tr("&Browse"))) {
  field_->setObjectName(QString::fromLatin1(fieldName));
  field_->setAccessibleName(tr("Destination folder"));
  field_->setPlaceholderText(tr("No folder chosen yet"));
  browse_->setObjectName(u"cmdbrowse"_s);
  browse_->setAutoDefault(false);
  connect(browse_, &QPushButton::clicked, this,
          [this] { Guarded("DestinationRow", "cmdbrowse_Click", [this] { cmdbrowse_Click(); }); });
  auto* row = new QHBoxLayout(this);
  look::SetSpace(row, 0, look::kSpace8);
  row->addWidget(field_, 1);
  row->addWidget(browse_);
}

QString DestinationRow::Folder() const {
  const QString typed = field_->text();
  return typed.isEmpty() ? QString() : AbsolutePath(typed);
}

void DestinationRow::cmdbrowse_Click() {
  const QString folder = Pick(
      {PickRequest::What::Folder, u"Select destination folder"_s, field_->text(), QStringList()});
  if (!folder.isEmpty()) field_->setText(folder);
}

}  // namespace zqm
