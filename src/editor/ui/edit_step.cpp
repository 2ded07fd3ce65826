// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/ui/edit_step.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include "shell/messages.h"
#include "shell/ui/look.h"

namespace zqm {

EditStep::EditStep(const char* frame, const QString& title, const QString& hint, ImageX& picture)
    : picture_(picture) {
  setObjectName(QString::fromLatin1(frame));
  auto* column = new QVBoxLayout(this);
  look::SetSpace(column, 0, look::kSpace8);
  column->addWidget(look::Heading(title));
  if (!hint.isEmpty()) column->addWidget(look::Hint(hint));
  body_ = new QVBoxLayout;
  look::SetSpace(body_, 0, look::kSpace8);
  column->addLayout(body_);
  buttons_ = new QHBoxLayout;
  look::SetSpace(buttons_, 0, look::kSpace8);
  column->addLayout(buttons_);
}

QGridLayout* EditStep::AddGrid() {
  auto* grid = new QGridLayout;
  look::SetSpace(grid, 0, look::kSpace8);
  grid->setColumnStretch(1, 1);
  body_->addLayout(grid);
  return grid;
}

QPushButton* EditStep::AddButton(const QString& caption, const char* name,
                                 const std::function<void()>& work, bool primary) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QString::fromLatin1(name));
  if (primary) {
    look::MakePrimary(button);
    primary_ = button;
  }
  const QByteArray handler = QByteArray(name) + "_Click";
  connect(button, &QPushButton::clicked, this, [this, handler, work] {
    Q_EMIT Acting();
    Guarded("frmedit", handler.constData(), work);
  });
  buttons_->addWidget(button);
  return button;
}

void EditStep::keyPressEvent(QKeyEvent* event) {
  const bool enters = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enters || primary_ == nullptr) return QWidget::keyPressEvent(event);
  primary_->click();
}

void EditStep::Tell(const Outcome& outcome) {
  if (!outcome) MsgBox(outcome.Reason(), MessageKind::Warning);
}

void AddField(QGridLayout* grid, const QString& caption, QWidget* field, QWidget* unit) {
  QLabel* label = look::Caption(caption);
  label->setBuddy(field);
  const int row = grid->rowCount();
  grid->addWidget(label, row, 0);
  grid->addWidget(field, row, 1);
  if (unit != nullptr) grid->addWidget(unit, row, 2);
}

}  // namespace zqm
