// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/ui/frmaddcategory.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "search/categories.h"
#include "shell/error.h"
#include "shell/messages.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {
constexpr int kNameWidth = 320;
}

frmaddcategory::frmaddcategory(Catalogue& catalogue, QWidget* parent)
    : QDialog(parent),
      catalogue_(catalogue),
      nameEdit_(new QLineEdit),
      takenAs_(look::Hint(QString())),
      addButton_(new QPushButton(tr("&Add"))) {
  setObjectName(u"frmaddcategory"_s);
  setWindowTitle(tr("Add New Category"));
  nameEdit_->setObjectName(u"Text1"_s);
  nameEdit_->setMinimumWidth(kNameWidth);
  takenAs_->setObjectName(u"Label1"_s);
  takenAs_->setTextFormat(Qt::PlainText);
  addButton_->setObjectName(u"Command1"_s);
  look::MakePrimary(addButton_);
  auto* closeButton = new QPushButton(tr("Close"));
  closeButton->setObjectName(u"Command2"_s);

  QLabel* caption = look::Caption(tr("&Category"));
  caption->setBuddy(nameEdit_);
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  grid->addWidget(caption, 0, 0);
  grid->addWidget(nameEdit_, 0, 1);
  grid->addWidget(takenAs_, 1, 1);
  grid->setColumnStretch(1, 1);
  auto* foot = new QHBoxLayout;
  look::SetSpace(foot, 0, look::kSpace8);
  foot->addStretch();
  foot->addWidget(closeButton);
  foot->addWidget(addButton_);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace16);
  column->addLayout(grid);
  column->addStretch();
  column->addLayout(foot);

  connect(closeButton, &QPushButton::clicked, this, &QDialog::reject);
  connect(addButton_, &QPushButton::clicked, this,
          [this] { Guarded("frmaddcategory", "Command1_Click", [this] { Command1_Click(); }); });
  connect(nameEdit_, &QLineEdit::textChanged, this, &frmaddcategory::Text1_Change);
  Text1_Change();
  nameEdit_->setFocus();
}

void frmaddcategory::Text1_Change() {
  const QString typed = nameEdit_->text();
  const QString name = CategoryName(typed);
  const bool nothing = name.trimmed().isEmpty();
  takenAs_->setText(nothing || name == typed ? QString() : tr("Will be added as '%1'.").arg(name));
  QString whyNot;
  if (catalogue_.ReadOnly())
    whyNot = tr("The catalogue is read-only.");
  else if (nothing)
    whyNot = tr("Type a name first.");
  addButton_->setEnabled(whyNot.isEmpty());
  addButton_->setToolTip(whyNot);
}

void frmaddcategory::Command1_Click() {
  const QString typed = nameEdit_->text();
  const auto added = AddCategory(catalogue_, typed);
  if (added && added->isEmpty()) return;
  if (added) {
    Q_EMIT Added(CategoryName(typed));
    MsgBox(*added, MessageKind::Information);
    nameEdit_->clear();
  } else {
    MsgBox(added.Reason(), MessageKind::Warning);
    nameEdit_->selectAll();
  }
  nameEdit_->setFocus();
}

}  // namespace zqm
