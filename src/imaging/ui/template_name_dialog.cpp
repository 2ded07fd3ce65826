// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ui/template_name_dialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "imaging/template_files.h"
#include "shell/error.h"
#include "shell/messages.h"
#include "shell/ui/dialog_foot.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {
constexpr int kNameWidth = 320;
}

TemplateNameDialog::TemplateNameDialog(const char* window, QString folder, const QString& name,
                                       QWidget* parent)
    : QDialog(parent), folder_(std::move(folder)), name_(new QLineEdit(name)) {
  setObjectName(QString::fromLatin1(window));
  setWindowTitle(u"Template Name"_s);
  name_->setObjectName(u"Text1"_s);
  name_->setMinimumWidth(kNameWidth);
  name_->selectAll();
  QLabel* caption = look::Caption(u"Template &Name :"_s);
  caption->setBuddy(name_);
  auto* row = new QHBoxLayout;
  look::SetSpace(row, 0, look::kSpace8);
  row->addWidget(caption);
  row->addWidget(name_, 1);
  auto* foot = new DialogFoot(tr("&Save"));
  foot->Ok()->setObjectName(u"Command1"_s);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace16);
  column->addLayout(row);
  column->addStretch();
  column->addLayout(foot);
  connect(foot->Cancel(), &QPushButton::clicked, this, &QDialog::reject);
  connect(foot->Ok(), &QPushButton::clicked, this,
          [this, window] { Guarded(window, "Command1_Click", [this] { Command1_Click(); }); });
  name_->setFocus();
}

QString TemplateNameDialog::Standing(const QString& name) const {
  return FindTemplate(folder_, name);
}

void TemplateNameDialog::Command1_Click() {
  if (saving_) return;
  const QString typed = name_->text().trimmed();
  if (const Outcome valid = CheckTemplateName(typed); !valid) {
    MsgBox(valid.Reason(), MessageKind::Information);
    return;
  }
  const QString standing = Standing(typed);
  if (!standing.isEmpty() && MsgBox(QString::fromUtf16(template_text::kExists),
                                    MessageKind::Question, Buttons::YesNo) != Answer::Yes)
    return;
  const QString name = standing.isEmpty() ? typed : standing;
  saving_ = true;
  const Outcome saved = Write(name);
  saving_ = false;
  if (!saved) {
    MsgBox(saved.Reason(), MessageKind::Warning);
    return;
  }
  savedName_ = name;
  accept();
}

void TemplateNameDialog::reject() {
  if (!saving_) QDialog::reject();
}

}  // namespace zqm
