// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/frmerror.h"

#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include "shell/ui/failure_table.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {

frmerror::frmerror(QWidget* parent)
    : QDialog(parent), label_(new QLabel), count_(look::Hint(QString())), table_(new FailureTable) {
  setObjectName(u"frmerror"_s);
  setWindowTitle(tr("Files That Could Not Be Handled"));
  label_->setObjectName(u"Label1"_s);
  label_->setWordWrap(true);
  label_->setTextFormat(Qt::PlainText);

  auto* close = new QPushButton(tr("Close"));
  close->setObjectName(u"cmdclose"_s);
  look::MakePrimary(close);
  connect(close, &QPushButton::clicked, this, &QDialog::accept);
  auto* foot = new QHBoxLayout;
  foot->addWidget(count_, 1);
  foot->addWidget(close);

  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace12);
  column->addWidget(label_);
  column->addWidget(table_, 1);
  column->addLayout(foot);
}

QSize frmerror::sizeHint() const {
  return {760, 420};
}

void frmerror::SetFailures(const FailureList& failures) {
  label_->setText(failures.label);
  label_->setVisible(!failures.label.isEmpty());
  table_->SetFailures(failures);
  count_->setText(
      failures.rows.size() == 1
          ? tr("1 file")
          : tr("%1 files").arg(QLocale().toString(static_cast<int>(failures.rows.size()))));
  table_->setColumnWidth(0, sizeHint().width() / 2);
}

frmbug::frmbug(QWidget* parent) : frmerror(parent) {
  setObjectName(u"frmbug"_s);
  setWindowTitle(tr("Fault Report"));
}

void ShowFailures(const FailureList& failures, QWidget* parent) {
  frmerror dialog(parent);
  dialog.SetFailures(failures);
  dialog.exec();
}

}  // namespace zqm
