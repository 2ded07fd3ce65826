// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/start_windows.h"

#include <QGuiApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "session/session.h"
#include "shell/busy.h"
#include "shell/error.h"
#include "shell/file_info.h"
#include "shell/messages.h"
#include "shell/ui/dialog_foot.h"
#include "shell/ui/look.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr QSize kSplash{360, 140};
constexpr QSize kCheckSize{420, 320};

/// A small window without a frame, in the middle of the screen.
QVBoxLayout* MakeSplash(QWidget* window, const QString& name) {
  window->setObjectName(u"panel"_s);
  window->setAccessibleName(name);
  window->setAttribute(Qt::WA_StyledBackground);
  window->setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
  window->setWindowTitle(u"Zolmira QM"_s);
  window->setFixedSize(kSplash);
  if (const QScreen* screen = QGuiApplication::primaryScreen())
    window->move(screen->availableGeometry().center() - window->rect().center());
  auto* column = new QVBoxLayout(window);
  look::SetSpace(column, look::kSpace24, look::kSpace8);
  column->addWidget(look::Heading(u"Zolmira QM"_s));
  column->addWidget(look::Hint(ProgramVersion()));
  column->addStretch();
  return column;
}

}  // namespace

frmstart::frmstart() {
  MakeSplash(this, u"frmstart"_s)->addWidget(look::Hint(tr("Starting…")));
}

frmintro::frmintro() : status_(new QLabel) {
  status_->setObjectName(u"lblstatus"_s);
  MakeSplash(this, u"frmintro"_s)->addWidget(status_);
}

void frmintro::SetStatus(const QString& status) {
  status_->setText(status);
  repaint();
  YieldToInterface();
}

frmcheckDB::frmcheckDB(const QStringList& names, QWidget* parent)
    : QDialog(parent), list_(new QListWidget) {
  setObjectName(u"frmcheckDB"_s);
  setWindowTitle(u"Select Database"_s);
  list_->setObjectName(u"List1"_s);
  list_->setAccessibleName(tr("Databases"));
  list_->addItems(names);
  auto* foot = new DialogFoot;
  const auto confirmed = [this] { Guarded("frmcheckDB", "cmdok_Click", [this] { Confirm(); }); };
  connect(foot->Ok(), &QPushButton::clicked, this, confirmed);
  connect(foot->Cancel(), &QPushButton::clicked, this, &QDialog::reject);
  // Enter goes to the default button by itself.
  connect(list_, &QListWidget::itemDoubleClicked, this, confirmed);
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, look::kSpace16, look::kSpace12);
  column->addWidget(new QLabel(u"Select the database to be loaded"_s));
  column->addWidget(list_, 1);
  column->addLayout(foot);
  resize(kCheckSize);
  list_->setFocus();
}

QString frmcheckDB::Name() const {
  const QList<QListWidgetItem*> chosen = list_->selectedItems();
  return chosen.isEmpty() ? QString() : chosen.first()->text();
}

void frmcheckDB::Confirm() {
  if (Name().isEmpty()) {
    MsgBox(QString::fromUtf16(session_text::kSelectCatalogue), MessageKind::Information);
    return;
  }
  accept();
}

}  // namespace zqm
